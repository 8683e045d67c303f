// The help project that a build writes, and the help file that comes of it.
#include <sys/stat.h>

#include "generation/BuildTest.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/host/CompiledHelp.h"
#include "quillbook/host/HelpCompiler.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicKeyword.h"

namespace quillbook {
namespace {

namespace fs = std::filesystem;
using support::BuildTest;

class HelpProjectTest : public BuildTest {
 protected:
  void SetUp() override {
    BuildTest::SetUp();
    project->SetAutoGenerateIndexEntries(false);
    project->SetAutoGenerateCategoryIndex(false);
    CompileInto("help/demo.chm");
    AddTopic("A", "<p>Text</p>", "First page");
  }
  void UseHelp2() {
    profile->SetHTMLHelpVersion(2);
    profile->SetH2Namespace("Demo.Help");
    profile->SetH2FileID("demo");
    profile->SetHelpFileName(folder.Stored("help/demo.hxs"));
  }
  Ref<QBNode> AddNode(std::string_view caption, std::string_view url = {}, const Ref<QBNode>& parent = {}) {
    auto node = (parent ? parent->ChildNodes : project->QBNodes)->NewNode(parent);
    node->SetCaptionText(caption);
    node->SetStandardURL(url);
    return node;
  }
  HelpCompileResult Compile() {
    const auto result = Build();
    EXPECT_TRUE(result && !result->Cancelled);
    log = result->CompilerLog;
    return static_cast<HelpCompileResult>(result->HelpCompileResult);
  }
  /// The part of a file from a text on, to the end of another one.
  std::string Part(const std::string& file, std::string_view from, std::string_view to) {
    const auto text = ReplaceAll(folder.Read("out/" + file), "\r\n", "\n");
    const auto start = text.find(from);
    const auto end = text.find(to, start);
    return start == std::string::npos || end == std::string::npos ? "(none in " + text + ")"
                                                                  : text.substr(start, end + to.size() - start);
  }
  std::string Option(const std::string& name) {
    const auto text = "\n" + ReplaceAll(folder.Read("out/demo.hhp"), "\r\n", "\n");
    const auto start = text.find("\n" + name + "=");
    return start == std::string::npos ? "(none)" : text.substr(start + 1, text.find('\n', start + 1) - start - 1);
  }
  std::vector<std::string> Messages() const {
    std::vector<std::string> texts;
    for (const auto& message : messages) texts.push_back(message.message);
    return texts;
  }
  std::string log;
};

// HTML Help.

TEST_F(HelpProjectTest, WithoutCompilation_NoControlFileIsWritten) {
  profile->SetCompileHelpFile(false);
  AddNode("A", "A.html");
  EXPECT_EQ(Compile(), HelpCompileResult::None);
  EXPECT_EQ(Output(), "A.html");
}

TEST_F(HelpProjectTest, ProjectFile_NamesWhatThereIs) {
  SupportFile("css/style.css", "css");
  AddFile("img/logo.png");
  AddTopic("B")->AddKeyword("key");
  AddNode("A", "A.html");
  profile->SetDefaultTopic(project->Topics->Item(2));
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(ReplaceAll(folder.Read("out/demo.hhp"), "\r\n", "\n"),
            "[OPTIONS]\nCompatibility=1.1 or later\nCompiled file=../help/demo.chm\nContents file=demo.hhc\n"
            "Index file=demo.hhk\nDefault topic=B.html\nDefault Window=main\nTitle=Demo\n"
            "Language=0x409 English (United States)\nFull-text search=Yes\nBinary TOC=Yes\nBinary Index=Yes\n\n"
            "[WINDOWS]\nmain=\"Demo\",\"demo.hhc\",\"demo.hhk\",\"B.html\",\"B.html\",,,,,0x63520,220,0x10384e,"
            "[80,60,1000,700],0xb0000,,,,,,0\n\n[FILES]\nA.html\nB.html\ncss\\style.css\nimg\\logo.png\n");
  EXPECT_EQ(Output(), "A.html,B.html,css/style.css,demo.hhc,demo.hhk,demo.hhp,img/logo.png");
}

TEST_F(HelpProjectTest, ProjectFile_NamesNoContentsAndNoIndex_WhereThereAreNone) {
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Option("Contents file"), "(none)");
  EXPECT_EQ(Option("Index file"), "(none)");
  EXPECT_EQ(Output(), "A.html,demo.hhp");
}

TEST_F(HelpProjectTest, Title_StandsOnOneLine_AndKeepsItsQuotesOutOfTheWindow) {
  project->SetTitle("The \"big\"\r\nhelp &amp; more");
  Compile();
  EXPECT_EQ(Option("Title"), "Title=The \"big\"  help & more");
  EXPECT_EQ(Option("main").substr(0, 30), "main=\"The 'big'  help & more\",");
}

TEST_F(HelpProjectTest, Contents_AreNested_WithPagesAddressesAndIcons) {
  const auto book = AddNode("Book");
  AddNode("A &amp; <b>", "A.html#top", book)->SetIcon(11);
  AddNode("Web", "https://example.org/?a=1&b=2", book);
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Part("demo.hhc", "<UL>", "</BODY>"),
            "<UL>\n"
            "\t<LI> <OBJECT type=\"text/sitemap\">\n\t\t<param name=\"Name\" value=\"Book\">\n\t\t</OBJECT>\n\t<UL>\n"
            "\t\t<LI> <OBJECT type=\"text/sitemap\">\n\t\t\t<param name=\"Name\" value=\"A &amp; &lt;b&gt;\">\n"
            "\t\t\t<param name=\"Local\" value=\"A.html#top\">\n\t\t\t<param name=\"ImageNumber\" value=\"11\">\n"
            "\t\t\t</OBJECT>\n"
            "\t\t<LI> <OBJECT type=\"text/sitemap\">\n\t\t\t<param name=\"Name\" value=\"Web\">\n"
            "\t\t\t<param name=\"URL\" value=\"https://example.org/?a=1&amp;b=2\">\n\t\t\t</OBJECT>\n"
            "\t</UL>\n</UL>\n</BODY>");
  // The fast form of the contents knows no icons of one's own.
  EXPECT_EQ(Option("Binary TOC"), "Binary TOC=No");
}

