#include "host/compile/Directory.h"

#include <gtest/gtest.h>

#include "host/compile/Bytes.h"
#include "quillbook/base/Failure.h"

namespace quillbook::compile {
namespace {

constexpr DirectoryFormat Format{0x1000, 0x14, 8};

TEST(Directory, EncInt_RoundTrips_AtItsBorders) {
  for (const std::uint64_t value : {0ULL, 1ULL, 127ULL, 128ULL, 16383ULL, 16384ULL, 0xFFFFFFFFULL, 1ULL << 62}) {
    std::string bytes;
    PutEncInt(bytes, value);
    std::size_t at = 0;
    std::uint64_t back = 0;
    ASSERT_TRUE(GetEncInt(bytes, at, back));
    EXPECT_EQ(back, value);
    EXPECT_EQ(at, bytes.size());
  }
  std::size_t at = 0;
  std::uint64_t value = 0;
  EXPECT_FALSE(GetEncInt("\x81", at, value));
  at = 0;
  EXPECT_FALSE(GetEncInt(std::string(20, '\xFF'), at, value));
}

TEST(Directory, Guid_IsStored_WithItsFirstGroupsAsNumbers) {
  EXPECT_EQ(GuidBytes("7C01FD10-7BAA-11D0-9E0C-00A0C922E6EC"),
            std::string("\x10\xFD\x01\x7C\xAA\x7B\xD0\x11\x9E\x0C\x00\xA0\xC9\x22\xE6\xEC", 16));
}

TEST(Directory, ManyEntries_FillSeveralChunks_EachOfItsExactSize) {
  std::vector<StorageEntry> entries;
  for (int i = 0; i < 1000; ++i) entries.push_back({"/page" + std::to_string(10000 + i) + ".htm", 1, 100ULL * i, 100});
  const auto chunks = BuildListing(entries, Format);
  EXPECT_GT(chunks.size(), 3u);
  std::size_t count = 0;
  for (const auto& chunk : chunks) {
    const auto bytes = FinishChunk(chunk, "PMGL" + std::string(16, '\0'), Format);
    EXPECT_EQ(bytes.size(), 0x1000u);
    EXPECT_EQ(GetWord(bytes, 0xFFE), chunk.count);
    EXPECT_EQ(chunk.quickReferences.size(), (chunk.count - 1) / 5);
    EXPECT_EQ(GetDword(bytes, 4), 0x1000 - 0x14 - chunk.entries.size());
    count += chunk.count;
  }
  EXPECT_EQ(count, entries.size());
}

TEST(Directory, NameThatFitsNoChunk_IsAFailureThatNamesIt) {
  try {
    (void)BuildListing({{"/" + std::string(5000, 'x'), 0, 0, 0}}, Format);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::BadFileName);
    EXPECT_NE(failure.Description().find("/xxx"), std::string::npos);
  }
}

}  // namespace
}  // namespace quillbook::compile
