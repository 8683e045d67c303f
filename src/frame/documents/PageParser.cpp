#include "frame/documents/PageParser.h"

#include <gumbo.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "frame/documents/ElementKinds.h"
#include "frame/documents/PageSource.h"
#include "frame/documents/ParserMemory.h"
#include "frame/documents/StartTag.h"
#include "host/compile/TagScanner.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::html {

namespace {

/// What the parser may take for a text: several times what dense markup costs, and far from what formatting elements
/// can multiply to.
constexpr std::size_t MemoryLimit(std::size_t textSize) noexcept {
  constexpr std::size_t base = 16 << 20;
  constexpr std::size_t aByte = 200;
  return base + aByte * textSize;
}

/// Runs the parser. Null if it wanted too much memory; nothing here may need a destructor, because of the jump.
const GumboOutput* Run(ParserMemory& memory, GumboOptions& options, std::string_view text) {
  options.allocator = [](void* data, std::size_t size) { return static_cast<ParserMemory*>(data)->Take(size); };
  options.deallocator = [](void*, void*) {};
  options.userdata = &memory;
  options.max_errors = 0;
  if (setjmp(memory.tooMuch) != 0) return nullptr;  // NOLINT(cert-err52-cpp): see ParserMemory
  return gumbo_parse_with_options(&options, text.data(), text.size());
}

std::string_view Piece(const GumboStringPiece& piece) noexcept {
  return {piece.data ? piece.data : "", piece.data ? piece.length : 0};
}

/// Line breaks as the parser sees them.
std::string WithLineFeeds(std::string_view text) {
  return ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n");
}

/// True if `source`, written in an element, means `text`.
bool Means(std::string_view source, std::string_view text) {
  const bool references = source.find('&') != std::string_view::npos;
  if (!references && source.find('\r') == std::string_view::npos) return source == text;
  return compile::ResolveReferences(WithLineFeeds(source)) == text;
}

/// Makes nodes of the parser's tree.
class Builder {
 public:
  Builder(Tree& tree, std::string_view source) : mTree(tree), mSource(source) {}

  /// Makes the children of `into`, and all below them.
  void Build(const GumboVector& children, Node& into) {
    struct Level {
      const GumboVector* children;
      unsigned next;
      Node* into;
    };
    std::vector<Level> open{{&children, 0, &into}};
    while (!open.empty()) {
      auto& level = open.back();
      if (level.next == level.children->length) {
        open.pop_back();
        continue;
      }
      const auto& from = *static_cast<const GumboNode*>(level.children->data[level.next++]);
      if (from.type == GUMBO_NODE_COMMENT && Piece(from.v.text.original_text) == TextFence) continue;
      auto& made = Make(from, *level.into);
      Append(*level.into, made);
      if (made.IsElement()) open.push_back({&from.v.element.children, 0, &made});
    }
  }

 private:
  Node& Make(const GumboNode& from, const Node& parent) {
    switch (from.type) {
      case GUMBO_NODE_ELEMENT:
      case GUMBO_NODE_TEMPLATE: return MakeElement(from.v.element);
      case GUMBO_NODE_COMMENT: return MakeComment(from.v.text);
      default: return MakeText(from.v.text, parent);
    }
  }

  /// What a piece covers of the source; empty for one that lies elsewhere.
  [[nodiscard]] std::string_view SourceOf(const GumboStringPiece& piece) const noexcept {
    const auto* end = mSource.data() + mSource.size();
    const bool inside = piece.data && piece.data >= mSource.data() && piece.data <= end &&
                        piece.length <= static_cast<std::size_t>(end - piece.data);
    return inside ? Piece(piece) : std::string_view();
  }

  /// The parser begins a text that starts with CR LF at the LF.
  [[nodiscard]] std::string_view WithWholeLineBreak(std::string_view source) const noexcept {
    const bool cut = source.starts_with('\n') && source.data() > mSource.data() && source.data()[-1] == '\r';
    return cut ? std::string_view(source.data() - 1, source.size() + 1) : source;
  }

  Node& MakeText(const GumboText& from, const Node& parent) {
    auto& node = mTree.Make(Node::Kind::Text);
    const std::string_view text = from.text;
    const auto source = WithWholeLineBreak(SourceOf(from.original_text));
    if (parent.space == Space::Html && HasRawText(parent.name)) {
      node.source = WithLineFeeds(source) == text ? source : text;
      return node;
    }
    // Tags that the parser passes over, as "</body>", count as part of the text that stands before them.
    const auto written = source.substr(0, source.find('<'));
    node.source = Means(written, text) ? std::string(written) : EscapeText(text);
    node.sourceIsText = node.source == text;
    if (!node.sourceIsText) node.text = text;
    return node;
  }

