#include "quillbook/frame/services/PathHelper.h"

#include "frame/services/WindowsPath.h"
#include "quillbook/base/Text.h"

namespace quillbook {

using detail::WindowsPath;

std::string PathHelper::RelativePath(const Ref<FileSystemObject>& Base, const Ref<FileSystemObject>& Target) {
  auto target = Target->FullName();
  if (target.empty()) return {};
  const auto path = WindowsPath::Parse(target);
  const auto base = WindowsPath::Parse(Base->Path());
  if (!path.IsAbsolute()) return path.Text();
  if (!EqualsIgnoringCase(path.root, base.root)) return target;

  // The last name of a file is never a folder to share, even if the base's folder is called the same.
  const auto folders = path.isFolder ? path.names.size() : path.names.size() - 1;
  std::size_t shared = 0;
  while (shared < folders && shared < base.names.size() && EqualsIgnoringCase(path.names[shared], base.names[shared]))
    ++shared;
  WindowsPath relative;
  relative.isFolder = path.isFolder;
  relative.names.assign(base.names.size() - shared, "..");
  relative.names.insert(relative.names.end(), path.names.begin() + static_cast<std::ptrdiff_t>(shared),
                        path.names.end());
  return relative.Text();
}

std::string PathHelper::AbsolutePath(const Ref<FileSystemObject>& Base, const Ref<FileSystemObject>& Target) {
  auto target = Target->FullName();
  if (target.empty() || WindowsPath::Parse(target).IsAbsolute()) return target;
  return WindowsPath::Parse(Base->Path() + target).Text();
}

bool PathHelper::IsOfType(const Ref<Object>& Item, std::string_view TypeName) {
  return Item && Item->IsOfType(TypeName);
}

}  // namespace quillbook
