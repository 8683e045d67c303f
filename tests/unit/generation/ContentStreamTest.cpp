#include "generation/GenerationTest.h"
#include "quillbook/host/Keywords.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicKeyword.h"

namespace quillbook {
namespace {

class ContentStreamTest : public support::GenerationTest {
 protected:
  void SetUp() override {
    GenerationTest::SetUp();
    SetUpHost();
    project->SetAutoGenerateIndexEntries(false);
  }

  static void Append(std::string& text, const Ref<Keyword>& keyword) {
    text += keyword->Name();
    for (const auto& jump : *keyword->Jumps()) text += ">" + jump->Target();
    if (!keyword->HasChildKeywords()) return;
    text += "(";
    for (const auto& child : *keyword->ChildKeywords()) Append(text, child);
    text += ")";
  }
  /// Entries as "name>target(child>target)", with blanks between.
  std::string Stream(std::string_view contentType) {
    const auto keywords = New<Keywords>();
    Ref<Object> output = keywords;
    items->INamespaceProvider_StreamContent(output, contentType);
    std::string text;
    for (const auto& keyword : *keywords->Items()) {
      if (!text.empty()) text += " ";
      Append(text, keyword);
    }
    return text;
  }
  std::string StreamFiles(std::string_view contentType = "files") {
    const auto file = New<FileSystemObject>(folder.Stored("list.txt"));
    file->Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockShared, 32767);
    Ref<Object> output = file;
    items->INamespaceProvider_StreamContent(output, contentType);
    file->Close();
    return folder.Read("list.txt");
  }
  void Created(const std::string& name) {
    items->INamespaceProvider_ContentCreated(Kind(":topic"), project, folder.Stored("out/" + name), true);
  }
};

TEST_F(ContentStreamTest, KeywordsGoByTheirMark) {
  const auto topic = AddTopic("t");
  for (const auto* keyword : {"plain", "!f", "@a", "!@both"}) topic->AddKeyword(keyword);
  EXPECT_EQ(Stream("keywords"), "plain>t.html");
  EXPECT_EQ(Stream("FKeywords"), "f>t.html");
  EXPECT_EQ(Stream("akeywords:flags"), "a>t.html");
  const auto both = New<Keywords>();
  items->GetKeywords(*both, true, true);
  ASSERT_EQ(both->Count(), 1U);
  EXPECT_EQ(both->Items()->Item(1)->Name(), "both");
}

TEST_F(ContentStreamTest, BarSeparatesLevels_AndCommasAreLost) {
  AddTopic("t")->AddKeyword("a,b|c");
  AddTopic("u")->AddKeyword("a,b");
  EXPECT_EQ(Stream("keywords"), "ab(c>t.html) a,b>u.html");
}

TEST_F(ContentStreamTest, MarksAreDropped) {
  const auto keywords = New<Keywords>();
  items->CreateKeyword(*keywords, "!@x", "t.html");
  items->CreateKeyword(*keywords, "@!y", "t.html");
  EXPECT_EQ(keywords->Items()->Item(1)->Name(), "x");
  EXPECT_EQ(keywords->Items()->Item(2)->Name(), "!y");
}

TEST_F(ContentStreamTest, ExcludedTopicsHaveNoKeywords) {
  const auto topic = AddTopic("t");
  topic->AddKeyword("k");
  topic->SetIncludeInHelpFile(false);
  EXPECT_EQ(Stream("keywords"), "");
}

TEST_F(ContentStreamTest, TitleIsAnEntry_UnlessTheTopicHasThatKeyword) {
  project->SetAutoGenerateIndexEntries(true);
  AddTopic("t", "", "Title");
  AddTopic("u", "", "Other")->AddKeyword("OTHER");
  AddTopic("v", "", "None")->SetAutoGenerateIndexEntry(false);
  EXPECT_EQ(Stream("keywords"), "Title>t.html OTHER>u.html");
  EXPECT_EQ(Stream("fkeywords"), "");
}

TEST_F(ContentStreamTest, CategoryGivesAnEntryWithLevels) {
  const auto category = project->NewTopicCategory();
  category->SetName("Tasks");
  project->TopicCategories->Add(category, category->Key);
  AddTopic("t", "", "Title")->SetTopicCategory(category);
  EXPECT_EQ(Stream("keywords"), "");
  project->SetAutoGenerateCategoryIndex(true);
  EXPECT_EQ(Stream("keywords"), "Tasks(Title>t.html)");
  category->SetAutoIndexEntries(false);
  EXPECT_EQ(Stream("keywords"), "");
}

TEST_F(ContentStreamTest, RepeatedKeywordOfATopicIsNoFailure) {
  const auto topic = AddTopic("t");
  topic->AddKeyword("k");
  topic->AddKeyword("K");
  EXPECT_EQ(Stream("keywords"), "k>t.html");
}

TEST_F(ContentStreamTest, FilesAreListedOnce_RelativeToTheOutput) {
  for (const auto* name : {"b.html", "sub/a.png", "b.html", "B.HTML"}) Created(name);
  EXPECT_EQ(StreamFiles(), "b.html\nsub\\a.png\n");
}

TEST_F(ContentStreamTest, ControlFilesAreNotListed) {
  for (const auto* name : {"x.hhc", "x.HxT", "x.h", "x.xt", "x", "x.html"}) Created(name);
  EXPECT_EQ(StreamFiles(), "x.html\n");
}

TEST_F(ContentStreamTest, EntriesForHelp2AreElements) {
  Created("a.html");
  host->HelpVersion = "2";
  EXPECT_EQ(StreamFiles(), "<File Url = \"a.html\"/>\n");
}

TEST_F(ContentStreamTest, OtherFilesAreListed_UnlessExcludedOrOfTheTemplate) {
  folder.Write("install/Configuration/Templates/Plain/both.css", "");
  for (const auto* name : {"img\\a.png", "off.png", "both.css"}) {
    const auto file = project->NewOtherFile(project->Filename->Path() + name);
    if (std::string_view(name) == "off.png") file->SetIncludeInOutput(false);
    project->OtherFiles->Add(file, file->LocalSpec());
  }
  Created("a.html");
  EXPECT_EQ(StreamFiles(), "a.html\nimg\\a.png\n");
}

TEST_F(ContentStreamTest, ListGrowsBeyondItsFirstSize) {
  std::string expected;
  for (int i = 0; i < 350; ++i) {
    Created(std::to_string(i) + ".html");
    expected += std::to_string(i) + ".html\n";
  }
  EXPECT_EQ(StreamFiles(), expected);
}

TEST_F(ContentStreamTest, UnknownTypeWritesNothing) {
  Created("a.html");
  EXPECT_EQ(StreamFiles("pictures"), "");
  Ref<Object> nothing;
  items->INamespaceProvider_StreamContent(nothing, "pictures");
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(ContentStreamTest, WrongOutputObjectFails) {
  Ref<Object> output = project;
  items->INamespaceProvider_StreamContent(output, "keywords");
  EXPECT_EQ(failures.Take(), Failures{"QBNamespaceProvider.INamespaceProvider_StreamContent 13"});
}

}  // namespace
}  // namespace quillbook
