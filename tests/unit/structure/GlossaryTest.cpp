#include <sys/stat.h>

#include <random>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class GlossaryTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("p.qbp"));
    glossary = project->GlossaryItems();
  }
  void TearDown() override {
    glossary = nullptr;
    ProjectTest::TearDown();
  }
  Ref<GlossaryItem> AddItem(const std::string& term, const std::string& definition = {}) {
    const auto item = project->NewGlossaryItem(term, definition);
    glossary->Add(item, item->Key);
    return item;
  }
  static std::string Record(const std::string& key, const std::string& term) {
    return "<glossaryitem Key='" + key + "' Term='" + term + "'/>";
  }

  support::TemporaryFolder folder;
  Ref<GlossaryItems> glossary;
};

TEST_F(GlossaryTest, ANewItem_HasAKey_ButStandsNowhere) {
  const auto item = project->NewGlossaryItem("API", "Interface");
  EXPECT_EQ(item->Key.size(), 38u);
  EXPECT_EQ(item->Term(), "API");
  EXPECT_EQ(item->Definition(), "Interface");
  EXPECT_EQ(item->QBProject(), project);
  EXPECT_EQ(glossary->Count(), 0u);
}

TEST_F(GlossaryTest, Setters_TellTheProjectOfARealChange_RegardingCase) {
  const auto item = AddItem("API");
  glossary->SetDirty(false);
  support::ProjectLog log(project);
  item->SetTerm("api");
  EXPECT_EQ(log.Take(), "GlossaryItemChanged Dirty");
  EXPECT_TRUE(glossary->Dirty());
  item->SetDefinition("d");
  EXPECT_EQ(log.Take(), "GlossaryItemChanged Dirty");
  item->SetTerm("api");
  item->SetDefinition("d");
  item->Key = "silent";
  EXPECT_EQ(log.Take(), "");
  New<GlossaryItem>()->SetTerm("no project");
}

TEST_F(GlossaryTest, WhilePaused_NoEventIsRaised_ButTheGlossaryBecomesDirty) {
  glossary->PauseEvents = true;
  const auto item = project->NewGlossaryItem("a", "");
  support::ProjectLog log(project);
  glossary->Add(item, item->Key);
  EXPECT_EQ(log.Take(), "Dirty Dirty");
  item->SetTerm("b");
  EXPECT_EQ(log.Take(), "Dirty");
  glossary->Remove(1);
  EXPECT_EQ(log.Take(), "Dirty Dirty");
}

TEST_F(GlossaryTest, AddAndRemove_TellTheProject_AndMarkTheGlossary) {
  const auto item = project->NewGlossaryItem("a", "");
  support::ProjectLog log(project);
  glossary->Add(item, item->Key);
  EXPECT_EQ(log.Take(), "GlossaryItemAdded Dirty Dirty");
  EXPECT_EQ(glossary->Item(item->Key), item);
  EXPECT_EQ(glossary->Item(1), item);
  glossary->Remove(item->Key);
  EXPECT_EQ(log.Take(), "GlossaryItemRemoved Dirty Dirty");
  EXPECT_FALSE(glossary->Item(item->Key));
  EXPECT_TRUE(glossary->Dirty());
}

TEST_F(GlossaryTest, Add_OfAKnownKey_AndRemove_OfAnUnknownOne_AreFailures) {
  const auto item = AddItem("a");
  support::ProjectLog log(project);
  glossary->Add(item, item->Key);
  glossary->Remove("nowhere");
  EXPECT_EQ(failures.Take(), (Failures{"GlossaryItems.Add 457", "GlossaryItems.Remove 5"}));
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(glossary->Count(), 1u);
}

TEST_F(GlossaryTest, Add_NeedsItsProject) {
  const auto lonely = New<GlossaryItems>();
  lonely->Add(New<GlossaryItem>(), "k");
  EXPECT_EQ(failures.Take(), Failures{"GlossaryItems.Add 91"});
}

TEST_F(GlossaryTest, SetDirty_TellsOfTrueOnly) {
  support::ProjectLog log(project);
  glossary->SetDirty(true);
  EXPECT_EQ(log.Take(), "Dirty");
  glossary->SetDirty(false);
  EXPECT_EQ(log.Take(), "");
  New<GlossaryItems>()->SetDirty(true);
}

TEST_F(GlossaryTest, ItemByTerm_IgnoresCase_AndFollowsRenames) {
  const auto item = AddItem("API");
  EXPECT_EQ(glossary->ItemByTerm("api"), item);
  EXPECT_FALSE(glossary->ItemByTerm("ap"));
  item->SetTerm("\xC3\x89tude");
  EXPECT_FALSE(glossary->ItemByTerm("api"));
  EXPECT_EQ(glossary->ItemByTerm("\xC3\xA9TUDE"), item);
  glossary->Remove(1);
  EXPECT_FALSE(glossary->ItemByTerm("\xC3\xA9TUDE"));
}

