// The control files of a Microsoft Help 2 project, and those that are delivered beside the help file.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/helpproject/HelpProjectFacts.h"

namespace quillbook::detail {

/// A file by name, and its text: UTF-8 with CR LF. Scripts want to be encoded.
using NamedTexts = std::vector<std::pair<std::string, std::string>>;

/// What the compiler reads: contents (.hxt), list of files (.hxf), indexes (.hxk), and the collection (.hxc) last.
[[nodiscard]] NamedTexts Help2ProjectTexts(const HelpProjectFacts& facts);

/// What goes with the help file: a collection with its contents and its empty indexes, and the scripts that register
/// it and take it away again. Which program registers is told to the scripts by the variable HXREG.
[[nodiscard]] NamedTexts Help2DeliveredTexts(const HelpProjectFacts& facts);

}  // namespace quillbook::detail
