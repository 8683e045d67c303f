// Elements that show one value.
#include <limits>

#include "generation/ItemProperties.h"
#include "generation/elements/Elements.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook::elements {
namespace {

/// Evaluates a value, also where its elements stand inside double quotes.
std::string ParseValue(const Evaluation& e, std::string value) {
  // Nothing in it for the parser, and the mark behind it yields nothing.
  if (value.find("%%") == std::string::npos) return value;
  return e.ParseHere(value.append("%%ReplaceInQuotes:Value=True%%"));
}

bool IsColour(QBProject& project, std::string_view name) {
  const auto& variable = project.Template()->Variables()->Item(name);
  return variable->ValueType() == VariableType::Colour;
}

std::string DateOf(Evaluation& e, std::string_view member) {
  if (!e.Subject()) return {};
  const auto format = e.Attribute("DateFormat");
  return e.Subject()->Member(member).ToDate().FormatForReader(format.empty() ? "Short Date" : format);
}

bool IsBookletLink(const Evaluation& e) {
  return ParserServices::IsTypeOf(e.Provider().CurrentItem(), "BookletLinkInfo");
}

}  // namespace

std::string Variable(Evaluation& e) {
  std::string value;
  std::string result;
  bool colour = false;
  IgnoreFailures([&] { colour = IsColour(e.Project(), e.RequiredAttribute("name")); });
  IgnoreFailures([&] { value = e.Project().RuntimeVariableValue(e.RequiredAttribute("name")); });
  if (!value.empty() && colour) IgnoreFailures([&] { value = New<Root>()->ColorToWebHex(LongFromText(value)); });
  IgnoreFailures([&] { result = ParseValue(e, value); });
  return result;
}

std::string ProjectProperty(Evaluation& e) {
  std::string result;
  IgnoreFailures([&] { result = ParseValue(e, e.Project().RuntimeProjectPropertyValue(e.RequiredAttribute("name"))); });
  return result;
}

std::string IncrementingValue(Evaluation& e) {
  const auto name = e.Attribute("Name");
  if (name.empty()) return {};
  std::int32_t number = 1;
  IgnoreFailures([&] { number = LongFromText(e.RequiredAttribute("InitialValue")); });
  auto& values = *e.Project().IncrementingValues;
  if (const auto* stored = values.Find(name)) {
    if (*stored == std::numeric_limits<std::int32_t>::max()) throw Failure(FailureNumber::Overflow);
    number = *stored + 1;
    values.Remove(name);
  }
  values.Add(number, name);
  return std::to_string(number);
}

std::string GlossaryItemTerm(Evaluation& e) {
  return e.Provider().DataProvider_GetProperty("glossaryitemterm");
}

std::string GlossaryItemDefinition(Evaluation& e) {
  return e.Provider().DataProvider_GetProperty("glossaryitemdefinition");
}

std::string CreatedOn(Evaluation& e) {
  return DateOf(e, "CreatedOn");
}

std::string ModifiedOn(Evaluation& e) {
  return DateOf(e, "ModifiedOn");
}

std::string LinkCaption(Evaluation& e) {
  if (!IsBookletLink(e)) return {};
  const auto& link = e.Provider().CurrentItem();
  auto caption = link->Member("LinkCaption").ToText();
  const auto topic = link->Member("LinkTopic").ToObject();
  if (!topic || e.Attribute("OnlyIfNotTopicTitle") != "True") return caption;
  // The title, not the caption, is what tells a reader that the two differ.
  auto title = topic->Member("Title").ToText();
  return EqualsIgnoringCase(title, caption) ? std::string() : title;
}

std::string LinkUrl(Evaluation& e) {
  return IsBookletLink(e) ? e.Provider().CurrentItem()->Member("LinkURL").ToText() : std::string();
}

}  // namespace quillbook::elements
