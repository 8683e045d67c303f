// One file of a project that is not a topic.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class FileSystemObject;
class QBProject;
class XMLElement;

/// The classic kinds of other files; part of the public interface, but no operation takes or returns them.
enum OtherFileTypeEnum : std::int32_t { oftStylesheet = 0, oftOther = 1 };

/// An image, style sheet, script or whatever else the output needs.
class OtherFile final : public LibraryObject {
 public:
  OtherFile();

  /// Free for the caller; never stored.
  Variant Tag;
  /// The file; never nothing at first.
  Ref<FileSystemObject> Filename;

  [[nodiscard]] bool IncludeInOutput() const noexcept { return mIncludeInOutput; }
  /// A real change is told to the project.
  void SetIncludeInOutput(bool value);
  /// Notes on a captured image, for a later capture.
  [[nodiscard]] const std::string& CaptureInfo() const noexcept { return mCaptureInfo; }
  /// A real change marks the project dirty.
  void SetCaptureInfo(std::string_view value);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);
  /// True until the file has been saved or loaded.
  [[nodiscard]] bool NewFlag() const noexcept { return mNewFlag; }
  void SetNewFlag(bool value) { mNewFlag = value; }

  /// Full path.
  [[nodiscard]] std::string LocalSpec() const;
  /// Path relative to the project file.
  [[nodiscard]] std::string RelativeFileName() const;
  /// True for the extensions png, bmp, gif, jpg and pcx, ignoring case, and for no other.
  [[nodiscard]] bool IsImage() const;
  [[nodiscard]] bool IsStyleSheet() const;
  [[nodiscard]] bool IsScript() const;
  /// False in a single-file project, else the file's read-only attribute.
  [[nodiscard]] bool ReadOnly() const;
  /// True if the project's template brings a file of the same relative name.
  [[nodiscard]] bool IsTemplateFile() const;

  // Library-internal

  /// True if the full path equals `path` ignoring case.
  [[nodiscard]] bool IsAt(std::string_view path) const;
  /// Reads the record. `FileName` is mandatory; an absent `CaptureInfo` or `IncludeInOutput` keeps its value.
  void Load(XMLElement e);
  void Save(XMLElement e);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  /// A relative name, with the names that it was worked out from.
  struct RelativeName {
    std::string file;
    std::string base;
    std::string relative;
  };
  [[nodiscard]] const std::string& CachedRelativeName() const;

  bool mIncludeInOutput = true;
  std::string mCaptureInfo;
  WeakReference<quillbook::QBProject> mQBProject;
  bool mNewFlag = true;
  mutable RelativeName mRelativeName;  ///< templates ask for it page after page
};

}  // namespace quillbook
