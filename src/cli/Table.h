// Tables on standard output.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook::cli {

/// Rows of cells in aligned columns.
class Table {
 public:
  explicit Table(std::vector<std::string> captions) { Add(std::move(captions)); }

  /// As many cells as there are captions. Line breaks and other control characters become blanks.
  void Add(std::vector<std::string> cells);
  /// One line a row, no wider than `columns`; 0 is any width.
  [[nodiscard]] std::string Text(std::size_t columns) const;

 private:
  [[nodiscard]] std::vector<std::size_t> Widths(std::size_t columns) const;

  std::vector<std::vector<std::string>> mRows;
};

/// True if a person sees standard output.
[[nodiscard]] bool OutputGoesToTerminal();
/// Columns of the terminal that standard output goes to; 0 where it goes elsewhere.
[[nodiscard]] std::size_t OutputWidth();
/// Without control characters other than line break and tabulator, which a terminal would obey.
[[nodiscard]] std::string ForTerminal(std::string_view text);

}  // namespace quillbook::cli
