#include "generation/elements/Evaluation.h"

#include <utility>

#include "generation/ItemProperties.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/Condition.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {
namespace {

bool SpeaksOfTopic(std::string_view type) noexcept {
  return type == "topicsection" || type == "itemtitle" || type == "topictitle" || type == "modifiedon" ||
         type == "createdon";
}

void ReplaceInPlace(std::string& text, std::string_view what, std::string_view with) {
  if (text.find(what) != std::string::npos) text = ReplaceAll(text, what, with);
}

}  // namespace

Evaluation::Evaluation(QBDataProvider& provider, const Ref<TemplateElement>& element, Ref<FileSystemObject>& file)
    : mProvider(provider), mElement(element), mFile(file), mType(LowerCase(element->ElementType())) {}

std::string Evaluation::Run() {
  if (auto refusal = Refusal()) return *std::move(refusal);
  mSubject = FindSubject();
  const auto function = FindElement(mType);
  auto result = function ? function(*this) : Unclaimed();
  if (!mVerbatim) Finish(result);
  return result;
}

QBProject& Evaluation::Project() const {
  return *mProvider.QBProject();
}

const std::string& Evaluation::RequiredAttribute(std::string_view name) const {
  return mElement->Attributes().Item(name);
}

std::string_view Evaluation::Attribute(std::string_view name) const noexcept {
  return mElement->Attribute(name);
}

std::string Evaluation::ParseHere(std::string_view text) const {
  return ParserServices::ParseText(text, mProvider, mFile);
}

/// The text of an element whose condition doesn't let it through.
std::optional<std::string> Evaluation::Refusal() const {
  const auto* type = mElement->Attributes().Find("condition");
  if (!type) return std::nullopt;
  const auto condition = New<Condition>();
  condition->SetConditionType(*type);
  if (!condition->IsValid()) return "!INVALID CONDITION TYPE!";
  if (condition->Evaluate(mProvider.CurrentItem(), mProvider.Definition(), mProvider.QBProject())) return std::nullopt;
  return std::string();
}

Ref<Object> Evaluation::FindSubject() const {
  const auto& item = mProvider.CurrentItem();
  if (!SpeaksOfTopic(mType)) return item;
  if (ParserServices::IsTypeOf(item, "ManifestEntry")) return item->Member("Topic").ToObject();
  return ParserServices::IsTypeOf(item, "Topic") ? item : Ref<Object>();
}

/// The search by name: variables and properties, the host's common provider, and the bare properties last.
std::string Evaluation::Unclaimed() const {
  auto result = VariableOrProjectProperty(mProvider, mType);
  if (result.empty()) result = mProvider.CommonProvider()->DataProvider_ProvideData(mElement, mFile);
  if (result.empty()) return mProvider.DataProvider_GetProperty(mType);
  if (result == CommonProvider::Discard) result.clear();
  return result;
}

void Evaluation::Finish(std::string& result) const {
  if (Attribute("ForScript") == "True") ReplaceInPlace(result, "'", "\\'");
  ApplyReplacementTexts(result);
  result = mProvider.ParsedForProperties(std::move(result));
  ReplaceInPlace(result, "/%", "%");
  ReplaceInPlace(result, "/$$", "$$");
}

void Evaluation::ApplyReplacementTexts(std::string& result) const {
  if (!result.empty()) {
    const auto notBlank = ParserServices::ElementNotBlankText(*mElement);
    if (!notBlank.empty()) result = ReplaceAllIgnoringCase(notBlank, "%%" + mType + "%%", result);
  }
  // Also after a replacement that came out empty.
  if (result.empty()) result = ParserServices::ElementBlankText(*mElement);
}

}  // namespace quillbook
