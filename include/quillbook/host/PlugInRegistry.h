// The kinds of documentation that host projects of this apartment know.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Ref.h"

namespace quillbook {

class IMVProjectPlugIn;
class INamespaceProvider;

/// One kind of documentation: its namespace, such as "mv.quillbooklite", and how its two faces are made.
struct PlugInRegistration {
  std::string namespaceName;
  std::function<Ref<IMVProjectPlugIn>()> makePlugIn;  ///< may be empty: the namespace then has no plug-in
  std::function<Ref<INamespaceProvider>()> makeProvider;
};

/// One registry per apartment (thread). A host project makes a doc type for each registration when its doc types are
/// first asked for, so whoever brings a namespace registers it before the first host project.
namespace PlugInRegistry {

/// A second registration of a namespace (ignoring case) replaces the first.
void Register(PlugInRegistration registration);
/// Nothing happens if the namespace is unknown.
void Unregister(std::string_view namespaceName);
[[nodiscard]] bool IsRegistered(std::string_view namespaceName);
/// In the order of registering.
[[nodiscard]] const std::vector<PlugInRegistration>& All();

}  // namespace PlugInRegistry

}  // namespace quillbook