TEST_F(GlossaryTest, ItemByTerm_FindsTheFirstOfEqualTerms) {
  const auto second = AddItem("a");
  AddItem("A");
  EXPECT_EQ(glossary->ItemByTerm("A"), second);
  const auto first = project->NewGlossaryItem("x", "");
  glossary->Add(first, first->Key, 1);
  first->SetTerm("A");
  EXPECT_EQ(glossary->ItemByTerm("a"), first);
  first->SetTerm("b");
  EXPECT_EQ(glossary->ItemByTerm("a"), second);
}

TEST_F(GlossaryTest, ItemByTerm_AgreesWithAWalk_OverRandomOperations) {
  std::mt19937 random(5);
  const auto pick = [&](std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(random); };
  const auto term = [&] { return std::string(1, static_cast<char>((pick(2) ? 'a' : 'A') + pick(pick(2) ? 2 : 9))); };
  for (int step = 0; step < 4'000; ++step) {
    const auto action = pick(4);
    const auto count = glossary->Count();
    if (action == 0 || count == 0) {
      const auto item = project->NewGlossaryItem(term(), "");
      // Some stand unkeyed or under another key than their own.
      const std::string keys[] = {item->Key, item->Key, item->Key, "", "other" + std::to_string(step)};
      glossary->Add(item, keys[pick(5)], count == 0 ? KeyOrPosition() : KeyOrPosition(pick(count) + 1));
    } else if (action == 1 && count > 20) {
      glossary->Remove(pick(count) + 1);
    } else {
      glossary->Item(pick(count) + 1)->SetTerm(term());
    }
    const auto wanted = term();
    Ref<GlossaryItem> expected;
    for (const auto& item : *glossary)
      if ((item->Term()[0] | 0x20) == (wanted[0] | 0x20)) {
        expected = item;
        break;
      }
    ASSERT_EQ(glossary->ItemByTerm(wanted), expected) << step;
  }
}

TEST_F(GlossaryTest, AnItem_IsFoundInEveryCollectionThatHoldsIt) {
  const auto item = AddItem("a");
  {
    const auto other = New<QBProject>();
    other->GlossaryItems()->Add(item, item->Key);
    item->SetTerm("b");
    EXPECT_EQ(other->GlossaryItems()->ItemByTerm("B"), item);
  }
  item->SetTerm("c");
  EXPECT_EQ(glossary->ItemByTerm("C"), item);
}

// Record.

TEST_F(GlossaryTest, Save_WritesKeyTermAndDefinition) {
  const auto item = project->NewGlossaryItem("a \"b\"", "<p>one & two</p>");
  item->Key = "{1}";
  EXPECT_EQ(Written(*item), "<r Key=\"{1}\" Term=\"a &quot;b&quot;\">&lt;p&gt;one &amp; two&lt;/p&gt;</r>");
}

TEST_F(GlossaryTest, ADefinition_SurvivesWithLineBreaksAndMarkup) {
  for (const std::string definition :
       {"a\r\nb\n\tc", "  ", "]]> <![CDATA[ &amp;", "\x01\x1F", "\xF0\x9F\x98\x80", "<p align=\"left\">x</p>\r\n"}) {
    const auto item = project->NewGlossaryItem("t", definition);
    const auto loaded = New<GlossaryItem>();
    loaded->Load(Parse(Written(*item)).DocumentElement());
    EXPECT_EQ(loaded->Definition(), definition);
  }
  const auto huge = project->NewGlossaryItem("t", std::string(1'000'000, '<'));
  const auto loaded = New<GlossaryItem>();
  loaded->Load(Parse(Written(*huge)).DocumentElement());
  EXPECT_EQ(loaded->Definition(), huge->Definition());
}

TEST_F(GlossaryTest, Load_NeedsBothAttributes_InAnyCase) {
  const auto item = New<GlossaryItem>();
  item->Load(Parse("<x KEY='k' TERM='t'>d</x>").DocumentElement());
  EXPECT_EQ(item->Key, "k");
  EXPECT_EQ(item->Term(), "t");
  EXPECT_EQ(item->Definition(), "d");
  item->Load(Parse("<x Term='t'/>").DocumentElement());
  item->Load(Parse("<x Key='k'/>").DocumentElement());
  EXPECT_EQ(failures.Take(), (Failures{"GlossaryItem.Load 5", "GlossaryItem.Load 5"}));
}

