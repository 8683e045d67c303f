#include "host/compile/Sitemap.h"

#include <utility>

#include "host/compile/PlaceFinder.h"
#include "host/compile/TagScanner.h"
#include "quillbook/base/Text.h"
#include "quillbook/base/Variant.h"

namespace quillbook::compile {

namespace {

/// Builds the list of entries from the tags of the file.
class SitemapBuilder {
 public:
  explicit SitemapBuilder(std::string_view text) : mText(text), mPlaces(text) {}

  Sitemap Build() {
    TagScanner scanner(mText);
    HtmlToken token;
    while (scanner.Next(token))
      if (token.isTag) Take(token);
    return std::move(mSitemap);
  }

 private:
  enum class Inside { Nothing, Properties, Entry };

  void Take(const HtmlToken& token) {
    if (EqualsIgnoringCase(token.name, "ul")) {
      mDepth += token.isEnd ? (mDepth > 0 ? -1 : 0) : 1;
    } else if (EqualsIgnoringCase(token.name, "object")) {
      token.isEnd ? EndObject() : BeginObject(token);
    } else if (EqualsIgnoringCase(token.name, "param") && mInside != Inside::Nothing) {
      const auto value = AttributeValue(token.attributes, "value");
      TakeParameter(ResolveReferences(AttributeValue(token.attributes, "name")), ResolveReferences(value),
                    value.empty() ? mPlaces.At(token.offset) : mPlaces.Of(value));
    }
  }

  void BeginObject(const HtmlToken& token) {
    const auto type = AttributeValue(token.attributes, "type");
    mInside = EqualsIgnoringCase(type, "text/site properties") ? Inside::Properties
              : EqualsIgnoringCase(type, "text/sitemap")       ? Inside::Entry
                                                               : Inside::Nothing;
    if (mInside != Inside::Entry) return;
    mNamed = false;
    mTitle.clear();
    auto& entry = mSitemap.entries.emplace_back();
    entry.level = mDepth > 0 ? mDepth - 1 : 0;
    entry.place = mPlaces.At(token.offset);
  }

  void EndObject() {
    // Without a name of its own an entry is called after its first target.
    if (mInside == Inside::Entry && mSitemap.entries.back().name.empty() && !mSitemap.entries.back().targets.empty())
      mSitemap.entries.back().name = mSitemap.entries.back().targets.front().title;
    mInside = Inside::Nothing;
  }

  void TakeParameter(std::string name, std::string value, TextPlace place) {
    if (mInside == Inside::Properties) {
      mSitemap.properties.emplace_back(std::move(name), std::move(value));
      return;
    }
    auto& entry = mSitemap.entries.back();
    if (EqualsIgnoringCase(name, "Name") || EqualsIgnoringCase(name, "Keyword")) {
      TakeName(entry, std::move(value), place);
    } else if (EqualsIgnoringCase(name, "Local")) {
      const bool titled = !mTitle.empty();
      entry.targets.push_back({titled ? std::exchange(mTitle, {}) : entry.name, std::move(value), place,
                               titled ? mTitlePlace : entry.place});
    } else if (EqualsIgnoringCase(name, "URL")) {
      entry.url = std::move(value);
    } else if (EqualsIgnoringCase(name, "See Also")) {
      entry.seeAlso = std::move(value);
    } else if (EqualsIgnoringCase(name, "Merge")) {
      entry.merge = std::move(value);
    } else if (EqualsIgnoringCase(name, "ImageNumber")) {
      entry.imageNumber = static_cast<int>(LeadingNumber(value));
    } else if (EqualsIgnoringCase(name, "New")) {
      entry.isNew = value == "1";
    }
  }

  /// The first name is the entry's own; a later one is the title of the target that follows.
  void TakeName(SitemapEntry& entry, std::string value, TextPlace place) {
    (mNamed ? mTitle : entry.name) = std::move(value);
    (mNamed ? mTitlePlace : entry.place) = place;
    mNamed = true;
  }

  std::string_view mText;
  Sitemap mSitemap;
  Inside mInside = Inside::Nothing;
  int mDepth = 0;
  bool mNamed = false;
  std::string mTitle;
  TextPlace mTitlePlace;
  PlaceFinder mPlaces;
};

}  // namespace

Sitemap ParseSitemap(std::string_view text) {
  return SitemapBuilder(text).Build();
}

}  // namespace quillbook::compile
