#include "cli/Table.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <numeric>

#include "cli/DisplayWidth.h"

namespace quillbook::cli {
namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowest = 4;  ///< a column isn't cut below this

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

std::string Cell(std::string_view text) {
  std::string cell;
  cell.reserve(text.size());
  for (const char c : text) cell += IsControl(c) ? ' ' : c;
  return cell;
}

std::size_t Total(const std::vector<std::size_t>& widths) {
  return std::accumulate(widths.begin(), widths.end(), (widths.size() - 1) * kGap);
}

}  // namespace

void Table::Add(std::vector<std::string> cells) {
  for (auto& cell : cells) cell = Cell(cell);
  mRows.push_back(std::move(cells));
}

std::vector<std::size_t> Table::Widths(std::size_t columns) const {
  std::vector<std::size_t> widths(mRows.front().size());
  for (const auto& row : mRows)
    for (std::size_t at = 0; at < row.size(); ++at) widths[at] = std::max(widths[at], DisplayWidth(row[at]));
  while (columns != 0 && Total(widths) > columns) {
    const auto widest = std::max_element(widths.begin(), widths.end());
    if (*widest <= kNarrowest) break;
    --*widest;
  }
  return widths;
}

std::string Table::Text(std::size_t columns) const {
  const auto widths = Widths(columns);
  std::string text;
  for (const auto& row : mRows) {
    std::string line;
    for (std::size_t at = 0; at < row.size(); ++at) {
      const auto cell = CutToWidth(row[at], widths[at]);
      line += cell;
      line.append(widths[at] - DisplayWidth(cell) + kGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text.append(columns == 0 ? line : CutToWidth(line, columns)) += '\n';
  }
  return text;
}

bool OutputGoesToTerminal() {
  return isatty(STDOUT_FILENO) == 1;
}

std::size_t OutputWidth() {
  winsize size{};
  return OutputGoesToTerminal() && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::string ForTerminal(std::string_view text) {
  std::string shown;
  shown.reserve(text.size());
  for (const char c : text)
    if (c != '\r') shown += IsControl(c) && c != '\n' && c != '\t' ? '?' : c;
  return shown;
}

}  // namespace quillbook::cli
