#include <gtest/gtest.h>

#include <random>

#include "host/compile/Bytes.h"
#include "host/compile/ItolitlsWriter.h"
#include "host/compile/ItsfWriter.h"
#include "host/compile/StorageReader.h"
#include "quillbook/base/Failure.h"
#include "support/SomeFiles.h"

namespace quillbook::compile {
namespace {

using Files = support::NamedFiles;

std::string Pack(const Files& files, StorageReader::Format format) {
  MemorySink content;
  StorageWriter storage(content);
  for (const auto& [name, bytes] : files) storage.AddCompressed(name, bytes);
  storage.AddStored("/#SYSTEM", "stored");
  MemorySink front;
  if (format == StorageReader::Format::HtmlHelp1) {
    storage.Finish(ItsfTransform());
    WriteItsfFront(front, storage, 0x01020304, 0x409);
  } else {
    storage.Finish(ItolitlsTransform());
    WriteItolitlsFront(front, storage, 0x01020304, 0x409);
  }
  return front.Bytes() + content.Bytes();
}

void ExpectComeBack(const Files& files, StorageReader::Format format) {
  const auto file = Pack(files, format);
  const MemorySource source(file);
  const StorageReader reader(source);
  EXPECT_EQ(reader.GetFormat(), format);
  EXPECT_TRUE(reader.Problems().empty());
  EXPECT_EQ(reader.LocaleId(), 0x409u);
  std::size_t listed = 0;
  for (const auto& entry : reader.Entries()) listed += files.contains(entry.name);
  EXPECT_EQ(listed, files.size());
  for (const auto& [name, bytes] : files) {
    const auto* entry = reader.Find(name);
    ASSERT_NE(entry, nullptr) << name;
    ASSERT_TRUE(reader.ReadAll(*entry) == bytes) << name;
  }
  ASSERT_NE(reader.Find("/#system"), nullptr);
  EXPECT_EQ(reader.ReadAll(*reader.Find("/#system")), "stored");
}

class Storage : public testing::TestWithParam<StorageReader::Format> {};
INSTANTIATE_TEST_SUITE_P(Formats, Storage,
                         testing::Values(StorageReader::Format::HtmlHelp1, StorageReader::Format::Help2));

// A hundred other trees: compile_tests --gtest_filter='*TreesOf*' --gtest_shuffle --gtest_repeat=100
TEST_P(Storage, TreesOfAnyNamesAndSizes_ComeBack) {
  support::SomeFiles some(11 + static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed()));
  for (const std::size_t count : {0, 1, 20, 130, 900}) {
    auto files = some.Tree(count, 40'000);
    if (count == 20) files["/large"] = some.Content(10'000'000);
    ExpectComeBack(files, GetParam());
  }
}

TEST_P(Storage, FilesOfMegabytesThatDontCompress_ComeBack) {
  ExpectComeBack({{"/a", "x"}, {"/b", support::RandomBytes(10'000'000, 256, 1)}, {"/c", "y"}}, GetParam());
}

TEST_P(Storage, SameFiles_GiveTheSameBytes) {
  const Files files{{"/a.htm", "one"}, {"/b.htm", std::string(100'000, 'x')}};
  EXPECT_EQ(Pack(files, GetParam()), Pack(files, GetParam()));
}

TEST_P(Storage, DamagedContainers_AreRefusedWithAFailure_OrReadWithinBounds) {
  std::mt19937 random(5);
  Files files;
  for (int i = 0; i < 40; ++i) files["/page" + std::to_string(i)] = support::RandomBytes(4'000, 14, random());
  const auto whole = Pack(files, GetParam());
  int refused = 0;
  for (int round = 0; round < 400; ++round) {
    auto bytes = whole;
    for (unsigned i = 0, n = 1 + random() % 6; i < n; ++i)
      bytes[random() % (round % 2 ? bytes.size() : std::min<std::size_t>(bytes.size(), 0x6000))] =
          static_cast<char>(random());
    if (random() % 5 == 0) bytes.resize(random() % bytes.size());
    try {
      const MemorySource source(bytes);
      const StorageReader reader(source);
      for (const auto& entry : reader.Entries()) (void)reader.ReadAll(entry, 1U << 20);
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number(), FailureNumber::InvalidCall);
      ++refused;
    }
  }
  EXPECT_GT(refused, 100);
}

TEST(StorageReader, OtherFiles_AreNoCompiledHelp) {
  for (const std::string bytes : {"", "ITS", "ITSF", "MZ....", "<html></html>"}) {
    const MemorySource source(bytes);
    EXPECT_THROW(StorageReader reader(source), Failure) << bytes;
  }
}

TEST(StorageWriter, StreamNeverEndsWithAFrame) {
  const auto file = Pack({{"/a", std::string(0x8000, 'x')}}, StorageReader::Format::HtmlHelp1);
  const MemorySource source(file);
  EXPECT_EQ(StorageReader(source).UncompressedLength(), 0x8001u);
}

}  // namespace
}  // namespace quillbook::compile
