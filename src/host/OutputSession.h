// The files of one generation, and who is told of them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/OutputFolder.h"
#include "quillbook/base/Object.h"
#include "quillbook/host/INamespaceProvider.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

class FileSystemObject;
class MVProject;

namespace detail {

/// A session refers to its project and must not outlive it.
class OutputSession {
 public:
  /// `provider` may be nothing. Failure 76 for a project without an output folder.
  OutputSession(MVProject& project, Ref<INamespaceProvider> provider);

  /// True if the file is free for this item; else a note names both that want it. Names that differ only in case are
  /// two files here and one where the output may go: both are written, and the note says so.
  [[nodiscard]] bool Claim(const std::string& path, const Ref<Object>& item, const Ref<PageLayout>& layout);

  /// A `FileSystemObject` for the file, which is the target of a page.
  [[nodiscard]] Ref<FileSystemObject> FileFor(const std::string& path) const;
  void WritePage(const std::string& path, std::string_view bytes, const Ref<NamespaceDef>& definition,
                 const Ref<Object>& item);
  /// Writes a file that steers the making of the help, unless somebody objects: then the one that is there counts.
  void WriteControlFile(const std::string& path, std::string_view bytes);
  /// Copies the template's support files that nobody objects to. False if the project was cancelled meanwhile.
  [[nodiscard]] bool CopySupportFiles(const PageTemplate& pageTemplate);

  /// True if the output folder holds the file.
  [[nodiscard]] bool Has(const std::string& path) const;
  /// What the item of a page is called; empty for another file.
  [[nodiscard]] std::string TitleOf(const std::string& path) const;
  [[nodiscard]] std::size_t PageCount() const noexcept { return mPageCount; }
  [[nodiscard]] std::size_t SupportFileCount() const noexcept { return mSupportFileCount; }
  [[nodiscard]] std::size_t UnchangedCount() const noexcept { return mUnchangedCount; }

 private:
  struct Owner {
    std::string path;
    Ref<Object> item;
    Ref<PageLayout> layout;  ///< nothing for a support file
  };
  [[nodiscard]] std::string FullName(const std::string& path) const;
  [[nodiscard]] static std::string Describe(const Owner& owner);
  void Write(const std::string& path, std::string_view bytes, const Ref<NamespaceDef>& definition,
             const Ref<Object>& item, bool coreContent);
  void CopySupportFile(const PageTemplate& pageTemplate, const Ref<FileSystemObject>& base, const std::string& path);

  MVProject& mProject;
  Ref<INamespaceProvider> mProvider;
  std::string mOutputDirectory;  ///< in the form of stored paths, with a separator at its end
  OutputFolder mFolder;
  std::unordered_map<std::string, Owner> mOwners;  ///< by folded path
  std::size_t mPageCount = 0;
  std::size_t mSupportFileCount = 0;
  std::size_t mUnchangedCount = 0;
};

}  // namespace detail
}  // namespace quillbook
