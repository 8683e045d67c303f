#include "quillbook/base/Date.h"

namespace quillbook {
std::string Date::ToLocaleText() const {
  return {};
}
std::optional<Date> Date::FromLocaleText(std::string_view) {
  return {};
}
}  // namespace quillbook
