// Texts of project files without what differs from save to save.
#pragma once

#include <string>

namespace quillbook {

/// The text with the value of `SaveDateTime` taken out.
inline std::string MaskSaveDateTime(std::string text) {
  const std::string name = " SaveDateTime=\"";
  if (const auto at = text.find(name); at != std::string::npos) {
    const auto start = at + name.size();
    text.erase(start, text.find('"', start) - start);
  }
  return text;
}

}  // namespace quillbook
