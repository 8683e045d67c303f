#include "cli/edit/Kinds.h"

#include "cli/edit/CategoryKind.h"
#include "cli/edit/FileKind.h"
#include "cli/edit/GlossaryKind.h"
#include "cli/edit/KeywordKind.h"
#include "cli/edit/LinkKind.h"
#include "cli/edit/ProfileKind.h"
#include "cli/edit/ProjectKind.h"
#include "cli/edit/PropertyKind.h"
#include "cli/edit/TaskKind.h"
#include "cli/edit/TocKind.h"
#include "cli/edit/TopicKind.h"
#include "cli/edit/VariableKind.h"

namespace quillbook::cli {

const std::vector<const RecordKind*>& AllKinds() {
  static const TopicKind topics;
  static const CategoryKind categories;
  static const KeywordKind keywords;
  static const LinkKind links;
  static const TocKind toc;
  static const GlossaryKind glossary;
  static const TaskKind tasks;
  static const FileKind files;
  static const ProfileKind profiles;
  static const PropertyKind properties;
  static const VariableKind variables;
  static const ProjectKind project;
  static const std::vector<const RecordKind*> kinds = {&topics,   &categories, &keywords,  &links,
                                                       &toc,      &glossary,   &tasks,     &files,
                                                       &profiles, &properties, &variables, &project};
  return kinds;
}

const RecordKind* FindKind(std::string_view command) {
  for (const auto* kind : AllKinds())
    if (kind->Info().name == command) return kind;
  return nullptr;
}

}  // namespace quillbook::cli
