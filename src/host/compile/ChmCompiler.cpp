#include "host/compile/ChmCompiler.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <utility>

#include "host/compile/ChmCheck.h"
#include "host/compile/ChmSystem.h"
#include "host/compile/CodePageText.h"
#include "host/compile/ContentsIndex.h"
#include "host/compile/EncodingAudit.h"
#include "host/compile/FullTextIndex.h"
#include "host/compile/HelpCompile.h"
#include "host/compile/KeywordIndex.h"
#include "host/compile/WordSplitter.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

/// A contents or index file.
struct SitemapFile {
  std::string path;  ///< as stored; empty if there is none
  std::string nativePath;
  Sitemap sitemap;
};

/// One compile of HTML Help 1.x.
class ChmCompile final : public HelpCompile {
 public:
  explicit ChmCompile(const CompileOptions& options) : HelpCompile(options, StorageReader::Format::HtmlHelp1) {}

 private:
  using IfMissing = ProjectFiles::IfMissing;

  ProjectFacts ReadProject() override;
  void CollectFiles() override;
  void ReadSitemaps();
  SitemapFile ReadSitemap(const std::string& name, int line, std::string_view what);
  void ResolveTargets(SitemapFile& file);
  void ReadStopList();
  void CollectNamedFiles();
  std::string AddNamed(const std::string& name, const FileMention& mention, IfMissing level);
  void AuditNames();
  void TakePage(const std::string& path, std::string_view page, const PageFacts& facts) override;
  void IndexWords(std::uint32_t topic, const PageFacts& facts);
  void StoreTables() override;
  void StoreContents();
  void StoreKeywords();
  void StoreKeywordStreams(const std::string& folder, std::vector<KeywordEntry>& entries);
  void StoreFullText();
  void StoreSystem();
  void AddTable(std::string_view name, std::string_view bytes) { Output().AddTable(name, bytes); }
  void CheckTables(const StorageReader& result) override;

  [[nodiscard]] std::string Encode(std::string_view text) const { return mCodePage->Encode(text); }

  HelpProject mProject;
  SitemapFile mContents;
  SitemapFile mIndex;
  std::unique_ptr<CodePageText> mCodePage;
  std::unique_ptr<EncodingAudit> mAudit;
  ChmTopics mTopics;
  ChmStrings mStrings;
  std::unique_ptr<FullTextIndex> mFullText;  ///< if there is to be one
  WordSplitter mSplitter;
  std::set<std::string, std::less<>> mStopWords;
  std::vector<KeywordEntry> mKeywords;
  std::vector<KeywordEntry> mAssociativeKeywords;
  SystemFacts mSystem;
};

HelpCompile::ProjectFacts ChmCompile::ReadProject() {
  mProject = ReadHelpProject(Options().project, Messages());
  mCodePage = std::make_unique<CodePageText>(mProject.codePage);
  mAudit = std::make_unique<EncodingAudit>(*mCodePage, Messages());
  return {mProject.compiledFile, mProject.localeId, mProject.codePage};
}

// Pages name more files when they are read.
void ChmCompile::CollectFiles() {
  ReadSitemaps();
  if (mProject.fullTextSearch) ReadStopList();
  CollectNamedFiles();
  AuditNames();
}

void ChmCompile::ReadSitemaps() {
  mContents = ReadSitemap(mProject.contentsFile, mProject.contentsLine, "contents");
  mIndex = ReadSitemap(mProject.indexFile, mProject.indexLine, "index");
  Report().contentsEntries = mContents.sitemap.entries.size();
}

SitemapFile ChmCompile::ReadSitemap(const std::string& name, int line, std::string_view what) {
  SitemapFile file;
  const FileMention mention{mProject.file, {line}};
  const auto path = AddFile(name, mention, IfMissing::Error);
  if (!path) return file;
  file.path = *path;
  file.nativePath = Files().NativePath(*path);
  try {
    file.sitemap =
        ParseSitemap(DecodeHelpText(Platform::Current().Files().ReadFile(file.nativePath), mProject.codePage));
  } catch (const Failure& failure) {
    Messages().Error("HC3005", "The " + std::string(what) + " file can't be read: " + failure.Description(), mention);
  }
  ResolveTargets(file);
  return file;
}

void ChmCompile::ResolveTargets(SitemapFile& file) {
  for (auto& entry : file.sitemap.entries) {
    if (entry.targets.empty() && !entry.url.empty())
      entry.targets.push_back({entry.name, entry.url, entry.place, entry.place});
    for (auto& target : entry.targets) target.local = Resolve(target.local, {file.nativePath, target.place});
    std::erase_if(entry.targets, [](const SitemapTarget& target) { return target.local.empty(); });
  }
}

