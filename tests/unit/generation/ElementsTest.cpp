#include "generation/GenerationTest.h"
#include "quillbook/base/Date.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/FailureReporter.h"
#include "quillbook/structure/OtherFiles.h"

namespace quillbook {
namespace {

struct BookletTag {
  static constexpr std::string_view TypeName = "BookletLinkInfo", First = "LinkCaption", Second = "LinkURL",
                                    Third = "LinkTopic";
};
struct ManifestEntryTag {
  static constexpr std::string_view TypeName = "ManifestEntry", First = "RuntimeTitle", Second = "Unused",
                                    Third = "Topic";
};

class ElementsTest : public support::GenerationTest {
 protected:
  /// Sets up with the scraps, layouts and variables given so far, and shows a topic.
  Ref<Topic> Begin(std::string_view body = "<p>Body</p>") {
    SetUpHost();
    auto topic = AddTopic("Start", body, "Start page");
    Select(topic);
    return topic;
  }
  /// As for a page that goes to a file.
  std::string EvalFile(std::string_view text, const std::string& path) {
    auto file = New<FileSystemObject>(path);
    return ParserServices::ParseText(text, *provider, file);
  }
  Ref<OtherFile> AddFile(const std::string& name) {
    auto file = project->NewOtherFile(project->Filename->Path() + name);
    project->OtherFiles->Add(file, file->LocalSpec());
    return file;
  }
  /// Without a profile a variable has no value but the project's own.
  void BuildProfileIsChosen() { project->SetCurrentBuildProfile(AddProfile()); }
  void SetProperty(std::string_view name, std::string_view value) { project->NewProjectProperty(name, pptText, value); }
};

// The steps around every element.

TEST_F(ElementsTest, TypesIgnoreCase) {
  Begin();
  EXPECT_EQ(Eval("%%TopicSection:name=bodytext%%"), "<p>Body</p>");
  EXPECT_EQ(Eval("%%TOPICTITLE%%"), "Start page");
}

TEST_F(ElementsTest, FailingConditionYieldsNothing_EvenWithABlankText) {
  Begin();
  EXPECT_EQ(Eval("%%topictitle:condition=kind:link%%%%blank%%none%%/blank%%%%/topictitle%%"), "");
  EXPECT_EQ(Eval("%%topictitle:condition=\"kind:topic\"%%"), "Start page");
}

TEST_F(ElementsTest, InvalidConditionShowsItself) {
  Begin();
  EXPECT_EQ(Eval("%%topictitle:condition=nonsense%%%%notblank%%x%%/notblank%%%%/topictitle%%"),
            "!INVALID CONDITION TYPE!");
}

TEST_F(ElementsTest, ConditionsSeeItemDefinitionAndHost) {
  Begin();
  host->CompileHelpFile = true;
  EXPECT_EQ(Eval("%%literal:value=x;condition=\"notblank:Title\"%%"), "x");
  EXPECT_EQ(Eval("%%literal:value=x;condition=\"blank:Title\"%%"), "");
}

TEST_F(ElementsTest, NotBlankTextTakesTheResultAtItsPlaces) {
  Begin();
  EXPECT_EQ(Eval("%%topictitle%%%%notblank%%[%%TopicTitle%%|%%topictitle%%]%%/notblank%%%%blank%%none%%/blank%%"
                 "%%/topictitle%%"),
            "[Start page|Start page]");
  EXPECT_EQ(Eval("%%literal:value=\"\"%%%%notblank%%some%%/notblank%%%%blank%%none%%/blank%%%%/literal%%"), "none");
}

TEST_F(ElementsTest, ForScriptEscapesApostrophes_ForExactlyTrue) {
  Begin()->SetTitle("it's");
  EXPECT_EQ(Eval("%%topictitle:ForScript=True%%"), "it\\'s");
  EXPECT_EQ(Eval("%%topictitle:ForScript=true%%"), "it's");
  EXPECT_EQ(Eval("%%topictitle%%"), "it's");
}

TEST_F(ElementsTest, ForScriptComesBeforeTheReplacementText) {
  Begin()->SetTitle("it's");
  EXPECT_EQ(Eval("%%topictitle:ForScript=True%%%%notblank%%'%%topictitle%%'%%/notblank%%%%/topictitle%%"), "'it\\'s'");
}

TEST_F(ElementsTest, ResultsAreParsedAgain) {
  Begin();
  SetProperty("Outer", "<%%Inner%%>");
  SetProperty("Inner", "%%topictitle%%");
  EXPECT_EQ(Eval("%%Outer%%"), "<Start page>");
}

TEST_F(ElementsTest, EscapedSignsComeBackLast) {
  Begin();
  SetProperty("Escaped", "100/% /$$x/$$ /%/%topictitle/%/%");
  EXPECT_EQ(Eval("%%Escaped%%"), "100% $$x$$ %%topictitle%%");
}

TEST_F(ElementsTest, UnclaimedType_PropertyWinsOverVariable) {
  variables = "<variable name=\"Skin\" default=\"plain\"/>";
  Begin();
  BuildProfileIsChosen();
  EXPECT_EQ(Eval("%%skin%%"), "plain");
  SetProperty("Skin", "property");
  EXPECT_EQ(Eval("%%skin%%"), "property");
}

TEST_F(ElementsTest, UnclaimedType_VariableHidesProperties) {
  variables = "<variable name=\"topictitle\" default=\"variable\"/><variable name=\"templatename\" default=\"\"/>";
  Begin();
  BuildProfileIsChosen();
  EXPECT_EQ(Eval("%%topictitle%%"), "variable");
  EXPECT_EQ(Eval("%%templatename%%"), "Plain");  // an empty variable lets the common provider answer
}

TEST_F(ElementsTest, UnclaimedType_UnknownNameShowsItself) {
  Begin();
  EXPECT_EQ(Eval("%%nosuchthing%%"), "!UNCRECOGNISED ELEMENT 'nosuchthing'!");
}

TEST_F(ElementsTest, DiscardOutputsNothing) {
  variables = "<variable name=\"Hidden\" default=\"{Discard}\"/><variable name=\"Shown\" default=\"{discard}\"/>";
  Begin();
  BuildProfileIsChosen();
  EXPECT_EQ(Eval("[%%Hidden%%%%blank%%none%%/blank%%%%/Hidden%%]"), "[none]");
  EXPECT_EQ(Eval("%%Shown%%"), "{discard}");
}

TEST_F(ElementsTest, DiscardFromAPropertyOfTheItemIsText) {
  Begin()->SetTitle("{Discard}");
  EXPECT_EQ(Eval("%%topictitle%%"), "{Discard}");
}

TEST_F(ElementsTest, MissingMandatoryAttributeIsAFailure) {
  Begin();
  EXPECT_EQ(Eval("a%%literal%%b"), "ab");
  EXPECT_EQ(failures.Take(), Failures{"QBDataProvider.DataProvider_ProvideData 5"});
}

// Texts.

TEST_F(ElementsTest, LiteralIsParsed) {
  Begin();
  EXPECT_EQ(Eval("%%literal:value=\"a<crlf>b\"%%"), "a<br>b");
}

TEST_F(ElementsTest, TaggedCommentYieldsNothing_NotEvenItsBlankText) {
  Begin();
  EXPECT_EQ(Eval("a%%taggedcomment%%%%blank%%x%%/blank%%%%/taggedcomment%%b"), "ab");
}

TEST_F(ElementsTest, ScrapIsParsed_AndAMissingOneShowsItself) {
  Scrap("hello", "Hello %%topictitle%%<crlf>");
  Begin();
  EXPECT_EQ(Eval("%%scrap:name=Hello%%"), "Hello Start page<br>");
  EXPECT_EQ(Eval("%%scrap:name=none%%"), "!MISSING SCRAP 'none'!");
}

TEST_F(ElementsTest, SectionTextIsParsedForTheTopic) {
  Begin("<h1>%%topictitle%%</h1>/%/%title/%/%");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "<h1>Start page</h1>%%title%%");
}

TEST_F(ElementsTest, SectionOfAnItemThatIsNoTopicIsEmpty) {
  Begin();
  Select(project, "QBProject");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "");
}

