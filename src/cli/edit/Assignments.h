// Field=value, as written on the command line.
#pragma once

#include <string>
#include <vector>

#include "cli/edit/RecordKind.h"

namespace quillbook::cli {

/// Reads "FIELD=VALUE" texts, files and standard input included, checks the values, and gives the assignments in the
/// order of the kind's table. Raises `Refusal`.
[[nodiscard]] std::vector<Assignment> ReadAssignments(QBProject& project, const RecordKind& kind,
                                                      const std::vector<std::string>& texts);

/// True if the field, which holds one value, gets one that isn't empty.
[[nodiscard]] bool IsGiven(std::vector<Assignment>& assignments, std::string_view field);
/// Adds what `Complete` of a kind finds missing; does nothing if the field is assigned already.
void Imply(const RecordKind& kind, std::vector<Assignment>& assignments, std::string_view field, Values values);

}  // namespace quillbook::cli
