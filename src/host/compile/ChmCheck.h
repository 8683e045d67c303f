// Reads a fresh help file back and compares it with what went in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/ChmTopics.h"
#include "host/compile/KeywordIndex.h"
#include "host/compile/Sitemap.h"
#include "host/compile/StorageReader.h"
#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// What a help file must hold. What is pointed to outlives the check.
struct ChmExpectation {
  int codePage = 1252;
  std::string title;
  std::string defaultTopic;
  std::string contentsFile;
  std::string indexFile;
  const Sitemap* contents = nullptr;                    ///< of the binary contents, if there are any
  const std::vector<KeywordEntry>* keywords = nullptr;  ///< of the binary index, likewise
  const ChmTopics* topics = nullptr;
  std::function<std::string(std::string_view)> encode;  ///< text in the code page
};

/// Every difference is an error message that says which. The files' bytes are not looked at here.
void CheckChm(const StorageReader& result, const ChmExpectation& expected, MessageList& messages);

}  // namespace quillbook::compile