TEST_F(ElementsTest, SectionOfAManifestEntryIsItsTopics) {
  const auto topic = Begin("entry's topic");
  const auto entry = New<support::ToyItem<ManifestEntryTag>>();
  Select(entry, "ManifestEntry");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "");
  entry->Third = topic;
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "entry's topic");
}

TEST_F(ElementsTest, SectionForTheEditorIsAnEmptyPlace) {
  Begin();
  provider->ForEdit = true;
  EXPECT_EQ(Eval("%%topicsection:name=BodyText%%"),
            "<div class=\"qbedit\"><span CONTENTEDITABLE id=\"TopicSection|BodyText\"></span></div>");
}

TEST_F(ElementsTest, SectionLosesMetaDataMarks_OnlyAtGeneration) {
  Begin("a<!--mvmetadata start 1-->b<!--MVMETADATA end 1-->c");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "abc");
}

TEST_F(ElementsTest, SectionWithoutMetaDataKeepsItsComments) {
  Begin("a<!--mv start-->b<!-- vmetadata -->c mvmetadat");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "a<!--mv start-->b<!-- vmetadata -->c mvmetadat");
}

TEST_F(ElementsTest, AnchorsAreResolvedOnlyWithARelatedProject) {
  Begin("%Go:a~b% /%c~d/%");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "%Go:a~b% %c~d%");
  project->SetMVPFileName(folder.Stored("project/related.mvp"));
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "<a href=\"a~b.html\">Go</a> %c~d%");
}

