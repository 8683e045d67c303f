// The binary table of contents of compiled HTML Help: #TOCIDX.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/compile/ChmTopics.h"
#include "host/compile/Sitemap.h"

namespace quillbook::compile {

/// Lays out the contents tree and tells the table of topics where each page stands in it. A page that occurs more
/// than once is shown at its first place. `encode` gives a text in the code page of the help file.
///
/// Source of the format: the public description of the files inside compiled help.
[[nodiscard]] std::string BuildContentsIndex(const Sitemap& contents, ChmTopics& topics, ChmStrings& strings,
                                             const std::function<std::string(std::string_view)>& encode);

}  // namespace quillbook::compile