/// Words that the search passes over. The list itself is nothing for a viewer.
void ChmCompile::ReadStopList() {
  const FileMention mention{mProject.file, {mProject.stopListLine}};
  const auto inner = Resolve(mProject.stopListFile, mention);
  if (inner.empty()) return;
  const auto path = Files().Look(inner, mention, IfMissing::Error);
  if (!path) return;
  try {
    const auto list =
        DecodeHelpText(Platform::Current().Files().ReadFile(Files().NativePath(*path)), mProject.codePage);
    mSplitter.Split(list, [this](std::string_view word) { mStopWords.emplace(word); });
  } catch (const Failure& failure) {
    Messages().Error("HC3005", "The stop list can't be read: " + failure.Description(), mention);
  }
}

/// What the project, its contents, index, windows and context ids name.
void ChmCompile::CollectNamedFiles() {
  for (const auto& file : std::exchange(mProject.files, {}))
    (void)AddFile(file.path, {mProject.file, {file.line}}, IfMissing::Error);
  mSystem.defaultTopic =
      AddNamed(mProject.defaultTopic, {mProject.file, {mProject.defaultTopicLine}}, IfMissing::Error);
  AddTargets(mContents.sitemap, mContents.nativePath);
  AddTargets(mIndex.sitemap, mIndex.nativePath);
  for (auto& window : mProject.windows)
    for (auto* name : {&window.contentsFile, &window.indexFile, &window.defaultTopic, &window.home})
      *name = AddNamed(*name, {mProject.file, {window.line}}, IfMissing::Warning);
  for (auto& id : mProject.contextIds) id.page = AddNamed(id.page, {id.file, {id.line}}, IfMissing::Warning);
  if (!mSystem.defaultTopic.empty()) return;
  const auto first = std::find_if(Files().All().begin(), Files().All().end(), IsPage);
  if (first != Files().All().end()) mSystem.defaultTopic = *first;
}

/// The name as the viewer is to have it, with its anchor: of the stored file, else as it stands.
std::string ChmCompile::AddNamed(const std::string& name, const FileMention& mention, IfMissing level) {
  auto inner = Resolve(name, mention);
  const auto found = AddFile(inner, mention, level);
  return found ? *found + std::string(AnchorOf(inner)) : inner;
}

/// Pages are audited one by one when they are read.
void ChmCompile::AuditNames() {
  mAudit->CheckProject(mProject);
  mAudit->CheckContents(mContents.sitemap, mContents.nativePath);
  mAudit->CheckIndex(mIndex.sitemap, mIndex.nativePath);
}

void ChmCompile::TakePage(const std::string& path, std::string_view page, const PageFacts& facts) {
  mAudit->CheckPage(page, facts, Files().NativePath(path));
  const auto topic =
      mTopics.Add(Encode(path), facts.title.empty() ? ChmTopics::NoTitle : mStrings.Add(Encode(facts.title)));
  for (const auto& keyword : facts.associativeKeywords) mAssociativeKeywords.push_back({{keyword}, {topic}, {}});
  if (mProject.autoIndex)
    for (const auto& keyword : facts.keywords) mKeywords.push_back({{keyword}, {topic}, {}});
  if (mProject.fullTextSearch) IndexWords(topic, facts);
}

void ChmCompile::IndexWords(std::uint32_t topic, const PageFacts& facts) {
  if (!mFullText) mFullText = std::make_unique<FullTextIndex>(Output().WorkFolder());
  std::string bytes;
  mFullText->BeginPage(topic);
  for (const bool inTitle : {true, false})
    mSplitter.Split(inTitle ? facts.title : facts.text, [&](std::string_view word) {
      if (!mStopWords.contains(word) && mCodePage->TryEncodeWord(word, bytes))
        mFullText->AddWord(bytes, inTitle);
      else
        mFullText->PassWord();
    });
  mFullText->EndPage();
}

void ChmCompile::StoreTables() {
  StoreContents();
  StoreKeywords();
  StoreFullText();
  StoreSystem();
  AddTable("/#TOPICS", mTopics.TopicsBytes());
  AddTable("/#URLTBL", mTopics.UrlTableBytes());
  AddTable("/#URLSTR", mTopics.UrlStringsBytes());
  AddTable("/#STRINGS", mStrings.Bytes());
}

