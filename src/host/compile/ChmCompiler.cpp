#include "host/compile/ChmCompiler.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include "host/compile/ChmCheck.h"
#include "host/compile/ChmSystem.h"
#include "host/compile/CodePageText.h"
#include "host/compile/ContentsIndex.h"
#include "host/compile/EncodingAudit.h"
#include "host/compile/FullTextIndex.h"
#include "host/compile/HelpOutput.h"
#include "host/compile/KeywordIndex.h"
#include "host/compile/PageScan.h"
#include "host/compile/ProjectFiles.h"
#include "host/compile/WordSplitter.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

bool IsPage(std::string_view path) {
  return EndsWithIgnoringCase(path, ".htm") || EndsWithIgnoringCase(path, ".html") ||
         EndsWithIgnoringCase(path, ".xhtml");
}

int LineOf(std::string_view text, std::size_t offset) {
  return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

/// A contents or index file.
struct SitemapFile {
  std::string path;  ///< as stored; empty if there is none
  std::string nativePath;
  Sitemap sitemap;
};

/// One compile, from the project's text to the checked file.
class ChmCompile {
 public:
  explicit ChmCompile(const CompileOptions& options) : mOptions(options) {}

  CompileReport Run() {
    if (!ReadProject()) return std::move(mReport);
    try {
      ReadSitemaps();     // 2
      CollectFiles();     // 3
      AuditNames();       // 4
      StoreFiles();       // 5
      StoreTables();      // 6
      FinishContainer();  // 7
      CheckResult();      // 8
      Publish();          // 9
    } catch (...) {
      mReport.messages.Error("HC4001", CurrentFailure().Description());
    }
    return std::move(mReport);
  }

 private:
  bool ReadProject();
  void ReadSitemaps();
  SitemapFile ReadSitemap(const std::string& name, int line, std::string_view what);
  void ResolveTargets(SitemapFile& file);
  void CollectFiles();
  void CollectTargets(const SitemapFile& file);
  void AuditNames();
  void StoreFiles();
  void StoreFile(const std::string& path);
  void StorePage(const std::string& path, const std::string& bytes);
  void CollectReferences(const std::string& path, std::string_view page, const PageFacts& facts);
  void IndexWords(std::uint32_t topic, const PageFacts& facts);
  void StoreTables();
  void StoreContents();
  void StoreKeywords();
  void StoreKeywordStreams(const std::string& folder, std::vector<KeywordEntry>& entries);
  void StoreFullText();
  void StoreSystem();
  void AddTable(std::string_view name, std::string_view bytes) { mOutput->AddTable(name, bytes); }
  void FinishContainer();
  void CheckResult();
  void Publish();

  [[nodiscard]] std::string Encode(std::string_view text) const { return mCodePage->Encode(text); }
  MessageList& Messages() { return mReport.messages; }
  /// The path that a file of the project means by `path`, with its anchor; as it stands for an outside address.
  std::string Resolve(const std::string& path, const FileMention& mention);

  const CompileOptions& mOptions;
  CompileReport mReport;
  HelpProject mProject;
  SitemapFile mContents;
  SitemapFile mIndex;
  std::unique_ptr<CodePageText> mCodePage;
  std::unique_ptr<EncodingAudit> mAudit;
  std::unique_ptr<ProjectFiles> mFiles;
  std::unique_ptr<HelpOutput> mOutput;
  ChmTopics mTopics;
  ChmStrings mStrings;
  std::unique_ptr<FullTextIndex> mFullText;  ///< if there is to be one
  WordSplitter mSplitter;
  std::vector<KeywordEntry> mKeywords;
  std::vector<KeywordEntry> mAssociativeKeywords;
  SystemFacts mSystem;
  ChmExpectation mExpected;
};

// 1: everything else hangs on the project's text.
bool ChmCompile::ReadProject() {
  try {
    mProject = ReadHelpProject(mOptions.project, Messages());
  } catch (const Failure& failure) {
    Messages().Error("HC1000", failure.Description(), mOptions.project);
    mReport.outcome = CompileReport::Outcome::Unreadable;
    return false;
  }
  std::replace(mProject.compiledFile.begin(), mProject.compiledFile.end(), '\\', '/');
  mReport.output = mOptions.output;
  if (mReport.output.empty())
    mReport.output = (mProject.compiledFile.starts_with('/') ? "" : mProject.folder) + mProject.compiledFile;
  const auto name = mReport.output.substr(FolderOf(mReport.output).size());
  mSystem.stem = name.substr(0, name.rfind('.'));
  mSystem.timeStamp = TimeStampOfEnvironment();
  mCodePage = std::make_unique<CodePageText>(mProject.codePage);
  mAudit = std::make_unique<EncodingAudit>(*mCodePage, Messages());
  mFiles = std::make_unique<ProjectFiles>(mProject.folder, Messages());
  return true;
}

std::string ChmCompile::Resolve(const std::string& path, const FileMention& mention) {
  if (path.empty() || IsOutsideAddress(path)) return path;
  const auto inner = InnerPath("", path);
  if (inner) return *inner + std::string(AnchorOf(path));
  Messages().Error("HC3001", "'" + path + "' lies outside the project's folder", mention.file, mention.line);
  return {};
}

// 2: contents and index, with the paths of their targets resolved.
void ChmCompile::ReadSitemaps() {
  mContents = ReadSitemap(mProject.contentsFile, mProject.contentsLine, "contents");
  mIndex = ReadSitemap(mProject.indexFile, mProject.indexLine, "index");
  mReport.contentsEntries = mContents.sitemap.entries.size();
}

SitemapFile ChmCompile::ReadSitemap(const std::string& name, int line, std::string_view what) {
  SitemapFile file;
  if (name.empty()) return file;
  const FileMention mention{mProject.file, line};
  const auto inner = Resolve(name, mention);
  if (inner.empty()) return file;
  const auto path = mFiles->Add(inner, mention, ProjectFiles::IfMissing::Error);
  if (!path) return file;
  file.path = *path;
  file.nativePath = mFiles->NativePath(*path);
  try {
    file.sitemap =
        ParseSitemap(DecodeHelpText(Platform::Current().Files().ReadFile(file.nativePath), mProject.codePage));
  } catch (const Failure& failure) {
    Messages().Error("HC3005", "The " + std::string(what) + " file can't be read: " + failure.Description(),
                     mention.file, mention.line);
  }
  ResolveTargets(file);
  return file;
}

void ChmCompile::ResolveTargets(SitemapFile& file) {
  for (auto& entry : file.sitemap.entries) {
    if (entry.targets.empty() && !entry.url.empty()) entry.targets.push_back({entry.name, entry.url});
    for (auto& target : entry.targets) target.local = Resolve(target.local, {file.nativePath, entry.line});
    std::erase_if(entry.targets, [](const SitemapTarget& target) { return target.local.empty(); });
  }
}

// 3: what the project, its contents, index, windows and context ids name. Pages name more when they are read.
void ChmCompile::CollectFiles() {
  using IfMissing = ProjectFiles::IfMissing;
  const auto add = [&](const std::string& name, const FileMention& mention, IfMissing level) {
    auto inner = Resolve(name, mention);
    if (inner.empty() || IsOutsideAddress(inner)) return inner;
    const auto anchor = std::string(AnchorOf(inner));
    const auto found = mFiles->Add(inner.substr(0, inner.size() - anchor.size()), mention, level);
    return found ? *found + anchor : inner;
  };
  for (const auto& file : std::exchange(mProject.files, {}))
    (void)add(file.path, {mProject.file, file.line}, IfMissing::Error);
  mSystem.defaultTopic = add(mProject.defaultTopic, {mProject.file, mProject.defaultTopicLine}, IfMissing::Error);
  CollectTargets(mContents);
  CollectTargets(mIndex);
  for (auto& window : mProject.windows)
    for (auto* name : {&window.contentsFile, &window.indexFile, &window.defaultTopic, &window.home})
      *name = add(*name, {mProject.file, window.line}, IfMissing::Warning);
  for (auto& id : mProject.contextIds) id.page = add(id.page, {id.file, id.line}, IfMissing::Warning);
  if (!mSystem.defaultTopic.empty()) return;
  const auto first = std::find_if(mFiles->All().begin(), mFiles->All().end(), IsPage);
  if (first != mFiles->All().end()) mSystem.defaultTopic = *first;
}

void ChmCompile::CollectTargets(const SitemapFile& file) {
  for (const auto& entry : file.sitemap.entries)
    for (const auto& target : entry.targets)
      if (!IsOutsideAddress(target.local))
        (void)mFiles->Add(target.local.substr(0, target.local.size() - AnchorOf(target.local).size()),
                          {file.nativePath, entry.line}, ProjectFiles::IfMissing::Warning);
}

// 4: pages are audited one by one when they are read.
void ChmCompile::AuditNames() {
  mAudit->CheckProject(mProject);
  mAudit->CheckContents(mContents.sitemap, mContents.nativePath);
  mAudit->CheckIndex(mIndex.sitemap, mIndex.nativePath);
}

// 5: file after file goes into the container; one at a time is in memory.
void ChmCompile::StoreFiles() {
  mOutput = std::make_unique<HelpOutput>(mReport.output);
  if (mProject.fullTextSearch) mFullText = std::make_unique<FullTextIndex>(mOutput->WorkFolder());
  // The list grows meanwhile.
  for (std::size_t i = 0; i < mFiles->All().size(); ++i) StoreFile(std::string(mFiles->All()[i]));
}

void ChmCompile::StoreFile(const std::string& path) {
  std::string bytes;
  try {
    bytes = Platform::Current().Files().ReadFile(mFiles->NativePath(path));
  } catch (const Failure& failure) {
    Messages().Error("HC3005", "The file can't be read: " + failure.Description(), mFiles->NativePath(path));
    return;
  }
  mOutput->AddFile("/" + path, bytes);
  ++mReport.files;
  if (!IsPage(path)) return;
  ++mReport.pages;
  StorePage(path, bytes);
}

void ChmCompile::StorePage(const std::string& path, const std::string& bytes) {
  int pageCodePage = 0;
  const auto page = DecodePage(bytes, mProject.codePage, pageCodePage);
  const auto facts = ScanPage(page);
  mAudit->CheckPage(page, facts, mFiles->NativePath(path));
  const auto topic =
      mTopics.Add(Encode(path), facts.title.empty() ? ChmTopics::NoTitle : mStrings.Add(Encode(facts.title)));
  CollectReferences(path, page, facts);
  for (const auto& keyword : facts.associativeKeywords) mAssociativeKeywords.push_back({{keyword}, {topic}, {}});
  if (mProject.autoIndex)
    for (const auto& keyword : facts.keywords) mKeywords.push_back({{keyword}, {topic}, {}});
  if (mFullText) IndexWords(topic, facts);
}

void ChmCompile::CollectReferences(const std::string& path, std::string_view page, const PageFacts& facts) {
  for (const auto& reference : facts.references) {
    if (IsOutsideAddress(reference.address) || reference.address.starts_with('#')) continue;
    const auto inner = InnerPath(FolderOf(path), reference.address);
    if (inner && inner->empty()) continue;
    const FileMention mention{mFiles->NativePath(path), LineOf(page, reference.offset)};
    if (inner)
      (void)mFiles->Add(*inner, mention, ProjectFiles::IfMissing::Warning);
    else
      Messages().Error("HC3001", "'" + reference.address + "' lies outside the project's folder", mention.file,
                       mention.line);
  }
}

void ChmCompile::IndexWords(std::uint32_t topic, const PageFacts& facts) {
  std::string bytes;
  mFullText->BeginPage(topic);
  for (const bool inTitle : {true, false})
    mSplitter.Split(inTitle ? facts.title : facts.text, [&](std::string_view word) {
      if (mCodePage->TryEncodeWord(word, bytes)) mFullText->AddWord(bytes, inTitle);
    });
  mFullText->EndPage();
}

// 6: the tables that viewers find their way by.
void ChmCompile::StoreTables() {
  StoreContents();
  StoreKeywords();
  StoreFullText();
  StoreSystem();
  AddTable("/#TOPICS", mTopics.TopicsBytes());
  AddTable("/#URLTBL", mTopics.UrlTableBytes());
  AddTable("/#URLSTR", mTopics.UrlStringsBytes());
  AddTable("/#STRINGS", mStrings.Bytes());
  mOutput->AddFolders(mFiles->All());
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
  mReport.keywords = mKeywords.size();
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
  mOutput->Storage().BeginCompressed("/$FIftiMain");
  mFullText->Write(static_cast<std::uint32_t>(mProject.codePage), mProject.localeId,
                   [this](std::string_view piece) { mOutput->Storage().Append(piece); });
  mFullText.reset();  // the largest thing in memory
  AddTable("/$OBJINST", BuildWordBreaker(mProject.codePage, mProject.localeId));
}

void ChmCompile::StoreSystem() {
  mSystem.contentsFile = mContents.path;
  mSystem.indexFile = mIndex.path;
  mSystem.defaultWindow = mProject.defaultWindow;
  if (const auto windows = BuildWindows(mProject, mStrings, *mCodePage); !windows.empty())
    AddTable("/#WINDOWS", windows);
  if (!mProject.contextIds.empty()) AddTable("/#IVB", BuildContextIds(mProject.contextIds, mStrings, *mCodePage));
  const auto header = BuildIndexHeader(mProject, mContents.sitemap, mTopics.Count(), mStrings, *mCodePage);
  AddTable("/#IDXHDR", header);
  mOutput->Storage().AddStored("/#SYSTEM", BuildSystem(mProject, mSystem, header, *mCodePage));
  mOutput->Storage().AddStored("/#ITBITS", {});
}

// 7: header and directory.
void ChmCompile::FinishContainer() {
  mOutput->Finish(StorageReader::Format::HtmlHelp1, mSystem.timeStamp, mProject.localeId);
  mReport.bytes = mOutput->Size();
}

// 8: the file is read back before it takes the place of the old one.
void ChmCompile::CheckResult() {
  if (mReport.messages.Errors() > 0) return;
  const auto start = std::chrono::steady_clock::now();
  mExpected.codePage = mProject.codePage;
  mExpected.title = mProject.title;
  mExpected.defaultTopic = mSystem.defaultTopic;
  mExpected.contents = &mContents.sitemap;
  mExpected.binaryContents = mSystem.binaryContents;
  mExpected.keywords = &mKeywords;
  mExpected.binaryIndex = mSystem.binaryIndex;
  mExpected.topics = &mTopics;
  mExpected.encode = [this](std::string_view text) { return Encode(text); };
  CheckChm(*mOutput, mExpected, Messages());
  mReport.checkSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// 9: only a whole and right file gets the name.
void ChmCompile::Publish() {
  if (mOptions.strict && Messages().Warnings() > 0)
    Messages().Error("HC4002", "There were warnings, and none are allowed; no help file was made");
  if (Messages().Errors() > 0) return;
  mOutput->Publish();
  mReport.outcome = CompileReport::Outcome::Made;
}

}  // namespace

CompileReport CompileChm(const CompileOptions& options) {
  return ChmCompile(options).Run();
}

}  // namespace quillbook::compile
