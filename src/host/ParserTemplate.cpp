#include "quillbook/host/ParserTemplate.h"

#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {

namespace {

constexpr std::size_t MaximumNesting = 1000;
constexpr auto npos = std::string_view::npos;

/// An element whose end tag hasn't come yet; the first one stands for the text as a whole.
struct OpenElement {
  std::string_view startTag;
  std::string enclosed;  ///< with inner elements already replaced
};

/// A tag in the text: from `begin` to behind its closing string.
struct Tag {
  std::size_t begin = npos;
  std::size_t end = npos;
  explicit operator bool() const noexcept { return begin != npos; }
};

/// Goes through a text once, from tag to tag.
class TagReader {
 public:
  TagReader(std::string_view text, std::string_view open, std::string_view close)
      : mText(text), mOpen(open), mClose(close) {}

  /// The first tag at or after `from`. Looks no further than it did before.
  const Tag& From(std::size_t from) {
    if (mTag && mTag.begin >= from) return mTag;
    if (mExhausted) return mTag = {};
    mTag = {FindIgnoringCase(mText, mOpen, from), npos};
    if (mTag) mTag.end = FindIgnoringCase(mText, mClose, mTag.begin + mOpen.size());
    if (mTag.end == npos) {
      mExhausted = true;
      return mTag = {};
    }
    mTag.end += mClose.size();
    return mTag;
  }

 private:
  std::string_view mText;
  std::string_view mOpen;
  std::string_view mClose;
  Tag mTag;
  bool mExhausted = false;
};

/// What stands inside a start tag names the element.
std::string_view TagContent(std::string_view tag, std::size_t openSize, std::size_t closeSize) {
  return TrimBlanks(tag.substr(openSize, tag.size() - openSize - closeSize));
}

}  // namespace

std::string ParserTemplate::Result() {
  if (StartTagOpen.empty() || StartTagClose.empty() || EndTagOpen.empty() || EndTagClose.empty()) return mText;
  const std::string_view text = mText;
  TagReader starts(text, StartTagOpen, StartTagClose);
  TagReader ends(text, EndTagOpen, EndTagClose);
  std::vector<OpenElement> open(1);
  std::size_t at = 0;
  for (;;) {
    const auto start = starts.From(at);
    const auto end = ends.From(at);
    if (!start && !end) break;
    const bool starting = start && (!end || start.begin < end.begin);
    const auto& tag = starting ? start : end;
    open.back().enclosed += text.substr(at, tag.begin - at);
    const auto tagText = text.substr(tag.begin, tag.end - tag.begin);
    at = tag.end;
    if (starting) {
      if (open.size() > MaximumNesting) throw Failure(FailureNumber::OutOfStackSpace);
      open.push_back({tagText, {}});
    } else if (open.size() == 1) {
      open.back().enclosed += tagText;  // closes nothing
    } else {
      auto element = New<TemplateElement>(TagContent(open.back().startTag, StartTagOpen.size(), StartTagClose.size()));
      element->SetSource(std::move(open.back().enclosed));
      Ref<FileSystemObject> noFile;
      auto answer = DataProvider->DataProvider_ProvideData(element, noFile);
      if (!RemoveTags) answer = std::string(open.back().startTag) + answer + std::string(tagText);
      open.pop_back();
      open.back().enclosed += answer;
    }
  }
  open.back().enclosed += text.substr(at);
  std::string result;
  for (const auto& element : open) (result += element.startTag) += element.enclosed;
  return result;
}

const TypeInfo& ParserTemplate::StaticType() {
  static const TypeInfo type = Describe<ParserTemplate>("ParserTemplate")
                                   .Public<&ParserTemplate::StartTagOpen>("StartTagOpen")
                                   .Public<&ParserTemplate::StartTagClose>("StartTagClose")
                                   .Public<&ParserTemplate::EndTagOpen>("EndTagOpen")
                                   .Public<&ParserTemplate::EndTagClose>("EndTagClose")
                                   .Public<&ParserTemplate::RemoveTags>("RemoveTags")
                                   .Public<&ParserTemplate::DataProvider>("DataProvider")
                                   .Field<&ParserTemplate::mText>("mText")
                                   .Done();
  return type;
}

}  // namespace quillbook