TEST_F(GlossaryTest, Load_TellsNobody_ButIsFollowedByItemByTerm) {
  const auto item = AddItem("before");
  support::ProjectLog log(project);
  item->Load(Parse(Record(item->Key, "after")).DocumentElement());
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(glossary->ItemByTerm("after"), item);
}

TEST_F(GlossaryTest, AClone_CarriesTheKeyOfItsSource_AndCannotJoinIt) {
  const auto item = AddItem("t", "d");
  Ref<QBProject> parent;
  const auto clone = item->Clone(parent);
  EXPECT_EQ(parent, project);
  EXPECT_NE(clone, item);
  EXPECT_EQ(clone->Key, item->Key);
  EXPECT_EQ(clone->Term(), "t");
  EXPECT_EQ(clone->Definition(), "d");
  EXPECT_EQ(glossary->Count(), 1u);
  glossary->Add(clone, clone->Key);
  EXPECT_EQ(failures.Take(), Failures{"GlossaryItems.Add 457"});
  auto other = New<QBProject>();
  EXPECT_EQ(item->Clone(other)->QBProject(), other);
}

TEST_F(GlossaryTest, LoadOfTheList_ReplacesIt_WithoutEvents_AndEndsClean) {
  AddItem("old");
  support::ProjectLog log(project);
  glossary->Load(Parse("<g>" + Record("1", "a") + "<Other key='2' term='b'/></g>").DocumentElement());
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(glossary->Count(), 2u);
  EXPECT_EQ(glossary->ItemByTerm("B"), glossary->Item("2"));
  EXPECT_EQ(glossary->Item("2")->QBProject(), project);
  EXPECT_FALSE(glossary->ItemByTerm("old"));
  EXPECT_FALSE(glossary->Dirty());
}

TEST_F(GlossaryTest, LoadOfTheList_StopsAtARepeatedKey) {
  glossary->Load(Parse("<g>" + Record("k", "a") + Record("K", "b") + Record("l", "c") + "</g>").DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"GlossaryItems.Load 457"});
  EXPECT_EQ(glossary->Count(), 1u);
  EXPECT_FALSE(glossary->ItemByTerm("b"));
}

TEST_F(GlossaryTest, OlderFiles_HoldItemsDirectlyBelowTheRoot) {
  project->Load("<QBProject>" + Record("k", "a") + "<GLOSSARYITEM key='l' term='b'/></QBProject>");
  EXPECT_EQ(project->GlossaryItems()->Count(), 2u);
  EXPECT_TRUE(project->GlossaryItems()->ItemByTerm("B"));
}

// Separate file.

TEST_F(GlossaryTest, InASingleFile_TheItemsStandBelowTheElement) {
  AddItem("a")->Key = "1";
  EXPECT_EQ(Written(*glossary), "<r>\n\t<glossaryitem Key=\"1\" Term=\"a\"/>\n</r>");
  EXPECT_FALSE(folder.Has("ProjectData"));
  EXPECT_FALSE(glossary->ReadOnly());
}

TEST_F(GlossaryTest, ASeparateFile_IsWrittenWhenMissingOrDirty_AndReadInPlaceOfTheElement) {
  project->SetStorageForm(ProjectTypeSeparateFiles);
  const std::string file = "ProjectData/Glossary.xml";
  EXPECT_EQ(glossary->LocalSpec(), folder.Stored(file));
  glossary->Load(Parse("<g>" + Record("x", "x") + "</g>").DocumentElement());
  EXPECT_EQ(glossary->Count(), 0u);  // no file, an empty glossary
  EXPECT_EQ(Written(*glossary), "<r/>");
  EXPECT_NE(folder.Read(file).find("<Glossary/>"), std::string::npos);

  folder.Write(file, "<Any>" + Record("k", "a") + "</Any>");
  glossary->Load(XMLDocument().DocumentElement());
  EXPECT_EQ(glossary->Item("k")->Term(), "a");
  Written(*glossary);
  EXPECT_NE(folder.Read(file).find("<Any>"), std::string::npos);  // unchanged, so not written
  glossary->Item("k")->SetTerm("b");
  Written(*glossary);
  EXPECT_NE(folder.Read(file).find("<Glossary>\n\t<glossaryitem Key=\"k\" Term=\"b\"/>"), std::string::npos);
  EXPECT_TRUE(glossary->Dirty());

  EXPECT_FALSE(glossary->ReadOnly());
  ASSERT_EQ(chmod(folder.Native(file).c_str(), 0444), 0);
  EXPECT_TRUE(glossary->ReadOnly());
}

}  // namespace
}  // namespace quillbook
