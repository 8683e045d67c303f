#include <gtest/gtest.h>

#include <map>
#include <random>

#include "host/compile/Bytes.h"
#include "host/compile/ItolitlsWriter.h"
#include "host/compile/ItsfWriter.h"
#include "host/compile/StorageReader.h"
#include "quillbook/base/Failure.h"

namespace quillbook::compile {
namespace {

using Files = std::map<std::string, std::string>;

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

/// Text that compresses somewhat, or noise.
std::string SomeBytes(std::mt19937& random, std::size_t size, bool noise) {
  std::string bytes(size, '\0');
  for (auto& byte : bytes) byte = noise ? static_cast<char>(random()) : "the quick <p>\n"[random() % 14];
  return bytes;
}

class Storage : public testing::TestWithParam<StorageReader::Format> {};
INSTANTIATE_TEST_SUITE_P(Formats, Storage,
                         testing::Values(StorageReader::Format::HtmlHelp1, StorageReader::Format::Help2));

TEST_P(Storage, TreesOfAnyNamesAndSizes_ComeBack) {
  std::mt19937 random(11);
  for (const std::size_t count : {0, 1, 20, 130, 900}) {
    Files files;
    for (std::size_t i = 0; i < count; ++i) {
      const auto name = "/d" + std::to_string(random() % 9) + "/" + std::string(random() % 60, 'n') + std::to_string(i);
      files[name] = SomeBytes(random, i % 50 == 7 ? 300'000 : random() % 3'000, i % 5 == 0);
    }
    const auto file = Pack(files, GetParam());
    const MemorySource source(file);
    const StorageReader reader(source);
    EXPECT_EQ(reader.GetFormat(), GetParam());
    EXPECT_TRUE(reader.Problems().empty());
    EXPECT_EQ(reader.LocaleId(), 0x409u);
    for (const auto& [name, bytes] : files) {
      const auto* entry = reader.Find(name);
      ASSERT_NE(entry, nullptr) << name;
      ASSERT_TRUE(reader.ReadAll(*entry) == bytes) << name;
    }
    ASSERT_NE(reader.Find("/#system"), nullptr);
    EXPECT_EQ(reader.ReadAll(*reader.Find("/#system")), "stored");
  }
}

TEST_P(Storage, SameFiles_GiveTheSameBytes) {
  const Files files{{"/a.htm", "one"}, {"/b.htm", std::string(100'000, 'x')}};
  EXPECT_EQ(Pack(files, GetParam()), Pack(files, GetParam()));
}

TEST_P(Storage, DamagedContainers_AreRefusedWithAFailure_OrReadWithinBounds) {
  std::mt19937 random(5);
  Files files;
  for (int i = 0; i < 40; ++i) files["/page" + std::to_string(i)] = SomeBytes(random, 4'000, false);
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
