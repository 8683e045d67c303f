// The binary keyword index of compiled HTML Help: $WWKeywordLinks and $WWAssociativeLinks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillbook::compile {

/// One line of the index: a keyword, or a sub-keyword with the keywords above it.
struct KeywordEntry {
  std::vector<std::string> path;      ///< from the outermost keyword, UTF-8
  std::vector<std::uint32_t> topics;  ///< numbers in the table of topics
  std::string seeAlso;                ///< another keyword, then there are no topics
};

/// The four streams of an index, to be stored under one folder.
struct KeywordStreams {
  std::string tree;        ///< "BTree"
  std::string data;        ///< "Data"
  std::string map;         ///< "Map"
  std::string properties;  ///< "Property"
};

/// A longer keyword, with the keywords above it, may not fit a block of the tree. Compilers of this format cut there.
inline constexpr std::size_t LongestKeyword = 200;

/// Puts entries in the order of the locale, sub-keywords below their keyword, ignoring case; entries of one path
/// become one with the targets of both. Keywords that have only sub-keywords are added where they are missing.
[[nodiscard]] std::vector<KeywordEntry> SortKeywords(std::vector<KeywordEntry> entries, std::uint32_t localeId);

/// What of an entry's own keyword, its topics and its reference is stored; less than there is where it doesn't fit.
struct StoredKeyword {
  std::string name;
  std::size_t topics = 0;
  std::string seeAlso;
};
[[nodiscard]] StoredKeyword StoredPartOf(const KeywordEntry& entry);

/// Lays out sorted entries. A keyword with more targets than a block of the tree holds keeps the first ones;
/// `truncated` counts such keywords. A path longer than `LongestKeyword` characters is cut.
///
/// Source of the format: the public description of the files inside compiled help.
[[nodiscard]] KeywordStreams BuildKeywordIndex(const std::vector<KeywordEntry>& entries, std::uint32_t codePage,
                                               std::uint32_t localeId, std::size_t& truncated);

}  // namespace quillbook::compile
