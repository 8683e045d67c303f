#include "quillbook/host/PageLayout.h"

#include "host/CompiledTemplate.h"

namespace quillbook {

PageLayout::PageLayout(std::string Name, std::string ItemKind, std::string OutputName, std::string Text)
    : mName(std::move(Name)),
      mItemKind(std::move(ItemKind)),
      mOutputName(std::move(OutputName)),
      mText(std::move(Text)) {}

PageLayout::~PageLayout() = default;

const CompiledTemplate& PageLayout::Compiled() const {
  if (!mCompiled) mCompiled = CompiledTemplate::Compile(mText);
  return *mCompiled;
}

const TypeInfo& PageLayout::StaticType() {
  static const TypeInfo type = Describe<PageLayout>("PageLayout")
                                   .Field<&PageLayout::mName>("mName")
                                   .Field<&PageLayout::mItemKind>("mItemKind")
                                   .Field<&PageLayout::mOutputName>("mOutputName")
                                   .ReadOnly<&PageLayout::Name>("Name")
                                   .ReadOnly<&PageLayout::ItemKind>("ItemKind")
                                   .ReadOnly<&PageLayout::OutputName>("OutputName")
                                   .ReadOnly<&PageLayout::Text>("Text")
                                   .Done();
  return type;
}

}  // namespace quillbook