TEST_F(HelpProjectTest, Contents_LeaveExcludedTopicsOut_AndSaySoOnce) {
  const auto hidden = AddTopic("H");
  hidden->SetIncludeInHelpFile(false);
  const auto node = AddNode("");
  node->SetQBNodeType(ntSingleTopic);
  node->SetTopicID(hidden->Key);
  AddNode("A", "A.html");
  Layout("Topic.html", "%%tableofcontents:condition=not defaultpage%%");
  AddTopic("B");
  Compile();
  // Once for each of the two pages that show the contents, and not again for the help project.
  EXPECT_EQ(Messages().size(), 2U);
  EXPECT_EQ(Part("demo.hhc", "<UL>", "</BODY>").find(">H<"), std::string::npos);
}

TEST_F(HelpProjectTest, Index_IsSortedAndNested_AndOffersPagesByTheirTitles) {
  const auto b = AddTopic("B", "b", "Second \"page\"");
  for (const auto* keyword : {"zebra", "apple", "Zoo|lion", "zoo|ape", "!F", "@A"}) b->AddKeyword(keyword);
  project->Topics->Item(1)->AddKeyword("apple");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  const auto entry = [](const std::string& indent, const std::string& parameters) {
    std::string text = indent + "<LI> <OBJECT type=\"text/sitemap\">\n";
    for (const auto line : Split(parameters, ';')) {
      const auto equals = line.find('=');
      text += indent + "\t<param name=\"" + std::string(line.substr(0, equals)) + "\" value=\"" +
              std::string(line.substr(equals + 1)) + "\">\n";
    }
    return text + indent + "\t</OBJECT>\n";
  };
  EXPECT_EQ(ReplaceAll(Part("demo.hhk", "<UL>", "</BODY>"), "&quot;", "'"),
            "<UL>\n" + entry("\t", "Name=apple;Name=First page;Local=A.html;Name=Second 'page';Local=B.html") +
                entry("\t", "Name=zebra;Name=Second 'page';Local=B.html") + entry("\t", "Name=Zoo") + "\t<UL>\n" +
                entry("\t\t", "Name=ape;Name=Second 'page';Local=B.html") +
                entry("\t\t", "Name=lion;Name=Second 'page';Local=B.html") + "\t</UL>\n</UL>\n</BODY>");
}

