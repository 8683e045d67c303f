#include "quillbook/frame/LibraryVersion.h"

namespace quillbook {

std::string_view LibraryVersion() noexcept {
  return QUILLBOOK_VERSION;
}

}  // namespace quillbook
