#include "host/compile/ChmSystem.h"

#include "host/compile/Bytes.h"
#include "host/compile/Names.h"
#include "host/compile/WordSplitter.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"
#include "quillbook/base/Variant.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t IndexHeaderSize = 0x1000;
constexpr std::size_t WindowRecord = 196;
constexpr std::string_view CompilerText = "HHA Version 4.74.8702";  // viewers ask for the version of the known compiler

enum SystemCode : std::uint16_t {
  ContentsFile = 0,
  IndexFile = 1,
  DefaultTopic = 2,
  Title = 3,
  Settings = 4,
  DefaultWindow = 5,
  Stem = 6,
  BinaryIndex = 7,
  Compiler = 9,
  TimeStamp = 10,
  BinaryContents = 11,
  InformationTypes = 12,
  HeaderCopy = 13,
  DefaultFont = 16,
};

class SystemRecords {
 public:
  explicit SystemRecords(const CodePageText& codePage) : mCodePage(codePage) { PutDword(mBytes, 3); }

  void Put(SystemCode code, std::string_view data) {
    PutWord(mBytes, code);
    PutWord(mBytes, data.size());
    mBytes += data;
  }
  void PutNumber(SystemCode code, std::uint32_t value) {
    std::string data;
    PutDword(data, value);
    Put(code, data);
  }
  void PutText(SystemCode code, std::string_view text) {
    if (!text.empty()) Put(code, mCodePage.Encode(text) + '\0');
  }
  [[nodiscard]] std::string Take() { return std::move(mBytes); }

 private:
  const CodePageText& mCodePage;
  std::string mBytes;
};

std::string SettingsRecord(const HelpProject& project, const SystemFacts& facts) {
  std::string data;
  PutDword(data, project.localeId);
  for (const bool flag : {IsDoubleByte(project.codePage), facts.fullText, facts.keywordLinks, facts.associativeLinks})
    PutDword(data, flag);
  // Seconds since 1970 in the units and from the epoch of the file times of Windows.
  constexpr std::uint64_t epoch = 116444736000000000ULL;
  PutQword(data, facts.timeStamp == 0 ? 0 : facts.timeStamp * 10000000ULL + epoch);
  PutQword(data, 0);
  return data;
}

std::uint32_t NumberOf(std::string_view text) {
  std::uint32_t value = 0;
  const bool hexadecimal = StartsWithIgnoringCase(text, "0x");
  for (const char c : text.substr(hexadecimal ? 2 : 0)) {
    const int digit = c >= '0' && c <= '9'                     ? c - '0'
                      : (c | 0x20) >= 'a' && (c | 0x20) <= 'f' ? (c | 0x20) - 'a' + 10
                                                               : 99;
    if (digit >= (hexadecimal ? 16 : 10)) break;
    value = value * (hexadecimal ? 16U : 10U) + static_cast<std::uint32_t>(digit);
  }
  return value;
}

std::string PropertyOf(const Sitemap& sitemap, std::string_view name) {
  for (const auto& [each, value] : sitemap.properties)
    if (EqualsIgnoringCase(each, name)) return value;
  return {};
}

/// One byte's record in the table of the word breaker.
struct ByteClass {
  std::uint16_t kind = 0;  ///< 0 ends a word, 1 lower case, 2 upper case, 3 digit
  std::uint16_t weight = 0;
  unsigned char folded = 0;
};

