// Compiled help whose tables lie: everything ends, stays small, and is told.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/compile/Bytes.h"
#include "host/compile/ChmTables.h"
#include "host/compile/HelpOutput.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/host/CompiledHelp.h"
#include "support/TemporaryFolder.h"

namespace quillbook::compile {
namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

/// A record of #TOCIDX.
std::string Record(std::uint32_t flags, std::uint32_t reference, std::uint32_t next, std::uint32_t child = 0) {
  std::string record;
  for (const auto value : {0U, flags, reference, 0U, next, child, 0U}) PutDword(record, value);
  return record;
}

/// The first record stands behind the four numbers of a short header.
std::string Contents(const std::string& records) {
  std::string stream;
  for (const auto value : {16U, 0U, 0U, 0U}) PutDword(stream, value);
  return stream + records;
}

constexpr std::uint32_t Book = 0x4;

class HostileHelp : public testing::Test {
 protected:
  std::string Pack(const Files& files) {
    const auto path = mFolder / "made.chm";
    HelpOutput output(path);
    for (const auto& [name, bytes] : files) output.AddFile(name, bytes);
    output.Finish(StorageReader::Format::HtmlHelp1, 0, 0x409);
    output.Publish();
    return path;
  }
  static bool Tells(const CompiledHelp& help, std::string_view part) {
    return std::any_of(help.Problems().begin(), help.Problems().end(),
                       [&](const std::string& problem) { return problem.find(part) != std::string::npos; });
  }
  /// The tables of a made file, which may take so much memory.
  ChmTables& Tables(const Files& files, std::uint64_t mostMemory) {
    mSource = std::make_unique<FileSource>(Pack(files));
    mReader = std::make_unique<StorageReader>(*mSource);
    mTables = std::make_unique<ChmTables>(*mReader, 1252, mostMemory);
    return *mTables;
  }

