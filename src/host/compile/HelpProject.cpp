#include "host/compile/HelpProject.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"
#include "quillbook/base/Variant.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// A decimal or, after "0x", hexadecimal number at the beginning of a text; none without a digit.
std::optional<std::uint32_t> ReadNumber(std::string_view text) {
  text = Trim(text);
  const bool negative = text.starts_with("-");
  if (negative) text.remove_prefix(1);
  const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == 'x';
  if (hexadecimal) text.remove_prefix(2);
  std::uint64_t value = 0;
  std::size_t digits = 0;
  for (const char c : text) {
    const int digit = c >= '0' && c <= '9'                     ? c - '0'
                      : (c | 0x20) >= 'a' && (c | 0x20) <= 'f' ? (c | 0x20) - 'a' + 10
                                                               : 99;
    if (digit >= (hexadecimal ? 16 : 10)) break;
    value = std::min<std::uint64_t>(value * (hexadecimal ? 16 : 10) + static_cast<std::uint64_t>(digit), 0xFFFFFFFF);
    ++digits;
  }
  if (digits == 0) return {};
  return static_cast<std::uint32_t>(negative ? 0 - value : value);
}

bool IsYes(std::string_view value) {
  return EqualsIgnoringCase(value, "Yes") || value == "1";
}

/// Fields between commas; double quotes protect commas, square brackets too.
std::vector<std::string> WindowFields(std::string_view text) {
  std::vector<std::string> fields(1);
  bool quoted = false;
  int brackets = 0;
  for (const char c : text) {
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ',' && !quoted && brackets == 0) {
      fields.emplace_back();
    } else {
      if (!quoted) brackets += c == '[' ? 1 : c == ']' ? -1 : 0;
      fields.back() += c;
    }
  }
  return fields;
}

HelpWindow ParseWindow(std::string_view name, std::string_view definition, int line) {
  HelpWindow window;
  window.name = name;
  window.line = line;
  auto fields = WindowFields(definition);
  fields.resize(20);
  std::string* const texts[] = {&window.title,        &window.contentsFile, &window.indexFile,
                                &window.defaultTopic, &window.home,         &window.jump1,
                                &window.jump1Text,    &window.jump2,        &window.jump2Text};
  for (std::size_t i = 0; i < std::size(texts); ++i) *texts[i] = Trim(fields[i]);
  // Which bit says that a field was given, by the viewer's public interface.
  const auto number = [&](std::size_t field, std::uint32_t& target, std::uint32_t bit) {
    if (const auto value = ReadNumber(fields[field])) {
      target = *value;
      window.valid |= bit;
    }
  };
  number(9, window.navigationStyle, 0x2);
  number(10, window.navigationWidth, 0x20);
  number(11, window.buttons, 0x100);
  auto rectangle = std::string_view(fields[12]);
  if (rectangle.starts_with("[")) {
    const auto places = Split(rectangle.substr(1, rectangle.find(']') - 1), ',');
    for (std::size_t i = 0; i < 4 && i < places.size(); ++i)
      window.rectangle[i] = static_cast<std::int32_t>(ReadNumber(places[i]).value_or(0));
    window.valid |= 0x10;
  }
  number(13, window.style, 0x4);
  number(14, window.extendedStyle, 0x8);
  number(15, window.showState, 0x40);
  number(16, window.navigationClosed, 0x200);
  number(17, window.defaultTab, 0x2000);
  number(18, window.tabPosition, 0x400);
  std::uint32_t unused = 0;
  number(19, window.notify, unused);
  return window;
}

/// Reads one project file and the header files that it includes.
class Reader {
 public:
  Reader(HelpProject& project, MessageList& messages) : mProject(project), mMessages(messages) {}

  void Read() {
    const auto bytes = Platform::Current().Files().ReadFile(mProject.file);
    FindLanguage(bytes);
    ReadLines(DecodeHelpText(bytes, mProject.codePage), mProject.file);
    MatchContextIds();
  }

 private:
  enum class Section { None, Options, Windows, Files, Alias, Map, Merge, Ignored, Unknown };

  /// The language decides how the rest is read, wherever in the file it stands.
  void FindLanguage(std::string_view bytes) {
    int number = 0;
    for (const auto line : Split(bytes, '\n')) {
      ++number;
      const auto equals = line.find('=');
      if (equals == std::string_view::npos || !EqualsIgnoringCase(Trim(line.substr(0, equals)), "Language")) continue;
      mProject.languageLine = number;
      TakeLanguage(Trim(line.substr(equals + 1)));
      break;
    }
  }

