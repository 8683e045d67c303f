#include "cli/edit/Kinds.h"

#include "cli/edit/TopicKind.h"

namespace quillbook::cli {

const std::vector<const RecordKind*>& AllKinds() {
  static const TopicKind topics;
  static const std::vector<const RecordKind*> kinds = {&topics};
  return kinds;
}

const RecordKind* FindKind(std::string_view command) {
  for (const auto* kind : AllKinds())
    if (kind->Info().name == command) return kind;
  return nullptr;
}

}  // namespace quillbook::cli
