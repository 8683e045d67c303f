// What must be true of every project in memory.
#pragma once

#include <string>

#include "quillbook/project/QBProject.h"

namespace quillbook {

/// The first rule that a project breaks, in words; empty if it keeps them all: members know their project, stand under
/// their keys, and nodes know their parents. Linear in the size of the project.
[[nodiscard]] std::string FindIntegrityFault(QBProject& project);

/// Raises failure 51 with the fault; does nothing in builds without assertions.
void AssertIntegrity(QBProject& project);

}  // namespace quillbook