TEST_F(HelpProjectTest, Index_IsSortedAsTheLanguageDoes) {
  const auto topic = project->Topics->Item(1);
  for (const auto* keyword : {"å", "ö", "z", "o"}) topic->AddKeyword(keyword);
  const auto position = [this](const std::string& name) {
    return folder.Read("out/demo.hhk").find("\"Name\" value=\"" + name + "\"");
  };
  profile->SetLocaleID(1053);  // Swedish: o z å ö
  Compile();
  EXPECT_LT(position("z"), position("\xE5"));
  EXPECT_LT(position("\xE5"), position("\xF6"));
  profile->SetLocaleID(1031);  // German: å o ö z
  Compile();
  EXPECT_LT(position("\xE5"), position("o"));
  EXPECT_LT(position("\xF6"), position("z"));
}

TEST_F(HelpProjectTest, Texts_AreInTheCodePage_AndWhatItLacksIsTold) {
  profile->SetLocaleID(1049);
  project->SetTitle("Помощь 中");
  AddNode("Глава 中", "A.html");
  project->Topics->Item(1)->AddKeyword("ключ");
  EXPECT_EQ(Compile(), HelpCompileResult::Warnings);
  EXPECT_EQ(Option("Language"), "Language=0x419 Russian (Russia)");
  EXPECT_EQ(Option("Default Font"), "Default Font=Arial,8,204");
  EXPECT_EQ(Option("Title"), "Title=\xCF\xEE\xEC\xEE\xF9\xFC ?");
  EXPECT_NE(folder.Read("out/demo.hhc").find("value=\"\xC3\xEB\xE0\xE2\xE0 &#20013;\""), std::string::npos);
  EXPECT_NE(folder.Read("out/demo.hhk").find("value=\"\xEA\xEB\xFE\xF7\""), std::string::npos);
  const auto texts = Messages();
  EXPECT_EQ(texts.at(0),
            "Code page 1251 lacks characters of the contents, the first of them '中'; a character reference stands for "
            "each");
  EXPECT_EQ(texts.at(1), "Code page 1251 lacks characters of the title 'Помощь 中'; a question mark stands for each");
}

TEST_F(HelpProjectTest, WithoutLocale_TextsAreWesternEuropean) {
  project->Topics->Item(1)->AddKeyword("caf\u00E9");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Option("Language"), "Language=0x409 English (United States)");
  EXPECT_EQ(Option("Default Font"), "(none)");
  EXPECT_NE(folder.Read("out/demo.hhk").find("caf\xE9"), std::string::npos);
}

// What goes into the help.

TEST_F(HelpProjectTest, FileThatIsNotThere_IsLeftOut_AndTold) {
  AddFile("gone.png");
  fs::remove(folder.Native("project/gone.png"));
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Part("demo.hhp", "[FILES]", "html\n"), "[FILES]\nA.html\n");
  EXPECT_EQ(Messages(), std::vector<std::string>{"'gone.png' isn't in the output folder; the help is without it"});
}

TEST_F(HelpProjectTest, FileOutsideOfTheOutput_IsLeftOut_AndTold) {
  AddFile("../shared/logo.png");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Messages(),
            std::vector<std::string>{"'..\\shared\\logo.png' lies outside of the output folder; the help is without "
                                     "it"});
}

TEST_F(HelpProjectTest, ControlFileOfTheAuthor_IsNotWrittenOver) {
  AddNode("A", "A.html");
  const std::string own = "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Own\"></OBJECT></UL>";
  AddFile("demo.hhc", own);
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(folder.Read("out/demo.hhc"), own);
  EXPECT_EQ(CompiledHelp(folder.Native("help/demo.chm")).Contents().at(0).title, "Own");
}

