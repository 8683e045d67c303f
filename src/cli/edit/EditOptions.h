// What the user asked of an editing command.
#pragma once

#include <string>
#include <vector>

#include "cli/edit/RecordKind.h"

namespace quillbook::cli {

/// What all commands that may save a project take.
struct SaveOptions {
  std::string project;
  bool quiet = false;
  bool json = false;
  bool yes = false;
  bool dryRun = false;
  bool force = false;  ///< save also where something of the file would be lost
};

struct EditOptions : SaveOptions {
  const RecordKind* kind = nullptr;
  Action action = Action::List;
  std::string topic;                     ///< of a kind whose records belong to topics; empty for all
  std::string name;                      ///< of the record
  std::string field;                     ///< to show alone; empty for all
  std::vector<std::string> assignments;  ///< as written: FIELD=VALUE
  std::string before;
  std::string after;
  std::string into;
  bool first = false;
  bool last = false;
};

struct FmtOptions : SaveOptions {
  bool check = false;  ///< tell, write nothing
};

}  // namespace quillbook::cli
