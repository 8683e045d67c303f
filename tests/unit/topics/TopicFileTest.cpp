// Topics that have files of their own.
#include <sys/stat.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "support/TemporaryFolder.h"
#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicFile : public TopicsFixture {
 protected:
  void SetUp() override {
    TopicsFixture::SetUp();
    project->Filename->SetFullName(folder.Stored("help.qbp"));
    project->SetStorageForm(ProjectTypeSeparateFiles);
  }

  static std::string FileOf(const Topic& topic) { return "TopicData/" + topic.Key + ".xml"; }
  [[nodiscard]] std::string Content(const Topic& topic) const { return folder.Read(FileOf(topic)); }
  void MakeWritable(const Topic& topic, bool writable) const {
    ASSERT_EQ(::chmod((folder / FileOf(topic)).c_str(), writable ? 0644 : 0444), 0);
  }

  support::TemporaryFolder folder;
};

TEST_F(TopicFile, Save_LeavesOnlyTheKeyInTheProjectFile_AndLoadReadsTheRestFromTheTopicsFile) {
  const auto topic = AddTopic("a");
  topic->SetTopicSectionData("BodyText", "body");
  const auto element = SavedDocument(*topic);
  EXPECT_EQ(element.DocumentElement().Attributes().Count(), 1u);
  EXPECT_EQ(element.DocumentElement().Attributes().Item("Key").Value(), topic->Key);
  EXPECT_EQ(element.DocumentElement().ChildElements().Count(), 0u);
  EXPECT_TRUE(folder.Has(FileOf(*topic)));
  EXPECT_FALSE(topic->Dirty());
  EXPECT_FALSE(topic->NewTopicFlag);

  const auto loaded = Loaded(element.ToString());
  EXPECT_EQ(loaded->Key, topic->Key);
  EXPECT_EQ(loaded->Name(), "a");
  EXPECT_EQ(loaded->TopicSectionData("BodyText"), "body");
  const auto file = Parse(Content(*topic));
  EXPECT_EQ(file.DocumentElement().Name(), "Topic");
  EXPECT_FALSE(file.DocumentElement().Attributes().Find("Key"));
}

TEST_F(TopicFile, SaveOfAnUnchangedTopic_TouchesNoFile) {
  const auto topic = AddTopic("a");
  (void)SavedDocument(*topic);
  folder.Write(FileOf(*topic), "other");
  topic->NewTopicFlag = true;
  (void)SavedDocument(*topic);
  EXPECT_EQ(Content(*topic), "other");
  EXPECT_TRUE(topic->NewTopicFlag) << "the save stops before it marks anything";
  topic->SetTitle("t");
  (void)SavedDocument(*topic);
  EXPECT_NE(Content(*topic), "other");
}

TEST_F(TopicFile, Load_WithoutTheFile_GivesTheDefaultsUnderTheKey) {
  const auto topic = Loaded("<Topic Key='{1}' Name='not read'><s k='BodyText'>not read</s></Topic>");
  EXPECT_EQ(topic->Key, "{1}");
  EXPECT_EQ(topic->Name(), "");
  EXPECT_EQ(topic->Status(), "In Progress");
  EXPECT_EQ(topic->TopicSections->Count(), 0u);
}

TEST_F(TopicFile, Clone_TouchesNoFile) {
  const auto topic = AddTopic("a");
  topic->SetTopicSectionData("BodyText", "body");
  EXPECT_EQ(topic->Clone()->TopicSectionData("BodyText"), "body");
  EXPECT_EQ(folder.Count(), 0u);
}

TEST_F(TopicFile, ReadOnly_AsksForTheFile_ButNotForANewTopic) {
  const auto topic = AddTopic("a");
  (void)SavedDocument(*topic);
  EXPECT_FALSE(topic->ReadOnly());
  MakeWritable(*topic, false);
  EXPECT_TRUE(topic->ReadOnly());
  topic->NewTopicFlag = true;
  EXPECT_FALSE(topic->ReadOnly());
  topic->NewTopicFlag = false;
  project->SetStorageForm(ProjectTypeSingleFile);
  EXPECT_FALSE(topic->ReadOnly());
}

TEST_F(TopicFile, FailedStore_IsTriedAgainOnRetry_AndCancelLeavesTheTopicDirty) {
  const auto topic = AddTopic("a");
  (void)SavedDocument(*topic);
  topic->SetTitle("t");
  MakeWritable(*topic, false);
  const auto box =
      std::make_shared<support::ScriptedMessageBox>(std::deque<int>{MessageBox::Retry, MessageBox::Cancel});
  const PlatformOverride<MessageBox> boxOverride(box);
  (void)SavedDocument(*topic);
  ASSERT_EQ(box->shown.size(), 2u);
  EXPECT_EQ(box->shown[0].Title, "Could not save");
  EXPECT_EQ(box->shown[0].Prompt,
            "Could not save to file '" + topic->LocalSpec() +
                "'. Please ensure that you have permission to access this file and the containing directory.");
  EXPECT_TRUE(MessageBox::Offers(box->shown[0].Buttons, MessageBox::Retry));
  EXPECT_TRUE(MessageBox::Offers(box->shown[0].Buttons, MessageBox::Cancel));
  EXPECT_TRUE(topic->Dirty());

  // Whoever answers may have mended what was wrong.
  const auto mending = project->Events.MessageBox.Connect(
      [&](std::string_view, std::int32_t, std::string_view, std::int32_t& Result, bool& CancelDefault) {
        MakeWritable(*topic, true);
        Result = MessageBox::Retry;
        CancelDefault = true;
      });
  (void)SavedDocument(*topic);
  EXPECT_EQ(box->shown.size(), 2u);
  EXPECT_FALSE(topic->Dirty());
  EXPECT_EQ(Parse(Content(*topic)).DocumentElement().Attributes().Item("Title").Value(), "t");
}

}  // namespace
}  // namespace quillbook
