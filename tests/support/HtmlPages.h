// HTML pages for tests.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/documents/HtmlElement.h"

namespace quillbook::support {

[[nodiscard]] inline Ref<HtmlDocument> Page(std::string_view html) {
  auto document = New<HtmlDocument>();
  document->Load(html);
  return document;
}

/// A page with this body.
[[nodiscard]] inline Ref<HtmlDocument> PageWithBody(std::string_view body) {
  return Page("<html><head></head><body>" + std::string(body) + "</body></html>");
}

/// The first element of a page with this body that has a name.
[[nodiscard]] inline Ref<HtmlElement> FirstOf(std::string_view name, std::string_view body) {
  return PageWithBody(body)->All()->tags(name)->Item(0);
}

/// What becomes of a body that is parsed and written.
[[nodiscard]] inline std::string Rewritten(std::string_view body) {
  return PageWithBody(body)->body()->innerHTML();
}

/// `text` so many times.
[[nodiscard]] inline std::string Repeated(std::string_view text, int times) {
  std::string result;
  result.reserve(text.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

}  // namespace quillbook::support