  void TakeLanguage(std::string_view value) {
    const auto id = ReadNumber(value);
    if (const auto locale = id ? Locale::FromID(static_cast<std::int32_t>(*id)) : Ref<Locale>()) {
      mProject.localeId = *id;
      mProject.codePage = locale->CodePage();
    } else {
      mMessages.Warning("HC1013", "Language '" + std::string(value) + "' is not known; English is taken instead",
                        mProject.file, mProject.languageLine);
    }
  }

  void ReadLines(const std::string& text, const std::string& file) {
    mFile = file;
    mLine = 0;
    for (const auto raw : Split(text, '\n')) {
      ++mLine;
      const auto line = Trim(raw);
      if (line.empty() || line.front() == ';') continue;
      if (line.front() == '[' && line.back() == ']')
        BeginSection(line.substr(1, line.size() - 2));
      else
        TakeLine(line);
    }
  }

  void BeginSection(std::string_view name) {
    static const std::map<std::string, Section, std::less<>> sections{
        {"options", Section::Options},   {"windows", Section::Windows},
        {"files", Section::Files},       {"alias", Section::Alias},
        {"map", Section::Map},           {"merge files", Section::Merge},
        {"infotypes", Section::Ignored}, {"text popups", Section::Ignored},
        {"subsets", Section::Ignored}};
    const auto found = sections.find(LowerCase(name));
    mSection = found == sections.end() ? Section::Unknown : found->second;
    if (mSection == Section::Unknown)
      mMessages.Warning("HC1002", "Section [" + std::string(name) + "] is not known and is passed over", mFile, mLine);
  }

  void TakeLine(std::string_view line) {
    switch (mSection) {
      case Section::Options: return TakeOption(line);
      case Section::Windows: return TakeWindow(line);
      case Section::Files: mProject.files.push_back({std::string(line), mLine}); return;
      case Section::Alias: return TakeAlias(line);
      case Section::Map: return TakeMap(line);
      case Section::Merge: mProject.mergedFiles.emplace_back(line); return;
      case Section::None:
        mMessages.Warning("HC1001", "A line before the first section is passed over", mFile, mLine);
        return;
      default: return;
    }
  }

