// The XML files of a Microsoft Help 2 project: .HxC, .HxT, .HxF and .HxK.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/Sitemap.h"

namespace quillbook::compile {

/// Text of a source, mostly a path, and where it stands.
struct SourceMention {
  std::string path;
  TextPlace place = {};
};

/// A collection (.HxC).
struct Help2Collection {
  bool isCollection = false;  ///< the root element is what it should be
  std::string title;
  std::uint32_t localeId = 0x409;
  TextPlace localePlace = {};  ///< where the language stands
  std::string outputFile;
  std::vector<SourceMention> fileLists;     ///< .HxF
  std::vector<SourceMention> contents;      ///< .HxT
  std::vector<SourceMention> indexes;       ///< .HxK
  std::vector<SourceMention> otherSources;  ///< attributes, virtual topics, samples, stop words
};

/// All parsers here are lenient as viewers of old files must be: unknown elements are passed over. `text` is UTF-8.
[[nodiscard]] Help2Collection ParseCollection(std::string_view text);
/// Contents with their pages. Headings have no target.
[[nodiscard]] Sitemap ParseHelp2Contents(std::string_view text);
/// Keywords; a comma in a term divides levels only for the viewer, here it stays.
[[nodiscard]] Sitemap ParseHelp2Index(std::string_view text, std::string& indexName);
/// The files of a list; names may hold "*" and "?".
[[nodiscard]] std::vector<SourceMention> ParseFileList(std::string_view text);

/// Text of such a file: by its mark, else by its XML declaration, else UTF-8.
[[nodiscard]] std::string DecodeXml(std::string bytes);

/// Whether a file name fits a pattern with "*" and "?", ignoring case.
[[nodiscard]] bool FitsPattern(std::string_view name, std::string_view pattern);

}  // namespace quillbook::compile
