#include "cli/edit/References.h"

#include <fmt/format.h>

#include "cli/edit/Refusal.h"
#include "quillbook/base/Text.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::cli {
namespace {

struct Words {
  std::string_view singular;
  std::string_view plural;
};

template <class List>
auto FindMember(const List& members, std::string_view address, const Words& words) {
  using Member = decltype(members.Item(1));
  if (IsKey(address))
    if (auto member = members.Item(address)) return member;
  Member found;
  std::vector<std::string> keys;
  for (const auto& member : members) {
    if (!EqualsIgnoringCase(member->Name(), address)) continue;
    if (!found) found = member;
    keys.push_back(member->Key);
  }
  if (keys.size() > 1) RefuseAmbiguous(words.plural, address, keys);
  if (!found) RefuseUnknown(words.singular, address, fmt::format("see quillbook {} list", words.plural));
  return found;
}

}  // namespace

Ref<Topic> FindTopic(QBProject& project, std::string_view address) {
  return FindMember(*project.Topics, address, {"topic", "topics"});
}

Ref<TopicCategory> FindCategory(QBProject& project, std::string_view address) {
  return FindMember(*project.TopicCategories, address, {"category", "categories"});
}

void RefuseUnknown(std::string_view singular, std::string_view address, std::string_view remedy) {
  throw Refusal("record.unknown", fmt::format("there is no {} '{}'", singular, address), std::string(remedy));
}

void RefuseAmbiguous(std::string_view plural, std::string_view address, const std::vector<std::string>& keys) {
  throw Refusal("record.ambiguous", fmt::format("there are {} {} '{}'", keys.size(), plural, address),
                fmt::format("name one by its key: {}", fmt::join(keys, ", ")));
}

}  // namespace quillbook::cli