TEST_F(HelpProjectTest, HelpFile_HoldsWhatTheProjectHolds) {
  SupportFile("style.css", "css");
  Layout("Topic.html",
         "<link rel=stylesheet href=style.css><title>%%topictitle%%</title>%%topicsection:name=bodytext%%");
  const auto book = AddNode("Book");
  AddNode("Page", "A.html", book);
  project->Topics->Item(1)->AddKeyword("animals|ape");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(log, "");
  const CompiledHelp help(folder.Native("help/demo.chm"));
  EXPECT_EQ(help.Title(), "Demo");
  EXPECT_EQ(help.DefaultTopic(), "A.html");
  EXPECT_TRUE(help.HasFullTextSearch());
  ASSERT_EQ(help.Contents().size(), 2U);
  EXPECT_EQ(help.Contents()[1].level, 1);
  EXPECT_EQ(help.Contents()[1].page, "A.html");
  ASSERT_EQ(help.Index().size(), 2U);
  EXPECT_EQ(help.Index()[1].keyword, "ape");
  EXPECT_EQ(help.Index()[1].targets.at(0).title, "First page");
  (void)help.Extract(folder.Native("extracted"));
  EXPECT_EQ(folder.Read("extracted/A.html"), folder.Read("out/A.html"));
  EXPECT_EQ(folder.Read("extracted/style.css"), "css");
}

TEST_F(HelpProjectTest, SecondBuild_GivesTheSameHelpFile) {
  AddNode("A", "A.html");
  Compile();
  const auto first = folder.Read("help/demo.chm");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded);
  EXPECT_EQ(folder.Read("help/demo.chm"), first);
}

TEST_F(HelpProjectTest, RemovedSources_LeaveTheHelpFile) {
  profile->SetRemoveOutputFiles(true);
  AddNode("A", "A.html");
  project->Topics->Item(1)->AddKeyword("key");
  AddFile("own.txt");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(Output("help"), "demo.chm");
  EXPECT_EQ(CompiledHelp(folder.Native("help/demo.chm")).Contents().size(), 1U);
}

TEST_F(HelpProjectTest, FailedCompilation_LeavesTheOldHelpFile_AndIsToldAsErrors) {
  folder.Write("help/demo.chm", "old");
  AddFile("demo.hhp", "[OPTIONS]\r\nTitle=x\r\n[FILES]\r\nnowhere.html\r\n");
  EXPECT_EQ(Compile(), HelpCompileResult::Failed);
  EXPECT_EQ(folder.Read("help/demo.chm"), "old");
  EXPECT_NE(log.find("error HC3003"), std::string::npos) << log;
  ASSERT_FALSE(messages.empty());
  EXPECT_EQ(messages.back().buttons, static_cast<std::int32_t>(BuildMessageLevel::bmError));
}

TEST_F(HelpProjectTest, CancelDuringTheCompilation_LeavesTheOldHelpFile) {
  folder.Write("help/demo.chm", "old");
  onHost = [&](MVProject& changed) {
    connections.push_back(changed.ProgressChanged.Connect([&](std::string_view stage, std::string_view message) {
      if (stage == "compiling" && message == "Compiling the help file: 1 of 2 files") project->CancelBuild();
    }));
  };
  AddTopic("B");
  const auto result = Build();
  ASSERT_TRUE(result);
  EXPECT_TRUE(result->Cancelled);
  EXPECT_EQ(folder.Read("help/demo.chm"), "old");
  EXPECT_EQ(Output("help"), "demo.chm");
}

// Microsoft Help 2.

