// A folder that nothing is written outside of.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "quillbook/platform/FileStore.h"

namespace quillbook {

/// Writes files below one folder under names that somebody else made up. Names that lead outside, by "..", by an
/// absolute path or through a link that stands in the folder, are refused.
class ConfinedFolder {
 public:
  /// Makes the folder where it is missing. Failures of `FileStore::CreateDirectories`.
  explicit ConfinedFolder(const std::string& path);
  ConfinedFolder(const ConfinedFolder&) = delete;
  ConfinedFolder& operator=(const ConfinedFolder&) = delete;
  ~ConfinedFolder();

  /// Creates a file, or cuts it to nothing, with the folders above it. Both kinds of slashes divide names. Failure 52
  /// for a name that leads outside or is no file name, else the failures of `FileStore`.
  [[nodiscard]] std::unique_ptr<FileWriter> CreateFile(std::string_view name);

 private:
  std::string mPath;
  int mFolder = -1;
};

}  // namespace quillbook
