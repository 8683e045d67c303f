// What topics, their parts and their categories raise, and what they leave dirty.
#include "unit/project/TrafficTest.h"

namespace quillbook {
namespace {

using TopicTrafficTest = TrafficTest;

TEST_F(TopicTrafficTest, Topics) {
  Check({
      {"Add",
       [](Scene& s) {
         const auto topic = s.project->NewTopic();
         s.project->Topics->Add(topic, topic->Key);
       },
       "TopicAdded() Dirty Dirty | PT", " | ", ""},
      {"Add, before another",
       [](Scene& s) {
         const auto topic = s.project->NewTopic();
         s.project->Topics->Add(topic, topic->Key, s.a->Key);
       },
       "TopicAdded() Dirty Dirty | PT", " | ", ""},
      {"Add, known key", [](Scene& s) { s.project->Topics->Add(s.project->NewTopic(), s.a->Key); }, " | ", " | ",
       "Topics.Add 457"},
      {"Remove", [](Scene& s) { s.project->Topics->Remove(s.a->Key); }, "TopicRemoved(a) Dirty Dirty | PT", " | ", ""},
      // The node that shows the topic becomes a caption: its text first, then its type.
      {"Remove, with a node", [](Scene& s) { s.project->Topics->Remove(s.b->Key); },
       "TopicRemoved(b) QBNodeChanged(m) Dirty Dirty QBNodeChanged(m) Dirty Dirty Dirty Dirty | PTNn", " | ", ""},
      {"Remove, unknown key", [](Scene& s) { s.project->Topics->Remove("x"); }, " | ", " | ", "Topics.Remove 5"},
      {"move",
       [](Scene& s) {
         s.project->Topics->Remove(s.a->Key);
         s.project->Topics->Add(s.a, s.a->Key);
       },
       "TopicRemoved(a) Dirty Dirty TopicAdded(a) Dirty Dirty | PT", " | ", ""},
  });
}

TEST_F(TopicTrafficTest, Properties) {
  const std::string told = "TopicChanged(a) Dirty | Tt";
  const std::string held = "Dirty | Tt";
  const std::string quiet = " | ";
  Check({
      {"Name", [](Scene& s) { s.a->SetName("x"); }, "TopicChanged(x) Dirty | Tt", held, ""},
      {"Name, the same", [](Scene& s) { s.a->SetName("a"); }, quiet, quiet, ""},
      {"Title", [](Scene& s) { s.a->SetTitle("a"); }, told, held, ""},
      {"ContentsTitle", [](Scene& s) { s.a->SetContentsTitle("x"); }, told, held, ""},
      {"Status", [](Scene& s) { s.a->SetStatus("x"); }, told, held, ""},
      {"Notes", [](Scene& s) { s.a->SetNotes("x"); }, told, held, ""},
      {"LayoutName", [](Scene& s) { s.a->SetLayoutName("x"); }, told, held, ""},
      {"IncludeInHelpFile", [](Scene& s) { s.a->SetIncludeInHelpFile(false); }, told, held, ""},
      {"AutoGenerateIndexEntry", [](Scene& s) { s.a->SetAutoGenerateIndexEntry(false); }, told, held, ""},
      {"TopicCategory", [](Scene& s) { s.a->SetTopicCategory(s.category); }, told, held, ""},
      {"TopicCategory, none", [](Scene& s) { s.a->SetTopicCategory({}); }, quiet, quiet, ""},
      {"CreatedOn", [](Scene& s) { s.a->SetCreatedOn(Date(1)); }, quiet, quiet, ""},
      {"ModifiedOn", [](Scene& s) { s.a->SetModifiedOn(Date(1)); }, quiet, quiet, ""},
      {"Key", [](Scene& s) { s.a->Key = "x"; }, quiet, quiet, ""},
      {"NewTopicFlag", [](Scene& s) { s.a->NewTopicFlag = true; }, quiet, quiet, ""},
      {"PauseEvents", [](Scene& s) { s.a->SetPauseEvents(true); }, quiet, quiet, ""},
      {"FireChanged", [](Scene& s) { s.a->FireChanged(); }, told, held, ""},
  });
}

TEST_F(TopicTrafficTest, Files) {
  Check({
      {"AllScripts", [](Scene& s) { s.a->SetAllScripts(false); }, "TopicScriptsChanged TopicChanged(a) Dirty | Tt",
       "TopicScriptsChanged Dirty | Tt", ""},
      {"AddScript", [](Scene& s) { s.a->AddScript("x"); },
       "TopicScriptAdded(x) TopicScriptsChanged TopicChanged(a) Dirty | Tt",
       "TopicScriptAdded(x) TopicScriptsChanged Dirty | Tt", ""},
      {"RemoveScript, unknown", [](Scene& s) { s.a->RemoveScript("x"); }, " | ", " | ", ""},
      {"AllStylesheets", [](Scene& s) { s.a->SetAllStylesheets(false); },
       "TopicStyleSheetsChanged TopicChanged(a) Dirty | Tt", "TopicStyleSheetsChanged Dirty | Tt", ""},
      {"AddStyleSheet", [](Scene& s) { s.a->AddStyleSheet("x"); },
       "TopicStyleSheetAdded(x) TopicStyleSheetsChanged TopicChanged(a) Dirty | Tt",
       "TopicStyleSheetAdded(x) TopicStyleSheetsChanged Dirty | Tt", ""},
      {"RemoveStyleSheet, unknown", [](Scene& s) { s.a->RemoveStyleSheet("x"); },
       "TopicStyleSheetRemoved(x) TopicStyleSheetsChanged TopicChanged(a) Dirty | Tt",
       "TopicStyleSheetRemoved(x) TopicStyleSheetsChanged Dirty | Tt", ""},
  });
  const auto withFiles = [](Scene& s) {
    s.a->AddScript("x");
    s.a->AddStyleSheet("x");
  };
  CheckAfter(withFiles, {
                            {"AddScript, known", [](Scene& s) { s.a->AddScript("X"); }, " | ", "", ""},
                            {"RemoveScript", [](Scene& s) { s.a->RemoveScript("X"); },
                             "TopicScriptRemoved(X) TopicScriptsChanged TopicChanged(a) Dirty | Tt", "", ""},
                            {"AddStyleSheet, known", [](Scene& s) { s.a->AddStyleSheet("X"); }, " | ", "",
                             "Topic.AddStyleSheet 457"},
                        });
}

TEST_F(TopicTrafficTest, Sections) {
  Check({
      {"TopicSectionData", [](Scene& s) { s.a->SetTopicSectionData("BodyText", "x"); },
       "TopicSectionChanged(a, x) Dirty | Pt", "Dirty | Pt", ""},
      {"TopicSectionData, the same", [](Scene& s) { s.a->SetTopicSectionData("BodyText", "<p> </p>"); }, " | ", " | ",
       ""},
      {"Data", [](Scene& s) { s.a->TopicSections->Item(1)->SetData("x"); }, "TopicSectionChanged(a, x) Dirty | P",
       "Dirty | P", ""},
      {"Remove", [](Scene& s) { s.a->TopicSections->Remove(1); }, " | ", " | ", ""},
      {"TopicSectionData, new",
       [](Scene& s) {
         s.a->TopicSections->Remove(1);
         s.a->SetTopicSectionData("BodyText", "x");
       },
       "TopicSectionChanged(a, x) Dirty TopicSectionDataChanged(x) | Pt", "Dirty TopicSectionDataChanged(x) | Pt", ""},
      {"NewTopicSection",
       [](Scene& s) {
         s.a->TopicSections->Remove(1);
         s.a->NewTopicSection("BodyText", "x");
       },
       "TopicSectionChanged(a, x) Dirty | P", "Dirty | P", ""},
  });
}

TEST_F(TopicTrafficTest, Keywords) {
  const std::string removed = "TopicKeywordRemoved(k) | ";
  Check({
      {"AddKeyword", [](Scene& s) { s.a->AddKeyword("x"); }, "TopicKeywordAdded(x) TopicChanged(a) Dirty | Tt",
       "TopicKeywordAdded(x) Dirty | Tt", ""},
      {"Add, known key", [](Scene& s) { s.a->Keywords()->Add(s.keyword, s.keyword->ID()); }, " | ", " | ",
       "TopicKeywords.Add 457"},
      {"Remove", [](Scene& s) { s.a->Keywords()->Remove(s.keyword->ID()); }, removed, removed, ""},
      {"Remove, unknown key", [](Scene& s) { s.a->Keywords()->Remove("x"); }, " | ", " | ", ""},
      {"Clear", [](Scene& s) { s.a->Keywords()->Clear(); }, " | ", " | ", ""},
      {"Keyword", [](Scene& s) { s.keyword->SetKeyword("x"); }, " | ", " | ", ""},
      {"ID", [](Scene& s) { s.keyword->SetID("x"); }, " | ", " | ", ""},
  });
}

TEST_F(TopicTrafficTest, Links) {
  const std::string held = "Dirty Dirty | PTt";
  Check({
      {"NewTopicLink", [](Scene& s) { s.a->NewTopicLink(rttURL, "", "x", "u"); },
       "TopicTopicLinksChanged(a) Dirty TopicChanged(a) Dirty ItemAdded(x) | Tt", "Dirty Dirty ItemAdded(x) | Tt", ""},
      {"Add", [](Scene& s) { s.a->TopicLinks()->Add(New<TopicLink>()); },
       "TopicTopicLinksChanged(a) Dirty TopicChanged(a) Dirty ItemAdded() | Tt", "Dirty Dirty ItemAdded() | Tt", ""},
      {"Remove", [](Scene& s) { s.a->TopicLinks()->Remove(1); },
       "TopicTopicLinksChanged(a) Dirty TopicChanged(a) Dirty ItemRemoved(l) | Tt", "Dirty Dirty ItemRemoved(l) | Tt",
       ""},
      {"Remove, unknown", [](Scene& s) { s.a->TopicLinks()->Remove(2); }, " | ", " | ", "TopicLinks.Remove 9"},
      {"Title", [](Scene& s) { s.link->SetTitle("x"); },
       "TopicTopicLinkChanged(a, x) Dirty TopicChanged(a) Dirty | PTt", held, ""},
      {"Category", [](Scene& s) { s.link->SetCategory("x"); },
       "TopicTopicLinkChanged(a, l) Dirty TopicChanged(a) Dirty | PTt", held, ""},
      {"URL", [](Scene& s) { s.link->SetURL("x"); }, "TopicTopicLinkChanged(a, l) Dirty TopicChanged(a) Dirty | PTt",
       held, ""},
      {"TopicLinkType", [](Scene& s) { s.link->SetTopicLinkType(rttURL); },
       "TopicTopicLinkChanged(a, l) Dirty TopicChanged(a) Dirty | PTt", held, ""},
      {"ParentTopic", [](Scene& s) { s.link->SetParentTopic(s.b); },
       "TopicTopicLinkChanged(b, l) Dirty TopicChanged(b) Dirty | PT", "Dirty Dirty | PT", ""},
      {"ParentTopic, none", [](Scene& s) { s.link->SetParentTopic({}); }, " | ", " | ", ""},
      {"ParentTopic, the same", [](Scene& s) { s.link->SetParentTopic(s.a); }, " | ", " | ", ""},
      {"ChildTopicKey", [](Scene& s) { s.link->ChildTopicKey = "x"; }, " | ", " | ", ""},
      {"Load",
       [](Scene& s) {
         XMLDocument record;
         record.LoadXML("<r t='x' cat='x' Title='x' rt='1' URL='x'/>");
         s.link->Load(record.DocumentElement());
       },
       " | ", " | ", ""},
  });
}

TEST_F(TopicTrafficTest, RecordsOfTopics) {
  const auto changed = [](Scene& s) {
    s.a->SetTitle("x");
    (void)s.traffic.Take();
  };
  const auto load = [](Scene& s) {
    XMLDocument record;
    record.LoadXML("<Topic Key='x' Name='x'><K Value='x'/><r t='' cat=''/><s k='BodyText'>x</s></Topic>");
    s.a->Load(record.DocumentElement());
  };
  Check({
      {"Load", load, " | ", " | ", ""},
      {"Load of a changed topic",
       [&](Scene& s) {
         changed(s);
         load(s);
       },
       " | Tt", " | Tt", ""},
      {"Save of a changed topic",
       [&](Scene& s) {
         changed(s);
         s.a->Save(XMLDocument().DocumentElement());
       },
       " | T", " | T", ""},
      // A clone is a save of its source, without a word to the project.
      {"Clone of a changed topic",
       [&](Scene& s) {
         changed(s);
         EXPECT_FALSE(s.a->Clone()->Dirty());
       },
       " | T", " | T", ""},
  });
}

TEST_F(TopicTrafficTest, APausedTopic_TellsNobody_AndStaysClean) {
  CheckAfter([](Scene& s) { s.a->SetPauseEvents(true); },
             {
                 {"Title", [](Scene& s) { s.a->SetTitle("x"); }, " | ", "", ""},
                 {"TopicCategory", [](Scene& s) { s.a->SetTopicCategory(s.category); }, " | ", "", ""},
                 {"AllScripts", [](Scene& s) { s.a->SetAllScripts(false); }, " | ", "", ""},
                 {"AllStylesheets", [](Scene& s) { s.a->SetAllStylesheets(false); }, " | ", "", ""},
                 {"AddScript", [](Scene& s) { s.a->AddScript("x"); }, " | ", "", ""},
                 {"AddStyleSheet", [](Scene& s) { s.a->AddStyleSheet("x"); }, " | ", "", ""},
                 {"RemoveStyleSheet", [](Scene& s) { s.a->RemoveStyleSheet("x"); }, " | ", "", ""},
                 {"TopicSectionData", [](Scene& s) { s.a->SetTopicSectionData("BodyText", "x"); }, " | ", "", ""},
                 {"FireChanged", [](Scene& s) { s.a->FireChanged(); }, " | ", "", ""},
                 {"Link.Title", [](Scene& s) { s.link->SetTitle("x"); }, " | ", "", ""},
                 {"Links.Remove", [](Scene& s) { s.a->TopicLinks()->Remove(1); }, "ItemRemoved(l) | ", "", ""},
                 // The list of keywords has no pause of its own; nothing of it gets past the topic.
                 {"AddKeyword", [](Scene& s) { s.a->AddKeyword("x"); }, "TopicKeywordAdded(x) | ", "", ""},
                 // `Dirty` is written whatever the pause, and making a link ends it.
                 {"Dirty", [](Scene& s) { s.a->SetDirty(true); }, "Dirty | Pt", "", ""},
                 {"NewTopicLink", [](Scene& s) { s.a->NewTopicLink(); },
                  "TopicTopicLinksChanged(a) Dirty TopicChanged(a) Dirty ItemAdded() | Tt", "", ""},
             });
}

TEST_F(TopicTrafficTest, WhatAListenerChanges_IsToldInsideWhatItHears) {
  Scene scene;
  const auto listening = scene.project->Events.TopicChanged.Connect([&](const Ref<Topic>& topic) {
    if (topic == scene.a) scene.b->SetTitle("x");
  });
  EXPECT_EQ(scene.Effect([](Scene& s) { s.a->SetTitle("x"); }), "TopicChanged(a) TopicChanged(b) Dirty Dirty | Tt");
}

TEST_F(TopicTrafficTest, Categories) {
  const auto add = [](Scene& s) {
    const auto category = s.project->NewTopicCategory();
    category->SetName("x");  // told to the project, although it doesn't hold the category yet
    (void)s.traffic.Take();
    s.project->SetDirty(false);
    (void)s.traffic.Take();
    s.project->TopicCategories->Add(category, category->Key);
  };
  Check({
      {"Add", add, "TopicCategoryAdded(x) Dirty | P", " | ", ""},
      {"Add, known key", [](Scene& s) { s.project->TopicCategories->Add(New<TopicCategory>(), s.category->Key); },
       " | ", " | ", "TopicCategories.Add 457"},
      {"Remove", [](Scene& s) { s.project->TopicCategories->Remove(s.category->Key); },
       "TopicCategoryRemoved(c) Dirty | P", " | ", ""},
      {"Remove, unknown key", [](Scene& s) { s.project->TopicCategories->Remove("x"); }, " | ", " | ",
       "TopicCategories.Remove 5"},
      {"Name", [](Scene& s) { s.category->SetName("x"); }, "TopicCategoryChanged(x) Dirty | P", "Dirty | P", ""},
      {"Name, the same", [](Scene& s) { s.category->SetName("c"); }, " | ", " | ", ""},
      {"Name, of a category not added", [](Scene& s) { s.project->NewTopicCategory()->SetName("x"); }, "Dirty | P",
       "Dirty | P", ""},
      {"AutoIndexEntries", [](Scene& s) { s.category->SetAutoIndexEntries(false); },
       "TopicCategoryChanged(c) Dirty | P", "Dirty | P", ""},
      {"Key", [](Scene& s) { s.category->Key = "x"; }, " | ", " | ", ""},
      {"Load",
       [](Scene& s) {
         XMLDocument record;
         record.LoadXML("<cat Name='x' Key='x' AutoIndex='False'/>");
         s.category->Load(record.DocumentElement());
       },
       " | ", " | ", ""},
      {"Topics", [](Scene& s) { (void)s.category->Topics(); }, " | ", " | ", ""},
  });
}

}  // namespace
}  // namespace quillbook
