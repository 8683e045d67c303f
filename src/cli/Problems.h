// What is wrong in a project.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Ref.h"
#include "quillbook/project/QBProject.h"

namespace quillbook::cli {

struct Problem {
  std::string code;     ///< stable, for programs
  std::string message;  ///< one line, for people
  std::size_t line;     ///< in the project file, from 1; 0 where it has none
};

/// Looks for records that lead nowhere, are there twice, or can't be built. `text` is the project file's text.
/// In the order of the file's sections.
[[nodiscard]] std::vector<Problem> FindProblems(const Ref<QBProject>& project, std::string_view text);

}  // namespace quillbook::cli
