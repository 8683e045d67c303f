#include "quillbook/host/CollectionServices.h"

namespace quillbook::CollectionServices {

std::string_view BeforeColon(std::string_view Text) noexcept {
  return Text.substr(0, Text.find(':'));
}

std::string_view AfterColon(std::string_view Text) noexcept {
  const auto colon = Text.find(':');
  return colon == std::string_view::npos ? std::string_view() : Text.substr(colon + 1);
}

std::string_view Field(std::string_view Text, std::string_view Separator, std::size_t Index) noexcept {
  if (Index == 0) return {};
  if (Separator.empty()) return Index == 1 ? Text : std::string_view();
  for (; Index > 1; --Index) {
    const auto at = Text.find(Separator);
    if (at == std::string_view::npos) return {};
    Text.remove_prefix(at + Separator.size());
  }
  return Text.substr(0, Text.find(Separator));
}

std::vector<Ref<Object>> Items(const Ref<Object>& List) {
  std::vector<Ref<Object>> items;
  if (List) List->ForEachItem([&](const Variant& item) { items.push_back(item.ToObject()); });
  return items;
}

}  // namespace quillbook::CollectionServices