TEST_F(HelpProjectTest, Help2_WritesProjectAndDeliveredFiles) {
  UseHelp2();
  profile->SetH2PlugIn("ms.one, ms.two");
  project->SetTitle("Demo & more 100%");
  profile->SetDefaultTopic(project->Topics->Item(1));
  const auto book = AddNode("Book \"1\"");
  AddNode("", "A.html", book);
  const auto topic = project->Topics->Item(1);
  for (const auto* keyword : {"animals|ape", "key", "!F1.id", "@related"}) topic->AddKeyword(keyword);
  AddFile("img/a&b.png");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Output(),
            "A.html,COL_demo.hxc,COL_demo.hxt,COL_demo_A.hxk,COL_demo_F.hxk,COL_demo_K.hxk,demo.hxc,demo.hxf,demo.hxt,"
            "demo_A.hxk,demo_F.hxk,demo_K.hxk,demo_N.hxk,img/a&b.png,registerhelp2.bat,unregisterhelp2.bat");
  EXPECT_EQ(Part("demo.hxt", "<HelpTOC ", "</HelpTOC>"),
            "<HelpTOC DTDVersion=\"1.0\" LangId=\"1033\">\n  <HelpTOCNode Title=\"Book &quot;1&quot;\">\n"
            "    <HelpTOCNode Url=\"A.html\"/>\n  </HelpTOCNode>\n</HelpTOC>");
  EXPECT_EQ(Part("demo.hxf", "<HelpFileList ", "</HelpFileList>"),
            "<HelpFileList DTDVersion=\"1.0\">\n  <File Url=\"A.html\"/>\n  <File Url=\"img\\a&amp;b.png\"/>\n"
            "</HelpFileList>");
  EXPECT_EQ(Part("demo_K.hxk", "<HelpIndex ", "</HelpIndex>"),
            "<HelpIndex Name=\"K\" DTDVersion=\"1.0\" LangId=\"1033\" Visible=\"Yes\" AutoInclude=\"Yes\">\n"
            "  <Keyword Term=\"animals, ape\">\n    <Jump Url=\"A.html\"/>\n  </Keyword>\n"
            "  <Keyword Term=\"key\">\n    <Jump Url=\"A.html\"/>\n  </Keyword>\n</HelpIndex>");
  EXPECT_EQ(Part("demo_F.hxk", "<Keyword ", ">"), "<Keyword Term=\"F1.id\">");
  EXPECT_EQ(Part("demo_A.hxk", "<Keyword ", ">"), "<Keyword Term=\"related\">");
  EXPECT_EQ(Part("demo_N.hxk", "<Keyword ", "</Keyword>"),
            "<Keyword Term=\"DefaultPage\">\n    <Jump Url=\"A.html\"/>\n  </Keyword>");
  EXPECT_EQ(Part("demo.hxc", "<!DOCTYPE", "<TOCDef"),
            "<!DOCTYPE HelpCollection SYSTEM \"MS-Help://Hx/Resources/HelpCollection.dtd\">\n"
            "<HelpCollection DTDVersion=\"1.0\" FileVersion=\"1.0.0.0\" LangId=\"1033\" Title=\"Demo &amp; more "
            "100%\">\n  <CompilerOptions OutputFile=\"../help/demo.hxs\" CreateFullTextIndex=\"Yes\" "
            "CompileResult=\"Hxs\">\n    <IncludeFile File=\"demo.hxf\"/>\n  </CompilerOptions>\n  <TOCDef");
  EXPECT_EQ(Part("COL_demo.hxc", "<!DOCTYPE", "TOCDef File=\"COL_demo.hxt\""),
            "<!DOCTYPE HelpCollection>\n<HelpCollection DTDVersion=\"1.0\" FileVersion=\"1.0.0.0\" LangId=\"1033\" "
            "Title=\"Demo &amp; more 100%\">\n  <TOCDef File=\"COL_demo.hxt\"");
  EXPECT_EQ(Part("COL_demo.hxt", "<HelpTOCNode", ">"), "<HelpTOCNode NodeType=\"TOC\" Url=\"demo\"/>");
  const auto scripts = folder.Read("out/registerhelp2.bat") + folder.Read("out/unregisterhelp2.bat");
  for (const auto* line :
       {"\"%HXREG%\" /R /N /Namespace:Demo.Help /Description:\"Demo & more 100%%\" /Collection:\"COL_demo.hxc\"\r\n",
        "\"%HXREG%\" /R /T /namespace:Demo.Help /id:demo /langid:1033 /helpfile:\"demo.hxs\"\r\n",
        "\"%HXREG%\" /R /P /productnamespace:ms.two /producthxt:_DEFAULT /namespace:Demo.Help /hxt:_DEFAULT\r\n",
        "\"%HXREG%\" /U /P /productnamespace:ms.one /producthxt:_DEFAULT /namespace:Demo.Help /hxt:_DEFAULT\r\n",
        "\"%HXREG%\" /U /T /namespace:Demo.Help /id:demo /langid:1033\r\n\"%HXREG%\" /U /N /Namespace:Demo.Help\r\n"})
    EXPECT_NE(scripts.find(line), std::string::npos) << line << scripts;
}

TEST_F(HelpProjectTest, Help2_FilesAreXml) {
  UseHelp2();
  AddNode("A & \"B\" < 'C'", "A.html?x=1&y=2");
  project->Topics->Item(1)->AddKeyword("R&D <x>");
  profile->SetDefaultTopic(project->Topics->Item(1));
  Compile();
  std::size_t checked = 0;
  for (const auto& entry : fs::directory_iterator(folder.Native("out"))) {
    if (!entry.path().extension().string().starts_with(".hx")) continue;
    const auto check = XMLDocument::Check(folder.Read("out/" + entry.path().filename().string()));
    EXPECT_TRUE(check) << entry.path() << ": " << check.message;
    ++checked;
  }
  EXPECT_EQ(checked, 12U);
}

