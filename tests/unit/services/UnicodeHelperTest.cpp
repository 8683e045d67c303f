#include "quillbook/frame/services/UnicodeHelper.h"

#include <gtest/gtest.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

TEST(UnicodeHelper, ToUTF8_HasOneCharacterForEachByte) {
  EXPECT_EQ(UnicodeHelper::ToUTF8("abc"), "abc");
  EXPECT_EQ(UnicodeHelper::ToUTF8("ä"), "Ã\u00A4");
  EXPECT_EQ(UnicodeHelper::ToUTF8(""), "");
}

TEST(UnicodeHelper, ToUTF8_WrittenOneByteACharacterIsUtf8) {
  const support::TemporaryFolder folder;
  const std::string text = "ä € 日本 😀";
  FileSystemObject file(folder.Stored("page.htm"));
  file.Open(4, 2, 1, 32767);
  file.SetUnicode(false);
  file.WriteText(UnicodeHelper::ToUTF8(text));
  file.Close();
  EXPECT_EQ(folder.Read("page.htm"), text);
}

}  // namespace
}  // namespace quillbook