  /// Comments stand as they are written, also those that only HTML5 takes for comments, such as "<![if !IE]>".
  Node& MakeComment(const GumboText& from) {
    auto& node = mTree.Make(Node::Kind::Comment);
    const auto source = SourceOf(from.original_text);
    const auto written = WithLineFeeds(source);
    const std::string text(from.text);
    const bool whole = written == "<!--" + text + "-->";
    const bool bogus = source.size() > 2 && source.find('>') == source.size() - 1 &&
                       (written == "<!" + text + ">" || written == "<" + text + ">" || written == "</" + text + ">");
    node.source = whole || bogus ? std::string(source) : "<!--" + text + "-->";
    return node;
  }

  Node& MakeElement(const GumboElement& from) {
    auto& node = mTree.Make(Node::Kind::Element);
    node.space = static_cast<Space>(from.tag_namespace);
    const auto tag = SourceOf(from.original_tag);
    const auto spelled = SpelledName(from, tag);
    node.name = FoldName(spelled);
    const bool slash = tag.ends_with("/>");
    const bool prefixed = spelled.find(':') != std::string::npos;
    node.closesItself = slash && (node.space != Space::Html || IsVoid(node.name) ||
                                  (prefixed && Piece(from.original_end_tag).ends_with("/>")));
    TakeAttributes(from, node);
    if (StandsAsItIs(from, tag, spelled))
      TakeTag(from, tag, node);
    else
      ComposeStartTag(node, spelled);
    if (DropsFirstLineBreak(node.name) && node.space == Space::Html) node.lineBreak = LineBreakBehind(tag);
    return node;
  }

  /// The element's name as its tag spells it, or as HTML5 calls it where the tag isn't its own.
  static std::string SpelledName(const GumboElement& from, std::string_view tag) {
    auto piece = from.original_tag;
    if (!tag.empty()) gumbo_tag_from_original_text(&piece);
    const std::string_view known = from.tag == GUMBO_TAG_UNKNOWN ? "" : gumbo_normalized_tagname(from.tag);
    if (known == "plaintext" && from.tag_namespace == GUMBO_NAMESPACE_HTML) return "pre";
    const auto spelled = Piece(piece);
    return std::string(known.empty() || FoldName(spelled) == FoldName(known) ? spelled : known);
  }

  static void TakeAttributes(const GumboElement& from, Node& node) {
    node.attributes.reserve(from.attributes.length);
    for (unsigned i = 0; i < from.attributes.length; ++i) {
      const auto& attribute = *static_cast<const GumboAttribute*>(from.attributes.data[i]);
      const auto name = Piece(attribute.original_name);
      node.attributes.push_back({name.empty() ? attribute.name : std::string(name), attribute.value, 0, 0});
    }
  }

  static void TakeTag(const GumboElement& from, std::string_view tag, Node& node) {
    node.source = tag;
    for (unsigned i = 0; i < from.attributes.length; ++i) {
      const auto& attribute = *static_cast<const GumboAttribute*>(from.attributes.data[i]);
      const auto value = Piece(attribute.original_value);
      const auto last = value.empty() ? Piece(attribute.original_name) : value;
      node.attributes[i].start = static_cast<std::size_t>(attribute.original_name.data - tag.data());
      node.attributes[i].end = static_cast<std::size_t>(last.data() + last.size() - tag.data());
    }
  }

  /// True if a start tag can stay as it is written: it is the element's own, all attributes are in it, apart from each
  /// other, and their values are whole.
  static bool StandsAsItIs(const GumboElement& from, std::string_view tag, std::string_view spelled) {
    if (tag.size() < 3 || tag.back() != '>' || tag.substr(1, spelled.size()) != spelled) return false;
    for (unsigned i = 0; i < from.attributes.length; ++i)
      if (!IsRegular(*static_cast<const GumboAttribute*>(from.attributes.data[i]), tag)) return false;
    return true;
  }