TEST_F(HelpProjectTest, Help2_DeliveredFilesGoWithTheHelpFile_WhenSourcesAreRemoved) {
  UseHelp2();
  profile->SetRemoveOutputFiles(true);
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(Output("help"),
            "COL_demo.hxc,COL_demo.hxt,COL_demo_A.hxk,COL_demo_F.hxk,COL_demo_K.hxk,demo.hxs,registerhelp2.bat,"
            "unregisterhelp2.bat");
}

TEST_F(HelpProjectTest, Help2_ScriptsAreInTheCodePage) {
  UseHelp2();
  profile->SetLocaleID(1049);
  project->SetTitle("Помощь");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_NE(folder.Read("out/registerhelp2.bat").find("\"\xCF\xEE\xEC\xEE\xF9\xFC\""), std::string::npos);
  EXPECT_EQ(Part("demo.hxc", " LangId", " Title=\"Помощь\""), " LangId=\"1049\" Title=\"Помощь\"");
}

TEST_F(HelpProjectTest, Help2_EmptyContents_HaveTheEntryThatTheGrammarWants) {
  UseHelp2();
  profile->SetDefaultTopic(project->Topics->Item(1));
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Part("demo.hxt", "<HelpTOCNode", ">"), "<HelpTOCNode Title=\"Demo\" Url=\"A.html\"/>");
}

TEST_F(HelpProjectTest, Help2_NameThatCannotBeRegistered_IsTold) {
  UseHelp2();
  profile->SetH2Namespace("My help");
  Compile();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].message.starts_with("'My help' can't be registered"));
}

TEST_F(HelpProjectTest, DeepContentsAndKeywords_NeedNoDeepStack) {
  std::string keyword = "a";
  auto node = AddNode("top");
  constexpr int depth = 20000;
  for (int i = 0; i < depth; ++i) {
    keyword += "|a";
    const auto child = New<QBNode>();
    child->SetQBNodes(node->ChildNodes);
    node->ChildNodes->Add(child);
    node = child;
  }
  project->Topics->Item(1)->AddKeyword(keyword + "|last");
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(CompiledHelp(folder.Native("help/demo.chm")).Contents().size(), depth + 1U);
  // Keywords below the deepest level that an index shows stand on that one.
  EXPECT_EQ(Part("demo.hhk", "\"last\"", "</BODY>").find("A.html") != std::string::npos, true);
  UseHelp2();
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded) << log;
  EXPECT_EQ(Part("demo_K.hxk", "<Keyword", ">"),
            "<Keyword Term=\"a, a, a, a, a, a, a, a, a, a, a, a, a, a, a, a, a, a, a, last\">");
}

// A compiler that is a program.

class ExternalCompilerTest : public HelpProjectTest {
 protected:
  /// Runs a shell script as the compiler; it stands in the folder of the help project and has its name as $1.
  Ref<BuildResult> BuildWith(const std::string& script) {
    folder.Write("compiler.exe", "#!/bin/sh\n" + script);
    chmod(folder.Native("compiler.exe").c_str(), 0755);
    return BuildWithProgram();
  }
  Ref<BuildResult> BuildWithProgram() {
    InstallTemplate();
    auto result = project->Build(folder.Stored("compiler.exe"), false, profile, false, false);
    outcome = static_cast<HelpCompileResult>(result->HelpCompileResult);
    return result;
  }
  HelpCompileResult outcome = HelpCompileResult::None;
};

TEST_F(ExternalCompilerTest, IsJudgedByItsHelpFile_NotByItsExitCode) {
  const auto result = BuildWith("cat $1 > ../help/demo.chm; echo Done; exit 1\n");
  EXPECT_EQ(outcome, HelpCompileResult::Succeeded);
  EXPECT_EQ(result->CompilerLog, "");
  EXPECT_EQ(folder.Read("help/demo.chm"), folder.Read("out/demo.hhp"));
  BuildWith("exit 0\n");
  EXPECT_EQ(outcome, HelpCompileResult::Failed);
}

