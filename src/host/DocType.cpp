#include "quillbook/host/DocType.h"

#include "host/OutputSession.h"
#include "quillbook/base/Failure.h"
#include "quillbook/host/MVProject.h"

namespace quillbook {

DocType::DocType(const Ref<MVProject>& Project, std::string ID, Ref<INamespaceProvider> Provider,
                 Ref<IMVProjectPlugIn> PlugIn)
    : mID(std::move(ID)),
      mNamespaceProvider(std::move(Provider)),
      mPlugIn(std::move(PlugIn)),
      mTOCDefinitions(New<Collection<Ref<TOCDefinition>>>()) {
  mProject.SetTarget(Project);
}

void DocType::CopyTemplateFiles() {
  const auto project = mProject.Target();
  if (!project || !mTemplate) throw Failure(FailureNumber::ObjectNotSet);
  detail::OutputSession session(*project, mNamespaceProvider);
  static_cast<void>(session.CopySupportFiles(*mTemplate));  // a cancelled copy is no failure
}

const TypeInfo& DocType::StaticType() {
  static const TypeInfo type = Describe<DocType>("DocType")
                                   .Field<&DocType::mID>("mID")
                                   .Field<&DocType::mProject>("mProject")
                                   .Field<&DocType::mTemplate>("mTemplate")
                                   .Field<&DocType::mNamespaceProvider>("mNamespaceProvider")
                                   .Field<&DocType::mPlugIn>("mPlugIn")
                                   .Field<&DocType::mTOCDefinitions>("mTOCDefinitions")
                                   .ReadOnly<&DocType::ID>("ID")
                                   .Property<&DocType::Template, &DocType::SetTemplate>("Template")
                                   .ReadOnly<&DocType::NamespaceProvider>("NamespaceProvider")
                                   .ReadOnly<&DocType::TOCDefinitions>("TOCDefinitions")
                                   .Done();
  return type;
}

}  // namespace quillbook
