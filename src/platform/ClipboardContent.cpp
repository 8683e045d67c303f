#include "platform/ClipboardContent.h"

#include <charconv>
#include <optional>

namespace quillbook::detail {
namespace {

// The first line, then for each format a line with the sizes of its name and of its bytes, followed by both.
constexpr std::string_view firstLine = "Quillbook clipboard 1\n";

/// Takes pieces from the front of the bytes.
class Pieces {
 public:
  explicit Pieces(std::string_view bytes) : mRest(bytes) {}

  [[nodiscard]] bool AtEnd() const noexcept { return mRest.empty(); }
  std::optional<std::string> Take(std::size_t size) {
    if (size > mRest.size()) return std::nullopt;
    std::string piece(mRest.substr(0, size));
    mRest.remove_prefix(size);
    return piece;
  }
  /// A decimal number and the character behind it.
  std::optional<std::size_t> TakeNumber(char end) {
    std::size_t number = 0;
    const auto* const last = mRest.data() + mRest.size();
    const auto [behind, error] = std::from_chars(mRest.data(), last, number);
    if (error != std::errc() || behind == last || *behind != end) return std::nullopt;
    mRest.remove_prefix(static_cast<std::size_t>(behind - mRest.data()) + 1);
    return number;
  }

 private:
  std::string_view mRest;
};

}  // namespace

std::string EncodeClipboard(const ClipboardContent& content) {
  std::string result(firstLine);
  for (const auto& [name, bytes] : content)
    result.append(std::to_string(name.size()))
        .append(" ")
        .append(std::to_string(bytes.size()))
        .append("\n")
        .append(name)
        .append(bytes);
  return result;
}

ClipboardContent DecodeClipboard(std::string_view bytes) {
  if (!bytes.starts_with(firstLine)) return {};
  ClipboardContent content;
  Pieces pieces(bytes.substr(firstLine.size()));
  while (!pieces.AtEnd()) {
    const auto nameSize = pieces.TakeNumber(' ');
    const auto valueSize = nameSize ? pieces.TakeNumber('\n') : std::nullopt;
    auto name = valueSize ? pieces.Take(*nameSize) : std::nullopt;
    auto value = name ? pieces.Take(*valueSize) : std::nullopt;
    if (!value) return {};
    content.insert_or_assign(std::move(*name), std::move(*value));
  }
  return content;
}

}  // namespace quillbook::detail