TEST_F(ElementsTest, GlossaryReferencesOfASectionAreResolved) {
  Scrap("_GLOSSARYREFERENCE", "<dfn title=\"%%glossaryitemdefinition%%\">%%glossaryitemreference%%</dfn>");
  Begin("An $$API$$, /$$not one$$ and $$unknown$$");
  AddTerm("api", "interface");
  EXPECT_EQ(Eval("%%topicsection:name=bodytext%%"), "An <dfn title=\"interface\">API</dfn>, $$not one$$ and unknown");
}

TEST_F(ElementsTest, DesignTimeShowsItsSource_OnlyInAPreview) {
  Begin();
  EXPECT_EQ(Eval("%%designtime%%x%%/designtime%%"), "");
  provider->DesignTime = true;
  const auto& file = fltnVariables().fltnModuleFilename;
  const auto expected =
      "x<STYLE><!-- SPAN.mvMisspelled { BACKGROUND-POSITION: left bottom; BACKGROUND-IMAGE: "
      "url('res://" +
      file + "'); BACKGROUND-REPEAT: repeat-x; isStyleInternal: True --></STYLE>";
  EXPECT_EQ(Eval("%%designtime%%x%%/designtime%%"), expected);
}

// Including topics.

TEST_F(ElementsTest, IncludeBringsTheBodyOfATopic) {
  Begin();
  AddTopic("Part", "part of %%topictitle%%", "Part page");
  EXPECT_EQ(Eval("%%include:topic=part%%"), "part of Part page");
  EXPECT_FALSE(provider->IncludeStack);
}

TEST_F(ElementsTest, IncludeOfAnUnknownTopicYieldsNothing) {
  Begin();
  EXPECT_EQ(Eval("a%%include:topic=none%%b%%include%%c"), "abc");
  EXPECT_FALSE(provider->IncludeStack);
}

TEST_F(ElementsTest, TopicThatIncludesItselfAppearsOnce) {
  Begin();
  AddTopic("Loop", "<p>loop</p>%%include:topic=Loop%%");
  EXPECT_EQ(Eval("%%include:topic=Loop%%"), "<p>loop</p>");
}

TEST_F(ElementsTest, IncludeEndsACycleOfTopics) {
  Begin();
  AddTopic("A", "a%%include:topic=B%%");
  AddTopic("B", "b%%include:topic=C%%");
  AddTopic("C", "c%%include:topic=A%%");
  EXPECT_EQ(Eval("%%include:topic=A%%"), "abc");
}

