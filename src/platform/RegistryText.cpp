#include "platform/RegistryText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

std::string_view TrimEnd(std::string_view text) {
  const auto last = text.find_last_not_of(" \t\r\n");
  return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

/// The key of a heading "[key]"; none for other lines.
std::optional<std::string_view> HeadingOf(std::string_view line) {
  line = TrimEnd(line);
  if (line.size() < 2 || line.front() != '[' || line.back() != ']') return std::nullopt;
  return line.substr(1, line.size() - 2);
}

std::string_view TrimKey(std::string_view key) {
  while (key.ends_with('\\')) key.remove_suffix(1);
  return key;
}

/// Reads a text in quotes and leaves in `rest` what follows it; none if the closing quote is missing.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
  std::string text;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"') {
      rest.remove_prefix(i + 1);
      return text;
    }
    if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
    text += rest[i];
  }
  return std::nullopt;
}

struct ValueLine {
  std::string name;
  std::string_view data;
};

/// The parts of a line `"name"=data` or `@=data`; none for other lines.
std::optional<ValueLine> SplitValue(std::string_view line) {
  std::optional<std::string> name;
  if (line.starts_with('"')) {
    name = TakeQuoted(line);
  } else if (line.starts_with('@')) {
    name.emplace();
    line.remove_prefix(1);
  }
  if (!name || !line.starts_with('=')) return std::nullopt;
  return ValueLine{std::move(*name), TrimEnd(line.substr(1))};
}

std::optional<std::string> NumberText(std::string_view digits) {
  std::uint32_t number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) return std::nullopt;
  return std::to_string(number);
}

/// Bytes in hexadecimal, separated by commas; white space and the "\" of continued lines don't count.
std::optional<std::string> BytesOf(std::string_view list) {
  std::string bytes;
  std::string digits;
  for (const char c : std::string(list) + ",") {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\\') continue;
    if (c != ',') {
      digits += c;
      continue;
    }
    unsigned byte = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (digits.empty() || digits.size() > 2 || result.ptr != digits.data() + digits.size()) return std::nullopt;
    bytes += static_cast<char>(byte);
    digits.clear();
  }
  return bytes;
}

std::optional<std::string> TextOfBytes(std::string_view list) {
  const auto bytes = BytesOf(list);
  if (!bytes) return std::nullopt;
  auto text = FromUtf16Bytes(*bytes);
  if (text.ends_with('\0')) text.pop_back();
  return text;
}

std::optional<std::string> ParseData(std::string_view data) {
  if (data.starts_with('"')) {
    auto text = TakeQuoted(data);
    return data.empty() ? text : std::nullopt;
  }
  constexpr std::string_view number = "dword:";
  if (StartsWithIgnoringCase(data, number)) return NumberText(data.substr(number.size()));
  for (const std::string_view text : {"hex(1):", "hex(2):"})
    if (StartsWithIgnoringCase(data, text)) return TextOfBytes(data.substr(text.size()));
  return std::nullopt;
}

bool HasControlCharacters(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

std::string Quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result += '"';
}

/// Text that can't stand on one line, as the bytes of its UTF-16 form with the NUL at its end.
std::string HexadecimalText(std::string_view text) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string result = "hex(1):";
  for (const char c : ToUtf16Bytes(text) + std::string(2, '\0')) {
    const auto byte = static_cast<unsigned char>(c);
    ((result += digits[byte >> 4]) += digits[byte & 0xF]) += ',';
  }
  result.pop_back();
  return result;
}

std::string HexadecimalNumber(std::string_view decimal) {
  std::uint32_t number = 0;
  const auto result = std::from_chars(decimal.data(), decimal.data() + decimal.size(), number);
  if (result.ec != std::errc() || result.ptr != decimal.data() + decimal.size())
    throw Failure(FailureNumber::TypeMismatch, "'" + std::string(decimal) + "' is no number of 32 bits");
  char digits[8];
  const std::string_view text(digits, std::to_chars(digits, digits + sizeof digits, number, 16).ptr);
  return "dword:" + std::string(sizeof digits - text.size(), '0') + std::string(text);
}

