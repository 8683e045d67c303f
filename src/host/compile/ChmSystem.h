// The small description files of compiled HTML Help: #SYSTEM, #WINDOWS, #IDXHDR, #IVB and $OBJINST.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/compile/ChmTopics.h"
#include "host/compile/CodePageText.h"
#include "host/compile/HelpProject.h"
#include "host/compile/Sitemap.h"

namespace quillbook::compile {

/// What goes into #SYSTEM beside the project's own options. Paths are as stored, texts UTF-8.
struct SystemFacts {
  std::string contentsFile, indexFile, defaultTopic, defaultWindow;
  std::string stem;  ///< of the output's name
  std::uint32_t timeStamp = 0;
  bool fullText = false;
  bool keywordLinks = false;
  bool associativeLinks = false;
  bool binaryContents = false;
  bool binaryIndex = false;
};

/// Source of all formats here: the public description of the files inside compiled help, and the viewer's published
/// interface for windows.
[[nodiscard]] std::string BuildSystem(const HelpProject& project, const SystemFacts& facts, const std::string& header,
                                      const CodePageText& codePage);
/// Empty if the project defines no window.
[[nodiscard]] std::string BuildWindows(const HelpProject& project, ChmStrings& strings, const CodePageText& codePage);
/// #IDXHDR, of which #SYSTEM holds a copy.
[[nodiscard]] std::string BuildIndexHeader(const HelpProject& project, const Sitemap& contents, std::size_t topics,
                                           ChmStrings& strings, const CodePageText& codePage);
/// Pages by context number, ascending.
[[nodiscard]] std::string BuildContextIds(const std::vector<ContextId>& ids, ChmStrings& strings,
                                          const CodePageText& codePage);
/// How the viewer is to divide a query into words: the same way as `WordSplitter` divided the pages.
[[nodiscard]] std::string BuildWordBreaker(int codePage, std::uint32_t localeId);

/// The two-byte code pages.
[[nodiscard]] constexpr bool IsDoubleByte(int codePage) noexcept {
  return codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
}

}  // namespace quillbook::compile
