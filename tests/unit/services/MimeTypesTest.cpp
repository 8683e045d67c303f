#include "frame/services/MimeTypes.h"

#include <gtest/gtest.h>

#include "quillbook/platform/Platform.h"
#include "support/TemporaryFolder.h"

namespace quillbook::detail {
namespace {

class MimeTypesTest : public testing::Test {
 protected:
  MimeTypes Types() const { return MimeTypes({own.Path(), shared.Path(), "/no/such/folder"}); }
  void DescribeHtml(const support::TemporaryFolder& folder, const std::string& content) const {
    folder.Write("mime/text/html.xml",
                 "<?xml version=\"1.0\"?>\n<mime-type xmlns=\"http://www.freedesktop.org/"
                 "standards/shared-mime-info\" type=\"text/html\">" +
                     content + "</mime-type>");
  }

  support::TemporaryFolder own, shared;
};

TEST_F(MimeTypesTest, EndingsNamesAndWildcards_TellTheType) {
  shared.Write("mime/globs2",
               "# comment\n50:text/html:*.html\n50:application/gzip:*.gz\n50:application/x-tar.gz:*.tar.gz\n"
               "50:text/x-makefile:makefile\n50:text/x-readme:README*\n50:application/x-trash:*~\n"
               "50:image/x-raw:*.[rR]aw[0-9]\n\n50:broken\n:nothing:\n");
  const auto types = Types();
  EXPECT_EQ(types.TypeOf("a.html"), "text/html");
  EXPECT_EQ(types.TypeOf("A.HTML"), "text/html");
  EXPECT_EQ(types.TypeOf("a.b.tar.gz"), "application/x-tar.gz") << "the longest pattern counts";
  EXPECT_EQ(types.TypeOf("b.gz"), "application/gzip");
  EXPECT_EQ(types.TypeOf("Makefile"), "text/x-makefile");
  EXPECT_EQ(types.TypeOf("makefile2"), "");
  EXPECT_EQ(types.TypeOf("readme.first"), "text/x-readme");
  EXPECT_EQ(types.TypeOf("a.html~"), "application/x-trash");
  EXPECT_EQ(types.TypeOf("a.raw7"), "image/x-raw");
  EXPECT_EQ(types.TypeOf("html"), "");
  EXPECT_EQ(types.TypeOf(""), "");
}

TEST_F(MimeTypesTest, Weight_GoesBeforeLength) {
  shared.Write("mime/globs2", "50:long/type:*.tar.gz\n60:heavy/type:*.gz\n");
  EXPECT_EQ(Types().TypeOf("a.tar.gz"), "heavy/type");
}

TEST_F(MimeTypesTest, PatternsThatRegardCase_GoBeforeOthers) {
  shared.Write("mime/globs2", "50:text/x-csrc:*.c\n50:text/x-c++src:*.C:cs\n");
  EXPECT_EQ(Types().TypeOf("a.C"), "text/x-c++src");
  EXPECT_EQ(Types().TypeOf("a.c"), "text/x-csrc");
}

TEST_F(MimeTypesTest, TheUsersOwnFolder_GoesBeforeOthers) {
  shared.Write("mime/globs2", "50:shared/a:*.a\n50:shared/b:*.b\n");
  own.Write("mime/globs2", "50:own/a:*.a\n50:own/c:*.c\n");
  const auto types = Types();
  EXPECT_EQ(types.TypeOf("x.a"), "own/a");
  EXPECT_EQ(types.TypeOf("x.b"), "shared/b");
  EXPECT_EQ(types.TypeOf("x.c"), "own/c");
}

TEST_F(MimeTypesTest, AFolderTakesBackWhatLesserOnesSay) {
  shared.Write("mime/globs2", "50:shared/a:*.a\n50:shared/b:*.b\n");
  own.Write("mime/globs2", "0:shared/a:__NOGLOBS__\n50:shared/a:*.aa\n");
  const auto types = Types();
  EXPECT_EQ(types.TypeOf("x.a"), "");
  EXPECT_EQ(types.TypeOf("x.aa"), "shared/a");
  EXPECT_EQ(types.TypeOf("x.b"), "shared/b");
}

TEST_F(MimeTypesTest, Comment_ComesInTheLanguageThatIsWantedMost) {
  DescribeHtml(shared,
               "<comment xml:lang=\"zu\">no</comment><comment>HTML document</comment>"
               "<comment xml:lang=\"de\">HTML-Dokument</comment><comment xml:lang=\"fr\">document HTML</comment>");
  const auto types = Types();
  const auto comment = [&](const std::vector<std::string>& languages) {
    return types.Describe("text/html", languages).comment;
  };
  EXPECT_EQ(comment({}), "HTML document");
  EXPECT_EQ(comment({"de_CH", "de"}), "HTML-Dokument");
  EXPECT_EQ(comment({"fr", "de"}), "document HTML");
  EXPECT_EQ(comment({"eo"}), "HTML document");
  EXPECT_EQ(comment({"en", "de"}), "HTML document") << "English texts bear no language";
}

TEST_F(MimeTypesTest, Icons_AreNamedByTheType_OrByItsFile) {
  EXPECT_EQ(Types().Describe("text/html", {}).icons, (std::vector<std::string>{"text-html", "text-x-generic"}));
  DescribeHtml(shared, "<icon name=\"web\"/><generic-icon name=\"x-web\"/>");
  EXPECT_EQ(Types().Describe("text/html", {}).icons, (std::vector<std::string>{"web", "x-web"}));
}

TEST_F(MimeTypesTest, Descriptions_ComeFromTheFirstFolderWithAReadableOne) {
  DescribeHtml(own, "<comment>broken");
  DescribeHtml(shared, "<comment>shared</comment>");
  EXPECT_EQ(Types().Describe("text/html", {}).comment, "shared");
  DescribeHtml(own, "<comment>own</comment>");
  EXPECT_EQ(Types().Describe("text/html", {}).comment, "own");
}

TEST_F(MimeTypesTest, WithoutADatabase_NothingIsKnown) {
  EXPECT_EQ(Types().TypeOf("a.html"), "");
  EXPECT_EQ(Types().Describe("text/html", {}).comment, "");
  std::filesystem::create_directories(own.Native("mime/globs2"));
  EXPECT_EQ(Types().TypeOf("a.html"), "") << "a folder stands where the file is expected";
}

TEST_F(MimeTypesTest, ATypeLeadsToNoFileOutsideTheDatabase) {
  shared.Write("outside.xml", "<mime-type><comment>outside</comment></mime-type>");
  shared.Write("mime/globs2", "50:../outside:*.x\n");
  EXPECT_EQ(Types().Describe("../outside", {}).comment, "");
}

}  // namespace
}  // namespace quillbook::detail