std::string FormatValue(std::string_view name, std::string_view value, RegistryStore::Type type) {
  const auto left = (name.empty() ? std::string("@") : Quoted(name)) + "=";
  if (type == RegistryStore::Type::Number) return left + HexadecimalNumber(value);
  return left + (HasControlCharacters(value) ? HexadecimalText(value) : Quoted(value));
}

void RequireName(std::string_view name) {
  if (HasControlCharacters(name)) throw Failure(FailureNumber::InvalidCall, "Control characters in a registry name");
}

std::string Decode(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16Bytes(bytes.substr(2));
  if (bytes.starts_with("\xFE\xFF")) return FromUtf16Bytes(bytes.substr(2), true);
  return std::string(bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes);
}

/// Whether `next` goes on with the byte row of `line`. A row that was cut off must not take in what follows.
bool IsContinued(std::string_view line, std::string_view next) {
  const auto value = SplitValue(line);
  return value && StartsWithIgnoringCase(value->data, "hex") && value->data.ends_with('\\') &&
         next.find_first_of("[\"@;") != 0;
}

}  // namespace

RegistryText::RegistryText(std::string_view bytes) {
  auto text = Decode(bytes);
  if (text.empty()) text = "Windows Registry Editor Version 5.00\n";
  if (text.find("\r\n") != std::string::npos) mLineEnd = "\r\n";
  if (text.ends_with('\n')) text.pop_back();
  if (mLineEnd.size() == 2 && text.ends_with('\r')) text.pop_back();
  for (const auto raw : Split(text, '\n')) {
    const auto line = mLineEnd.size() == 2 && raw.ends_with('\r') ? raw.substr(0, raw.size() - 1) : raw;
    if (!mLines.empty() && IsContinued(mLines.back(), line))
      mLines.back().append(mLineEnd).append(line);
    else
      mLines.emplace_back(line);
  }
}

template <class Visit>
void RegistryText::ForEachLine(std::string_view key, Visit visit) const {
  bool inside = false;
  for (std::size_t i = 0; i < mLines.size(); ++i) {
    if (const auto heading = HeadingOf(mLines[i])) inside = EqualsIgnoringCase(TrimKey(*heading), TrimKey(key));
    if (inside) visit(i);
  }
}

std::optional<std::size_t> RegistryText::FindValue(std::string_view key, std::string_view valueName) const {
  std::optional<std::size_t> found;
  ForEachLine(key, [&](std::size_t i) {
    const auto value = SplitValue(mLines[i]);
    if (value && EqualsIgnoringCase(value->name, valueName)) found = i;
  });
  return found;
}

std::optional<std::string> RegistryText::GetValue(std::string_view key, std::string_view valueName) const {
  const auto line = FindValue(key, valueName);
  return line ? ParseData(SplitValue(mLines[*line])->data) : std::nullopt;
}

bool RegistryText::HasKey(std::string_view key) const {
  bool found = false;
  ForEachLine(key, [&](std::size_t) { found = true; });
  return found;
}

bool RegistryText::CreateKey(std::string_view key) {
  RequireName(key);
  if (HasKey(key)) return false;
  if (!mLines.back().empty()) mLines.emplace_back();
  mLines.push_back("[" + std::string(TrimKey(key)) + "]");
  return true;
}

bool RegistryText::SetValue(std::string_view key, std::string_view valueName, std::string_view value,
                            RegistryStore::Type type) {
  RequireName(valueName);
  auto line = FormatValue(valueName, value, type);
  if (const auto found = FindValue(key, valueName)) {
    if (mLines[*found] == line) return false;
    mLines[*found] = std::move(line);
    return true;
  }
  CreateKey(key);
  mLines.insert(mLines.begin() + static_cast<std::ptrdiff_t>(PlaceForValue(key)), std::move(line));
  return true;
}

std::size_t RegistryText::PlaceForValue(std::string_view key) const {
  std::size_t place = 0;
  ForEachLine(key, [&](std::size_t i) {
    if (!TrimEnd(mLines[i]).empty()) place = i + 1;  // before the blank lines that part it from the next key
  });
  return place;
}

std::string RegistryText::Text() const {
  std::string text;
  for (const auto& line : mLines) text.append(line) += mLineEnd;
  return text;
}

}  // namespace quillbook