ByteClass ClassOf(unsigned char byte, int codePage, WordSplitter& splitter) {
  ByteClass result{0, byte, byte};
  if (IsDoubleByte(codePage) && byte >= 0x80) return {1, byte, byte};
  const auto text = DecodeCodePage(std::string(1, static_cast<char>(byte)), codePage);
  splitter.Split(text, [&](std::string_view word) {
    const auto lower = EncodeCodePage(word, codePage, Unmappable::QuestionMark);
    if (lower.size() != 1) return;
    result.folded = static_cast<unsigned char>(lower[0]);
    result.kind = result.folded == byte ? 1 : 2;
  });
  // The published tables leave room between letters of the basic alphabet and between digits.
  if (result.kind != 0 && byte >= '0' && byte <= '9')
    result = {3, static_cast<std::uint16_t>(0x460 + 10 * (byte - '0')), byte};
  else if (result.folded >= 'a' && result.folded <= 'z')
    result.weight = static_cast<std::uint16_t>(0x4CE + 20 * (result.folded - 'a'));
  return result;
}

}  // namespace

std::string BuildSystem(const HelpProject& project, const SystemFacts& facts, const std::string& header,
                        const CodePageText& codePage) {
  SystemRecords records(codePage);
  records.PutNumber(TimeStamp, facts.timeStamp);
  records.PutText(Compiler, CompilerText);
  records.Put(Settings, SettingsRecord(project, facts));
  records.PutText(DefaultTopic, facts.defaultTopic);
  records.PutText(Title, project.title);
  records.PutText(DefaultFont, project.defaultFont);
  records.PutText(Stem, LowerCase(facts.stem));
  records.PutText(ContentsFile, facts.contentsFile);
  records.PutText(IndexFile, facts.indexFile);
  records.PutText(DefaultWindow, facts.defaultWindow);
  if (facts.binaryIndex) records.PutNumber(BinaryIndex, UrlHash(codePage.Encode(facts.indexFile)));
  if (facts.binaryContents) records.PutNumber(BinaryContents, UrlHash(codePage.Encode(facts.contentsFile)));
  records.PutNumber(InformationTypes, 0);
  records.Put(HeaderCopy, header);
  return records.Take();
}

std::string BuildWindows(const HelpProject& project, ChmStrings& strings, const CodePageText& codePage) {
  std::string bytes;
  if (project.windows.empty()) return bytes;
  const auto text = [&](std::string_view value) { PutDword(bytes, strings.Add(codePage.Encode(value))); };
  const auto zeros = [&](std::size_t count) { bytes.append(count * 4, '\0'); };
  PutDword(bytes, project.windows.size());
  PutDword(bytes, WindowRecord);
  for (const auto& window : project.windows) {
    PutDword(bytes, WindowRecord);
    zeros(1);  // strings are no Unicode
    text(window.name);
    PutDword(bytes, window.valid);
    PutDword(bytes, window.navigationStyle);
    text(window.title);
    PutDword(bytes, window.style);
    PutDword(bytes, window.extendedStyle);
    for (const auto edge : window.rectangle) PutDword(bytes, static_cast<std::uint32_t>(edge));
    PutDword(bytes, window.showState);
    zeros(6);  // handles, which arise at run time
    PutDword(bytes, window.navigationWidth);
    zeros(4);  // place of the page, likewise
    for (const auto& file : {window.contentsFile, window.indexFile, window.defaultTopic, window.home}) text(file);
    PutDword(bytes, window.buttons);
    PutDword(bytes, window.navigationClosed);
    PutDword(bytes, window.defaultTab);
    PutDword(bytes, window.tabPosition);
    PutDword(bytes, window.notify);
    zeros(5 + 1);  // order of the tabs, length of the history
    for (const auto& jump : {window.jump1Text, window.jump2Text, window.jump1, window.jump2}) text(jump);
    zeros(4 + 1 + 1);  // smallest size, information types, texts of own tabs
  }
  return bytes;
}

