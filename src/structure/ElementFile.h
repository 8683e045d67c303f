// The file of its own in which a project of separate files keeps one of its parts.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "quillbook/base/Ref.h"

namespace quillbook {

class FileSystemObject;
class QBProject;
class XMLElement;

class ElementFile {
 public:
  /// True if the project keeps its parts in files of their own. Failure 91 without a project.
  [[nodiscard]] static bool UsedBy(const Ref<QBProject>& project);

  /// The file of a project's part: `name` in its data folder.
  [[nodiscard]] static std::string LocalSpec(const Ref<QBProject>& project, std::string_view name);

  explicit ElementFile(std::string_view localSpec);

  [[nodiscard]] bool ReadOnly() const;
  /// The root element; an empty one if there is no such file or it holds no XML.
  [[nodiscard]] XMLElement Read() const;
  /// Writes a document whose root `fill` fills. Does nothing if the file is there and nothing has changed.
  void Write(bool changed, std::string_view rootName, const std::function<void(XMLElement)>& fill);

 private:
  Ref<FileSystemObject> mFile;
};

}  // namespace quillbook
