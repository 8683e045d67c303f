// What of a project file a save would lose.
#pragma once

#include <string_view>
#include <vector>

#include "cli/Problems.h"

namespace quillbook::cli {

/// Looks through the text of a project file for what reading it passes over without a word: unknown elements and
/// attributes, later records with a key that is there already, comments, categories that aren't there, dates that are
/// none. In the order of the file.
[[nodiscard]] std::vector<Problem> FindLosses(std::string_view text);

}  // namespace quillbook::cli
