#include "cli/edit/StoredValues.h"

#include <algorithm>

#include "quillbook/base/Variant.h"
#include "quillbook/frame/services/FileSystemObject.h"

namespace quillbook::cli {
namespace {

bool IsAbsolute(std::string_view path) {
  return path.starts_with('/') || path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

}  // namespace

std::string PathFromUser(const QBProject& project, std::string_view path) {
  if (path.empty() || IsAbsolute(path)) return std::string(path);
  return project.Filename->Path() + std::string(path);
}

std::string PathForUser(std::string stored) {
  std::replace(stored.begin(), stored.end(), '\\', '/');
  if (stored.size() > 1 && stored.ends_with('/')) stored.pop_back();
  return stored;
}

std::string StoredText(const Object& object, std::string_view field) {
  std::string text;
  object.Fields([&](std::string_view name, const Variant& value) {
    if (name == field) text = value.ToText();
  });
  return text;
}

std::string TopicNameFor(const QBProject& project, const std::string& key) {
  const auto topic = key.empty() ? Ref<Topic>() : project.Topics->Item(key);
  return topic ? topic->Name() : key;
}

}  // namespace quillbook::cli
