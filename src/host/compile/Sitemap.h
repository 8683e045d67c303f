// Contents (.hhc) and index (.hhk) files: sitemap 1.0.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// A page that an index entry leads to.
struct SitemapTarget {
  std::string title;
  std::string local;
  TextPlace place = {};       ///< of the address
  TextPlace titlePlace = {};  ///< of its own title, else of the entry's name
};

/// One entry. Entries stand in document order, each with its depth, so that a tree of any depth needs no recursion.
struct SitemapEntry {
  int level = 0;         ///< 0 for the outermost list
  TextPlace place = {};  ///< of its name in the file, or of its object while it has none
  std::string name;
  std::vector<SitemapTarget> targets;  ///< a contents entry has one at most
  std::string url;
  std::string seeAlso;
  std::string merge;
  int imageNumber = 0;  ///< 0 if none was given
  bool isNew = false;
};

struct Sitemap {
  std::vector<std::pair<std::string, std::string>> properties;  ///< of the "text/site properties" object
  std::vector<SitemapEntry> entries;
};

/// Parses as leniently as help viewers do: any case, unclosed items, unknown tags and parameters passed over. `text`
/// is UTF-8; references to characters in values are resolved. Time and memory grow linearly.
[[nodiscard]] Sitemap ParseSitemap(std::string_view text);

}  // namespace quillbook::compile
