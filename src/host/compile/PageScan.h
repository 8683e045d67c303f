// What a help compiler takes from a page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbook::compile {

/// An address in a page.
struct PageReference {
  std::string address;     ///< as it stands, references to characters resolved
  std::size_t offset = 0;  ///< of its tag, or of itself in a style sheet
};

struct PageFacts {
  std::string title;  ///< references resolved, runs of white space as one blank
  std::size_t titleOffset = 0;
  std::string text;  ///< what a reader sees of the body, references resolved
  std::vector<PageReference> references;
  std::vector<std::string> keywords;             ///< of the index, from objects in the page
  std::vector<std::string> associativeKeywords;  ///< for associative links
  std::vector<std::string_view> runs;            ///< pieces of the page that are text, as they stand
};

/// Goes through a page, which is UTF-8 and outlives the result.
[[nodiscard]] PageFacts ScanPage(std::string_view page);

/// Text of a page by its byte order mark, else its own statement of a charset, else `codePage`.
[[nodiscard]] std::string DecodePage(std::string bytes, int codePage);

}  // namespace quillbook::compile
