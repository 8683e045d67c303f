#include "cli/edit/GlossaryKind.h"

namespace quillbook::cli {

const KindInfo& GlossaryKind::Info() const {
  static const KindInfo info = [] {
    KindInfo glossary{"glossary", "term", "List, show and edit the terms of the glossary", "term, or its key"};
    glossary.nameField = "term";
    return glossary;
  }();
  return info;
}

const std::vector<Field>& GlossaryKind::Fields() const {
  static const std::vector<Field> fields = {
      KeyField<GlossaryItem>([](const GlossaryItem& item) -> const std::string& { return item.Key; }),
      TextField("term", "Term", &GlossaryItem::Term, &GlossaryItem::SetTerm).Listed().Required(),
      TextField("definition", "What it means", &GlossaryItem::Definition, &GlossaryItem::SetDefinition).Listed(),
  };
  return fields;
}

}  // namespace quillbook::cli