TEST_F(ExternalCompilerTest, WarningsOfItsLog_AreTold) {
  const auto result = BuildWith("echo x > ../help/demo.chm; echo 'HHC5010: Warning: odd page'; echo fine >&2\n");
  EXPECT_EQ(outcome, HelpCompileResult::Warnings);
  EXPECT_EQ(result->CompilerLog, "HHC5010: Warning: odd page\r\nfine\r\n");
  EXPECT_EQ(Messages(), std::vector<std::string>{"HHC5010: Warning: odd page"});
}

TEST_F(ExternalCompilerTest, OldHelpFileComesBack_WhereNoneIsMade) {
  folder.Write("help/demo.chm", "old");
  const auto result = BuildWith("echo 'Error: no page'; : > ../help/demo.chm\n");
  EXPECT_EQ(outcome, HelpCompileResult::Failed);
  EXPECT_EQ(folder.Read("help/demo.chm"), "old");
  EXPECT_EQ(Output("help"), "demo.chm");
  EXPECT_EQ(messages.at(0).message, "Error: no page");
  EXPECT_EQ(messages.at(0).buttons, static_cast<std::int32_t>(BuildMessageLevel::bmError));
  EXPECT_EQ(messages.at(1).message,
            "The help compiler " + folder.Native("compiler.exe").string() + " made no help file");
}

TEST_F(ExternalCompilerTest, OldHelpFileThatWasLeftAlone_IsNoNewOne) {
  folder.Write("help/demo.chm", "old");
  BuildWith("exit 1\n");
  EXPECT_EQ(outcome, HelpCompileResult::Failed);
  EXPECT_EQ(folder.Read("help/demo.chm"), "old");
}

TEST_F(ExternalCompilerTest, MissingProgram_IsTold) {
  BuildWithProgram();
  EXPECT_EQ(outcome, HelpCompileResult::Failed);
  EXPECT_EQ(Messages(),
            std::vector<std::string>{"There is no help compiler " + folder.Native("compiler.exe").string()});
}

TEST_F(ExternalCompilerTest, ProgramOfAnotherSystem_IsTold_WithAWayOut) {
  folder.Write("compiler.exe", "MZ not of this system");
  chmod(folder.Native("compiler.exe").c_str(), 0755);
  BuildWithProgram();
  EXPECT_EQ(outcome, HelpCompileResult::Failed);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_NE(messages[0].message.find("no program that this system can run"), std::string::npos);
  EXPECT_NE(messages[0].message.find("Quillbook compiles itself"), std::string::npos);
}

TEST_F(ExternalCompilerTest, CompilerThatTheUserChose_IsRun) {
  folder.Write("tools/hhc.exe", "#!/bin/sh\necho chosen > ../help/demo.chm\n");
  chmod(folder.Native("tools/hhc.exe").c_str(), 0755);
  Platform::Current().Registry().SetValue(RegistryHive::CurrentUser, "Software\\Corvane\\Quillbook2", "HHCPath",
                                          folder.Stored("tools/hhc.exe"));
  EXPECT_EQ(Compile(), HelpCompileResult::Succeeded);
  EXPECT_EQ(folder.Read("help/demo.chm"), "chosen\n");
}

TEST_F(ExternalCompilerTest, Help2_IsAlwaysCompiledHere) {
  UseHelp2();
  BuildWith("echo x > ../help/demo.hxs\n");
  EXPECT_EQ(outcome, HelpCompileResult::Succeeded);
  EXPECT_GT(fs::file_size(folder.Native("help/demo.hxs")), 1000U);
}

TEST_F(ExternalCompilerTest, CancelStopsIt_AndLeavesTheOldHelpFile) {
  folder.Write("help/demo.chm", "old");
  int asked = 0;
  onHost = [&](MVProject& changed) {
    connections.push_back(changed.ProgressChanged.Connect([&](std::string_view stage, std::string_view) {
      if (stage == "compiling" && ++asked == 3) project->CancelBuild();
    }));
  };
  const auto result = BuildWith("echo half > ../help/demo.chm\nexec sleep 60\n");
  EXPECT_TRUE(result->Cancelled);
  EXPECT_EQ(folder.Read("help/demo.chm"), "old");
}

}  // namespace
}  // namespace quillbook
