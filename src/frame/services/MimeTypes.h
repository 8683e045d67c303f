// Types of files, from the desktop's shared database.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbook::detail {

/// Knows the type of a file by its name. Source of the format: the Shared MIME-info Database specification of
/// freedesktop.org, `mime/globs2` and `mime/<type>.xml` below the data folders. Both are what the desktop's own tools
/// make of its packages.
class MimeTypes {
 public:
  /// `dataFolders` are native, the user's own first.
  explicit MimeTypes(std::vector<std::string> dataFolders);

  /// The type of a file with this name, without folder, such as "text/html". Of several patterns that match, the one
  /// with the greatest weight counts, then the longest one. Empty if none matches.
  [[nodiscard]] std::string TypeOf(std::string_view name) const;

  struct Description {
    std::string comment;             ///< what a reader calls the type; empty if nothing is known of it
    std::vector<std::string> icons;  ///< names of icons, the most fitting one first
  };
  /// `languages` are locale names, the most wanted one first; what is in none of them comes in English.
  [[nodiscard]] Description Describe(const std::string& type, const std::vector<std::string>& languages) const;

 private:
  struct Pattern {
    std::string type;
    std::string text;
    int weight = 0;
    bool regardsCase = false;
    int folder = 0;  ///< the higher, the more it counts
  };
  using Patterns = std::unordered_map<std::string, std::vector<Pattern>>;

  void Read(const std::string& folder, int rank, std::vector<Pattern>& patterns);
  void Add(Pattern pattern);

  std::vector<std::string> mFolders;
  Patterns mNames;                  ///< patterns without wildcards, by their folded text
  Patterns mEndings;                ///< "*" and an ending, by the folded ending
  std::vector<Pattern> mWildcards;  ///< all others
};

}  // namespace quillbook::detail
