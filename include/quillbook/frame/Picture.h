// A picture for a surface to draw.
#pragma once

#include <cstdint>
#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

/// A canvas of a size, filled with one colour, and the encoded image to be drawn on it; the library draws nothing
/// itself. Colours are those of `Root`.
class Picture final : public LibraryObject {
 public:
  struct Content {
    std::int32_t size = 0;
    std::int32_t maskColor = 0;
    std::int32_t backColor = 0;
    std::string filename;
    std::string image;
  };
  explicit Picture(Content content) : mContent(std::move(content)) {}

  /// Of the canvas, in pixels. The image may have another size and is to be scaled.
  [[nodiscard]] std::int32_t Width() const noexcept { return mContent.size; }
  [[nodiscard]] std::int32_t Height() const noexcept { return mContent.size; }
  /// What is to be seen through: pixels of this colour.
  [[nodiscard]] std::int32_t MaskColor() const noexcept { return mContent.maskColor; }
  /// What the canvas is filled with.
  [[nodiscard]] std::int32_t BackColor() const noexcept { return mContent.backColor; }
  /// Where the image comes from, in Windows form; empty for a picture without image.
  [[nodiscard]] const std::string& Filename() const noexcept { return mContent.filename; }
  /// The bytes of that file: PNG, SVG or XPM, as the file's ending says. Empty for a picture without image.
  [[nodiscard]] const std::string& Image() const noexcept { return mContent.image; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  Content mContent;
};

}  // namespace quillbook
