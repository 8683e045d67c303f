// Any bytes as a page and as parts of one: read, changed and written, or refused with a failure.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/documents/HtmlElement.h"

namespace {

using namespace quillbook;

void Require(bool condition) {
  if (!condition) std::abort();
}

/// What has been read from something written is written the same way again.
void RequireSettled(std::string text) {
  auto document = New<HtmlDocument>();
  for (int i = 0; i < 2; ++i) {
    document->Load(text);
    text = document->ToString();
    Require(IsValidUtf8(text));
  }
  document->Load(text);
  Require(document->documentElement() != nullptr);
}

void ChangeEverything(std::string_view text) {
  auto document = New<HtmlDocument>();
  document->Load(text);
  const auto part = text.substr(text.size() / 2);
  const auto all = document->All();
  const auto count = all->Count();
  for (std::size_t i = 0; i < count && i < 40; ++i) {
    const auto element = all->Item(i);
    (void)element->getAttribute("href");
    (void)element->innerText();
    try {
      element->setAttribute(i % 2 ? "href" : "title", part);
      Require(element->getAttribute("title").size() <= 3 * text.size());
      i % 3 == 0 ? element->SetInnerHTML(part) : element->SetOuterHTML(part);
    } catch (const Failure&) {  // an element that takes no content, or content that is refused
    }
    Require(IsValidUtf8(element->outerHTML()));
  }
  Require(IsValidUtf8(document->ToString()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    RequireSettled(std::string(text));
    ChangeEverything(text);
  } catch (const Failure&) {  // a page that is refused
  }
  return 0;
}
