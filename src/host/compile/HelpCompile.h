// What compiles of both kinds of help do alike.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/HelpOutput.h"
#include "host/compile/PageScan.h"
#include "host/compile/ProjectFiles.h"
#include "host/compile/Sitemap.h"
#include "host/compile/StorageReader.h"
#include "quillbook/host/HelpCompilation.h"

namespace quillbook::compile {

/// Whether a file is one of those that help consists of, by its name.
[[nodiscard]] bool IsPage(std::string_view path);

/// One compile, from the project's text to the checked file. Each kind of help fills in its own phases.
class HelpCompile {
 public:
  virtual ~HelpCompile() = default;
  HelpCompile(const HelpCompile&) = delete;
  HelpCompile& operator=(const HelpCompile&) = delete;

  CompileReport Run();

 protected:
  /// What every kind of project says of itself.
  struct ProjectFacts {
    std::string outputName;  ///< as it stands in the project
    std::uint32_t localeId = 0;
    int codePage = 0;  ///< of pages that don't state theirs
  };

  HelpCompile(const CompileOptions& options, StorageReader::Format format);

  /// Everything else hangs on the project's text. Failures say why it can't be read.
  virtual ProjectFacts ReadProject() = 0;
  /// Enters the files that the project, its contents and its index name, and whatever else they are to be asked.
  virtual void CollectFiles() = 0;
  /// Called for every page when it has been stored. `page` is its text in UTF-8.
  virtual void TakePage(const std::string& /*path*/, std::string_view /*page*/, const PageFacts& /*facts*/) {}
  /// Adds what the viewer finds its way by.
  virtual void StoreTables() {}
  /// Compares that with the project.
  virtual void CheckTables(const StorageReader& /*result*/) {}

  [[nodiscard]] const CompileOptions& Options() const noexcept { return mOptions; }
  [[nodiscard]] const std::string& Folder() const noexcept { return mFolder; }
  CompileReport& Report() noexcept { return mReport; }
  MessageList& Messages() noexcept { return mReport.messages; }
  ProjectFiles& Files() noexcept { return mFiles; }
  HelpOutput& Output() noexcept { return *mOutput; }
  /// The path that a file of the project means by `path`, with its anchor; as it stands for an outside address, empty
  /// where it leads outside the project's folder, which is said.
  std::string Resolve(const std::string& path, const FileMention& mention);
  /// Enters the file that `path` means. Its path as stored, without anchor; none if there is no such file inside.
  std::optional<std::string> AddFile(const std::string& path, const FileMention& mention,
                                     ProjectFiles::IfMissing level);
  /// The pages of contents or an index, which stand in the file of that native path.
  void AddTargets(const Sitemap& sitemap, const std::string& file);

 private:
  bool ReadProjectOrSayWhy();
  void NameOutput();
  /// False if the compile was cancelled.
  [[nodiscard]] bool StoreFiles();
  void StoreFile(std::size_t number);
  void StorePage(const std::string& path, std::string bytes);
  void CollectReferences(const std::string& path, std::string_view text, const std::vector<PageReference>& references);
  void CheckResult();
  void Publish();

  const CompileOptions& mOptions;
  StorageReader::Format mFormat;
  std::string mFolder;
  CompileReport mReport;
  ProjectFacts mFacts;
  ProjectFiles mFiles;
  std::unique_ptr<HelpOutput> mOutput;
};

}  // namespace quillbook::compile
