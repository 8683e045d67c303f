// One message of a build.
#pragma once

#include <cstddef>
#include <string>

namespace quillbook {

enum class NoteLevel { Warning = 0, Error = 1 };

/// A message for the author. `Code` is stable and made for programs: "page.duplicate-file"; `Text` is a sentence and
/// made for readers, complete without the other fields.
struct BuildNote {
  NoteLevel Level = NoteLevel::Warning;
  std::string Code = {};
  std::string Text = {};
  std::string File = {};  ///< native path of the file that is at fault; may be empty
  std::size_t Line = 0;   ///< from 1; 0 if there is none
  std::size_t Column = 0;
};

}  // namespace quillbook
