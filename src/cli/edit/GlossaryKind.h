// quillbook glossary
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/structure/GlossaryItems.h"

namespace quillbook::cli {

class GlossaryKind final : public CollectionKind<GlossaryItem, GlossaryItems> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;

 protected:
  [[nodiscard]] Ref<GlossaryItems> Members(const Scope& scope) const override { return scope.project.GlossaryItems(); }
  [[nodiscard]] Ref<GlossaryItem> Make(const Scope& scope, const std::string& name) const override {
    return scope.project.NewGlossaryItem(name, "");
  }
  [[nodiscard]] std::string MemberKey(const GlossaryItem& item) const override { return item.Key; }
};

}  // namespace quillbook::cli
