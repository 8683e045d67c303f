#include "host/compile/HxsCompiler.h"

#include <algorithm>
#include <chrono>
#include <memory>

#include "host/compile/Help2Sources.h"
#include "host/compile/HelpOutput.h"
#include "host/compile/ProjectFiles.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

/// One compile, from the collection's text to the checked file.
class HxsCompile {
 public:
  explicit HxsCompile(const CompileOptions& options) : mOptions(options) {}

  CompileReport Run() {
    if (!ReadCollection()) return std::move(mReport);  // 1
    try {
      CollectSources();  // 2
      StoreFiles();      // 3
      CheckResult();     // 4
      Publish();         // 5
    } catch (...) {
      Messages().Error("HC4001", CurrentFailure().Description());
    }
    return std::move(mReport);
  }

 private:
  using IfMissing = ProjectFiles::IfMissing;

  bool ReadCollection();
  void CollectSources();
  void CollectListed(const std::string& list, const SourceMention& file);
  void CollectPattern(const std::string& folder, const std::string& pattern, const FileMention& mention);
  void CollectTargets(const std::string& source, const Sitemap& sitemap);
  std::string Add(const std::string& path, const FileMention& mention, IfMissing level);
  std::string Text(const std::string& inner);
  void StoreFiles();
  void CheckResult();
  void Publish();
  MessageList& Messages() { return mReport.messages; }

  const CompileOptions& mOptions;
  CompileReport mReport;
  std::string mFolder;
  Help2Collection mCollection;
  std::unique_ptr<ProjectFiles> mFiles;
  std::unique_ptr<HelpOutput> mOutput;
};

// 1: everything else hangs on the collection.
bool HxsCompile::ReadCollection() {
  mFolder = FolderOf(mOptions.project);
  mFiles = std::make_unique<ProjectFiles>(mFolder, Messages());
  try {
    mCollection = ParseCollection(DecodeXml(Platform::Current().Files().ReadFile(mOptions.project)));
    if (!mCollection.isCollection) Messages().Error("HC1000", "The file is no help collection", mOptions.project);
  } catch (const Failure& failure) {
    Messages().Error("HC1000", failure.Description(), mOptions.project);
  }
  if (Messages().Errors() > 0) {
    mReport.outcome = CompileReport::Outcome::Unreadable;
    return false;
  }
  mReport.output = mOptions.output;
  if (mReport.output.empty()) {
    auto name = mCollection.outputFile;
    std::replace(name.begin(), name.end(), '\\', '/');
    if (name.empty()) {
      const auto own = mOptions.project.substr(mFolder.size());
      name = own.substr(0, own.rfind('.')) + ".HxS";
    }
    mReport.output = name.starts_with('/') ? name : mFolder + name;
  }
  return true;
}

std::string HxsCompile::Add(const std::string& path, const FileMention& mention, IfMissing level) {
  if (path.empty() || IsOutsideAddress(path)) return {};
  const auto inner = InnerPath("", path);
  if (!inner) {
    Messages().Error("HC3001", "'" + path + "' lies outside the project's folder", mention.file, mention.line);
    return {};
  }
  return mFiles->Add(*inner, mention, level).value_or("");
}

std::string HxsCompile::Text(const std::string& inner) {
  return inner.empty() ? std::string() : DecodeXml(Platform::Current().Files().ReadFile(mFiles->NativePath(inner)));
}