TEST_F(ElementsTest, TopicIsIncludedOnlyOnceInOneOutermostInclude) {
  Begin();
  AddTopic("Both", "%%include:topic=Left%%%%include:topic=Right%%");
  AddTopic("Left", "l%%include:topic=Leaf%%");
  AddTopic("Right", "r%%include:topic=Leaf%%");
  AddTopic("Leaf", "leaf");
  EXPECT_EQ(Eval("%%include:topic=Both%%"), "lleafr");
  EXPECT_EQ(Eval("%%include:topic=Leaf%%%%include:topic=Leaf%%"), "leafleaf");
}

// Lists of items.

class ListTest : public ElementsTest {
 protected:
  void SetUp() override {
    ElementsTest::SetUp();
    Scrap("_links_header", "<ul title=\"%%itemtitle%%\">");
    Scrap("_links_body", "<li>%%linktitle%%</li>");
    Scrap("_links_separator", ", ");
    Scrap("_links_footer", "</ul>%%topictitle%%");
    Scrap("_bare_body", "%%itemname%%");
    Scrap("_numbers_body", "%%incrementingvalue:Name=n%%");
  }
  static constexpr auto List = "%%filtereditemlist:namespace=MV.QuillbookLite:LinkCategory;scrap=bare%%";
};

TEST_F(ListTest, RendersEachItem_WithSeparatorsBetween) {
  const auto topic = Begin();
  topic->NewTopicLink(rttURL, "See", "1", "u");
  EXPECT_EQ(Eval(List), "See");
  topic->NewTopicLink(rttURL, "Also", "2", "u");
  EXPECT_EQ(Eval(List), "SeeAlso");
}

TEST_F(ListTest, HeaderIsParsedForTheFirstItem_FooterForTheOuterOne) {
  Scrap("_c_header", "<%%itemname%%>");
  Scrap("_c_body", "%%filtereditemlist:namespace=mv.quillbooklite:link;scrap=_links%%");
  Scrap("_c_separator", "|%%topictitle%%|");
  Scrap("_c_footer", "</%%topictitle%%>");
  const auto topic = Begin();
  topic->NewTopicLink(rttURL, "See", "1", "u");
  topic->NewTopicLink(rttURL, "See", "2", "u");
  topic->NewTopicLink(rttURL, "Also", "3", "u");
  EXPECT_EQ(Eval("%%filtereditemlist:namespace=mv.quillbooklite:linkcategory;scrap=c%%"),
            "<See><ul title=\"1\"><li>1</li>, <li>2</li></ul>|Start page|<ul title=\"3\"><li>3</li></ul></Start page>");
  failures.Take();  // the footer of the inner list asks a category for its title
}

TEST_F(ListTest, NothingThatMatchesIsBlank) {
  const auto topic = Begin();
  topic->NewTopicLink(rttURL, "", "1", "u");
  EXPECT_EQ(Eval("%%filtereditemlist:namespace=mv.quillbooklite:linkcategory;scrap=bare;filter=\"Type=NotBlank\"%%"
                 "%%blank%%no links%%/blank%%%%/filtereditemlist%%"),
            "no links");
}

TEST_F(ListTest, WithoutScrapTheNamespaceIsNotLookedAt) {
  Begin();
  EXPECT_EQ(Eval("%%filtereditemlist:namespace=nowhere%%"), "");
}

TEST_F(ListTest, UnknownNamespaceShowsItself) {
  Begin();
  EXPECT_EQ(Eval("%%filtereditemlist:namespace=No.Where:x;scrap=bare%%"), "!ERROR: Namespace not found 'no.where:x'!");
}

TEST_F(ListTest, MissingBodyScrapShowsItself) {
  Begin()->NewTopicLink(rttURL, "See", "1", "u");
  EXPECT_EQ(Eval("%%filtereditemlist:namespace=mv.quillbooklite:linkcategory;scrap=none%%"),
            "!MISSING SCRAP '_none_body'!");
}

TEST_F(ListTest, CurrentItemStays) {
  const auto topic = Begin();
  topic->NewTopicLink(rttURL, "See", "1", "u");
  static_cast<void>(Eval(List));
  EXPECT_EQ(provider->DataProvider_CurrentItem(), topic);
}

