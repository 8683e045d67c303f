#include "generation/GenerationTest.h"
#include "quillbook/host/Keywords.h"

namespace quillbook {
namespace {

class IndexEntryTest : public support::GenerationTest {
 protected:
  std::string Output(const Ref<Keyword>& keyword) {
    const auto file = New<FileSystemObject>(folder.Stored("index.txt"));
    file->Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockShared, 32767);
    items->OutputIndexEntry(*file, "ENTRY", keyword, Kind(":keyword"), project, *provider);
    file->Close();
    return folder.Read("index.txt");
  }
};

TEST_F(IndexEntryTest, EntryScrapsAreParsed_HeaderAndFooterAreNot) {
  Scrap("ENTRY", "+%%itemtitle%%");
  Scrap("ENTRY_NO_JUMPS", "-%%itemtitle%%");
  Scrap("ENTRY_HEADER", "[%%itemtitle%%");
  Scrap("ENTRY_FOOTER", "%%itemtitle%%]");
  SetUpHost();
  const auto keywords = New<Keywords>();
  keywords->AddSubKeyword("a,b", "1.html");
  keywords->AddSubKeyword("a,c,d", "2.html");
  EXPECT_EQ(Output(keywords->Items()->Item(1)),
            "-a\n[%%itemtitle%%\n+b\n-c\n[%%itemtitle%%\n+d\n%%itemtitle%%]\n%%itemtitle%%]\n");
}

}  // namespace
}  // namespace quillbook
