#include "quillbook/host/TemplateStore.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

constexpr std::string_view Minimal = R"(<template name="Plain">
  <namespace name="toy"/>
  <layout name="Page.html" item="toy:page" output="{QualifiedName}.html"/>
  <definition kind="toy:page"/>
</template>
)";

class TemplateStoreTest : public testing::Test {
 protected:
  TemplateStoreTest() { store->SetConfigPath(folder.Stored()); }
  void WriteTemplate(const std::string& name, std::string_view definition) {
    folder.Write("Templates/" + name + "/template.xml", definition);
    folder.Write("Templates/" + name + "/layouts/Page.html", "page");
  }
  /// The one message of a store whose one template has this definition.
  BuildNote MessageFor(std::string_view definition) {
    WriteTemplate("Bad", definition);
    store->Forget();
    EXPECT_EQ(store->Templates()->Count(), 0u);
    if (store->Messages().size() != 1) {
      ADD_FAILURE() << store->Messages().size() << " messages";
      return {};
    }
    return store->Messages()[0];
  }

  support::TemporaryFolder folder;
  Ref<TemplateStore> store = New<TemplateStore>();
};

TEST_F(TemplateStoreTest, NoFolder_GivesNoTemplates) {
  EXPECT_EQ(store->Templates()->Count(), 0u);
  EXPECT_TRUE(store->Messages().empty());
  store->SetConfigPath("");
  EXPECT_EQ(store->Templates()->Count(), 0u);
}

TEST_F(TemplateStoreTest, Template_IsReadWhole) {
  WriteTemplate("Full", R"(<?xml version="1.0" encoding="utf-8"?>
<template name="Full" supports="Px">
  <namespace name="toy"/><namespace name="other"/>
  <variable name="Accent" type="colour" default="255" caption="Accent colour"/>
  <variable name="Footer">A &lt;b&gt; foot</variable>
  <layout name="page.html" item="toy:page" output="{QualifiedName}.html"/>
  <definition kind="toy:project" type="Project">
    <definition kind="toy:page" filter="type=all"/>
  </definition>
</template>)");
  folder.Write("Templates/Full/scraps/_Link_Body.html", "<li>");
  folder.Write("Templates/Full/scripts/site.js", "js");
  folder.Write("Templates/Full/stylesheets/a.css", "css");
  folder.Write("Templates/Full/layouts/notes.txt", "kept with the output");
  const auto full = store->Find("FULL");
  ASSERT_TRUE(full) << (store->Messages().empty() ? "" : store->Messages()[0].Text);
  EXPECT_EQ(full->Name(), "Full");
  EXPECT_EQ(full->Supports(), "Px");
  EXPECT_TRUE(full->Namespaces()->Contains("other"));
  EXPECT_EQ(full->Variables()->Item("accent")->ValueType(), VariableType::Colour);
  EXPECT_EQ(full->Variables()->Item("accent")->Default(), "255");
  EXPECT_EQ(full->Variables()->Item("Footer")->Default(), "A <b> foot");
  EXPECT_EQ(full->Variables()->Item("Footer")->Caption(), "Footer");
  ASSERT_EQ(full->Layouts()->Count(), 1u);
  EXPECT_EQ(full->Layouts()->Item(1)->Text(), "page");
  EXPECT_EQ(full->Layouts()->Item(1)->OutputName(), "{QualifiedName}.html");
  const auto pages = full->NamespaceDefs()->Find("toy:page");
  ASSERT_TRUE(pages);
  EXPECT_EQ(pages->ItemType(), "page");
  EXPECT_EQ(pages->Filter(), "type=all");
  EXPECT_EQ(full->NamespaceDefs()->Item(1)->ItemType(), "Project");
  EXPECT_EQ(full->Folder(), folder.Stored() + "Templates\\Full\\");
  ASSERT_NE(full->FindScrap("_LINK_body"), nullptr);
  EXPECT_EQ(*full->FindScrap("_LINK_body"), "<li>");
  EXPECT_EQ(full->FindScrap("none"), nullptr);
  EXPECT_EQ(full->SupportFiles(),
            (std::vector<std::string>{"layouts/notes.txt", "scripts/site.js", "stylesheets/a.css"}));
}

TEST_F(TemplateStoreTest, OldEncodings_AreReadAsText) {
  WriteTemplate("Old", Minimal);
  folder.Write("Templates/Old/layouts/Page.html", "caf\xE9");
  EXPECT_EQ(store->Find("Plain")->Layouts()->Item(1)->Text(), "café");
}