void ChmCompile::StoreContents() {
  if (!mProject.binaryContents || mContents.path.empty()) return;
  mSystem.binaryContents = true;
  AddTable("/#TOCIDX", BuildContentsIndex(mContents.sitemap, mTopics, mStrings,
                                          [this](std::string_view text) { return Encode(text); }));
}

void ChmCompile::StoreKeywords() {
  std::vector<std::string> path;
  for (const auto& entry : std::exchange(mIndex.sitemap.entries, {})) {
    path.resize(std::min(path.size(), static_cast<std::size_t>(entry.level)));
    path.push_back(entry.name);
    KeywordEntry keyword{path, {}, entry.seeAlso};
    if (entry.seeAlso.empty())
      for (const auto& target : entry.targets) {
        const auto local = Encode(target.local);
        const auto title = mStrings.Add(Encode(target.title));
        keyword.topics.push_back(target.title == entry.name ? mTopics.Add(local, title)
                                                            : mTopics.AddTitled(local, title));
      }
    mKeywords.push_back(std::move(keyword));
  }
  mSystem.binaryIndex = mProject.binaryIndex && !mKeywords.empty();
  if (mSystem.binaryIndex) StoreKeywordStreams("/$WWKeywordLinks/", mKeywords);
  StoreKeywordStreams("/$WWAssociativeLinks/", mAssociativeKeywords);
  Report().keywords = mKeywords.size();
  mSystem.keywordLinks = !mKeywords.empty();
  mSystem.associativeLinks = !mAssociativeKeywords.empty();
}

void ChmCompile::StoreKeywordStreams(const std::string& folder, std::vector<KeywordEntry>& entries) {
  entries = SortKeywords(std::move(entries), mProject.localeId);
  std::size_t truncated = 0;
  const auto streams =
      BuildKeywordIndex(entries, static_cast<std::uint32_t>(mProject.codePage), mProject.localeId, truncated);
  if (truncated > 0)
    Messages().Warning("HC2010",
                       std::to_string(truncated) +
                           " keywords have more pages than the binary index holds for one; "
                           "the first ones are kept",
                       mIndex.nativePath);
  if (!entries.empty()) {
    AddTable(folder + "BTree", streams.tree);
    AddTable(folder + "Data", streams.data);
    AddTable(folder + "Map", streams.map);
  }
  AddTable(folder + "Property", streams.properties);
}

void ChmCompile::StoreFullText() {
  if (!mFullText || mFullText->IsEmpty()) return;
  mSystem.fullText = true;
  Output().Storage().BeginCompressed("/$FIftiMain");
  mFullText->Write(static_cast<std::uint32_t>(mProject.codePage), mProject.localeId,
                   [this](std::string_view piece) { Output().Storage().Append(piece); });
  mFullText.reset();  // the largest thing in memory
  AddTable("/$OBJINST", BuildWordBreaker(mProject.codePage, mProject.localeId));
}

void ChmCompile::StoreSystem() {
  const auto name = Report().output.substr(FolderOf(Report().output).size());
  mSystem.stem = name.substr(0, name.rfind('.'));
  mSystem.timeStamp = TimeStampOfEnvironment();
  mSystem.contentsFile = mContents.path;
  mSystem.indexFile = mIndex.path;
  mSystem.defaultWindow = mProject.defaultWindow;
  if (const auto windows = BuildWindows(mProject, mStrings, *mCodePage); !windows.empty())
    AddTable("/#WINDOWS", windows);
  if (!mProject.contextIds.empty()) AddTable("/#IVB", BuildContextIds(mProject.contextIds, mStrings, *mCodePage));
  const auto header = BuildIndexHeader(mProject, mContents.sitemap, mTopics.Count(), mStrings, *mCodePage);
  AddTable("/#IDXHDR", header);
  Output().Storage().AddStored("/#SYSTEM", BuildSystem(mProject, mSystem, header, *mCodePage));
  Output().Storage().AddStored("/#ITBITS", {});
}

void ChmCompile::CheckTables(const StorageReader& result) {
  CheckChm(result,
           {.codePage = mProject.codePage,
            .title = mProject.title,
            .defaultTopic = mSystem.defaultTopic,
            .contentsFile = mContents.path,
            .indexFile = mIndex.path,
            .contents = mSystem.binaryContents ? &mContents.sitemap : nullptr,
            .keywords = mSystem.binaryIndex ? &mKeywords : nullptr,
            .topics = &mTopics,
            .encode = [this](std::string_view text) { return Encode(text); }},
           Messages());
}

}  // namespace

CompileReport CompileChm(const CompileOptions& options) {
  return ChmCompile(options).Run();
}

}  // namespace quillbook::compile
