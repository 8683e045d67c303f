// How the host engine comes to know this library.
#pragma once

#include <string_view>

namespace quillbook {

/// The namespace of everything that this library offers the host engine.
inline constexpr std::string_view QuillbookNamespace = "mv.quillbooklite";

/// Registers plug-in and namespace provider for this apartment, once. To be called before a host project is made.
void RegisterQuillbookNamespace();

}  // namespace quillbook
