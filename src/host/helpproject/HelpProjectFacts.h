// What the control files of a help project are made from.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/ContentsLines.h"
#include "host/helpproject/IndexLines.h"

namespace quillbook::detail {

/// All text is UTF-8. Paths are relative to the project's folder, with "/".
struct HelpProjectFacts {
  std::string name;      ///< of the control files, without extension
  std::string helpFile;  ///< may lead out of the folder by ".."
  std::string title;
  std::string defaultPage;  ///< empty if there is none
  std::uint32_t localeId = 0x409;
  int codePage = 1252;  ///< of the control files of HTML Help
  std::vector<ContentsLine> contents;
  std::vector<IndexLine> keywords;
  std::vector<std::string> files;

  // Microsoft Help 2 alone.
  std::vector<IndexLine> associativeKeywords;
  std::vector<IndexLine> contextKeywords;
  std::string helpNamespace;
  std::string fileId;
  std::vector<std::string> plugInNamespaces;  ///< into which the help is to be plugged in

  /// Name of the help file without folder and extension.
  [[nodiscard]] std::string HelpFileStem() const {
    const auto name = helpFile.substr(helpFile.rfind('/') + 1);
    return name.substr(0, name.rfind('.'));
  }
};

}  // namespace quillbook::detail
