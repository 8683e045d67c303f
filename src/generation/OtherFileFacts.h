// What the pages of a build ask about the project's other files.
#pragma once

#include <string>
#include <unordered_map>

#include "quillbook/base/Ref.h"
#include "quillbook/structure/OtherFile.h"

namespace quillbook {

/// Answers that hold as long as neither the file's path nor the project's template changes. Every page asks them
/// again of every file, and one of them looks at the disk.
class OtherFileFacts {
 public:
  struct Facts {
    std::string relativeName;
    std::string url;  ///< the relative name with "/"
    bool styleSheet = false;
    bool script = false;
    bool templateFile = false;
  };

  [[nodiscard]] static Facts Find(const OtherFile& file);
  /// As `Find`, but asks only the first time and after a change of the file's path.
  const Facts& Of(const Ref<OtherFile>& file);

 private:
  struct Entry {
    Ref<OtherFile> file;  ///< held, so that its address names no other file
    std::string path;
    Facts facts;
  };
  std::unordered_map<const OtherFile*, Entry> mEntries;
};

}  // namespace quillbook
