#include "quillbook/frame/documents/DocumentFactory.h"

#include <gtest/gtest.h>

#include "support/FailureOf.h"
#include "support/HtmlPages.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class DocumentFactoryTest : public testing::Test {
 protected:
  std::string BodyFrom(const std::string& bytes) {
    folder.Write("page.html", bytes);
    return factory->FromURL(folder.Stored("page.html"))->body()->innerHTML();
  }

  support::TemporaryFolder folder;
  Ref<DocumentFactory> factory = New<DocumentFactory>();
};

TEST_F(DocumentFactoryTest, FromString_IsComplete) {
  const auto document = factory->FromString("<p>a</p>");
  EXPECT_EQ(document->readyState(), "complete");
  EXPECT_EQ(document->body()->innerHTML(), "<p>a</p>");
}

TEST_F(DocumentFactoryTest, FromURL_TakesPathsAndFileUrls) {
  folder.Write("a b.html", "<p>x</p>");
  const auto native = folder / "a b.html";
  const auto escaped = folder / "a%20b.html";
  for (const auto& url :
       {folder.Stored("a b.html"), native, "file://" + native, "FILE://" + escaped, "file:///" + escaped})
    EXPECT_EQ(factory->FromURL(url)->body()->innerHTML(), "<p>x</p>") << url;
}

TEST_F(DocumentFactoryTest, FromURL_TakesAPathLiterally) {
  folder.Write("100%41.html", "x");
  EXPECT_EQ(factory->FromURL(folder.Stored("100%41.html"))->body()->innerHTML(), "x");
}

TEST_F(DocumentFactoryTest, FromURL_OfWhatIsNoFileFails) {
  using support::NumberOfFailure;
  EXPECT_EQ(NumberOfFailure([&] { (void)factory->FromURL("http://x.org/"); }), FailureNumber::InvalidCall);
  EXPECT_EQ(NumberOfFailure([&] { (void)factory->FromURL(folder.Stored("none.html")); }), FailureNumber::FileNotFound);
}

TEST_F(DocumentFactoryTest, FromURL_FindsTheEncoding) {
  EXPECT_EQ(BodyFrom("\xC3\xA9"), "\u00E9") << "UTF-8 where it is that";
  EXPECT_EQ(BodyFrom("\xE9 \x80"), "\u00E9 \u20AC") << "else Windows-1252";
  EXPECT_EQ(BodyFrom("\xEF\xBB\xBF\xC3\xA9"), "\u00E9");
  EXPECT_EQ(BodyFrom(std::string("\xFF\xFE\xE9\0", 4)), "\u00E9");
  EXPECT_EQ(BodyFrom("<meta http-equiv=Content-Type content='text/html; charset=windows-1251'>\xE9"), "\u0439");
}

}  // namespace
}  // namespace quillbook
