// HTML Help projects (.hhp).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// A path that the project names, as it stands there, and where.
struct NamedFile {
  std::string path;
  int line = 0;
};

/// A window definition; the fields stand in the order of the project file. Numbers that are left out are 0 and not
/// valid for the viewer, which `valid` tells by one bit a field, as the compiled form does.
struct HelpWindow {
  std::string name, title, contentsFile, indexFile, defaultTopic, home;
  std::string jump1, jump1Text, jump2, jump2Text;
  std::uint32_t navigationStyle = 0, navigationWidth = 0, buttons = 0;
  std::int32_t rectangle[4] = {0, 0, 0, 0};
  std::uint32_t style = 0, extendedStyle = 0, showState = 0;
  std::uint32_t navigationClosed = 0, defaultTab = 0, tabPosition = 0, notify = 0;
  std::uint32_t valid = 0;
  int line = 0;
};

/// A number for context help and the page behind it.
struct ContextId {
  std::uint32_t number = 0;
  std::string page;
  std::string file;  ///< that names the page, native path
  int line = 0;
};

/// A help project as its file states it. All text is UTF-8; paths are as written.
struct HelpProject {
  std::string file;    ///< native path of the project file
  std::string folder;  ///< its folder, with a slash at the end; empty for the working directory

  std::string compiledFile, contentsFile, indexFile, defaultTopic, defaultWindow, title, defaultFont, stopListFile;
  int contentsLine = 0, indexLine = 0, defaultTopicLine = 0, stopListLine = 0, titleLine = 0, languageLine = 0;
  std::uint32_t localeId = 0x409;
  int codePage = 1252;
  bool fullTextSearch = false;
  bool binaryContents = false;
  bool binaryIndex = true;
  bool autoIndex = false;  ///< keywords come from objects in pages too
  std::vector<HelpWindow> windows;
  std::vector<NamedFile> files;
  std::vector<std::string> mergedFiles;
  std::vector<ContextId> contextIds;  ///< of the symbols that have both a number and a page, ascending by number
};

/// Reads a project file. Unknown sections and keys, symbols without a page or a number and the like become messages
/// with file and line. Failures of reading (53, 70, 75) come out as they are.
[[nodiscard]] HelpProject ReadHelpProject(const std::string& path, MessageList& messages);

/// Text of a help project's own files: UTF-8 where a mark says so, else in the project's code page.
[[nodiscard]] std::string DecodeHelpText(std::string bytes, int codePage);

}  // namespace quillbook::compile
