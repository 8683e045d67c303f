#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include "quillbook/frame/Root.h"
#include "quillbook/frame/documents/DocumentFactory.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/UnicodeHelper.h"
#include "quillbook/platform/LinuxDesktop.h"
#include "support/EnvironmentOverride.h"
#include "support/FailureLog.h"
#include "support/HtmlPages.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

/// Loads documents from files, and looks at these files meanwhile.
class WatchingFactory : public DocumentFactory {
 public:
  explicit WatchingFactory(const support::TemporaryFolder& folder) : mFolder(folder) {}

  Ref<HtmlDocument> FromURL(std::string_view URL) override {
    url = URL;
    bytes = mFolder.Read(url.substr(url.find_last_of('\\') + 1));
    return stuck ? New<HtmlDocument>() : DocumentFactory::FromURL(URL);
  }

  bool stuck = false;  ///< gives documents that never become complete
  std::string url;     ///< of the last file
  std::string bytes;   ///< in the last file

 private:
  const support::TemporaryFolder& mFolder;
};

class CreateDOMTest : public testing::Test {
 protected:
  void SetUp() override { modMain::mDOMFactory() = factory; }
  void TearDown() override {
    modMain::mDOMFactory() = nullptr;
    EXPECT_EQ(failures.Take(), std::vector<std::string>());
    EXPECT_EQ(folder.Count(), 0U) << "a temporary file is left";
  }

  support::TemporaryFolder folder;
  support::EnvironmentOverride temporary{"TMPDIR", folder.Path().c_str()};
  support::FailureLog failures;
  Ref<WatchingFactory> factory = New<WatchingFactory>(folder);
};

TEST_F(CreateDOMTest, OfNothing_IsAnEmptyPageOfTheHelpSystem_WithoutAFile) {
  const auto document = modMain::CreateDOM("");
  EXPECT_EQ(document->documentElement()->outerHTML(),
            "<html xmlns:MSHelp=\"http://msdn.microsoft.com/mshelp\"><head></head><body></body></html>");
  EXPECT_EQ(factory->url, "");
}

TEST_F(CreateDOMTest, LoadsATextThroughATemporaryFile) {
  const auto document = modMain::CreateDOM("<p>a</p>");
  EXPECT_EQ(document->readyState(), "complete");
  EXPECT_EQ(document->body()->innerHTML(), "<p>a</p>");
  EXPECT_EQ(factory->bytes, "<p>a</p>") << "no line break is added";
  const auto name = factory->url.substr(factory->url.find_last_of('\\') + 1);
  EXPECT_TRUE(name.starts_with("QB")) << name;
  EXPECT_EQ(name.find('.'), std::string::npos) << name;
}

TEST_F(CreateDOMTest, WritesOneByteACharacter_SoThatBytesComeBackAsUtf8) {
  const auto bytes = UnicodeHelper::ToUTF8("\u00E9 \u0439 \U0001F600");
  EXPECT_EQ(modMain::CreateDOM(bytes)->body()->innerHTML(), "\u00E9 \u0439 \U0001F600");
  EXPECT_EQ(factory->bytes, "\u00E9 \u0439 \U0001F600");
}

TEST_F(CreateDOMTest, KeepsCharactersThatAreNoBytes) {
  EXPECT_EQ(modMain::CreateDOM("<p>caf\u00E9</p>")->body()->innerHTML(), "<p>caf\u00E9</p>");
  EXPECT_EQ(factory->bytes, "<p>caf\xE9</p>");
  EXPECT_EQ(modMain::CreateDOM("<p>caf\u00E9 \u0439</p>")->body()->innerHTML(), "<p>caf\u00E9 \u0439</p>");
}

TEST_F(CreateDOMTest, GivesUpAfterThreeSeconds_WithTheUnfinishedDocument_AndItsFileIsGone) {
  factory->stuck = true;
  const auto start = std::chrono::steady_clock::now();
  const auto document = modMain::CreateDOM("<p>a</p>");
  const auto elapsed = std::chrono::steady_clock::now() - start;
  ASSERT_NE(document, nullptr);
  EXPECT_EQ(document->readyState(), "loading");
  EXPECT_GE(elapsed, std::chrono::seconds(2)) << "it has been waited for";
  EXPECT_EQ(folder.Count(), 0U);
}

TEST_F(CreateDOMTest, ReportsAPageThatCantBeParsed_AndItsFileIsGone) {
  EXPECT_EQ(modMain::CreateDOM(support::Repeated("<div>", 5000)), nullptr);
  EXPECT_EQ(failures.Take(), std::vector<std::string>{"modMain.CreateDOM 28"});
}

TEST_F(CreateDOMTest, MakesTheFactoryAtTheFirstCall_AndDropsItWithTheLastRoot) {
  modMain::mDOMFactory() = nullptr;
  auto root = New<Root>();
  EXPECT_NE(root->CreateDOM("<p>a</p>"), nullptr);
  const auto made = modMain::mDOMFactory();
  EXPECT_NE(made, nullptr);
  EXPECT_NE(root->CreateDOM(""), nullptr);
  EXPECT_EQ(modMain::mDOMFactory(), made);
  { const auto other = New<Root>(); }
  EXPECT_EQ(modMain::mDOMFactory(), made);
  root = nullptr;
  EXPECT_EQ(modMain::mDOMFactory(), nullptr);
}

TEST_F(CreateDOMTest, IsAnchorValid_LooksForNamedAnchorsOnly) {
  const auto document = modMain::CreateDOM("<a name='Top'></a><p id=below><a href='#x' id=y>z</a>");
  EXPECT_TRUE(modMain::IsAnchorValid(document, "top"));
  EXPECT_FALSE(modMain::IsAnchorValid(document, "below"));
  EXPECT_FALSE(modMain::IsAnchorValid(document, "y"));
  EXPECT_FALSE(modMain::IsAnchorValid(document, ""));
}

TEST_F(CreateDOMTest, IsAnchorValid_IsFalse_WithoutADocument) {
  EXPECT_FALSE(modMain::IsAnchorValid({}, "top"));
}

}  // namespace
}  // namespace quillbook
