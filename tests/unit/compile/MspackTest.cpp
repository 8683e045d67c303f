// What this system compresses, decompressed by a library that knows nothing of its own decoder.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>

#include "host/compile/HelpOutput.h"
#include "host/compile/LzxEncoder.h"
#include "support/MspackReader.h"
#include "support/SomeFiles.h"
#include "support/TemporaryFolder.h"

namespace quillbook::compile {
namespace {

constexpr std::size_t FrameSize = LzxEncoder::FrameSize;

class ByMspack : public testing::Test {
 protected:
  std::string Pack(const support::NamedFiles& files) {
    auto path = mFolder / "made.chm";
    HelpOutput output(path);
    for (const auto& [name, bytes] : files) output.AddFile(name, bytes);
    output.Finish(StorageReader::Format::HtmlHelp1, 0, 0x409);
    output.Publish();
    return path;
  }

  /// Packs files, and compares their names and their bytes, last file first: each needs its place in the stream found.
  void ExpectSame(const support::NamedFiles& files) {
    support::MspackReader reader(Pack(files));
    ASSERT_EQ(reader.Error(), 0);
    ASSERT_EQ(reader.Names().size(), files.size());
    for (auto i = reader.Names().size(); i-- > 0;) {
      const auto found = files.find(reader.Names()[i]);
      ASSERT_NE(found, files.end()) << reader.Names()[i];
      ASSERT_TRUE(reader.FindsByIndex(i)) << found->first;
      ASSERT_EQ(reader.Extract(i, mFolder / "out"), 0) << found->first;
      ASSERT_TRUE(mFolder.Read("out") == found->second) << found->first;
    }
  }

  /// The bytes alone, where frames and intervals begin with the file.
  void ExpectSame(const std::string& bytes) { ExpectSame(support::NamedFiles{{"/data", bytes}}); }

  support::TemporaryFolder mFolder;
};

TEST_F(ByMspack, AllZeros_ComeBack) {
  for (const std::size_t size : {1UL, 257UL, 258UL, FrameSize, 10 * FrameSize + 5}) ExpectSame(std::string(size, '\0'));
}

TEST_F(ByMspack, RandomBytes_ComeBack) {
  for (const unsigned kinds : {256, 255, 64, 2}) ExpectSame(support::RandomBytes(7 * FrameSize + 3, kinds, kinds));
}

TEST_F(ByMspack, PeriodicData_ComesBack_AlsoWherePeriodsMeetFramesAndWindow) {
  for (const std::size_t period : {1, 2, 3, 4, 256, 257, 258, 32767, 32768, 32769, 65533, 65535, 65536, 65537}) {
    const auto unit = support::RandomBytes(period, 256, static_cast<unsigned>(period));
    std::string data;
    while (data.size() < 5 * FrameSize + 1) data += unit;
    SCOPED_TRACE(period);
    ExpectSame(data);
  }
}

TEST_F(ByMspack, SizesAtTheBorders_OfFramesAndIntervals_ComeBack) {
  std::vector<std::size_t> sizes{0, 1, 2, 3, 4};
  for (std::size_t frames = 1; frames <= 5; ++frames)
    for (std::size_t size = frames * FrameSize - 3; size <= frames * FrameSize + 3; ++size) sizes.push_back(size);
  for (const auto size : sizes) {
    SCOPED_TRACE(size);
    ExpectSame(support::RandomBytes(size, 5, static_cast<unsigned>(size)));
    if (size % FrameSize == 0) ExpectSame(support::RandomBytes(size, 256, static_cast<unsigned>(size)));
  }
}

TEST_F(ByMspack, StoredIntervals_BetweenCompressedOnes_ComeBack) {
  std::string data;
  for (unsigned i = 0; i < 8; ++i) data += support::RandomBytes(3 * FrameSize - i * 997, i % 2 ? 256 : 3, i);
  ExpectSame(data);
}

TEST_F(ByMspack, Html_ComesBack) {
  const std::filesystem::path root(QUILLBOOK_SOURCE_DIR);
  support::NamedFiles files;
  std::string all;
  for (const char* folder : {"samples", "configuration", "docs"})
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
      const auto kind = entry.path().extension();
      if (kind != ".htm" && kind != ".html" && kind != ".qbp" && kind != ".css") continue;
      std::ifstream file(entry.path(), std::ios::binary);
      std::string bytes(std::istreambuf_iterator<char>(file), {});
      all += bytes;
      files["/" + std::filesystem::relative(entry.path(), root).string()] = std::move(bytes);
    }
  ASSERT_GT(all.size(), 3 * FrameSize);
  ExpectSame(files);
  ExpectSame(all);
}

TEST_F(ByMspack, DirectoryOfManyLevels_LeadsToEveryName) {
  support::NamedFiles files;
  for (int i = 0; i < 400; ++i) {
    const auto number = std::to_string(i);
    files["/" + std::string(900, static_cast<char>('a' + i % 26)) + number] = "file " + number;
  }
  ExpectSame(files);
}

TEST_F(ByMspack, TreesOfAnyNamesAndSizes_ComeBack) {
  support::SomeFiles some(23 + static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed()));
  for (const std::size_t count : {1, 20, 130, 2'000}) ExpectSame(some.Tree(count, 20'000));
}

}  // namespace
}  // namespace quillbook::compile