  support::TemporaryFolder mFolder;
  std::unique_ptr<FileSource> mSource;
  std::unique_ptr<StorageReader> mReader;
  std::unique_ptr<ChmTables> mTables;
};

TEST_F(HostileHelp, ContentsThatRunInACircle_EndWithAProblem) {
  const CompiledHelp next(Pack({{"/#TOCIDX", Contents(Record(0, 0, 16))}}));
  EXPECT_EQ(next.Contents().size(), 1u);
  EXPECT_TRUE(Tells(next, "leads nowhere or back"));
  const CompiledHelp child(Pack({{"/#TOCIDX", Contents(Record(Book, 0, 44, 44) + Record(Book, 0, 16, 16))}}));
  EXPECT_EQ(child.Contents().size(), 2u);
  EXPECT_TRUE(Tells(child, "leads nowhere or back"));
}

TEST_F(HostileHelp, ContentsThatLeadOutside_EndWithAProblem) {
  for (const auto next : {30U, 44U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    const CompiledHelp help(Pack({{"/#TOCIDX", Contents(Record(0, 0xFFFFFFF0, next))}}));
    EXPECT_EQ(help.Contents().size(), 1u);
    EXPECT_TRUE(Tells(help, "leads nowhere or back")) << next;
  }
}

TEST_F(HostileHelp, IndexWhoseBlocksRunInACircle_EndsWithAProblem) {
  std::string tree(0x4C + 2 * 2048, '\0');
  SetLittleEndian<2>(tree, 4, 2048);
  SetLittleEndian<4>(tree, 0x1A, 1);
  SetLittleEndian<4>(tree, 0x4C + 4, 1);
  SetLittleEndian<4>(tree, 0x4C + 2048 + 4, 0);
  const CompiledHelp help(Pack({{"/$WWKeywordLinks/BTree", tree}}));
  EXPECT_TRUE(help.Index().empty());
  EXPECT_TRUE(Tells(help, "linked wrongly"));
}

TEST_F(HostileHelp, IndexWithImpossibleCounts_EndsWithAProblem) {
  for (const auto blockSize : {0U, 1U, 63U, 2048U, 0xFFFFU}) {
    std::string tree(0x4C + 2048, '\xFF');
    SetLittleEndian<2>(tree, 4, blockSize);
    SetLittleEndian<4>(tree, 0x1A, 0);
    const CompiledHelp help(Pack({{"/$WWKeywordLinks/BTree", tree}}));
    EXPECT_TRUE(help.Index().empty());
    EXPECT_TRUE(Tells(help, "binary index")) << blockSize;
  }
}

TEST_F(HostileHelp, LongTextThatManyEntriesName_TakesNoMoreMemoryThanAllowed) {
  constexpr std::size_t entries = 10'000;
  constexpr std::uint64_t allowed = 2U << 20;
  std::string records;
  for (std::size_t i = 1; i <= entries; ++i) records += Record(0, 1, static_cast<std::uint32_t>(16 + i * 28));
  auto& tables = Tables({{"/#TOCIDX", Contents(records)}, {"/#STRINGS", std::string(1U << 20, 'x')}}, allowed);
  std::size_t taken = 0;
  for (const auto& entry : tables.ReadContents().entries) taken += entry.name.size();
  EXPECT_GT(taken, allowed / 2);
  EXPECT_LE(taken, allowed + 0x4000);
  EXPECT_TRUE(tables.IsExhausted());
  ASSERT_EQ(tables.Problems().size(), 1u);
  EXPECT_NE(tables.Problems()[0].find("longer than they can honestly be"), std::string::npos);
}

TEST_F(HostileHelp, KeywordsWithMoreTargetsThanMemory_AreCutOff) {
  std::string block(2048, '\0');
  SetLittleEndian<2>(block, 2, 1);
  SetLittleEndian<4>(block, 12 + 2 + 12, 400);
  std::string tree(0x4C, '\0');
  SetLittleEndian<2>(tree, 4, 2048);
  constexpr std::uint32_t blocks = 200;
  SetLittleEndian<4>(tree, 0x1A, blocks - 1);
  for (std::uint32_t i = 0; i < blocks; ++i) {
    SetLittleEndian<4>(block, 4, i - 1);
    tree += block;
  }
  const Files files{{"/$WWKeywordLinks/BTree", tree}};
  EXPECT_EQ(Tables(files, 1U << 30).ReadKeywords("/$WWKeywordLinks/").size(), blocks);
  auto& tables = Tables(files, 100'000);
  const auto lines = tables.ReadKeywords("/$WWKeywordLinks/");
  EXPECT_GT(lines.size(), 20u);
  EXPECT_LT(lines.size(), 100u);
  EXPECT_EQ(tables.Problems().size(), 1u);
}

TEST_F(HostileHelp, RecordsOfTheSystemTableThatLie_AreTakenAsFarAsTheyGo) {
  std::string system;
  PutDword(system, 3);
  for (const auto value : {3U, 0xFFFFU}) PutWord(system, value);
  const CompiledHelp help(Pack({{"/#SYSTEM", system + "Title"}}));
  EXPECT_EQ(help.Title(), "Title");
  EXPECT_TRUE(help.Files().at(0).isTable);
}

TEST_F(HostileHelp, FileLongerThanTheContainer_IsOneClearFailure) {
  const auto path = Pack({{"/a", std::string(1000, 'x')}});
  auto bytes = mFolder.Read("made.chm");
  const std::string honest("\x02/a\x01\x00\x87\x68", 7);
  const auto at = bytes.find(honest);
  ASSERT_NE(at, std::string::npos);
  bytes.replace(at, honest.size(), std::string("\x02/a\x01\x00\xFF\x7F", 7));
  mFolder.Write("made.chm", bytes);
  const CompiledHelp help(path);
  EXPECT_EQ(help.Files().at(0).size, 0x3FFFu);
  try {
    (void)help.Extract(mFolder / "x");
    FAIL() << "a file that isn't there was extracted";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::InvalidCall);
    EXPECT_NE(failure.Description().find("damaged"), std::string::npos) << failure.Description();
  }
}

TEST_F(HostileHelp, PagesThatContentsNameButThatArentThere_AreProblems) {
  std::string system;
  PutDword(system, 3);
  const auto record = [&](unsigned code, const std::string& text) {
    PutWord(system, code);
    PutWord(system, text.size() + 1);
    system += text + '\0';
  };
  record(0, "t.hhc");
  record(1, "gone.hhk");
  record(2, "no/start.htm");
  const std::string contents = "<UL><LI><OBJECT type=\"text/sitemap\"><param name=Local value=\"none.htm#x\"></OBJECT>";
  const CompiledHelp help(Pack({{"/#SYSTEM", system}, {"/t.hhc", contents}}));
  EXPECT_EQ(help.Problems(), (std::vector<std::string>{
                                 "there is no 'gone.hhk', though it is named",
                                 "there is no page 'no/start.htm', though contents or index name it",
                                 "there is no page 'none.htm', though contents or index name it",
                             }));
}

TEST_F(HostileHelp, FileWithoutSystemTable_SaysSo) {
  EXPECT_TRUE(Tells(CompiledHelp(Pack({{"/a", "x"}})), "there is no #SYSTEM"));
}

TEST_F(HostileHelp, NameThatOccursTwice_IsAProblem) {
  EXPECT_TRUE(Tells(CompiledHelp(Pack({{"/a", "x"}, {"/A", "y"}})), "occurs more than once"));
}

}  // namespace
}  // namespace quillbook::compile
