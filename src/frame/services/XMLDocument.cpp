#include "quillbook/frame/services/XMLDocument.h"

#include <algorithm>

#include "frame/services/XMLTree.h"
#include "frame/services/XMLWriter.h"
#include "quillbook/base/Failure.h"

namespace quillbook {

namespace {

using detail::XMLTree;

// Everything that is text stays as it stands. The fragment option lets junk beside the root show itself.
constexpr unsigned parseOptions =
    pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata | pugi::parse_fragment;

XMLLoadResult Fault(std::string message, std::size_t offset) {
  XMLLoadResult result;
  result.ok = false;
  result.message = std::move(message);
  result.offset = offset;
  return result;
}

const char* MessageOf(pugi::xml_parse_status status) {
  switch (status) {
    case pugi::status_out_of_memory: throw Failure(FailureNumber::OutOfMemory);
    case pugi::status_unrecognized_tag: return "A name is expected after '<'";
    case pugi::status_bad_pi: return "The processing instruction is malformed or has no end";
    case pugi::status_bad_comment: return "The comment is malformed or has no end";
    case pugi::status_bad_cdata: return "The CDATA section is malformed or has no end";
    case pugi::status_bad_doctype: return "The document type is malformed or has no end";
    case pugi::status_bad_pcdata: return "The text has no end";
    case pugi::status_bad_start_element: return "The start tag is malformed or has no end";
    case pugi::status_bad_attribute: return "The attribute is malformed or has no end";
    case pugi::status_bad_end_element: return "The end tag is malformed or has no end";
    case pugi::status_end_element_mismatch: return "An element isn't closed, or the end tag belongs to another one";
    default: return "The text isn't XML";
  }
}

/// Any NUL, or start of a character reference that could stand for one, in `size` bytes and two behind. One pass
/// without branches, which the compiler turns into vector instructions.
bool MayHoldNul(const char* text, std::size_t size) noexcept {
  unsigned found = 0;
  for (std::size_t i = 0; i < size; ++i) {
    const unsigned reference = static_cast<unsigned>(text[i] == '&') & static_cast<unsigned>(text[i + 1] == '#') &
                               (static_cast<unsigned>(text[i + 2] == '0') | static_cast<unsigned>(text[i + 2] == 'x'));
    found |= static_cast<unsigned>(text[i] == 0) | reference;
  }
  return found != 0;
}

/// Whether a NUL, or a character reference to it, begins here.
bool IsNulAt(std::string_view text, std::size_t at) noexcept {
  if (text[at] == 0) return true;
  if (!text.substr(at).starts_with("&#")) return false;
  const auto digits = at + 2 + (text.substr(at + 2).starts_with("x") ? 1 : 0);
  const auto end = text.find_first_not_of('0', digits);
  return end != std::string_view::npos && end > digits && text[end] == ';';
}

/// The parser ends texts with NUL, so one in the text would cut it short. Its place, or npos.
std::size_t FindNul(std::string_view text) noexcept {
  constexpr std::size_t blockSize = 4096;
  for (std::size_t block = 0; block < text.size(); block += blockSize) {
    const auto end = std::min(block + blockSize, text.size());
    if (end + 2 <= text.size() && !MayHoldNul(text.data() + block, blockSize)) continue;
    for (auto i = block; i < end; ++i)
      if (IsNulAt(text, i)) return i;
  }
  return std::string_view::npos;
}

/// Exactly one element and no text beside it.
XMLLoadResult CheckTopLevel(const XMLTree& tree) {
  const auto offsetOf = [&](const char* at) { return static_cast<std::size_t>(at - tree.source.data()); };
  bool root = false;
  for (auto node = tree.document.first_child(); node; node = node.next_sibling()) {
    if (detail::IsTextPiece(node)) {
      const std::string_view text = node.value();
      if (detail::IsWhiteSpace(text)) continue;
      return Fault(root ? "There is text behind the root element" : "There is text before the root element",
                   offsetOf(text.data()) + text.find_first_not_of(" \t\r\n"));
    }
    if (root) return Fault("There is a second root element", offsetOf(node.name()) - 1);
    root = true;
  }
  return root ? XMLLoadResult{} : Fault("There is no root element", tree.source.size());
}

XMLLoadResult Parse(XMLTree& tree) {
  const auto nul = FindNul(tree.source);
  if (nul != std::string_view::npos) return Fault("The text holds the character NUL", nul);
  // The NUL behind the text goes with it: the parser puts one in place of the last byte that it is given.
  const auto parsed =
      tree.document.load_buffer_inplace(tree.source.data(), tree.source.size() + 1, parseOptions, pugi::encoding_utf8);
  if (parsed) return CheckTopLevel(tree);
  const auto offset = std::clamp<std::ptrdiff_t>(parsed.offset, 0, static_cast<std::ptrdiff_t>(tree.source.size()));
  return Fault(MessageOf(parsed.status), static_cast<std::size_t>(offset));
}

pugi::xml_node RootOf(const XMLTree& tree) {
  return tree.document.find_child([](const pugi::xml_node& node) { return node.type() == pugi::node_element; });
}

Ref<XMLTree> EmptyTree() {
  auto tree = New<XMLTree>();
  tree->document.append_child(pugi::node_element);
  return tree;
}

}  // namespace

void XMLLoadResult::Locate(std::string_view text) {
  line = 1;
  column = 1;
  const auto end = std::min(offset, text.size());
  for (std::size_t i = 0; i < end; ++i) {
    const bool startsLine = text[i] == '\n' || (text[i] == '\r' && text.substr(i + 1, 1) != "\n");
    if (startsLine) {
      ++line;
      column = 1;
    } else if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      ++column;
    }
  }
}

XMLDocument::XMLDocument() : mTree(EmptyTree()) {}

XMLElement XMLDocument::DocumentElement() const {
  if (!mTree) detail::RaiseObjectNotSet();
  return {mTree, RootOf(*mTree).internal_object()};
}

XMLLoadResult XMLDocument::LoadXML(std::string Text) {
  auto tree = New<XMLTree>();
  tree->source = std::move(Text);
  tree->contentSize = tree->source.size();
  auto result = Parse(*tree);
  mTree = result ? std::move(tree) : EmptyTree();
  return result;
}

XMLLoadResult XMLDocument::Check(std::string_view Text) {
  XMLDocument document;
  auto result = document.LoadXML(std::string(Text));
  if (!result) result.Locate(Text);
  return result;
}

std::string XMLDocument::ToString() const {
  if (!mTree) detail::RaiseObjectNotSet();
  std::string text;
  // Twice the content leaves room for markup and escapes; what isn't used of it never becomes real memory.
  text.reserve(256 + 2 * mTree->contentSize);
  WriteTo([&](std::string_view part) { text += part; });
  return text;
}

void XMLDocument::WriteTo(const std::function<void(std::string_view)>& Sink) const {
  if (!mTree) detail::RaiseObjectNotSet();
  detail::XMLWriter(Sink).Write(RootOf(*mTree));
}

}  // namespace quillbook
