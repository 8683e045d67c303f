#include "quillbook/host/CompiledHelp.h"

#include <algorithm>

#include "host/compile/Bytes.h"
#include "host/compile/ChmTables.h"
#include "host/compile/FileBytes.h"
#include "host/compile/Help2Sources.h"
#include "host/compile/HelpProject.h"
#include "host/compile/Names.h"
#include "host/compile/StorageReader.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/ConfinedFolder.h"

namespace quillbook {

using namespace compile;

namespace {

constexpr std::uint64_t LongestSource = 32U << 20;
constexpr std::uint64_t MemoryForTables = 128U << 20;

bool IsFolder(std::string_view name) {
  return name.ends_with('/');
}

/// Streams of the container and tables for the viewer, which no project holds.
bool IsTable(std::string_view name) {
  return name.starts_with("/#") || name.starts_with("/$") || name.starts_with("::");
}

std::string_view WithoutSlash(std::string_view name) {
  return name.starts_with('/') ? name.substr(1) : name;
}

int CodePageOf(std::uint32_t localeId) {
  const auto locale = Locale::FromID(static_cast<std::int32_t>(localeId));
  return locale ? locale->CodePage() : CodePageWindows1252;
}

}  // namespace

struct CompiledHelp::State {
  explicit State(const std::string& path) : source(path), reader(source), localeId(reader.LocaleId()) {
    for (const auto& entry : reader.Entries())
      if (!IsFolder(entry.name) && !entry.name.starts_with("::"))
        files.push_back({std::string(WithoutSlash(entry.name)), entry.length, IsTable(entry.name)});
    problems = reader.Problems();
    if (reader.GetFormat() == StorageReader::Format::HtmlHelp1)
      ReadChm();
    else
      ReadHxs();
    CheckPages();
  }

  void ReadChm();
  void ReadChmContents(ChmTables& tables, const std::string& name);
  void ReadChmIndex(ChmTables& tables, const std::string& name);
  void ReadHxs();
  void TakeContents(const Sitemap& sitemap);
  void TakeIndex(const Sitemap& sitemap);
  void CheckPages();
  [[nodiscard]] std::string Source(const std::string& name);

