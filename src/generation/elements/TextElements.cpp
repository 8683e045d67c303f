// Elements that bring a text into the page.
#include "generation/elements/Elements.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"

namespace quillbook::elements {
namespace {

/// Holds the provider's list of topics being included, and ends it with the outermost `include`.
class IncludeScope {
 public:
  explicit IncludeScope(QBDataProvider& provider) : mProvider(provider), mOwns(!provider.IncludeStack) {
    if (mOwns) provider.IncludeStack = New<Collection<std::string>>();
  }
  IncludeScope(const IncludeScope&) = delete;
  IncludeScope& operator=(const IncludeScope&) = delete;
  ~IncludeScope() {
    if (mOwns) mProvider.IncludeStack = {};
  }

 private:
  QBDataProvider& mProvider;
  bool mOwns;
};

Ref<QBDataProvider> ProviderForTopic(Evaluation& e, const Ref<Topic>& topic) {
  auto& provider = e.Provider();
  const auto clone = provider.DataProvider_Clone();
  Ref<QBDataProvider> inner(dynamic_cast<QBDataProvider*>(clone.get()));
  const auto& type = provider.MVProject()->DocTypes()->Item(QuillbookNamespace);
  const auto kind = type->Template()->NamespaceDefs()->Find(std::string(QuillbookNamespace) + ":topic");
  inner->DataProvider_SetCurrentItem(kind, topic, "Topic", provider.QBProject());
  // A clone starts without the list. Handing it on here is what ends a topic that includes itself.
  inner->IncludeStack = provider.IncludeStack;
  return inner;
}

bool HoldsMetaData(std::string_view text) noexcept {
  // The letter V is rare, so most texts are passed at the speed of a byte search.
  constexpr std::string_view mark = "mvmetadata";
  for (const char v : {'V', 'v'})
    for (auto at = text.find(v); at != std::string_view::npos; at = text.find(v, at + 1))
      if (at > 0 && EqualsIgnoringCase(text.substr(at - 1, mark.size()), mark)) return true;
  return false;
}

/// The text of a section through the passes of a generation.
std::string SectionText(Evaluation& e, const Topic& topic, std::string_view name) {
  auto& provider = e.Provider();
  const std::string& data = topic.TopicSectionData(name);
  auto text = HoldsMetaData(data) ? e.ParseHere(provider.RemoveMVMetaData(data)) : e.ParseHere(data);
  if (!e.Project().MVPFileName().empty()) text = provider.ParseForAnchor(text);
  return text.find("$$") == std::string::npos ? text : provider.ParseForGlossaryItems(text);
}

}  // namespace

std::string Literal(Evaluation& e) {
  return e.Provider().Parse(e.RequiredAttribute("value"));
}

std::string Include(Evaluation& e) {
  auto& provider = e.Provider();
  const IncludeScope scope(provider);
  Ref<Topic> topic;
  IgnoreFailures([&] { topic = e.Project().TopicByName(e.RequiredAttribute("topic")); });
  if (!topic || provider.IncludeStack->Contains(topic->Key)) return {};
  provider.IncludeStack->Add(topic->Key, topic->Key);
  return ProviderForTopic(e, topic)->DataProvider_ParseForProperties("%%topicsection:name=bodytext%%");
}

std::string TopicSection(Evaluation& e) {
  if (!e.Subject()) return {};
  const auto& name = e.RequiredAttribute("name");
  auto& provider = e.Provider();
  if (provider.ForEdit) return provider.TopicSectionEditSpan(provider.CurrentItem(), name, "Topic Body");
  const auto* topic = dynamic_cast<const Topic*>(e.Subject().get());
  if (!topic) throw Failure(FailureNumber::NoSuchMember);
  return SectionText(e, *topic, name);
}

/// Deliberately inert.
std::string TaggedComment(Evaluation& e) {
  e.TakeVerbatim();
  return {};
}

std::string Scrap(Evaluation& e) {
  return e.Provider().Parse(e.Provider().MVProject()->Scrap(e.RequiredAttribute("name")));
}

std::string DesignTime(Evaluation& e) {
  if (!e.Provider().DesignTime) return {};
  const auto& chosen = modMain::mSpellImagePath();
  const auto& images = chosen.empty() ? fltnVariables().fltnModuleFilename : chosen;
  return e.Element().Source() +
         "<STYLE><!-- SPAN.mvMisspelled { BACKGROUND-POSITION: left bottom; BACKGROUND-IMAGE: url('res://" + images +
         "'); BACKGROUND-REPEAT: repeat-x; isStyleInternal: True --></STYLE>";
}

}  // namespace quillbook::elements