TEST_F(ListTest, CountersRestart) {
  const auto topic = Begin();
  topic->NewTopicLink(rttURL, "See", "1", "u");
  topic->NewTopicLink(rttURL, "Also", "2", "u");
  const std::string count = "%%incrementingvalue:Name=n%%";
  EXPECT_EQ(Eval(count + count + count), "123");
  EXPECT_EQ(Eval(count + "%%filtereditemlist:namespace=mv.quillbooklite:linkcategory;scrap=numbers%%" + count), "4123");
}

TEST_F(ListTest, SearchGoesOnInOtherDocTypes) {
  const auto topic = Begin();
  topic->NewTopicLink(rttURL, "See", "1", "u");
  // A current doc type without template has no definitions; the library's own is then found among all.
  const auto other = New<DocType>(host, "other", items, nullptr);
  host->DocTypes()->Add(other, "other");
  host->SetCurrentDocType(other);
  EXPECT_EQ(Eval(List), "!MISSING SCRAP '_bare_body'!");
}

// Values.

TEST_F(ElementsTest, VariableIsEvaluated) {
  variables =
      "<variable name=\"Plain\" default=\"a %%topictitle%%\"/><variable name=\"Quoted\" "
      "default='&lt;a title=\"%%topictitle%%\"&gt;'/><variable name=\"Percent\" default=\"100%\"/>";
  Begin();
  BuildProfileIsChosen();
  EXPECT_EQ(Eval("%%variable:name=Plain%%"), "a Start page");
  EXPECT_EQ(Eval("%%variable:name=Quoted%%"), "<a title=\"Start page\">");
  EXPECT_EQ(Eval("%%variable:name=Percent%%"), "100%");
  EXPECT_EQ(Eval("%%variable:name=None%%%%blank%%none%%/blank%%%%/variable%%"), "none");
  EXPECT_EQ(Eval("%%variable%%"), "");
}

TEST_F(ElementsTest, VariableWithoutProfileIsTheProjectsOwn) {
  variables = "<variable name=\"Skin\" default=\"plain\"/>";
  Begin();
  EXPECT_EQ(Eval("%%variable:name=Skin%%"), "");
  project->VariableValues->Add(New<VariableValue>("Skin", "own"), "Skin");
  EXPECT_EQ(Eval("%%variable:name=Skin%%"), "own");
}

TEST_F(ElementsTest, ColourVariableBecomesAWebColour) {
  variables =
      "<variable name=\"Number\" type=\"colour\" default=\"255\"/>"
      "<variable name=\"Name\" type=\"colour\" default=\"red\"/><variable name=\"Text\" default=\"255\"/>";
  Begin();
  BuildProfileIsChosen();
  EXPECT_EQ(Eval("%%variable:name=Number%%"), "#FF0000");
  EXPECT_EQ(Eval("%%variable:name=Name%%"), "red");
  EXPECT_EQ(Eval("%%variable:name=Text%%"), "255");
}

TEST_F(ElementsTest, ProjectPropertyIsEvaluated) {
  Begin();
  SetProperty("Company", "%%topictitle%% Inc.");
  EXPECT_EQ(Eval("%%projectproperty:name=company%%"), "Start page Inc.");
  EXPECT_EQ(Eval("%%projectproperty:name=none%%%%projectproperty%%"), "");
}

TEST_F(ElementsTest, IncrementingValueCountsByName) {
  Begin();
  EXPECT_EQ(Eval("%%incrementingvalue:Name=n%%,%%incrementingvalue:Name=N%%,%%incrementingvalue:Name=n%%"), "1,2,3");
  EXPECT_EQ(Eval("%%incrementingvalue:Name=m;InitialValue=10%%,%%incrementingvalue:Name=m;InitialValue=50%%"), "10,11");
  EXPECT_EQ(Eval("%%incrementingvalue:Name=o;InitialValue=abc%%"), "1");
  EXPECT_EQ(Eval("%%incrementingvalue:InitialValue=4%%"), "");
}

TEST_F(ElementsTest, IncrementingValueStartsAgain_AfterIncludeAndGlossaryReference) {
  Scrap("_GLOSSARYREFERENCE", "x");
  Begin("$$term$$");
  AddTerm("term");
  AddTopic("Part", "p");
  const std::string count = "%%incrementingvalue:Name=n%%";
  EXPECT_EQ(Eval(count + count + "%%include:topic=Part%%" + count), "12p1");
  EXPECT_EQ(Eval(count + "%%topicsection:name=bodytext%%" + count), "2x1");
}

