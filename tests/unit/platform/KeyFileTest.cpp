#include "platform/KeyFile.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace quillbook::detail {
namespace {

TEST(KeyFile, GivesTheValuesOfGroups) {
  const KeyFile file(
      "# comment\nStray=1\n[One]\nKey = a value \r\nName=b=c\n\n#Key=no\n[Two]\nKey=2\nKey=3\n[One]\nMore=4");
  EXPECT_EQ(file.Value("One", "Key"), "a value");
  EXPECT_EQ(file.Value("One", "Name"), "b=c");
  EXPECT_EQ(file.Value("One", "More"), "4");
  EXPECT_EQ(file.Value("Two", "Key"), "3");
  EXPECT_EQ(file.Value("", "Stray"), "");
  EXPECT_EQ(file.Value("one", "Key"), "");
}

TEST(KeyFile, ReadsNumbers) {
  const KeyFile file("[G]\na=16\nb=16px\nc=\nd=99999999999\ne=-3\n");
  EXPECT_EQ(file.Number("G", "a", 7), 16);
  EXPECT_EQ(file.Number("G", "b", 7), 7);
  EXPECT_EQ(file.Number("G", "c", 7), 7);
  EXPECT_EQ(file.Number("G", "d", 7), 7);
  EXPECT_EQ(file.Number("G", "e", 7), -3);
  EXPECT_EQ(file.Number("G", "missing", 7), 7);
}

TEST(KeyFile, WhatCantBeReadIsEmpty) {
  const support::TemporaryFolder folder;
  EXPECT_TRUE(KeyFile::Read(folder / "missing").IsEmpty());
  EXPECT_TRUE(KeyFile::Read(folder.Path()).IsEmpty());
  folder.Write("file", "[G]\na=1\n");
  EXPECT_EQ(KeyFile::Read(folder / "file").Value("G", "a"), "1");
}

}  // namespace
}  // namespace quillbook::detail
