#include <gtest/gtest.h>

#include "quillbook/frame/documents/DocumentFactory.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/project/QBProject.h"
#include "support/HtmlPages.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class NewDOMTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName("\\home\\ann\\help\\garden.qbp");
  }
  void TearDown() override {
    modMain::mDOMFactory() = nullptr;
    ProjectTest::TearDown();
  }
};

TEST_F(NewDOMTest, MakesAPageWithTheProjectsFolderAsItsBase) {
  EXPECT_EQ(project->NewDOM("<p>a</p>")->ToString(),
            "<html xmlns:MSHelp=\"http://msdn.microsoft.com/mshelp\"><head>"
            "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=UTF-8\">"
            "<base href=\"file:////home/ann/help/\"></head><body><p>a</p></body></html>");
  project->Filename->SetFullName("c:\\help\\garden.qbp");
  EXPECT_EQ(project->NewDOM("")->All()->tags("BASE")->Item(0)->hRef(), "file:///c:/help/");
}

TEST_F(NewDOMTest, KeepsEveryCharacterOfTheBody) {
  const std::string body = "\r\n<p title='\u00FC'>\u00E9 \u0439 \U0001F600 &eacute; &nbsp;\t</p>\r\n";
  EXPECT_EQ(project->NewDOM(body)->body()->innerHTML(), body);
}

TEST_F(NewDOMTest, KeepsEveryCharacterOfTheFolder) {
  project->Filename->SetFullName("\\home\\\u00E9\u0439\\R&D \"x\"\\garden.qbp");
  EXPECT_EQ(project->NewDOM("<a href=b.html>c</a>")->All()->tags("a")->Item(0)->getAttribute("href", 0),
            "file:////home/\u00E9\u0439/R&D \"x\"/b.html");
}

TEST_F(NewDOMTest, LinksLeadBackToWhatTheAuthorWrote) {
  const auto document = project->NewDOM("<a href='sub/a%20b.html'></a><a href='#top'></a><a href='http://x.org/'></a>");
  const auto links = document->All()->tags("A");
  EXPECT_EQ(project->ParseURL(links->Item(0)->getAttribute("href", 0)), "sub\\a b.html");
  EXPECT_EQ(project->ParseURL(links->Item(1)->getAttribute("href", 0)), "#top");
  EXPECT_EQ(project->ParseURL(links->Item(2)->getAttribute("href", 0)), "http://x.org/");
}

TEST_F(NewDOMTest, TheBodyComesOutOfThePageAgain) {
  const std::string body = "<P>a <A HREF='x.html'>b</A></P>\r\n<pre>\r\nc</pre>";
  const auto document = project->NewDOM(body);
  EXPECT_EQ(modMain::ReturnBody(document->documentElement()->outerHTML()), body);
  document->All()->tags("a")->Item(0)->setAttribute("href", "y.html", 1);
  EXPECT_EQ(modMain::ReturnBody(document->documentElement()->outerHTML()),
            "<P>a <A HREF=\"y.html\">b</A></P>\r\n<pre>\r\nc</pre>");
}

TEST_F(NewDOMTest, OfABodyThatCantBeParsed_ReportsAndGivesNothing) {
  EXPECT_EQ(project->NewDOM(support::Repeated("<div>", 5000)), nullptr);
  EXPECT_EQ(failures.Take(), Failures{"modMain.CreateDOM 28"});
}

}  // namespace
}  // namespace quillbook
