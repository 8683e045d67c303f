#include "generation/ItemProperties.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicLink.h"

namespace quillbook {
namespace {

constexpr std::string_view GlossaryPage = "Glossary.html";
constexpr std::string_view PageExtension = ".html";

bool IsItem(const QBDataProvider& provider, std::string_view typeName) {
  return ParserServices::IsTypeOf(provider.CurrentItem(), typeName);
}

/// A member of the current item; empty without one.
std::string ItemMember(const QBDataProvider& provider, std::string_view member) {
  const auto& item = provider.CurrentItem();
  return item ? item->Member(member).ToText() : std::string();
}

const BuildProfile& Profile(const QBDataProvider& provider) {
  return *provider.QBProject()->CurrentBuildProfile();
}

// Titles and names.

std::string ItemTitle(QBDataProvider& provider) {
  if (IsItem(provider, "Manifest") || IsItem(provider, "Keyword") || IsItem(provider, "MenuLink"))
    return ItemMember(provider, "Name");
  return ItemMember(provider, IsItem(provider, "ManifestEntry") ? "RuntimeTitle" : "Title");
}

std::string ItemTitleNoQuotes(QBDataProvider& provider) {
  auto title = ItemTitle(provider);
  std::replace(title.begin(), title.end(), '"', '\'');
  return title;
}

std::string ItemQualifiedName(QBDataProvider& provider) {
  return ItemMember(provider, IsItem(provider, "MenuLink") ? "Target" : "QualifiedName");
}

std::string ItemName(QBDataProvider& provider) {
  std::string name;
  IgnoreFailures([&] { name = ItemMember(provider, "Name"); });
  return name;
}

std::string LanguageCaption(QBDataProvider& provider) {
  const auto& item = provider.CurrentItem();
  return item && item->TypeName() == "Language" ? ItemMember(provider, "Caption") : std::string();
}

std::string IndexUrl(QBDataProvider& provider) {
  if (!IsItem(provider, "Topic")) return {};
  return ItemMember(provider, "QualifiedName").append(PageExtension);
}

// Related links.

std::string TopicLinkTarget(const TopicLink& link) {
  if (link.TopicLinkType() != rttTopic) return link.URL();
  if (const auto child = link.ChildTopic()) return child->QualifiedName().append(PageExtension);
  return std::string(link.ChildTopicKey == GlossaryPage ? GlossaryPage : "#");
}

std::string LinkTarget(QBDataProvider& provider) {
  if (IsItem(provider, "MenuLink")) return ItemMember(provider, "Target");
  const auto& item = provider.CurrentItem();
  if (const auto* link = dynamic_cast<const TopicLink*>(item.get())) return TopicLinkTarget(*link);
  return item ? ItemMember(provider, "QualifiedName").append(PageExtension) : std::string();
}

std::string LinkTitle(QBDataProvider& provider) {
  const auto* link = dynamic_cast<const TopicLink*>(provider.CurrentItem().get());
  if (!link) return {};
  const auto& title = link->Title();
  const bool hasTitle = !TrimBlanks(title).empty() && !title.starts_with('{');
  if (link->TopicLinkType() != rttTopic || hasTitle) return title;
  if (const auto child = link->ChildTopic()) return child->Title();
  if (link->ChildTopicKey == GlossaryPage) return provider.QBProject()->GetVariableValue("GlossaryTitle", "Glossary");
  return "{No Child Topic}";
}

// Glossary.

std::string GlossaryLetterName(QBDataProvider& provider) {
  return ItemMember(provider, "Name");
}

std::string GlossaryLetterLink(QBDataProvider& provider) {
  const auto& item = provider.CurrentItem();
  if (!item) return {};
  const auto name = item->Member("Name").ToText();
  return item->Member("Value").ToNumber() > 0 ? "<a href=\"#" + name + "\">" + name + "</a>" : name;
}

std::string GlossaryTerm(QBDataProvider& provider) {
  return ReplaceAll(ItemMember(provider, "Term"), "\r\n", "");
}

std::string GlossaryRawDefinition(QBDataProvider& provider) {
  return ReplaceAll(ItemMember(provider, "Definition"), "\r\n", " ");
}

std::string GlossaryDefinition(QBDataProvider& provider) {
  return ReplaceAll(ReplaceAll(GlossaryRawDefinition(provider), "\"", "&quot;"), "\\", "\\\\");
}

// Project and build.

std::string ProjectTitle(QBDataProvider& provider) {
  const auto project = provider.QBProject();
  const auto& profile = project->CurrentBuildProfile();
  return profile ? profile->RuntimeProjectTitle() : project->Title();
}

std::string HelpFileTitle(QBDataProvider& provider) {
  return provider.MVProject()->Title;
}

std::string ProjectFileBaseName(QBDataProvider& provider) {
  return provider.QBProject()->Filename->BaseName();
}

std::string LineBreak(QBDataProvider&) {
  return "\r\n";
}

std::string Charset(QBDataProvider& provider) {
  return std::to_string(Profile(provider).CodePage());
}

std::string MetaCharset(QBDataProvider& provider) {
  const auto codePage = provider.ForEdit ? CodePageUtf8 : Profile(provider).CodePage();
  return "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=" + CharsetName(codePage) + "\">";
}

std::string LocaleString(QBDataProvider& provider) {
  const auto& profile = Profile(provider);
  const auto locale = profile.LocaleID() == 0 ? Locale::Default() : profile.GetLocale();
  return locale ? fmt::format("0x{:X} {}", locale->LocaleID(), locale->Name()) : std::string();
}

// The table.

struct Property {
  std::string_view name;
  std::string (*value)(QBDataProvider& provider);
};

/// In order of the names, which are found by bisection.
constexpr auto Properties = std::to_array<Property>({
    {"charset", Charset},
    {"crlf", LineBreak},
    {"glossaryitemdefinition", GlossaryDefinition},
    {"glossaryitemrawdefinition", GlossaryRawDefinition},
    {"glossaryitemterm", GlossaryTerm},
    {"glossaryletter", GlossaryLetterName},
    {"glossaryletterlink", GlossaryLetterLink},
    {"helpcompilerprojectfilename", ProjectFileBaseName},
    {"helpfiletitle", HelpFileTitle},
    {"indexurl", IndexUrl},
    {"item_title", ItemTitle},
    {"itemname", ItemName},
    {"itemqualifiedname", ItemQualifiedName},
    {"itemtitle", ItemTitle},
    {"itemtitlenoquotes", ItemTitleNoQuotes},
    {"languagecaption", LanguageCaption},
    {"linktarget", LinkTarget},
    {"linktitle", LinkTitle},
    {"localestring", LocaleString},
    {"metacharset", MetaCharset},
    {"projectgroupdescription", HelpFileTitle},
    {"projecttitle", ProjectTitle},
    {"title", ItemTitle},
    {"topictitle", ItemTitle},
});
static_assert(std::ranges::is_sorted(Properties, {}, &Property::name));

const Property* FindProperty(std::string_view name) noexcept {
  const auto* found = std::ranges::lower_bound(Properties, name, {}, &Property::name);
  return found != Properties.end() && found->name == name ? found : nullptr;
}

}  // namespace

std::string ItemProperty(QBDataProvider& provider, std::string_view name) {
  if (const auto* property = FindProperty(LowerCase(name))) return property->value(provider);
  auto value = VariableOrProjectProperty(provider, name);
  return value.empty() ? provider.CommonProvider()->DataProvider_GetProperty(name) : value;
}

std::string VariableOrProjectProperty(const QBDataProvider& provider, std::string_view name) {
  const auto project = provider.QBProject();
  std::string value;
  const auto pageTemplate = project->Template();
  if (pageTemplate && pageTemplate->Variables()->Contains(name)) value = project->RuntimeVariableValue(name);
  if (project->ProjectProperties()->Item(name)) value = project->RuntimeProjectPropertyValue(name);
  return value;
}

}  // namespace quillbook
