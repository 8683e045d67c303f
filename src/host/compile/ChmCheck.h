// Reads a fresh help file back and compares it with what went in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/ByteSink.h"
#include "host/compile/ChmTopics.h"
#include "host/compile/CompileMessage.h"
#include "host/compile/KeywordIndex.h"
#include "host/compile/Sitemap.h"

namespace quillbook::compile {

/// A quick number for the content of a file; different for files that differ by an accident.
[[nodiscard]] std::uint64_t HashOfBytes(std::string_view bytes) noexcept;

/// What a help file must hold. What is pointed to outlives the check.
struct ChmExpectation {
  struct File {
    std::string name;
    std::uint64_t size = 0;
    std::uint64_t hash = 0;
  };
  std::vector<File> files;
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
void CheckChm(const ByteSource& file, const ChmExpectation& expected, MessageList& messages);

}  // namespace quillbook::compile