// 2: the sources themselves, what the lists name, and what contents and indexes lead to.
void HxsCompile::CollectSources() {
  const auto own = mOptions.project.substr(mFolder.size());
  (void)Add(own, {mOptions.project, 0}, IfMissing::Error);
  const auto add = [&](const SourceMention& source) {
    return Add(source.path, {mOptions.project, source.line}, IfMissing::Error);
  };
  for (const auto& source : mCollection.otherSources) (void)add(source);
  for (const auto& source : mCollection.fileLists) {
    const auto list = add(source);
    for (const auto& file : ParseFileList(Text(list))) CollectListed(list, file);
  }
  for (const auto& source : mCollection.contents) {
    const auto path = add(source);
    const auto contents = ParseHelp2Contents(Text(path));
    mReport.contentsEntries += contents.entries.size();
    CollectTargets(path, contents);
  }
  for (const auto& source : mCollection.indexes) {
    const auto path = add(source);
    std::string name;
    const auto index = ParseHelp2Index(Text(path), name);
    mReport.keywords += index.entries.size();
    // The targets of these are names that only the viewer knows.
    if (name != "NamedUrlIndex") CollectTargets(path, index);
  }
}

void HxsCompile::CollectListed(const std::string& list, const SourceMention& file) {
  const FileMention mention{mFiles->NativePath(list), file.line};
  if (file.path.find_first_of("*?") == std::string::npos) {
    (void)Add(file.path, mention, IfMissing::Error);
    return;
  }
  auto path = file.path;
  std::replace(path.begin(), path.end(), '\\', '/');
  const std::string folder(FolderOf(path));
  CollectPattern(folder, path.substr(folder.size()), mention);
}

/// The files of one folder in byte order of their names.
void HxsCompile::CollectPattern(const std::string& folder, const std::string& pattern, const FileMention& mention) {
  std::size_t found = 0;
  try {
    const auto native = mFiles->NativePath(folder);
    for (const auto& entry : Platform::Current().Files().ListDirectory(native.empty() ? "." : native)) {
      if (entry.isDirectory || !FitsPattern(entry.name, pattern)) continue;
      (void)Add(folder + entry.name, mention, IfMissing::Error);
      ++found;
    }
  } catch (const Failure&) {  // there is no such folder, so nothing fits
  }
  if (found == 0) Messages().Warning("HC3003", "No file fits '" + folder + pattern + "'", mention.file, mention.line);
}

void HxsCompile::CollectTargets(const std::string& source, const Sitemap& sitemap) {
  for (const auto& entry : sitemap.entries)
    for (const auto& target : entry.targets)
      (void)Add(target.local, {mFiles->NativePath(source), entry.line}, IfMissing::Warning);
}

// 3: one file at a time is in memory.
void HxsCompile::StoreFiles() {
  mOutput = std::make_unique<HelpOutput>(mReport.output);
  for (const auto& path : mFiles->All()) {
    try {
      mOutput->AddFile("/" + path, Platform::Current().Files().ReadFile(mFiles->NativePath(path)));
    } catch (const Failure& failure) {
      Messages().Error("HC3005", "The file can't be read: " + failure.Description(), mFiles->NativePath(path));
      continue;
    }
    ++mReport.files;
    mReport.pages += EndsWithIgnoringCase(path, ".htm") || EndsWithIgnoringCase(path, ".html");
  }
  mOutput->AddFolders(mFiles->All());
  mOutput->Finish(StorageReader::Format::Help2, TimeStampOfEnvironment(), mCollection.localeId);
  mReport.bytes = mOutput->Size();
}

// 4: the file is read back before it takes the place of the old one.
void HxsCompile::CheckResult() {
  if (Messages().Errors() > 0) return;
  const auto start = std::chrono::steady_clock::now();
  try {
    const StorageReader reader(mOutput->Bytes());
    mOutput->CheckFiles(reader, Messages());
  } catch (const Failure& failure) {
    Messages().Error("HC5002", "The new help file can't be read back: " + failure.Description());
  }
  mReport.checkSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// 5: only a whole and right file gets the name.
void HxsCompile::Publish() {
  if (mOptions.strict && Messages().Warnings() > 0)
    Messages().Error("HC4002", "There were warnings, and none are allowed; no help file was made");
  if (Messages().Errors() > 0) return;
  mOutput->Publish();
  mReport.outcome = CompileReport::Outcome::Made;
}

}  // namespace

CompileReport CompileHxs(const CompileOptions& options) {
  return HxsCompile(options).Run();
}

}  // namespace quillbook::compile
