// Reads the tables inside compiled HTML Help.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/Sitemap.h"
#include "host/compile/StorageReader.h"

namespace quillbook::compile {

/// A line of a binary index.
struct IndexLine {
  int level = 0;
  std::string name;
  std::string seeAlso;
  std::vector<std::uint32_t> topics;
};

/// The tables of one file, of this system's making and of others'. Made for hostile input: what doesn't make sense
/// is left out and named among the problems.
class ChmTables {
 public:
  /// The reader outlives this. Text comes in UTF-8, decoded from `codePage`. After `mostMemory` bytes of what was asked
  /// for, nothing more comes: entries of a few bytes can all name one long text.
  ChmTables(const StorageReader& reader, int codePage, std::uint64_t mostMemory = ~std::uint64_t{0});

  struct Topic {
    std::string title;
    std::string local;
  };
  [[nodiscard]] std::size_t TopicCount() const noexcept { return mTopics.size() / 16; }
  /// Empty texts for a number that no topic has.
  [[nodiscard]] Topic TopicAt(std::uint32_t number);
  [[nodiscard]] std::string StringAt(std::uint32_t offset);
  /// Contents from #TOCIDX; no entries if there is none.
  [[nodiscard]] Sitemap ReadContents();
  /// The index from a folder's "BTree"; empty if there is none.
  [[nodiscard]] std::vector<IndexLine> ReadKeywords(const std::string& folder);

  /// True once `mostMemory` has been reached; that is a problem too.
  [[nodiscard]] bool IsExhausted() const noexcept { return mMemoryLeft == 0; }
  [[nodiscard]] const std::vector<std::string>& Problems() const noexcept { return mProblems; }

 private:
  [[nodiscard]] std::string Load(const std::string& name);
  [[nodiscard]] std::string TextAt(const std::string& table, std::size_t offset);
  void Charge(std::uint64_t bytes);
  [[nodiscard]] std::vector<std::size_t> ListingBlocks(const std::string& tree, std::size_t blockSize);
  void ReadListing(std::string_view block, std::vector<IndexLine>& lines);

  const StorageReader& mReader;
  int mCodePage;
  std::uint64_t mMemoryLeft;
  std::string mStrings;
  std::string mTopics;
  std::string mUrlTable;
  std::string mUrlStrings;
  std::vector<std::string> mProblems;
};

/// Records of #SYSTEM by code.
[[nodiscard]] std::map<int, std::string> ReadSystemRecords(const StorageReader& reader);

}  // namespace quillbook::compile
