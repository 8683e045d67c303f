#include "quillbook/generation/Registration.h"

#include "quillbook/generation/QBMVPlugIn.h"
#include "quillbook/generation/QBNamespaceProvider.h"
#include "quillbook/host/PlugInRegistry.h"

namespace quillbook {

void RegisterQuillbookNamespace() {
  if (PlugInRegistry::IsRegistered(QuillbookNamespace)) return;
  PlugInRegistry::Register({.namespaceName = std::string(QuillbookNamespace),
                            .makePlugIn = []() -> Ref<IMVProjectPlugIn> { return New<QBMVPlugIn>(); },
                            .makeProvider = []() -> Ref<INamespaceProvider> { return New<QBNamespaceProvider>(); }});
}

}  // namespace quillbook
