// Any bytes as a compiled help file: directory, tables and content are read within bounds, or refused.
#include <cstdint>
#include <string>
#include <string_view>

#include "host/compile/ChmTables.h"
#include "host/compile/Help2Sources.h"
#include "host/compile/HelpProject.h"
#include "host/compile/Sitemap.h"
#include "host/compile/StorageReader.h"
#include "quillbook/base/Failure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillbook;
  using namespace quillbook::compile;
  constexpr std::uint64_t longest = 1U << 20;
  const MemorySource source(std::string_view(reinterpret_cast<const char*>(data), size));
  try {
    const StorageReader reader(source);
    for (const auto& [code, record] : ReadSystemRecords(reader)) (void)DecodeHelpText(record, 1252);
    ChmTables tables(reader, 1252);
    (void)tables.ReadContents();
    for (const auto& line : tables.ReadKeywords("/$WWKeywordLinks/"))
      for (const auto topic : line.topics) (void)tables.TopicAt(topic);
    std::size_t left = 64;  // a directory may name the same bytes a thousand times
    for (const auto& entry : reader.Entries()) {
      if (entry.length > longest || left-- == 0) continue;
      const auto bytes = reader.ReadAll(entry, longest);
      std::string name;
      (void)ParseSitemap(bytes);
      (void)ParseCollection(bytes);
      (void)ParseHelp2Contents(bytes);
      (void)ParseHelp2Index(bytes, name);
    }
  } catch (const Failure&) {  // a clear refusal is what is wanted
  }
  return 0;
}