  FileSource source;
  StorageReader reader;
  std::uint32_t localeId;
  int codePage = CodePageWindows1252;
  bool fullText = false;
  std::string title;
  std::string defaultTopic;
  std::vector<File> files;
  std::vector<ContentsEntry> contents;
  std::vector<IndexEntry> index;
  std::vector<std::string> problems;
};

/// Bytes of a file inside; empty, with a problem said, where it can't be read.
std::string CompiledHelp::State::Source(const std::string& name) {
  const auto* entry = reader.Find("/" + std::string(WithoutSlash(name)));
  try {
    if (entry) return reader.ReadAll(*entry, LongestSource);
    problems.push_back("there is no '" + name + "', though it is named");
  } catch (const Failure& failure) {
    problems.push_back(name + ": " + failure.Description());
  }
  return {};
}

void CompiledHelp::State::ReadChm() {
  const auto records = ReadSystemRecords(reader);
  if (records.empty()) problems.emplace_back("there is no #SYSTEM, so nothing tells what the file holds");
  const auto found = records.find(4);
  if (found != records.end()) {
    localeId = GetDword(found->second, 0);
    fullText = GetDword(found->second, 8) != 0;
  }
  codePage = CodePageOf(localeId);
  const auto text = [&](int code) {
    const auto record = records.find(code);
    return record == records.end() ? std::string()
                                   : DecodeHelpText(record->second.substr(0, record->second.find('\0')), codePage);
  };
  title = text(3);
  defaultTopic = text(2);
  ChmTables tables(reader, codePage, MemoryForTables);
  ReadChmContents(tables, text(0));
  ReadChmIndex(tables, text(1));
  problems.insert(problems.end(), tables.Problems().begin(), tables.Problems().end());
}

void CompiledHelp::State::ReadChmContents(ChmTables& tables, const std::string& name) {
  if (!name.empty()) TakeContents(ParseSitemap(DecodeHelpText(Source(name), codePage)));
  if (contents.empty()) TakeContents(tables.ReadContents());
}

void CompiledHelp::State::ReadChmIndex(ChmTables& tables, const std::string& name) {
  if (!name.empty()) TakeIndex(ParseSitemap(DecodeHelpText(Source(name), codePage)));
  if (!index.empty()) return;
  for (const auto& line : tables.ReadKeywords("/$WWKeywordLinks/")) {
    auto& entry = index.emplace_back(IndexEntry{line.level, line.name, line.seeAlso, {}});
    for (const auto number : line.topics) {
      if (tables.IsExhausted()) return;
      auto topic = tables.TopicAt(number);
      entry.targets.push_back({std::move(topic.title), std::move(topic.local)});
    }
  }
}

void CompiledHelp::State::ReadHxs() {
  codePage = CodePageUtf8;
  const auto collection = std::find_if(files.begin(), files.end(),
                                       [](const File& file) { return EndsWithIgnoringCase(file.name, ".HxC"); });
  if (collection == files.end()) {
    problems.emplace_back("there is no collection inside, so nothing tells what the file holds");
    return;
  }
  const auto parsed = ParseCollection(DecodeXml(Source(collection->name)));
  title = parsed.title;
  localeId = parsed.localeId;
  for (const auto& file : parsed.contents) TakeContents(ParseHelp2Contents(DecodeXml(Source(file.path))));
  for (const auto& file : parsed.indexes) {
    std::string name;
    const auto read = ParseHelp2Index(DecodeXml(Source(file.path)), name);
    if (name == "K") TakeIndex(read);
    if (name != "NamedUrlIndex") continue;
    for (const auto& entry : read.entries)
      if ((entry.name == "DefaultPage" || entry.name == "HomePage") && !entry.targets.empty() && defaultTopic.empty())
        defaultTopic = entry.targets.front().local;
  }
}

void CompiledHelp::State::TakeContents(const Sitemap& sitemap) {
  for (const auto& entry : sitemap.entries)
    contents.push_back({entry.level, entry.name, entry.targets.empty() ? entry.url : entry.targets.front().local});
}

void CompiledHelp::State::TakeIndex(const Sitemap& sitemap) {
  for (const auto& entry : sitemap.entries) {
    auto& taken = index.emplace_back(IndexEntry{entry.level, entry.name, entry.seeAlso, {}});
    for (const auto& target : entry.targets) taken.targets.push_back({target.title, target.local});
  }
}

/// Pages that contents and index lead to and that aren't there. Each is told once.
void CompiledHelp::State::CheckPages() {
  std::vector<std::string> missing;
  const auto check = [&](std::string page) {
    page = page.substr(0, page.find_first_of("#?"));
    std::replace(page.begin(), page.end(), '\\', '/');
    if (page.empty() || page.find(':') != std::string::npos) return;
    if (!reader.Find("/" + std::string(WithoutSlash(page)))) missing.push_back(page);
  };
  check(defaultTopic);
  for (const auto& entry : contents) check(entry.page);
  for (const auto& entry : index)
    for (const auto& target : entry.targets) check(target.page);
  std::sort(missing.begin(), missing.end());
  missing.erase(std::unique(missing.begin(), missing.end()), missing.end());
  for (const auto& page : missing)
    problems.push_back("there is no page '" + page + "', though contents or index name it");
}

CompiledHelp::CompiledHelp(const std::string& path) : mState(std::make_unique<State>(path)) {}
CompiledHelp::~CompiledHelp() = default;

CompiledHelp::Format CompiledHelp::GetFormat() const noexcept {
  return mState->reader.GetFormat() == StorageReader::Format::HtmlHelp1 ? Format::HtmlHelp1 : Format::Help2;
}
const std::string& CompiledHelp::Title() const noexcept {
  return mState->title;
}
std::uint32_t CompiledHelp::LocaleId() const noexcept {
  return mState->localeId;
}
int CompiledHelp::CodePage() const noexcept {
  return mState->codePage;
}
const std::string& CompiledHelp::DefaultTopic() const noexcept {
  return mState->defaultTopic;
}
bool CompiledHelp::HasFullTextSearch() const noexcept {
  return mState->fullText;
}
const std::vector<CompiledHelp::File>& CompiledHelp::Files() const noexcept {
  return mState->files;
}
const std::vector<CompiledHelp::ContentsEntry>& CompiledHelp::Contents() const noexcept {
  return mState->contents;
}
const std::vector<CompiledHelp::IndexEntry>& CompiledHelp::Index() const noexcept {
  return mState->index;
}
const std::vector<std::string>& CompiledHelp::Problems() const noexcept {
  return mState->problems;
}

std::size_t CompiledHelp::Extract(const std::string& folder) const {
  const auto& reader = mState->reader;
  // Files that share their bytes could fill a disk from next to nothing.
  auto left = reader.UncompressedLength() + mState->source.Size();
  for (const auto& entry : reader.Entries()) {
    if (IsTable(entry.name)) continue;
    if (entry.length > left)
      throw Failure(FailureNumber::InvalidCall, "The compiled help file is damaged: its files overlap");
    left -= entry.length;
  }
  ConfinedFolder target(folder);
  std::size_t count = 0;
  for (const auto& entry : reader.Entries()) {
    if (IsTable(entry.name) || IsFolder(entry.name)) continue;
    const auto writer = target.CreateFile(WithoutSlash(entry.name));
    reader.Read(entry, [&](std::string_view piece) { writer->Write(piece); });
    writer->Close();
    ++count;
  }
  return count;
}

}  // namespace quillbook
