#include "quillbook/config/QBIDEOptions.h"

#include <map>

#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/TextHelper.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class QBIDEOptionsTest : public support::ProjectTest {
 protected:
  Ref<QBIDEOptions> options = New<QBIDEOptions>();
};

const std::map<std::string, bool> Booleans = {{"DynamicSpellCheckProperties", true},
                                              {"AutoFormatHTMLNoBlankLines", true},
                                              {"AutoFormatHTML", true},
                                              {"ShowBitmapsAsIcons", false},
                                              {"ShowLinkManagerGroupBy", false},
                                              {"ReUseTopicEditWindows", true},
                                              {"ShowNewProjectHelp", true},
                                              {"CheckLinksOnTopicClose", true},
                                              {"AutoPopulateTopicTitles", true},
                                              {"AutoPopulateLinkCategory", true},
                                              {"PromptForImageTitle", true},
                                              {"SaveLayoutOnExit", true},
                                              {"AutoSaveEnabled", false},
                                              {"InternalHelp", true},
                                              {"DynamicSpellCheckKeywords", true},
                                              {"DynamicSpellCheckTOCEditor", true},
                                              {"DynamicSpellCheckProjectExplorer", true}};

TEST_F(QBIDEOptionsTest, ANewUser_GetsTheDefaults_WhichArentWrittenBack) {
  for (const auto& [name, value] : Booleans) {
    EXPECT_EQ(options->Member(name).ToBoolean(), value) << name;
    EXPECT_EQ(modMain::GetAppValue(name, "nothing"), "nothing") << name;
  }
  EXPECT_EQ(options->WrapCharacters(), 80);
  EXPECT_EQ(options->AutoSaveMinutes(), 5);
  EXPECT_EQ(options->ToolbarStyle(), ToolbarStyleOffice2003);
  EXPECT_EQ(options->DefaultPath(), TextHelper::SpecialFolder(5));
  EXPECT_NE(options->DefaultPath(), "");
}

TEST_F(QBIDEOptionsTest, DefaultHTML_StandsAsTheEditorExpectsIt) {
  EXPECT_EQ(options->DraggedImageHTML(), "<IMG border=\"0\" src=\"%ImageURL%\" alt=\"%ImageTitle%\"/>");
  EXPECT_EQ(options->DraggedThumbnailImageHTML(),
            "<div><img id=\"img_%UniqueID%\" alt=\"%ImageTitle%\" src=\"%ThumbnailImageURL%\" border=\"0\"><br><span "
            "class=\"qb-onlineonly\"><a href=\"#\" "
            "onClick=\"javascript:qbEnlargeImage('img_%UniqueID%',this,true)\"><img style=\"MARGIN-BOTTOM: -4px\" "
            "alt=\"Enlarge\" hspace=\"2\" src=\"images/qb-enlarge.gif\" vspace=\"2\" border=\"0\">Click to "
            "enlarge</a></span></div>");
}

TEST_F(QBIDEOptionsTest, ABoolean_IsTrueOnlyForTheExactText) {
  for (const auto& [name, value] : Booleans) {
    modMain::SetAppValue(name, "true");
    EXPECT_FALSE(options->Member(name).ToBoolean()) << name;
    modMain::SetAppValue(name, "True");
    EXPECT_TRUE(options->Member(name).ToBoolean()) << name;
  }
}

TEST_F(QBIDEOptionsTest, AllObjectsAgree_AndStoreTexts) {
  const auto other = New<QBIDEOptions>();
  for (const auto& [name, value] : Booleans) {
    options->SetMember(name, !value);
    EXPECT_EQ(other->Member(name).ToBoolean(), !value) << name;
    EXPECT_EQ(modMain::GetAppValue(name, ""), value ? "False" : "True") << name;
  }
  options->SetWrapCharacters(120);
  options->SetAutoSaveMinutes(-1);
  options->SetToolbarStyle(ToolbarStyleOffice2003NoThemes);
  options->SetDefaultPath("\\help");
  EXPECT_EQ(other->WrapCharacters(), 120);
  EXPECT_EQ(other->AutoSaveMinutes(), -1);
  EXPECT_EQ(other->ToolbarStyle(), ToolbarStyleOffice2003NoThemes);
  EXPECT_EQ(other->DefaultPath(), "\\help");
  EXPECT_EQ(modMain::GetAppValue("ToolbarStyle", ""), "2");
}

TEST_F(QBIDEOptionsTest, DraggedHTML_LiesInASectionOfItsOwn_AndAnEmptyValueReadsAsTheDefault) {
  const auto original = options->DraggedImageHTML();
  options->SetDraggedImageHTML("<img>");
  options->SetDraggedThumbnailImageHTML("<i>");
  EXPECT_EQ(modMain::GetAppValue("DraggedImageHTML", "", "DragDrop"), "<img>");
  EXPECT_EQ(modMain::GetAppValue("DraggedThumbnailImageHTML", "", "DragDrop"), "<i>");
  EXPECT_EQ(modMain::GetAppValue("DraggedImageHTML", ""), "");
  options->SetDraggedImageHTML("");
  EXPECT_EQ(options->DraggedImageHTML(), original);
}

TEST_F(QBIDEOptionsTest, ANumberThatIsNone_IsAFailure) {
  modMain::SetAppValue("WrapCharacters", "wide");
  EXPECT_EQ(options->WrapCharacters(), 0);
  EXPECT_EQ(failures.Take(), Failures{"QBIDEOptions.WrapCharacters 13"});
}

}  // namespace
}  // namespace quillbook
