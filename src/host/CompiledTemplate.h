// A template text taken apart: runs of literal text and elements.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Ref.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {

class DataProvider;
class FileSystemObject;

/// Unchanging once it is made. Elements inside the enclosed text of another element belong to that text and are no
/// pieces of their own.
class CompiledTemplate {
 public:
  struct Piece {
    std::size_t begin = 0;
    std::size_t end = 0;
    Ref<TemplateElement> element;  ///< nothing for a run of text
  };

  /// Linear in the text, without recursion.
  [[nodiscard]] static std::shared_ptr<const CompiledTemplate> Compile(std::string text);

  /// Appends the evaluated text. The rules of `ParserServices::ParseText` hold.
  void Evaluate(DataProvider& provider, Ref<FileSystemObject>& file, std::string& output) const;

  [[nodiscard]] const std::string& Text() const noexcept { return mText; }
  [[nodiscard]] const std::vector<Piece>& Pieces() const noexcept { return mPieces; }

 private:
  friend class TemplateParser;
  explicit CompiledTemplate(std::string text) : mText(std::move(text)) {}

  std::string mText;
  std::vector<Piece> mPieces;
};

}  // namespace quillbook
