#include "quillbook/generation/QBMVPlugIn.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/generation/QBNamespaceProvider.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/DocType.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

Ref<QBProject> QBMVPlugIn::QBProject() const {
  return modMain::GetQBProject(mMVProject.Target());
}

void QBMVPlugIn::IMVProjectPlugIn_Initialise(const Ref<MVProject>& Project) {
  mMVProject.SetTarget(Project);
}

std::string QBMVPlugIn::IMVProjectPlugIn_ValidatePage(std::string_view) {
  return BooleanText(true);
}

bool QBMVPlugIn::IMVProjectPlugIn_SomethingToDocument() {
  return static_cast<bool>(QBProject());
}

void QBMVPlugIn::IMVProjectPlugIn_Terminate() {
  IMVProjectPlugIn_Reset();
}

Ref<Collection<Ref<Object>>> QBMVPlugIn::IMVProjectPlugIn_RootItems(std::string_view) {
  return New<Collection<Ref<Object>>>();
}

long QBMVPlugIn::IMVProjectPlugIn_RootItemTypeCount(std::string_view RootItemType) {
  return EqualsIgnoringCase(RootItemType, "binary") && QBProject() ? 1 : 0;
}

Ref<NamespaceDefs> QBMVPlugIn::IMVProjectPlugIn_NamespaceDefs() {
  return Procedure(*this, "IMVProjectPlugIn_NamespaceDefs").Run([&]() -> Ref<NamespaceDefs> {
    const auto& type = mMVProject.Target()->DocTypes()->Item(QuillbookNamespace);
    return type->Template() ? type->Template()->NamespaceDefs() : Ref<NamespaceDefs>();
  });
}

void QBMVPlugIn::IMVProjectPlugIn_Reset() {
  Procedure(*this, "IMVProjectPlugIn_Reset").Run([&] {
    const auto host = mMVProject.Target();
    if (!host) return;
    Ref<INamespaceProvider> provider;
    IgnoreFailures([&] { provider = host->DocTypes()->Item(QuillbookNamespace)->NamespaceProvider(); });
    if (auto* own = dynamic_cast<QBNamespaceProvider*>(provider.get())) own->Reset();
  });
}

const TypeInfo& QBMVPlugIn::StaticType() {
  static const TypeInfo type = Describe<QBMVPlugIn>("QBMVPlugIn")
                                   .Field<&QBMVPlugIn::mMVProject>("mMVProject")
                                   .ReadOnly<&QBMVPlugIn::QBProject>("QBProject")
                                   .Done();
  return type;
}

}  // namespace quillbook
