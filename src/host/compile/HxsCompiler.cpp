#include "host/compile/HxsCompiler.h"

#include <algorithm>
#include <functional>

#include "host/compile/Help2Sources.h"
#include "host/compile/HelpCompile.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Locale.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

/// One compile of Microsoft Help 2. The sources are all that is inside beside the pages: no public description tells
/// what tables the viewer wants.
class HxsCompile final : public HelpCompile {
 public:
  explicit HxsCompile(const CompileOptions& options) : HelpCompile(options, StorageReader::Format::Help2) {}

 private:
  using IfMissing = ProjectFiles::IfMissing;

  ProjectFacts ReadProject() override;
  void CollectFiles() override;
  /// Gives the path inside and the text of a source that the collection names, if it is there.
  void ReadSource(const SourceMention& source,
                  const std::function<void(const std::string& path, const std::string& text)>& take);
  void CollectListed(const std::string& list, const SourceMention& file);
  void CollectPattern(const std::string& folder, const std::string& pattern, const FileMention& mention);

  Help2Collection mCollection;
};

HelpCompile::ProjectFacts HxsCompile::ReadProject() {
  mCollection = ParseCollection(DecodeXml(Platform::Current().Files().ReadFile(Options().project)));
  if (!mCollection.isCollection) throw Failure(FailureNumber::InvalidCall, "The file is no help collection");
  auto name = mCollection.outputFile;
  if (name.empty()) {
    const auto own = Options().project.substr(Folder().size());
    name = own.substr(0, own.rfind('.')) + ".HxS";
  }
  const auto locale = Locale::FromID(static_cast<std::int32_t>(mCollection.localeId));
  if (!locale)
    Messages().Warning("HC1013", "Language '" + std::to_string(mCollection.localeId) + "' is not known",
                       {Options().project, mCollection.localePlace});
  return {name, mCollection.localeId, locale ? locale->CodePage() : CodePageUtf8};
}

// The sources themselves, what the lists name, and what contents and indexes lead to. Pages name more.
void HxsCompile::CollectFiles() {
  const auto own = Options().project.substr(Folder().size());
  (void)AddFile(own, {Options().project, {}}, IfMissing::Error);
  for (const auto& source : mCollection.otherSources)
    (void)AddFile(source.path, {Options().project, source.place}, IfMissing::Error);
  for (const auto& source : mCollection.fileLists)
    ReadSource(source, [this](const std::string& path, const std::string& text) {
      for (const auto& file : ParseFileList(text)) CollectListed(path, file);
    });
  for (const auto& source : mCollection.contents)
    ReadSource(source, [this](const std::string& path, const std::string& text) {
      const auto contents = ParseHelp2Contents(text);
      Report().contentsEntries += contents.entries.size();
      AddTargets(contents, Files().NativePath(path));
    });
  for (const auto& source : mCollection.indexes)
    ReadSource(source, [this](const std::string& path, const std::string& text) {
      std::string name;
      const auto index = ParseHelp2Index(text, name);
      Report().keywords += index.entries.size();
      // The targets of these are names that only the viewer knows.
      if (name != "NamedUrlIndex") AddTargets(index, Files().NativePath(path));
    });
}

void HxsCompile::ReadSource(const SourceMention& source,
                            const std::function<void(const std::string& path, const std::string& text)>& take) {
  const FileMention mention{Options().project, source.place};
  const auto path = AddFile(source.path, mention, IfMissing::Error);
  if (!path) return;
  std::string text;
  try {
    text = DecodeXml(Platform::Current().Files().ReadFile(Files().NativePath(*path)));
  } catch (const Failure& failure) {
    Messages().Error("HC3005", "'" + *path + "' can't be read: " + failure.Description(), mention);
  }
  take(*path, text);
}

void HxsCompile::CollectListed(const std::string& list, const SourceMention& file) {
  const FileMention mention{Files().NativePath(list), file.place};
  if (file.path.find_first_of("*?") == std::string::npos) {
    (void)AddFile(file.path, mention, IfMissing::Error);
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
    const auto native = Files().NativePath(folder);
    for (const auto& entry : Platform::Current().Files().ListDirectory(native.empty() ? "." : native)) {
      if (entry.isDirectory || !FitsPattern(entry.name, pattern)) continue;
      (void)AddFile(folder + entry.name, mention, IfMissing::Error);
      ++found;
    }
  } catch (const Failure&) {  // there is no such folder, so nothing fits
  }
  if (found == 0) Messages().Warning("HC3003", "No file fits '" + folder + pattern + "'", mention);
}

}  // namespace

CompileReport CompileHxs(const CompileOptions& options) {
  return HxsCompile(options).Run();
}

}  // namespace quillbook::compile
