// What the actions of the editing commands are called.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "cli/edit/RecordKind.h"

namespace quillbook::cli {

struct ActionInfo {
  Action action;
  std::string_view name;     ///< on the command line
  std::string_view past;     ///< "added"
  std::string_view summary;  ///< for the help; "{}" is the kind's singular
};

[[nodiscard]] const ActionInfo& InfoOf(Action action);
/// The action of this kind with this name.
[[nodiscard]] std::optional<Action> FindAction(const RecordKind& kind, std::string_view name);
/// True if the action may save the project.
[[nodiscard]] inline bool Changes(Action action) noexcept {
  return action != Action::List && action != Action::Show;
}
/// "a topic", "an other file"
[[nodiscard]] std::string WithArticle(std::string_view noun);

}  // namespace quillbook::cli
