#include "quillbook/structure/GlossaryItems.h"

#include "quillbook/frame/FirstMember.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "structure/ElementFile.h"

namespace quillbook {

GlossaryItems::~GlossaryItems() {
  mTerms.Clear();
}

void GlossaryItems::SetDirty(bool value) {
  Procedure(*this, "Dirty", [&](auto& p) { p("RHS", value); }).Run([&] {
    mDirty = value;
    if (!value) return;
    if (const auto project = QBProject()) project->FireDirtyStateChanged();
  });
}

Ref<quillbook::QBProject> GlossaryItems::QBProject() const {
  return mQBProject.Target();
}

void GlossaryItems::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

Ref<GlossaryItem> GlossaryItems::ItemByTerm(std::string_view Term) const {
  return Procedure(*this, "ItemByTerm", [&](auto& p) { p("Term", Term); }).Run([&] {
    return FirstMember(
        mCol, mTerms, Term, [](const GlossaryItem& item) -> const std::string& { return item.Term(); },
        [](const GlossaryItem& item) -> const std::string& { return item.Key; });
  });
}

void GlossaryItems::MemberAdded(const Ref<GlossaryItem>& member, std::string_view /*key*/) {
  mTerms.Add(member->TermText(), member.get());
  QBProject()->FireGlossaryItemAdded(member);
  SetDirty(true);
}

void GlossaryItems::MemberRemoved(const Ref<GlossaryItem>& member) {
  mTerms.Remove(member->TermText());
  QBProject()->FireGlossaryItemRemoved(member);
  SetDirty(true);
}

std::string GlossaryItems::LocalSpec() const {
  return Procedure(*this, "LocalSpec").Run([&] { return ElementFile::LocalSpec(QBProject(), "Glossary.xml"); });
}

bool GlossaryItems::ReadOnly() const {
  return Procedure(*this, "ReadOnly").Run([&] {
    return ElementFile::UsedBy(QBProject()) && ElementFile(LocalSpec()).ReadOnly();
  });
}

void GlossaryItems::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    mTerms.Clear();
    mCol.Clear();
    if (ElementFile::UsedBy(QBProject())) e = ElementFile(LocalSpec()).Read();
    for (const auto& child : e.ChildElements()) {
      const auto item = New<GlossaryItem>();
      item->SetQBProject(QBProject());
      item->Load(child);
      mCol.AddKeyed(item, item->Key);
      mTerms.Add(item->TermText(), item.get());
    }
    SetDirty(false);
  });
}

bool GlossaryItems::Save(XMLElement e) {
  return Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    const auto writeItems = [&](XMLElement parent) {
      for (const auto& item : *this) item->Save(parent.AddChild("glossaryitem"));
    };
    if (ElementFile::UsedBy(QBProject()))
      ElementFile(LocalSpec()).Write(mDirty, "Glossary", writeItems);
    else
      writeItems(e);
    return true;
  });
}

const TypeInfo& GlossaryItems::StaticType() {
  static const TypeInfo type = Describe<GlossaryItems>("GlossaryItems")
                                   .Public<&GlossaryItems::PauseEvents>("PauseEvents")
                                   .Field<&GlossaryItems::mQBProject>("mQBProject")
                                   .Field<&GlossaryItems::mDirty>("mDirty")
                                   .Field<&GlossaryItems::mCol>("mCol")
                                   .Property<&GlossaryItems::Dirty, &GlossaryItems::SetDirty>("Dirty")
                                   .Property<&GlossaryItems::QBProject, &GlossaryItems::SetQBProject>("QBProject")
                                   .ReadOnly<&GlossaryItems::Count>("Count")
                                   .ReadOnly<&GlossaryItems::LocalSpec>("LocalSpec")
                                   .ReadOnly<&GlossaryItems::ReadOnly>("ReadOnly")
                                   .Done();
  return type;
}

}  // namespace quillbook
