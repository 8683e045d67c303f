#include "quillbook/host/PlugInRegistry.h"

#include <algorithm>

#include "quillbook/base/Text.h"

namespace quillbook::PlugInRegistry {

namespace {

std::vector<PlugInRegistration>& Registrations() {
  thread_local std::vector<PlugInRegistration> registrations;
  return registrations;
}

auto Position(std::string_view namespaceName) {
  auto& all = Registrations();
  return std::find_if(all.begin(), all.end(), [&](const PlugInRegistration& registration) {
    return EqualsIgnoringCase(registration.namespaceName, namespaceName);
  });
}

}  // namespace

void Register(PlugInRegistration registration) {
  const auto known = Position(registration.namespaceName);
  if (known == Registrations().end())
    Registrations().push_back(std::move(registration));
  else
    *known = std::move(registration);
}

void Unregister(std::string_view namespaceName) {
  const auto known = Position(namespaceName);
  if (known != Registrations().end()) Registrations().erase(known);
}

bool IsRegistered(std::string_view namespaceName) {
  return Position(namespaceName) != Registrations().end();
}

const std::vector<PlugInRegistration>& All() {
  return Registrations();
}

}  // namespace quillbook::PlugInRegistry
