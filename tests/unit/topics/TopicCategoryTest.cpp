#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicCategoryTest : public TopicsFixture {
 protected:
  Ref<TopicCategory> LoadedCategory(std::string_view record) {
    auto category = New<TopicCategory>();
    category->SetQBProject(project);
    const auto document = Parse(std::string(record));
    category->Load(document.DocumentElement());
    return category;
  }
};

TEST_F(TopicCategoryTest, Record_ComesBack) {
  const auto category = AddCategory("Group & more");
  category->SetAutoIndexEntries(false);
  XMLDocument document;
  document.DocumentElement().SetName("cat");
  category->Save(document.DocumentElement());
  EXPECT_EQ(document.ToString(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<cat Name=\"Group &amp; more\" Key=\"" +
                                     category->Key + "\" AutoIndex=\"False\"/>");
  const auto loaded = LoadedCategory(document.ToString());
  EXPECT_EQ(loaded->Name(), "Group & more");
  EXPECT_EQ(loaded->Key, category->Key);
  EXPECT_FALSE(loaded->AutoIndexEntries());
}

TEST_F(TopicCategoryTest, AutoIndex_IsTrueForExactlyTrue_AndWhereItIsAbsent) {
  EXPECT_TRUE(LoadedCategory("<cat Name='a' Key='1' AutoIndex='True'/>")->AutoIndexEntries());
  EXPECT_TRUE(LoadedCategory("<cat Name='a' Key='1'/>")->AutoIndexEntries());
  EXPECT_FALSE(LoadedCategory("<cat Name='a' Key='1' AutoIndex='False'/>")->AutoIndexEntries());
  EXPECT_FALSE(LoadedCategory("<cat Name='a' Key='1' AutoIndex='false'/>")->AutoIndexEntries());
}

TEST_F(TopicCategoryTest, RecordWithoutNameOrKey_IsReported) {
  (void)LoadedCategory("<cat Key='1'/>");
  (void)LoadedCategory("<cat Name='a'/>");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicCategory.Load 5", "TopicCategory.Load 5"));
}

TEST_F(TopicCategoryTest, Setters_TellOfARealChange) {
  const auto category = AddCategory("a");
  category->SetName("b");
  category->SetName("b");
  category->SetAutoIndexEntries(false);
  category->SetAutoIndexEntries(false);
  EXPECT_THAT(
      log, ElementsAre("TopicCategoryChanged b", "DirtyStateChanged", "TopicCategoryChanged b", "DirtyStateChanged"));
}

TEST_F(TopicCategoryTest, PausedCollection_TellsOfNothing_ButANameStillReachesTheProject) {
  project->TopicCategories->PauseEvents = true;
  const auto category = project->NewTopicCategory();
  project->TopicCategories->Add(category, category->Key);
  EXPECT_THAT(log, IsEmpty());
  category->SetName("b");
  EXPECT_THAT(log, ElementsAre("DirtyStateChanged")) << "the project holds back the event alone";
  EXPECT_TRUE(project->ProjectDirty());
  log.clear();
  project->TopicCategories->Remove(category->Key);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicCategoryTest, AddAndRemove_AreTold) {
  const auto category = project->NewTopicCategory();
  category->SetName("a");
  log.clear();
  project->TopicCategories->Add(category, category->Key);
  project->TopicCategories->Remove(category->Key);
  EXPECT_THAT(log,
              ElementsAre("TopicCategoryAdded a", "DirtyStateChanged", "TopicCategoryRemoved a", "DirtyStateChanged"));
  log.clear();
  project->TopicCategories->Remove(category->Key);
  EXPECT_THAT(failures.Take(), ElementsAre("TopicCategories.Remove 5"));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicCategoryTest, TopicCategoryByName_FindsTheFirst_IgnoringCase) {
  const auto first = AddCategory("Group");
  const auto second = AddCategory("GROUP");
  EXPECT_EQ(project->TopicCategories->TopicCategoryByName("gRoUp"), first);
  EXPECT_FALSE(project->TopicCategories->TopicCategoryByName("other"));
  EXPECT_EQ(project->TopicCategories->Item(second->Key), second);
  EXPECT_EQ(project->TopicCategories->GetTopicCategoryIndex(second), 2);
  EXPECT_EQ(project->TopicCategories->GetTopicCategoryIndex(New<TopicCategory>()), 0);
}

TEST_F(TopicCategoryTest, Topics_AreThoseOfThisVeryCategory_InANewCollectionThatTellsNobody) {
  const auto category = AddCategory("Group");
  const auto empty = AddCategory("Empty");
  AddTopic("none");
  const auto b = AddTopic("b");
  const auto a = AddTopic("a");
  b->SetTopicCategory(category);
  a->SetTopicCategory(category);
  log.clear();
  const auto topics = category->Topics();
  ASSERT_EQ(topics->Count(), 2u);
  EXPECT_EQ(topics->Item(1), b);
  EXPECT_EQ(topics->Item(a->Key), a);
  EXPECT_FALSE(topics->QBProject());
  EXPECT_NE(category->Topics(), topics);
  ASSERT_TRUE(empty->Topics());
  EXPECT_EQ(empty->Topics()->Count(), 0u);
  EXPECT_EQ(New<TopicCategory>()->Topics()->Count(), 0u);
  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace quillbook