std::string BuildIndexHeader(const HelpProject& project, const Sitemap& contents, std::size_t topics,
                             ChmStrings& strings, const CodePageText& codePage) {
  const auto text = [&](std::string_view name) { return strings.Add(codePage.Encode(PropertyOf(contents, name))); };
  std::string header = "T#SM";
  PutDword(header, 1);
  PutDword(header, 1);
  PutDword(header, topics);
  PutDword(header, 0);
  PutDword(header, text("ImageList"));
  PutDword(header, 0);
  PutDword(header, EqualsIgnoringCase(PropertyOf(contents, "ImageType"), "Folder"));
  PutDword(header, NumberOf(PropertyOf(contents, "Background")));
  PutDword(header, NumberOf(PropertyOf(contents, "Foreground")));
  PutDword(header, text("Font"));
  PutDword(header, NumberOf(PropertyOf(contents, "Window Styles")));
  PutDword(header, NumberOf(PropertyOf(contents, "ExWindow Styles")));
  PutDword(header, 0);
  PutDword(header, text("FrameName"));
  PutDword(header, text("WindowName"));
  PutDword(header, 0);  // information types
  PutDword(header, 0);
  PutDword(header, project.mergedFiles.size());
  PutDword(header, 0);
  constexpr std::size_t most = (IndexHeaderSize - 0x50) / 4;
  for (std::size_t i = 0; i < project.mergedFiles.size() && i < most; ++i)
    PutDword(header, strings.Add(codePage.Encode(project.mergedFiles[i])));
  header.resize(IndexHeaderSize);
  return header;
}

std::string BuildContextIds(const std::vector<ContextId>& ids, ChmStrings& strings, const CodePageText& codePage) {
  std::string bytes;
  PutDword(bytes, ids.size() * 8);
  for (const auto& id : ids) {
    PutDword(bytes, id.number);
    PutDword(bytes, strings.Add(codePage.Encode(id.page)));
  }
  return bytes;
}

std::string BuildWordBreaker(int codePage, std::uint32_t localeId) {
  constexpr std::size_t table = 256 * 10;
  constexpr std::string_view ligatures =
      "\xC6"
      "ae"
      "\xE6"
      "ae"
      "\xDF"
      "ss"
      "\x8C"
      "oe"
      "\x9C"
      "oe";
  std::string breaker = GuidBytes("4662DAAF-D393-11D0-9A56-00C04FB68BF7");
  PutDword(breaker, 0x04000000);
  PutDword(breaker, 0x0B);
  PutDword(breaker, static_cast<std::uint32_t>(codePage));
  PutDword(breaker, localeId);
  PutQword(breaker, 0);
  PutDword(breaker, 0x145555);
  PutDword(breaker, table + ligatures.size());
  PutWord(breaker, 0x100);
  PutDword(breaker, 0x30005);
  breaker.resize(80);
  WordSplitter splitter;
  for (int i = 0; i < 256; ++i) {
    const auto byte = static_cast<unsigned char>(i);
    const auto entry = ClassOf(byte, codePage, splitter);
    PutWord(breaker, entry.kind);
    PutWord(breaker, entry.weight);
    for (const auto part : {entry.folded, byte, byte, byte}) breaker += static_cast<char>(part);
    PutWord(breaker, 0);
  }
  breaker += ligatures;
  breaker += GuidBytes("8FA0D5A8-DEDF-11D0-9A61-00C04FB68BF7");  // the stemmer, which has no settings
  PutDword(breaker, 0x04000000);
  PutDword(breaker, 1);
  PutDword(breaker, static_cast<std::uint32_t>(codePage));
  PutDword(breaker, localeId);
  PutDword(breaker, 0);
  std::string order = GuidBytes("4662DAB0-D393-11D0-9A56-00C04FB68B66");
  PutDword(order, 666);
  PutDword(order, static_cast<std::uint32_t>(codePage));
  PutDword(order, localeId);
  PutDword(order, 10031);
  PutDword(order, 0);

  std::string file;
  PutDword(file, 0x04000000);
  PutDword(file, 2);
  for (std::size_t offset = 24; const auto* part : {&breaker, &order}) {
    PutDword(file, offset);
    PutDword(file, part->size());
    offset += part->size();
  }
  return file + breaker + order;
}

}  // namespace quillbook::compile
