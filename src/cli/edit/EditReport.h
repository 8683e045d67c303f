// What the editing commands print.
#pragma once

#include <string>
#include <vector>

#include "cli/Journal.h"
#include "cli/edit/EditOptions.h"

namespace quillbook::cli {

/// What an editing command came to.
struct EditOutcome {
  std::vector<Record> records;      ///< to be listed or shown
  std::string subject;              ///< for people: what was changed, such as: topic "watering"
  std::string name;                 ///< of the record that was changed
  std::string key;                  ///< of the record that was changed
  std::vector<std::string> fields;  ///< that got another value
  bool changed = false;             ///< whether the project is another one now
  bool saved = false;
};

/// For people: a table, a record, a field alone, or the line that tells of a change.
[[nodiscard]] std::string EditText(QBProject& project, const EditOptions& options, const EditOutcome& outcome);
/// `project` is null where there is none.
[[nodiscard]] std::string EditJson(QBProject* project, const EditOptions& options, const EditOutcome& outcome,
                                   const std::vector<Message>& messages);

}  // namespace quillbook::cli
