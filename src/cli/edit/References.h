// Records that values of fields name.
#pragma once

#include <string_view>

#include "quillbook/base/Ref.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategory.h"

namespace quillbook::cli {

// By key, which is in braces, or by name ignoring case. Each raises `Refusal` if there is none, or more than one.

[[nodiscard]] Ref<Topic> FindTopic(QBProject& project, std::string_view address);
[[nodiscard]] Ref<TopicCategory> FindCategory(QBProject& project, std::string_view address);

/// True for what is meant as a key.
[[nodiscard]] inline bool IsKey(std::string_view address) noexcept {
  return address.starts_with('{') && address.ends_with('}');
}
[[noreturn]] void RefuseUnknown(std::string_view singular, std::string_view address, std::string_view remedy);
/// `keys` are listed for the user to choose from.
[[noreturn]] void RefuseAmbiguous(std::string_view plural, std::string_view address,
                                  const std::vector<std::string>& keys);

}  // namespace quillbook::cli