  static bool IsRegular(const GumboAttribute& attribute, std::string_view tag) noexcept {
    const auto name = Piece(attribute.original_name);
    const auto value = Piece(attribute.original_value);
    if (name.data() <= tag.data() || name.data() + name.size() >= tag.data() + tag.size()) return false;
    if (!IsSpace(name.data()[-1]) || name.find_first_of("\"'<=") != std::string_view::npos) return false;
    if (value.empty()) return !HasEquals(tag.substr(static_cast<std::size_t>(name.data() + name.size() - tag.data())));
    if (value.front() == '"' || value.front() == '\'') return value.size() > 1 && value.back() == value.front();
    return value.find_first_of("\"'=<>` \t\r\n\f") == std::string_view::npos && !value.ends_with('/');
  }

  static bool HasEquals(std::string_view behindName) noexcept {
    const auto at = behindName.find_first_not_of(" \t\r\n\f");
    return at != std::string_view::npos && behindName[at] == '=';
  }

  [[nodiscard]] std::uint8_t LineBreakBehind(std::string_view tag) const noexcept {
    if (tag.empty()) return 0;
    const auto behind = mSource.substr(static_cast<std::size_t>(tag.data() + tag.size() - mSource.data()));
    if (behind.starts_with("\r\n")) return 2;
    return behind.starts_with('\n') || behind.starts_with('\r') ? 1 : 0;
  }

  Tree& mTree;
  std::string_view mSource;
};

/// The document type declaration as it is written: the first one that no comment holds.
std::string_view DeclarationIn(std::string_view text, const GumboDocument& document) {
  constexpr std::string_view opening = "<!doctype";
  auto at = FindIgnoringCase(text, opening);
  for (unsigned i = 0; i < document.children.length; ++i) {
    const auto& child = *static_cast<const GumboNode*>(document.children.data[i]);
    if (child.type != GUMBO_NODE_COMMENT) continue;
    const auto comment = Piece(child.v.text.original_text);
    const auto start = static_cast<std::size_t>(comment.data() - text.data());
    if (start <= at && at < start + comment.size()) at = FindIgnoringCase(text, opening, start + comment.size());
  }
  return at == std::string_view::npos ? std::string_view() : text.substr(at, text.find('>', at) - at + 1);
}

/// Puts the declaration in its place among the comments before the `html` element.
void PlaceDeclaration(Tree& tree, const GumboDocument& document, std::string_view source, Node& root) {
  if (!document.has_doctype) return;
  auto& node = tree.Make(Node::Kind::Declaration);
  const auto written = DeclarationIn(source, document);
  node.source = written.empty() ? "<!DOCTYPE html>" : std::string(written);
  Node rest;
  MoveChildren(root, rest, nullptr);
  const auto isBefore = [&](const Node& child, unsigned index) {
    const auto& from = *static_cast<const GumboNode*>(document.children.data[index]);
    return child.kind == Node::Kind::Comment && !written.empty() && from.v.text.original_text.data < written.data();
  };
  for (unsigned index = 0; rest.firstChild && isBefore(*rest.firstChild, index); ++index) {
    auto& child = *rest.firstChild;
    Unlink(child);
    Append(root, child);
  }
  Append(root, node);
  MoveChildren(rest, root, nullptr);
}

const GumboOutput& Parse(ParserMemory& memory, GumboOptions& options, std::string_view source) {
  if (const auto* output = Run(memory, options, source)) return *output;
  throw Failure(FailureNumber::OutOfMemory, "The HTML leaves so many formatting elements open that they multiply");
}

}  // namespace

Node& ParsePage(Tree& tree, std::string_view text) {
  const auto source = PrepareSource(text);
  ParserMemory memory(MemoryLimit(source.size()));
  auto options = kGumboDefaultOptions;
  const auto& document = Parse(memory, options, source).document->v.document;
  auto& root = tree.Make(Node::Kind::Document);
  Builder(tree, source).Build(document.children, root);
  PlaceDeclaration(tree, document, source, root);
  return root;
}

Node& ParseFragment(Tree& tree, const Node& context, std::string_view text) {
  const auto source = PrepareSource(text);
  ParserMemory memory(MemoryLimit(source.size()));
  auto options = kGumboDefaultOptions;
  options.fragment_context = gumbo_tag_enum(context.name.c_str());
  options.fragment_namespace = static_cast<GumboNamespaceEnum>(context.space);
  const auto& output = Parse(memory, options, source);
  auto& holder = tree.Make(Node::Kind::Document);
  Builder(tree, source).Build(output.root->v.element.children, holder);
  return holder;
}

}  // namespace quillbook::html