TEST_F(TemplateStoreTest, BadTemplate_LeavesTheOthers) {
  WriteTemplate("A", "<template");
  WriteTemplate("B", Minimal);
  folder.Write("Templates/Empty/readme.txt", "no template here");
  EXPECT_EQ(store->Templates()->Count(), 1u);
  EXPECT_TRUE(store->Find("Plain"));
  EXPECT_EQ(store->Messages().size(), 1u);
}

TEST_F(TemplateStoreTest, BrokenXml_IsToldWithItsPlace) {
  const auto note = MessageFor("<template name=\"x\">\n  <namespace name=\"toy\"/>\n  <layout </template>\n");
  EXPECT_EQ(note.Code, "template.unreadable");
  EXPECT_EQ(note.File, folder / "Templates/Bad/template.xml");
  EXPECT_EQ(note.Line, 3u);
  EXPECT_GT(note.Column, 0u);
  EXPECT_EQ(note.Text.rfind(note.File + ":3:", 0), 0u) << note.Text;
}

TEST_F(TemplateStoreTest, WrongContent_IsToldWithTheElementsPlace) {
  const auto note = MessageFor("<template name=\"x\">\n  <namespace name=\"toy\"/>\n  <bogus/>\n</template>\n");
  EXPECT_EQ(note.Line, 3u);
  EXPECT_EQ(note.Column, 3u);
  EXPECT_NE(note.Text.find("unknown element 'bogus'"), std::string::npos) << note.Text;
}

TEST_F(TemplateStoreTest, EveryKindOfFault_IsNamed) {
  const std::pair<std::string, std::string> faults[] = {
      {"", ""},
      {"<other name='x'/>", "the root element is not 'template'"},
      {"<template/>", "'template' has no attribute 'name'"},
      {"<template name='x'><variable/></template>", "'variable' has no attribute 'name'"},
      {"<template name='x'><variable name='v' type='odd'/></template>", "unknown type 'odd'"},
      {"<template name='x'><variable name='v'/><variable name='V'/></template>", "the variable 'V' is named twice"},
      {"<template name='x'><namespace name='a'/><namespace name='A'/></template>", "the namespace 'A' is named twice"},
      {"<template name='x'><layout name='None.html' item='toy:page'/></template>",
       "the layout's file 'layouts/None.html' is missing"},
      {"<template name='x'><layout name='../../x' item='toy:page'/></template>", "is no name for a layout's file"},
      {"<template name='x'><layout name='Page.html' item='toy:page'/></template>", "for which there is no definition"},
      {"<template name='x'><definition kind='page'/></template>", "has no namespace"},
      {"<template name='x'><definition kind='toy:page'><layout/></definition></template>", "unknown element 'layout'"},
  };
  for (const auto& [definition, message] : faults)
    EXPECT_NE(MessageFor(definition).Text.find(message), std::string::npos) << definition;
}

TEST_F(TemplateStoreTest, VeryDeepDefinitions_AreAFault) {
  std::string text = "<template name='x'>";
  for (int i = 0; i < 100'000; ++i) text += "<definition kind='toy:page'>";
  for (int i = 0; i < 100'000; ++i) text += "</definition>";
  EXPECT_EQ(MessageFor(text + "</template>").Code, "template.unreadable");
}

TEST_F(TemplateStoreTest, SecondTemplateOfAName_IsTold) {
  WriteTemplate("A", Minimal);
  WriteTemplate("B", Minimal);
  EXPECT_EQ(store->Templates()->Count(), 1u);
  ASSERT_EQ(store->Messages().size(), 1u);
  EXPECT_EQ(store->Messages()[0].Code, "template.duplicate-name");
}

TEST_F(TemplateStoreTest, Templates_AreKeptUntilForgotten) {
  WriteTemplate("A", Minimal);
  const auto first = store->Find("Plain");
  folder.Write("Templates/A/layouts/Page.html", "changed");
  EXPECT_EQ(store->Find("Plain"), first);
  store->SetConfigPath(folder.Stored());
  EXPECT_EQ(store->Find("Plain"), first) << "the same directory again";
  store->Forget();
  EXPECT_EQ(store->Find("Plain")->Layouts()->Item(1)->Text(), "changed");
  EXPECT_EQ(first->Layouts()->Item(1)->Text(), "page") << "what was handed out stays as it is";
}

TEST_F(TemplateStoreTest, Apartment_HasOneStore) {
  EXPECT_EQ(TemplateStore::OfApartment(), TemplateStore::OfApartment());
}

}  // namespace
}  // namespace quillbook
