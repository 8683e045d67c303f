// A kind of documentation within a host project.
#pragma once

#include <string>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"
#include "quillbook/host/IMVProjectPlugIn.h"
#include "quillbook/host/INamespaceProvider.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/host/TOCDefinition.h"

namespace quillbook {

class MVProject;

/// Namespace, template and provider that belong together.
class DocType final : public Object {
 public:
  DocType(const Ref<MVProject>& Project, std::string ID, Ref<INamespaceProvider> Provider,
          Ref<IMVProjectPlugIn> PlugIn);

  /// The namespace, such as "mv.quillbooklite".
  [[nodiscard]] const std::string& ID() const noexcept { return mID; }
  /// Nothing until it is set.
  [[nodiscard]] const Ref<PageTemplate>& Template() const noexcept { return mTemplate; }
  void SetTemplate(const Ref<PageTemplate>& Template) { mTemplate = Template; }
  [[nodiscard]] const Ref<INamespaceProvider>& NamespaceProvider() const noexcept { return mNamespaceProvider; }
  /// Nothing for a namespace without a plug-in.
  [[nodiscard]] const Ref<IMVProjectPlugIn>& PlugIn() const noexcept { return mPlugIn; }

  /// The contents of this documentation: the first definition counts. Empty until a provider adds one.
  [[nodiscard]] const Ref<Collection<Ref<TOCDefinition>>>& TOCDefinitions() const noexcept { return mTOCDefinitions; }

  /// Copies the template's support files to the project's `OutputDirectory`, as a build does. Failure 91 without a
  /// template; failures of the disk are raised.
  void CopyTemplateFiles();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mID;
  WeakReference<MVProject> mProject;
  Ref<PageTemplate> mTemplate;
  Ref<INamespaceProvider> mNamespaceProvider;
  Ref<IMVProjectPlugIn> mPlugIn;
  Ref<Collection<Ref<TOCDefinition>>> mTOCDefinitions;
};

using DocTypes = Collection<Ref<DocType>>;

}  // namespace quillbook
