// The table of contents in pages and as a stream.
#include "generation/GenerationTest.h"
#include "quillbook/host/TOCDefinition.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"

namespace quillbook {
namespace {

class TableOfContentsTest : public support::GenerationTest {
 protected:
  Ref<QBNode> AddNode(std::string_view caption, std::string_view url = {}, const Ref<QBNode>& parent = {}) {
    auto node = (parent ? parent->ChildNodes : project->QBNodes)->NewNode(parent);
    node->SetCaptionText(caption);
    node->SetStandardURL(url);
    return node;
  }
  void AddBook() {
    const auto book = AddNode("Book");
    AddNode("One", "one.html", book);
    AddNode("Two", "two.html", book);
    AddNode("End", "end.html");
  }
  const Ref<DocType>& Type() { return host->CurrentDocType(); }
  Ref<TOCDefinition> Contents() { return Type()->TOCDefinitions()->Item(1); }
  /// What the stream of a content type writes into a file.
  std::string Stream(std::string_view contentType) {
    const auto file = New<FileSystemObject>();
    file->OpenInMemory();
    Ref<Object> output = file;
    items->INamespaceProvider_StreamContent(output, contentType);
    EXPECT_EQ(output, file);
    return file->TakeText();
  }
};

constexpr const char* PlainBook =
    "<UL>\n<LI>Book<UL>\n<LI><A HREF=\"one.html\">One</A>\n<LI><A HREF=\"two.html\">Two</A></UL>"
    "\n<LI><A HREF=\"end.html\">End</A></UL>";

TEST_F(TableOfContentsTest, CreateTOC_OfAnEmptyTree_IsAnEmptyDefinition) {
  SetUpHost();
  provider->CreateTOC();
  ASSERT_EQ(Type()->TOCDefinitions()->Count(), 1U);
  EXPECT_TRUE(Contents()->NodeDefs()->IsEmpty());
  EXPECT_EQ(Contents()->Template, Type()->Template());
}

TEST_F(TableOfContentsTest, CreateTOC_ReplacesTheContents) {
  AddBook();
  SetUpHost();
  provider->CreateTOC();
  const auto first = Contents();
  provider->CreateTOC();
  ASSERT_EQ(Type()->TOCDefinitions()->Count(), 1U);
  EXPECT_NE(Contents(), first);
  EXPECT_EQ(Contents()->NodeDefs()->Count(), 4U);
}

TEST_F(TableOfContentsTest, CreateTOC_TakesNodesWithoutParentOnly) {
  AddBook();
  const auto stray = AddNode("Stray");
  stray->SetParentNode(project->QBNodes->At(1));
  SetUpHost();
  provider->CreateTOC();
  EXPECT_EQ(Contents()->NodeDefs()->Count(), 4U);
}

TEST_F(TableOfContentsTest, Element_PutsTheTreeWhereItStands) {
  AddBook();
  SetUpHost();
  EXPECT_EQ(Eval("<nav>%%tableofcontents%%</nav>"), "<nav>" + std::string(PlainBook) + "</nav>");
}

TEST_F(TableOfContentsTest, Element_StandsInOrder_AlsoWithinOtherTexts) {
  AddNode("One", "one.html");
  Scrap("nav", "before%%tableofcontents%%behind");
  SetUpHost();
  EXPECT_EQ(Eval("[%%scrap:name=nav%%]"), "[before<UL>\n<LI><A HREF=\"one.html\">One</A></UL>behind]");
  Ref<FileSystemObject> page = New<FileSystemObject>(folder.Stored("out/a.html"));
  Select(AddTopic("t", "x%%tableofcontents%%y"));
  EXPECT_EQ(ParserServices::ParseText("[%%topicsection:name=bodytext%%] %%filename%%", *provider, page),
            "[x<UL>\n<LI><A HREF=\"one.html\">One</A></UL>y] a");
}

TEST_F(TableOfContentsTest, Element_HasNoTextItself) {
  AddNode("One");
  SetUpHost();
  EXPECT_EQ(Eval("%%tableofcontents%%%%blank%%none%%/blank%%%%/tableofcontents%%"), "<UL>\n<LI>One</UL>none");
}

TEST_F(TableOfContentsTest, Element_OfAnEmptyTree_PutsOutNothing) {
  SetUpHost();
  EXPECT_EQ(Eval("[%%tableofcontents%%]"), "[]");
}

TEST_F(TableOfContentsTest, Element_TakesItsFormFromTheAttributes) {
  AddBook();
  Scrap("row", "<b>%%nodecaption%%</b>%%nodeurl%%%%notblank%%(%%nodeurl%%)%%/notblank%%%%/nodeurl%%");
  SetUpHost();
  EXPECT_EQ(Eval("%%tableofcontents:BookPrefix={;BookSuffix=};NodeScrap=row;Suffix=,%%"),
            "{<b>Book</b>{<b>One</b>(one.html),<b>Two</b>(two.html),},<b>End</b>(end.html),}");
  EXPECT_EQ(host->BookPrefix, "{");
  EXPECT_EQ(host->NodeSuffix, ",");
}

TEST_F(TableOfContentsTest, Element_SuffixAlone_LeavesThePlainForm) {
  AddBook();
  SetUpHost();
  host->NodeScrap = "left over";
  EXPECT_EQ(Eval("%%tableofcontents:Suffix=x%%"), PlainBook);
  EXPECT_EQ(host->NodeSuffix, "");
}

TEST_F(TableOfContentsTest, Element_MissingScrapShowsItself) {
  AddNode("One");
  SetUpHost();
  EXPECT_EQ(Eval("%%tableofcontents:NodeScrap=none%%"), "!MISSING SCRAP 'none'!");
}

TEST_F(TableOfContentsTest, Element_KeepsToItsOwnDocType) {
  AddBook();
  SetUpHost();
  const auto other = New<DocType>(host, "MV.Quillbooklite", items, nullptr);
  host->SetCurrentDocType(other);
  EXPECT_EQ(Eval("%%tableofcontents%%"), "");
  EXPECT_TRUE(other->TOCDefinitions()->IsEmpty());
}

TEST_F(TableOfContentsTest, Captions_AreEscapedOnce) {
  AddNode("A &amp; \"B\" <i> & C", "a.html?x=1&y=\"2\"");
  SetUpHost();
  EXPECT_EQ(Eval("%%tableofcontents%%"),
            "<UL>\n<LI><A HREF=\"a.html?x=1&amp;y=&quot;2&quot;\">A &amp; &quot;B&quot; &lt;i&gt; &amp; C</A></UL>");
}

TEST_F(TableOfContentsTest, CompanionContents_LeaveTheirPlaceToTheirChildren) {
  const auto part = AddNode("Part");
  const auto reference = AddNode("Reference", {}, part);
  reference->SetQBNodeType(ntMVContents);
  AddNode("Child", {}, reference);
  AddNode("Next", {}, part);
  SetUpHost();
  EXPECT_EQ(Eval("%%tableofcontents%%"), "<UL>\n<LI>Part<UL>\n<LI>Child\n<LI>Next</UL></UL>");
}

TEST_F(TableOfContentsTest, Stream_WritesTheContentsThatWereMade) {
  AddBook();
  SetUpHost();
  EXPECT_EQ(Stream("embeddedtoc"), "");
  provider->CreateTOC();
  EXPECT_EQ(Stream("EmbeddedTOC:flags"), PlainBook);
}

TEST_F(TableOfContentsTest, Stream_FindsItsDocType_WhicheverIsCurrent) {
  AddBook();
  SetUpHost();
  provider->CreateTOC();
  host->SetCurrentDocType({});
  EXPECT_EQ(Stream("embeddedtoc"), PlainBook);
}

TEST_F(TableOfContentsTest, Stream_WithoutFile_HandsOneBack) {
  AddBook();
  SetUpHost();
  provider->CreateTOC();
  Ref<Object> output;
  items->INamespaceProvider_StreamContent(output, "embeddedtoc");
  auto* file = dynamic_cast<FileSystemObject*>(output.get());
  ASSERT_TRUE(file);
  EXPECT_EQ(file->TakeText(), PlainBook);
}

}  // namespace
}  // namespace quillbook
