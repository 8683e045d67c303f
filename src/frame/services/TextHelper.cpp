#include "quillbook/frame/services/TextHelper.h"

#include "frame/services/WindowsPath.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

std::string TextHelper::Join(const Collection<std::string>& Items, std::string_view Delimiter) {
  std::string text;
  for (const auto& item : Items) {
    if (&item != &*Items.begin()) text += Delimiter;
    text += item;
  }
  return text;
}

std::string TextHelper::Token(std::string_view Text, std::string_view Delimiter, std::int32_t Index) {
  if (Index < 1) return {};
  for (; Index > 1; --Index) {
    const auto end = Delimiter.empty() ? std::string_view::npos : Text.find(Delimiter);
    if (end == std::string_view::npos) return {};
    Text.remove_prefix(end + Delimiter.size());
  }
  return std::string(Delimiter.empty() ? Text : Text.substr(0, Text.find(Delimiter)));
}

std::string TextHelper::SpecialFolder(int Id) {
  return detail::WithBackslashes(Platform::Current().Session().SpecialFolder(Id));
}

std::string TextHelper::UserName() {
  return Platform::Current().Session().UserName();
}

}  // namespace quillbook