  void TakeOption(std::string_view line) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) {
      mMessages.Warning("HC1003", "An option has the form 'name=value'; the line is passed over", mFile, mLine);
      return;
    }
    const auto key = LowerCase(Trim(line.substr(0, equals)));
    const std::string value(Trim(line.substr(equals + 1)));
    if (TakeTextOption(key, value) || TakeSwitch(key, value)) return;
    static const std::vector<std::string_view> unused{"compatibility",
                                                      "language",
                                                      "auto toc",
                                                      "create chi file",
                                                      "enhanced decompilation",
                                                      "flat",
                                                      "error log file",
                                                      "display compile notes",
                                                      "display compile progress",
                                                      "sample list file",
                                                      "sample staging path",
                                                      "tmpdir",
                                                      "prefix",
                                                      "ignore",
                                                      "citation",
                                                      "copyright",
                                                      "compress",
                                                      "custom tab",
                                                      "title font",
                                                      "default frame"};
    if (std::find(unused.begin(), unused.end(), key) == unused.end())
      mMessages.Warning("HC1004",
                        "Option '" + std::string(Trim(line.substr(0, equals))) + "' is not known and is passed over",
                        mFile, mLine);
  }

  bool TakeTextOption(const std::string& key, const std::string& value) {
    struct Option {
      std::string HelpProject::*text;
      int HelpProject::*line;
    };
    static const std::map<std::string, Option, std::less<>> options{
        {"compiled file", {&HelpProject::compiledFile, nullptr}},
        {"contents file", {&HelpProject::contentsFile, &HelpProject::contentsLine}},
        {"index file", {&HelpProject::indexFile, &HelpProject::indexLine}},
        {"default topic", {&HelpProject::defaultTopic, &HelpProject::defaultTopicLine}},
        {"default window", {&HelpProject::defaultWindow, nullptr}},
        {"title", {&HelpProject::title, &HelpProject::titleLine}},
        {"default font", {&HelpProject::defaultFont, nullptr}},
        {"full text search stop list file", {&HelpProject::stopListFile, &HelpProject::stopListLine}}};
    const auto found = options.find(key);
    if (found == options.end()) return false;
    mProject.*(found->second.text) = value;
    if (found->second.line) mProject.*(found->second.line) = mLine;
    return true;
  }

  bool TakeSwitch(const std::string& key, const std::string& value) {
    static const std::map<std::string, bool HelpProject::*, std::less<>> switches{
        {"full-text search", &HelpProject::fullTextSearch},
        {"binary toc", &HelpProject::binaryContents},
        {"binary index", &HelpProject::binaryIndex},
        {"auto index", &HelpProject::autoIndex}};
    const auto found = switches.find(key);
    if (found == switches.end()) return false;
    mProject.*(found->second) = IsYes(value);
    return true;
  }

  void TakeWindow(std::string_view line) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) {
      mMessages.Warning("HC1005", "A window has the form 'name=definition'; the line is passed over", mFile, mLine);
      return;
    }
    mProject.windows.push_back(ParseWindow(Trim(line.substr(0, equals)), line.substr(equals + 1), mLine));
  }

  void TakeAlias(std::string_view line) {
    if (TakeInclude(line)) return;
    line = Trim(line.substr(0, line.find(';')));
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) {
      mMessages.Warning("HC1006", "An alias has the form 'SYMBOL=page'; the line is passed over", mFile, mLine);
      return;
    }
    mAliases.insert_or_assign(std::string(Trim(line.substr(0, equals))),
                              Place{std::string(Trim(line.substr(equals + 1))), mFile, mLine});
  }

  void TakeMap(std::string_view line) {
    if (TakeInclude(line)) return;
    if (!line.starts_with("#define")) return;  // header files hold other things too
    const auto rest = Trim(line.substr(7));
    const auto blank = rest.find_first_of(" \t");
    if (blank == std::string_view::npos) return;
    const auto number = ReadNumber(rest.substr(blank));
    const std::string symbol(rest.substr(0, blank));
    if (!number) {
      mMessages.Warning("HC1007", "Symbol '" + symbol + "' has no number and is passed over", mFile, mLine);
      return;
    }
    mNumbers.insert_or_assign(symbol, Number{*number, mFile, mLine});
  }

  /// A line `#include name`: the header's lines belong to the section that includes it.
  bool TakeInclude(std::string_view line) {
    if (!line.starts_with("#include")) return false;
    auto name = std::string(Trim(line.substr(8)));
    std::erase_if(name, [](char c) { return c == '"' || c == '<' || c == '>'; });
    std::replace(name.begin(), name.end(), '\\', '/');
    constexpr int deepest = 16;
    if (mIncludes >= deepest) {
      mMessages.Error("HC1009", "Header files include each other without end", mFile, mLine);
      return true;
    }
    const auto file = mFile;
    const auto number = mLine;
    try {
      const auto path = name.starts_with('/') ? name : mProject.folder + name;
      const auto text = DecodeHelpText(Platform::Current().Files().ReadFile(path), mProject.codePage);
      ++mIncludes;
      ReadLines(text, path);
      --mIncludes;
    } catch (const Failure& failure) {
      mMessages.Error("HC1008", "Header file '" + name + "' can't be read: " + failure.Description(), file, number);
    }
    mFile = file;
    mLine = number;
    return true;
  }

  void MatchContextIds() {
    std::map<std::uint32_t, std::string> taken;
    for (const auto& [symbol, alias] : mAliases) {
      const auto number = mNumbers.find(symbol);
      if (number == mNumbers.end()) {
        mMessages.Warning("HC1010", "Alias '" + symbol + "' has no number in [MAP]", alias.file, alias.line);
        continue;
      }
      const auto [known, added] = taken.emplace(number->second.value, symbol);
      if (added)
        mProject.contextIds.push_back({number->second.value, alias.text, alias.file, alias.line});
      else
        mMessages.Warning("HC1011",
                          "'" + symbol + "' has the same number as '" + known->second + "' and is passed over",
                          number->second.file, number->second.line);
    }
    for (const auto& [symbol, number] : mNumbers)
      if (!mAliases.contains(symbol))
        mMessages.Add(
            {MessageLevel::Note, "HC1012", "'" + symbol + "' has no page in [ALIAS]", number.file, number.line, 0});
    std::sort(mProject.contextIds.begin(), mProject.contextIds.end(),
              [](const ContextId& left, const ContextId& right) { return left.number < right.number; });
  }

  struct Place {
    std::string text, file;
    int line;
  };
  struct Number {
    std::uint32_t value;
    std::string file;
    int line;
  };

  HelpProject& mProject;
  MessageList& mMessages;
  Section mSection = Section::None;
  std::string mFile;
  int mLine = 0;
  int mIncludes = 0;
  std::map<std::string, Place> mAliases;
  std::map<std::string, Number> mNumbers;
};

}  // namespace

std::string DecodeHelpText(std::string bytes, int codePage) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16Bytes(std::string_view(bytes).substr(2));
  if (codePage == CodePageUtf8 || !IsKnownCodePage(codePage)) return bytes;
  return DecodeCodePage(bytes, codePage);
}

HelpProject ReadHelpProject(const std::string& path, MessageList& messages) {
  HelpProject project;
  project.file = path;
  const auto slash = path.rfind('/');
  project.folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
  Reader(project, messages).Read();
  if (project.compiledFile.empty()) {
    const auto name = path.substr(project.folder.size());
    project.compiledFile = name.substr(0, name.rfind('.')) + ".chm";
  }
  return project;
}

}  // namespace quillbook::compile
