// One kind of page that a template can make.
#pragma once

#include <memory>
#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

class CompiledTemplate;

/// A page template within a template: the text of a page for items of one kind.
class PageLayout final : public Object {
 public:
  PageLayout(std::string Name, std::string ItemKind, std::string OutputName, std::string Text);
  ~PageLayout() override;

  /// Name of the layout's file, such as "Topic.html".
  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  /// The qualified kind of item that the layout shows, such as "mv.quillbooklite:topic".
  [[nodiscard]] const std::string& ItemKind() const noexcept { return mItemKind; }
  /// Pattern of the file that a page goes to, such as "{QualifiedName}.html": a name in braces stands for that member
  /// of the item.
  [[nodiscard]] const std::string& OutputName() const noexcept { return mOutputName; }
  [[nodiscard]] const std::string& Text() const noexcept { return mText; }
  /// The text made ready for evaluation, on first use.
  [[nodiscard]] const CompiledTemplate& Compiled() const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mName;
  std::string mItemKind;
  std::string mOutputName;
  std::string mText;
  mutable std::shared_ptr<const CompiledTemplate> mCompiled;
};

}  // namespace quillbook
