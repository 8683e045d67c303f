// Base of tests that generate: a project, an installed template and a host project.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/generation/QBNamespaceProvider.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/CollectionServices.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook::support {

/// An object with a type name and members of the test's choice, for kinds of item that this library has not.
template <class Tag>
class ToyItem final : public Object {
 public:
  std::string First;
  std::string Second;
  Ref<Object> Third;

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<ToyItem>(Tag::TypeName)
                                     .template Public<&ToyItem::First>(Tag::First)
                                     .template Public<&ToyItem::Second>(Tag::Second)
                                     .template Public<&ToyItem::Third>(Tag::Third)
                                     .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

/// Installs a template "Plain" below a folder of its own; its parts can be changed until something is evaluated.
class GenerationTest : public ProjectTest {
 protected:
  void SetUp() override {
    Platform::Current().Registry().SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Quillbook2",
                                            "LiteInstallDir", folder.Stored("install"));
    RegisterQuillbookNamespace();
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("project/demo.qbp"));
    project->SetTitle("Demo");
    project->SetTemplateName("Plain");
  }
  void TearDown() override {
    provider = {};
    items = {};
    if (host) host->Reset();
    host = {};
    TemplateStore::OfApartment()->Forget();
    ProjectTest::TearDown();
  }

  void Scrap(const std::string& name, const std::string& text) { files["scraps/" + name + ".html"] = text; }
  void Layout(const std::string& name, const std::string& text) { files["layouts/" + name] = text; }
  void SupportFile(const std::string& path, const std::string& text) { files[path] = text; }

  void InstallTemplate() {
    folder.Write("install/Configuration/Templates/Plain/template.xml",
                 "<template name=\"Plain\" supports=\"Px\"><namespace name=\"mv.quillbooklite\"/>" + variables +
                     layouts + definitions + "</template>");
    for (const auto& [path, text] : files) folder.Write("install/Configuration/Templates/Plain/" + path, text);
  }

  /// Sets a host project up as a build does, and takes its providers.
  void SetUpHost() {
    InstallTemplate();
    host = modMain::NewMVProject();
    host->RootItems()->Add(project, QuillbookNamespace);
    const auto& type = host->DocTypes()->Item(QuillbookNamespace);
    type->SetTemplate(project->Template());
    host->SetCurrentDocType(type);
    host->OutputDirectory = folder.Stored("out/");
    host->HelpVersion = "1";
    host->Title = "Help";
    items = Ref<QBNamespaceProvider>(dynamic_cast<QBNamespaceProvider*>(type->NamespaceProvider().get()));
    provider =
        Ref<QBDataProvider>(dynamic_cast<QBDataProvider*>(items->INamespaceProvider_DocumentDataProvider().get()));
    provider->SetDataProvider_CurrentRootItem(project);
  }

  Ref<Topic> AddTopic(std::string_view name, std::string_view body = "<p>Body</p>", std::string_view title = {}) {
    auto topic = project->NewTopic();
    topic->SetName(name);
    topic->SetTitle(title.empty() ? name : title);
    topic->SetTopicSectionData("BodyText", body);
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
  Ref<GlossaryItem> AddTerm(std::string_view term, std::string_view definition = "Definition") {
    auto item = project->NewGlossaryItem(term, definition);
    project->GlossaryItems()->Add(item, item->Key);
    return item;
  }
  Ref<BuildProfile> AddProfile() {
    auto profile = project->NewBuildProfile("Web", "", false, 1);
    project->BuildProfiles->Add(profile, profile->ID());
    return profile;
  }

  [[nodiscard]] Ref<NamespaceDef> Kind(std::string_view suffix) const {
    return New<NamespaceDef>(std::string(QuillbookNamespace) + std::string(suffix));
  }
  [[nodiscard]] std::vector<Ref<Object>> ItemsOf(std::string_view suffix, const Ref<Object>& parent = {},
                                                 std::string_view filter = {}) {
    return CollectionServices::Items(items->INamespaceProvider_GetItems(Kind(suffix), parent, filter));
  }

  void Select(const Ref<Object>& item, std::string_view type = "Topic") {
    provider->DataProvider_SetCurrentItem(Kind(":topic"), item, type, project);
  }
  [[nodiscard]] std::string Eval(std::string_view text) { return ParserServices::ParseText(text, *provider); }
  [[nodiscard]] std::string EvalFor(const Ref<Object>& item, std::string_view text) {
    Select(item);
    return Eval(text);
  }
  [[nodiscard]] std::string Property(std::string_view name) { return provider->DataProvider_GetProperty(name); }

  TemporaryFolder folder;
  std::map<std::string, std::string> files;
  std::string variables;
  std::string layouts;
  std::string definitions =
      "<definition kind=\"mv.quillbooklite:qbproject\"><definition kind=\"mv.quillbooklite:topic\">"
      "<definition kind=\"mv.quillbooklite:linkcategory\"><definition kind=\"mv.quillbooklite:link\"/></definition>"
      "</definition><definition kind=\"mv.quillbooklite:glossaryletter\">"
      "<definition kind=\"mv.quillbooklite:glossaryitem\"/></definition></definition>";
  Ref<MVProject> host;
  Ref<QBNamespaceProvider> items;
  Ref<QBDataProvider> provider;
};

}  // namespace quillbook::support
