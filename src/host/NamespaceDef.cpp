#include "quillbook/host/NamespaceDef.h"

#include <algorithm>
#include <vector>

#include "quillbook/base/Text.h"
#include "quillbook/host/CollectionServices.h"

namespace quillbook {

namespace {

bool Matches(const NamespaceDef& definition, std::string_view kindOrNamespace) {
  const bool qualified = kindOrNamespace.find(':') != std::string_view::npos;
  return EqualsIgnoringCase(qualified ? definition.Kind() : definition.Namespace(), kindOrNamespace);
}

/// Visits in reading order, a definition before what is below it, until the visitor answers false.
template <class Visit>
void ForEachInReadingOrder(const NamespaceDefs& definitions, Visit&& visit) {
  std::vector<Ref<NamespaceDef>> waiting(definitions.begin(), definitions.end());
  std::reverse(waiting.begin(), waiting.end());
  while (!waiting.empty()) {
    const auto definition = waiting.back();
    waiting.pop_back();
    if (!visit(definition)) return;
    const auto firstChild = waiting.size();
    for (const auto& child : *definition->Children()) waiting.push_back(child);
    std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(firstChild), waiting.end());
  }
}

}  // namespace

Ref<NamespaceDef> NamespaceDefs::Find(std::string_view KindOrNamespace) const {
  Ref<NamespaceDef> found;
  ForEachInReadingOrder(*this, [&](const Ref<NamespaceDef>& definition) {
    if (Matches(*definition, KindOrNamespace)) found = definition;
    return !found;
  });
  return found;
}

Ref<NamespaceDefs> NamespaceDefs::Matching(std::string_view KindOrNamespace) const {
  auto found = New<NamespaceDefs>();
  ForEachInReadingOrder(*this, [&](const Ref<NamespaceDef>& definition) {
    if (Matches(*definition, KindOrNamespace)) found->Add(definition);
    return true;
  });
  return found;
}

const TypeInfo& NamespaceDefs::StaticType() {
  static const TypeInfo type = Describe<NamespaceDefs>("NamespaceDefs")
                                   .Field<&NamespaceDefs::mDefinitions>("mDefinitions")
                                   .ReadOnly<&NamespaceDefs::Count>("Count")
                                   .Done();
  return type;
}

NamespaceDef::NamespaceDef(std::string_view Kind, std::string_view ItemType, std::string_view Filter)
    : mNamespace(CollectionServices::BeforeColon(Kind)),
      mKind(Kind),
      mItemType(ItemType.empty() ? CollectionServices::AfterColon(Kind) : ItemType),
      mFilter(Filter),
      mChildren(New<NamespaceDefs>()) {}

const TypeInfo& NamespaceDef::StaticType() {
  static const TypeInfo type = Describe<NamespaceDef>("NamespaceDef")
                                   .Field<&NamespaceDef::mNamespace>("mNamespace")
                                   .Field<&NamespaceDef::mKind>("mKind")
                                   .Field<&NamespaceDef::mItemType>("mItemType")
                                   .Field<&NamespaceDef::mFilter>("mFilter")
                                   .ReadOnly<&NamespaceDef::Namespace>("Namespace")
                                   .ReadOnly<&NamespaceDef::Kind>("Kind")
                                   .ReadOnly<&NamespaceDef::ItemType>("ItemType")
                                   .ReadOnly<&NamespaceDef::Children>("Children")
                                   .Done();
  return type;
}

}  // namespace quillbook
