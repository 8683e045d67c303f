#include "host/compile/HelpCompile.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "host/compile/HelpProject.h"
#include "host/compile/PlaceFinder.h"
#include "host/compile/StyleScan.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

bool IsStyleSheet(std::string_view path) {
  return EndsWithIgnoringCase(path, ".css");
}

}  // namespace

bool IsPage(std::string_view path) {
  return EndsWithIgnoringCase(path, ".htm") || EndsWithIgnoringCase(path, ".html") ||
         EndsWithIgnoringCase(path, ".xhtml");
}

HelpCompile::HelpCompile(const CompileOptions& options, StorageReader::Format format)
    : mOptions(options), mFormat(format), mFolder(FolderOf(options.project)), mFiles(mFolder, mReport.messages) {}

CompileReport HelpCompile::Run() {
  if (!ReadProjectOrSayWhy()) return std::move(mReport);  // 1
  try {
    CollectFiles();                                                       // 2
    if (!StoreFiles()) return std::move(mReport);                         // 3
    StoreTables();                                                        // 4
    mOutput->AddFolders(mFiles.All());                                    // 5
    mOutput->Finish(mFormat, TimeStampOfEnvironment(), mFacts.localeId);  // 6
    CheckResult();                                                        // 7
    Publish();                                                            // 8
  } catch (...) {
    Messages().Error("HC4001", CurrentFailure().Description(), mReport.output);
  }
  return std::move(mReport);
}

bool HelpCompile::ReadProjectOrSayWhy() {
  try {
    mFacts = ReadProject();
  } catch (const Failure& failure) {
    Messages().Error("HC1000", failure.Description(), mOptions.project);
    mReport.outcome = CompileReport::Outcome::Unreadable;
    return false;
  }
  NameOutput();
  return true;
}

void HelpCompile::NameOutput() {
  auto name = mFacts.outputName;
  std::replace(name.begin(), name.end(), '\\', '/');
  mReport.output = !mOptions.output.empty() ? mOptions.output : name.starts_with('/') ? name : mFolder + name;
}

std::string HelpCompile::Resolve(const std::string& path, const FileMention& mention) {
  if (path.empty() || IsOutsideAddress(path)) return path;
  const auto inner = InnerPath("", path);
  if (inner) return *inner + std::string(AnchorOf(path));
  Messages().Error("HC3001", "'" + path + "' lies outside the project's folder", mention);
  return {};
}

std::optional<std::string> HelpCompile::AddFile(const std::string& path, const FileMention& mention,
                                                ProjectFiles::IfMissing level) {
  const auto inner = Resolve(path, mention);
  if (inner.empty() || IsOutsideAddress(inner)) return {};
  return mFiles.Add(inner.substr(0, inner.size() - AnchorOf(inner).size()), mention, level);
}

void HelpCompile::AddTargets(const Sitemap& sitemap, const std::string& file) {
  for (const auto& entry : sitemap.entries)
    for (const auto& target : entry.targets)
      (void)AddFile(target.local, {file, target.place}, ProjectFiles::IfMissing::Warning);
}

// 3: file after file goes into the container; one at a time is in memory.
bool HelpCompile::StoreFiles() {
  mOutput = std::make_unique<HelpOutput>(mReport.output);
  // The list grows meanwhile.
  for (std::size_t i = 0; i < mFiles.All().size(); ++i) {
    if (mOptions.goOn && !mOptions.goOn(i, mFiles.All().size())) {
      mReport.outcome = CompileReport::Outcome::Cancelled;
      return false;
    }
    StoreFile(i);
  }
  return true;
}

void HelpCompile::StoreFile(std::size_t number) {
  const std::string path = mFiles.All()[number];
  std::string bytes;
  try {
    bytes = Platform::Current().Files().ReadFile(mFiles.NativePath(path));
  } catch (const Failure& failure) {  // it was there when it was entered
    Messages().Error("HC3005", "'" + path + "' can't be read: " + failure.Description(), mFiles.FirstMention(number));
    return;
  }
  mOutput->AddFile("/" + path, bytes);
  ++mReport.files;
  if (IsPage(path)) {
    StorePage(path, std::move(bytes));
  } else if (IsStyleSheet(path)) {
    const auto style = DecodeHelpText(std::move(bytes), mFacts.codePage);
    CollectReferences(path, style, ScanStyle(style));
  }
}

void HelpCompile::StorePage(const std::string& path, std::string bytes) {
  ++mReport.pages;
  const auto page = DecodePage(std::move(bytes), mFacts.codePage);
  const auto facts = ScanPage(page);
  TakePage(path, page, facts);
  CollectReferences(path, page, facts.references);
}

void HelpCompile::CollectReferences(const std::string& path, std::string_view text,
                                    const std::vector<PageReference>& references) {
  PlaceFinder places(text);
  for (const auto& reference : references) {
    if (IsOutsideAddress(reference.address) || reference.address.starts_with('#')) continue;
    const auto inner = InnerPath(FolderOf(path), reference.address);
    if (inner && inner->empty()) continue;
    const FileMention mention{mFiles.NativePath(path), places.At(reference.offset)};
    if (inner)
      (void)mFiles.Add(*inner, mention, ProjectFiles::IfMissing::Warning);
    else
      Messages().Error("HC3001", "'" + reference.address + "' lies outside the project's folder", mention);
  }
}

// 7: the file is read back before it takes the place of the old one.
void HelpCompile::CheckResult() {
  if (Messages().Errors() > 0) return;
  const auto start = std::chrono::steady_clock::now();
  mReport.bytes = mOutput->Size();
  try {
    const StorageReader result(mOutput->Bytes());
    mOutput->CheckFiles(result, Messages());
    CheckTables(result);
  } catch (const Failure& failure) {
    Messages().Error("HC5002", "The new help file can't be read back: " + failure.Description());
  }
  mReport.checkSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// 8: only a whole and right file gets the name.
void HelpCompile::Publish() {
  if (mOptions.strict && Messages().Warnings() > 0)
    Messages().Error("HC4002", "There were warnings, and none are allowed; no help file was made");
  if (Messages().Errors() > 0) return;
  mOutput->Publish();
  mReport.outcome = CompileReport::Outcome::Made;
}

}  // namespace quillbook::compile
