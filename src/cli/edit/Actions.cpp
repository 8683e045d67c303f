#include "cli/edit/Actions.h"

#include <algorithm>

namespace quillbook::cli {
namespace {

constexpr std::array<ActionInfo, 6> kActions = {{
    {Action::List, "list", "listed", "List all"},
    {Action::Show, "show", "shown", "Show"},
    {Action::Add, "add", "added", "Add"},
    {Action::Set, "set", "set", "Set fields of"},
    {Action::Remove, "remove", "removed", "Remove"},
    {Action::Move, "move", "moved", "Move"},
}};

}  // namespace

const ActionInfo& InfoOf(Action action) {
  return *std::find_if(kActions.begin(), kActions.end(), [=](const ActionInfo& info) { return info.action == action; });
}

std::optional<Action> FindAction(const RecordKind& kind, std::string_view name) {
  for (const auto action : kind.Info().actions)
    if (InfoOf(action).name == name) return action;
  return {};
}

std::string WithArticle(std::string_view noun) {
  const bool vowel = !noun.empty() && std::string_view("aeio").find(noun.front()) != std::string_view::npos;
  return (vowel ? "an " : "a ") + std::string(noun);
}

}  // namespace quillbook::cli