TEST_F(ElementsTest, DatesOfTheTopic) {
  const auto topic = Begin();
  topic->SetCreatedOn(*Date::FromParts({.year = 2005, .month = 2, .day = 1, .hour = 13, .minute = 5}));
  topic->SetModifiedOn(*Date::FromParts({.year = 2006, .month = 12, .day = 31}));
  EXPECT_EQ(Eval("%%createdon:DateFormat=\"yyyy-mm-dd hh:nn\"%%"), "2005-02-01 13:05");
  EXPECT_EQ(Eval("%%modifiedon:DateFormat=\"ww\"%%"), "53");
  EXPECT_EQ(Eval("%%modifiedon%%"), topic->ModifiedOn().FormatForReader("Short Date"));
  Select(project);
  EXPECT_EQ(Eval("%%createdon%%"), "");
}

TEST_F(ElementsTest, GlossaryElementsAreThePropertiesOfThatName) {
  variables = "<variable name=\"glossaryitemterm\" default=\"variable\"/>";
  Begin();
  Select(AddTerm("te\r\nrm", "de\r\nf"), "GlossaryItem");
  EXPECT_EQ(Eval("%%glossaryitemterm%%:%%glossaryitemdefinition%%"), "term:de f");
}

TEST_F(ElementsTest, BookletLinkShowsCaptionOrTitle) {
  const auto topic = Begin();
  const auto link = New<support::ToyItem<BookletTag>>();
  link->First = "caption";
  link->Second = "url";
  Select(link, "BookletLinkInfo");
  EXPECT_EQ(Eval("%%linkcaption%%,%%linkcaption:OnlyIfNotTopicTitle=True%%,%%linkurl%%"), "caption,caption,url");
  link->Third = topic;
  EXPECT_EQ(Eval("%%linkcaption%%,%%linkcaption:OnlyIfNotTopicTitle=true%%"), "caption,caption");
  EXPECT_EQ(Eval("%%linkcaption:OnlyIfNotTopicTitle=True%%"), "Start page");
  link->First = "START PAGE";
  EXPECT_EQ(Eval("%%linkcaption:OnlyIfNotTopicTitle=True%%"), "");
  Select(topic);
  EXPECT_EQ(Eval("%%linkcaption%%%%linkurl%%"), "");
}

// Files.

TEST_F(ElementsTest, FileNameAndBaseNeedAFile) {
  Begin();
  const auto page = folder.Stored("out/A page.html");
  EXPECT_EQ(EvalFile("%%filename%%", page), "A page");
  EXPECT_EQ(EvalFile("%%htmlbase%%", page), "<BASE href=\"" + folder.Stored("out/") + "\"/>");
  EXPECT_EQ(Eval("%%filename%%"), "");
  EXPECT_EQ(Eval("%%htmlbase%%"), "");
  EXPECT_EQ(failures.Take(), Failures{"QBDataProvider.DataProvider_ProvideData 91"});
}

TEST_F(ElementsTest, ElementsInsideATextHaveNoFile) {
  Begin();
  SetProperty("Inner", "[%%filename%%]");
  EXPECT_EQ(EvalFile("%%filename%%%%Inner%%", folder.Stored("out/a.html")), "a[]");
  EXPECT_EQ(EvalFile("%%projectproperty:name=Inner%%", folder.Stored("out/a.html")), "[a]");
}

TEST_F(ElementsTest, StyleSheetsAndScriptsAreLinked) {
  const auto topic = Begin();
  for (const auto* name : {"css\\a.CSS", "b.js", "c.css", "d.png", "sub\\e.js"}) AddFile(name);
  EXPECT_EQ(Eval("%%stylesheets%%"),
            "<link rel=\"stylesheet\" type=\"text/css\" href=\"css/a.CSS\">\r\n"
            "<link rel=\"stylesheet\" type=\"text/css\" href=\"c.css\">");
  EXPECT_EQ(Eval("%%scripts%%"),
            "<script lang=\"javascript\" src=\"b.js\"></script>\r\n"
            "<script lang=\"javascript\" src=\"sub/e.js\"></script>");
  topic->AddScript("b.js");
  topic->SetAllStylesheets(false);
  EXPECT_EQ(Eval("%%scripts%%"), "<script lang=\"javascript\" src=\"b.js\"></script>");
  EXPECT_EQ(Eval("%%stylesheets%%%%blank%%none%%/blank%%%%/stylesheets%%"), "none");
}

