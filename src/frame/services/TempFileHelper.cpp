#include "quillbook/frame/services/TempFileHelper.h"

#include "frame/services/WindowsPath.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

std::string TempFileHelper::TempFileName(std::string_view Prefix, std::string_view Extension) {
  auto& platform = Platform::Current();
  const auto suffix = Extension.empty() ? std::string() : "." + std::string(Extension);
  return detail::WithBackslashes(
      platform.Files().CreateUniqueFile(platform.Session().TemporaryFolder(), Prefix, suffix));
}

}  // namespace quillbook
