// The examples of a page of documentation.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook::support {

struct DocumentedExample {
  std::string text;
  std::string data;
  std::string result;
  int line = 0;  ///< where the page shows it
};

/// The examples of a page in Markdown: a fenced block in `language`, perhaps one "data", and one "result".
[[nodiscard]] inline std::vector<DocumentedExample> ReadExamples(const std::string& file, std::string_view language) {
  std::ifstream stream(file);
  if (!stream) throw std::runtime_error("cannot read " + file);
  std::vector<DocumentedExample> examples;
  std::string fence;
  std::string block;
  bool inside = false;
  bool ours = false;  // the last example is in this language
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    if (!line.starts_with("```")) {
      if (inside) block += line + "\n";
    } else if (!inside) {
      inside = true;
      fence = line.substr(3);
      block.clear();
      if (fence == language) examples.push_back({"", "", "", number});
      if (fence != "data" && fence != "result") ours = fence == language;
    } else {
      inside = false;
      if (!block.empty()) block.pop_back();
      if (!ours) continue;
      if (fence == language) examples.back().text = block;
      if (fence == "data") examples.back().data = block;
      if (fence == "result") examples.back().result = block;
    }
  }
  return examples;
}

}  // namespace quillbook::support
