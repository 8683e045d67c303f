// Reads a fresh help file back and compares it with what went in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/ChmTopics.h"
#include "host/compile/HelpOutput.h"
#include "host/compile/KeywordIndex.h"
#include "host/compile/Sitemap.h"
#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// What a help file must hold. What is pointed to outlives the check.
struct ChmExpectation {
  int codePage = 1252;
  std::string title;
  std::string defaultTopic;
  const Sitemap* contents = nullptr;
  bool binaryContents = false;
  const std::vector<KeywordEntry>* keywords = nullptr;
  bool binaryIndex = false;
  const ChmTopics* topics = nullptr;
  std::function<std::string(std::string_view)> encode;  ///< text in the code page
};

/// Every difference is an error message that says which.
void CheckChm(const HelpOutput& output, const ChmExpectation& expected, MessageList& messages);

}  // namespace quillbook::compile