TEST_F(ElementsTest, FilesLeftOutOfTheOutputAreNotLinked_WhileBuilding) {
  Begin();
  AddFile("a.css")->SetIncludeInOutput(false);
  EXPECT_NE(Eval("%%stylesheets%%"), "");
  project->SetCurrentBuildProfile(AddProfile());
  EXPECT_EQ(Eval("%%stylesheets%%"), "");
}

TEST_F(ElementsTest, FilesThatTheTemplateBringsAreNotLinked) {
  SupportFile("styles/a.css", "");
  Begin();
  AddFile("styles\\a.css");
  AddFile("styles\\b.css");
  EXPECT_EQ(Eval("%%stylesheets%%"), "<link rel=\"stylesheet\" type=\"text/css\" href=\"styles/b.css\">");
}

TEST_F(ElementsTest, DesignTimeStyleSheetFollowsDirectly_ForTheEditor) {
  Begin();
  AddFile("a.css");
  AddFile("b.js");
  provider->ForEdit = true;
  EXPECT_EQ(Eval("%%stylesheets%%"),
            "<link rel=\"stylesheet\" type=\"text/css\" href=\"a.css\"><link rel=\"stylesheet\" type=\"text/css\" "
            "href=\"" +
                folder.Stored("install/Configuration/Templates/Plain") + "/stylesheets/designtime.css\">");
  EXPECT_EQ(Eval("%%scripts%%"), "<script lang=\"javascript\" src=\"b.js\"></script>");
}

TEST_F(ElementsTest, LinksFollowChangesDuringAGeneration) {
  Begin();
  const auto file = AddFile("a.css");
  items->INamespaceProvider_BeforeProcessRootItem(project);
  EXPECT_EQ(Eval("%%stylesheets%%"), "<link rel=\"stylesheet\" type=\"text/css\" href=\"a.css\">");
  file->Filename->SetFullName(project->Filename->Path() + "b.css");
  AddFile("c.css");
  EXPECT_EQ(Eval("%%stylesheets%%"),
            "<link rel=\"stylesheet\" type=\"text/css\" href=\"b.css\">\r\n"
            "<link rel=\"stylesheet\" type=\"text/css\" href=\"c.css\">");
  items->INamespaceProvider_AfterProcessRootItem(project);
}

TEST_F(ElementsTest, OnlyTopicsCanBeAskedForTheirFiles) {
  Begin();
  Select({});
  EXPECT_EQ(Eval("%%stylesheets%%%%scripts%%"), "");
  AddFile("a.css");
  Select(project, "QBProject");
  EXPECT_EQ(Eval("%%scripts%%"), "");
  EXPECT_EQ(Eval("%%stylesheets%%"), "");
  EXPECT_EQ(failures.Take(), Failures{"QBDataProvider.DataProvider_ProvideData 438"});
}

TEST_F(ElementsTest, CheckForFileFindsOtherFilesAndTopics) {
  Begin();
  AddFile("logo.png");
  EXPECT_EQ(Eval("%%checkforfile:filename=logo.png%%"), "logo.png");
  EXPECT_EQ(Eval("%%checkforfile:filename=start.html%%"), "start.html");
  EXPECT_EQ(Eval("%%checkforfile:filename=Start.html;relative=FALSE%%"), folder.Stored("out/Start.html"));
  EXPECT_EQ(Eval("%%checkforfile:filename=sub\\logo.png%%"), "sub\\logo.png");
  EXPECT_EQ(Eval("%%checkforfile:filename=none.png%%%%blank%%fallback%%/blank%%%%/checkforfile%%"), "fallback");
  EXPECT_EQ(Eval("%%checkforfile%%"), "");
}

}  // namespace
}  // namespace quillbook
