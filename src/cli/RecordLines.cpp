#include "cli/RecordLines.h"

#include "cli/TagScanner.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {

RecordLines::RecordLines(std::string_view text) {
  TagScanner tags(text);
  while (tags.Next()) {
    const bool starts = tags.What() == TagScanner::Kind::Start || tags.What() == TagScanner::Kind::Empty;
    const auto key = starts ? tags.Attribute("Key") : std::string_view();
    if (!key.empty()) mLines.try_emplace(LowerCase(tags.Name()) + " " + FoldCase(key), tags.Line());
  }
}

std::size_t RecordLines::Find(std::string_view element, std::string_view key) const {
  const auto found = mLines.find(std::string(element) + " " + FoldCase(key));
  return found == mLines.end() ? 0 : found->second;
}

}  // namespace quillbook::cli
