#include "quillbook/structure/GlossaryItem.h"

#include "frame/Assign.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

void GlossaryItem::SetTerm(std::string_view value) {
  Procedure(*this, "Term", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mTerm.Value()) return;
    mTerm.Set(value);
    Changed();
  });
}

void GlossaryItem::SetDefinition(std::string_view value) {
  Assign(*this, mDefinition, value, "Definition", &GlossaryItem::Changed);
}

Ref<quillbook::QBProject> GlossaryItem::QBProject() const {
  return mQBProject.Target();
}

void GlossaryItem::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

Ref<GlossaryItem> GlossaryItem::Clone(Ref<quillbook::QBProject>& ParentQBProject) {
  return Procedure(*this, "Clone", [&](auto& p) { p("ParentQBProject", ParentQBProject); })
      .RunSetting(Ref<GlossaryItem>(), [&](Ref<GlossaryItem>& copy) {
        if (!ParentQBProject) ParentQBProject = QBProject();
        copy = ParentQBProject->NewGlossaryItem(Term(), Definition());
        XMLDocument document;
        Save(document.DocumentElement());
        copy->Load(document.DocumentElement());
      });
}

Ref<GlossaryItem> GlossaryItem::Clone() {
  Ref<quillbook::QBProject> own;
  return Clone(own);
}

void GlossaryItem::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    const auto attributes = e.Attributes();
    Key = attributes.Item("Key").Value();
    mTerm.Set(attributes.Item("term").Value());
    mDefinition = e.TextView();
  });
}

void GlossaryItem::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.AddAttribute("Key", Key);
    e.AddAttribute("Term", Term());
    e.SetText(mDefinition);
  });
}

void GlossaryItem::Changed() {
  Procedure(*this, "Changed").Run([&] {
    if (const auto project = QBProject()) project->FireGlossaryItemChanged(Ref<GlossaryItem>(this));
  });
}

const TypeInfo& GlossaryItem::StaticType() {
  static const TypeInfo type = Describe<GlossaryItem>("GlossaryItem")
                                   .Public<&GlossaryItem::Key>("Key")
                                   .ComputedField<&GlossaryItem::Term>("mTerm")
                                   .Field<&GlossaryItem::mDefinition>("mDefinition")
                                   .Field<&GlossaryItem::mQBProject>("mQBProject")
                                   .Property<&GlossaryItem::Term, &GlossaryItem::SetTerm>("Term")
                                   .Property<&GlossaryItem::Definition, &GlossaryItem::SetDefinition>("Definition")
                                   .Property<&GlossaryItem::QBProject, &GlossaryItem::SetQBProject>("QBProject")
                                   .Done();
  return type;
}

}  // namespace quillbook
