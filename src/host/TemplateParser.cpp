#include <unordered_map>

#include "host/CompiledTemplate.h"
#include "host/TemplateLexer.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

using detail::TemplateLexer;
using detail::TemplateTag;

constexpr std::size_t NoPartner = static_cast<std::size_t>(-1);

/// Types that are in force nowhere in the system but have to be accepted: they yield nothing.
bool IsMarker(const TemplateTag& tag) {
  return EqualsIgnoringCase(tag.type, "ReplaceInQuotes");
}

std::vector<TemplateTag> ReadTags(std::string_view text) {
  std::vector<TemplateTag> tags;
  TemplateLexer lexer(text);
  for (TemplateTag tag; lexer.Next(tag);) tags.push_back(std::move(tag));
  return tags;
}

struct TypeHash {
  std::size_t operator()(std::string_view type) const noexcept { return FoldedHash(type); }
};
struct SameType {
  bool operator()(std::string_view left, std::string_view right) const noexcept {
    return EqualsIgnoringCase(left, right);
  }
};

/// Finds the closing tag of each opening one. A closing tag belongs to the nearest open tag of its type; what was
/// opened between the two encloses nothing.
std::vector<std::size_t> MatchTags(const std::vector<TemplateTag>& tags) {
  std::vector<std::size_t> partner(tags.size(), NoPartner);
  std::vector<std::pair<std::size_t, std::vector<std::size_t>*>> open;
  std::unordered_map<std::string_view, std::vector<std::size_t>, TypeHash, SameType> openOfType;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    auto& sameType = openOfType[tags[i].type];
    if (!tags[i].closing) {
      sameType.push_back(i);
      open.emplace_back(i, &sameType);
    } else if (!sameType.empty()) {
      const auto opening = sameType.back();
      partner[opening] = i;
      partner[i] = opening;
      while (!open.empty() && open.back().first >= opening) {
        open.back().second->pop_back();
        open.pop_back();
      }
    }
  }
  return partner;
}

}  // namespace

class TemplateParser {
 public:
  explicit TemplateParser(std::string text) : mResult(new CompiledTemplate(std::move(text))), mText(mResult->mText) {}

  std::shared_ptr<const CompiledTemplate> Parse() {
    mTags = ReadTags(mText);
    mPartner = MatchTags(mTags);
    std::size_t literal = 0;
    for (std::size_t i = 0; i < mTags.size(); ++i) {
      if (mTags[i].closing) continue;  // without an opening tag it is text
      AddLiteral(literal, mTags[i].begin);
      const auto last = mPartner[i] == NoPartner ? i : mPartner[i];
      if (!IsMarker(mTags[i])) mResult->mPieces.push_back({mTags[i].begin, mTags[last].end, MakeElement(i)});
      literal = mTags[last].end;
      i = last;
    }
    AddLiteral(literal, mText.size());
    return mResult;
  }

 private:
  void AddLiteral(std::size_t begin, std::size_t end) {
    if (begin < end) mResult->mPieces.push_back({begin, end, nullptr});
  }

  std::string Enclosed(std::size_t tag) const {
    const auto begin = mTags[tag].end;
    return std::string(mText.substr(begin, mTags[mPartner[tag]].begin - begin));
  }

  Ref<TemplateElement> MakeElement(std::size_t tag) const {
    auto element = New<TemplateElement>(mTags[tag].type);
    for (const auto& [name, value] : mTags[tag].attributes) element->AddAttribute(name, value);
    if (mPartner[tag] == NoPartner) return element;
    element->SetSource(Enclosed(tag));
    bool blankFound = false;
    bool notBlankFound = false;
    for (auto i = tag + 1; i < mPartner[tag]; ++i) {
      if (mTags[i].closing || mPartner[i] == NoPartner) continue;
      if (!notBlankFound && EqualsIgnoringCase(mTags[i].type, "notblank")) {
        element->SetNotBlankText(Enclosed(i));
        notBlankFound = true;
      } else if (!blankFound && EqualsIgnoringCase(mTags[i].type, "blank")) {
        element->SetBlankText(Enclosed(i));
        blankFound = true;
      }
      i = mPartner[i];  // what lies deeper belongs to the inner element
    }
    return element;
  }

  std::shared_ptr<CompiledTemplate> mResult;
  std::string_view mText;
  std::vector<TemplateTag> mTags;
  std::vector<std::size_t> mPartner;
};

std::shared_ptr<const CompiledTemplate> CompiledTemplate::Compile(std::string text) {
  return TemplateParser(std::move(text)).Parse();
}

}  // namespace quillbook
