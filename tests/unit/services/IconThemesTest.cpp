#include "frame/services/IconThemes.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace quillbook::detail {
namespace {

class IconThemesTest : public testing::Test {
 protected:
  /// A theme with folders such as "16: Size=16,Type=Fixed".
  void AddTheme(const support::TemporaryFolder& data, const std::string& name, const std::string& parents,
                const std::vector<std::pair<std::string, std::string>>& folders) const {
    std::string list, groups;
    for (const auto& [folder, keys] : folders) {
      list += (list.empty() ? "" : ",") + folder;
      groups += "\n[" + folder + "]\n" + keys + "\n";
    }
    data.Write("icons/" + name + "/index.theme",
               "[Icon Theme]\nName=x\nInherits=" + parents + "\nDirectories=" + list + "\n" + groups);
  }
  std::string Find(const std::string& theme, const std::vector<std::string>& names, int size) const {
    const auto path = IconThemes({own.Path(), shared.Path()}, theme).Find(names, size);
    const auto& root = path.starts_with(own.Path()) ? own.Path() : shared.Path();
    return path.empty() ? path : path.substr(root.size() + std::string("/icons/").size());
  }

  support::TemporaryFolder own, shared;
};

TEST_F(IconThemesTest, TheSizeThatFits_IsTaken) {
  AddTheme(shared, "t", "", {{"32", "Size=32"}, {"16", "Size=16"}, {"256", "Size=256"}});
  for (const char* file : {"icons/t/16/a.png", "icons/t/32/a.png", "icons/t/256/a.png", "icons/t/256/b.png"})
    shared.Write(file, "");
  EXPECT_EQ(Find("t", {"a"}, 16), "t/16/a.png");
  EXPECT_EQ(Find("t", {"a"}, 32), "t/32/a.png");
  EXPECT_EQ(Find("t", {"a"}, 18), "t/16/a.png") << "within the threshold";
  EXPECT_EQ(Find("t", {"a"}, 100), "t/32/a.png") << "the nearest";
  EXPECT_EQ(Find("t", {"b"}, 16), "t/256/b.png");
  EXPECT_EQ(Find("t", {"c"}, 16), "");
}

TEST_F(IconThemesTest, FixedFoldersFitOneSizeOnly_ScalableOnesARange) {
  AddTheme(shared, "t", "",
           {{"fixed", "Size=17\nType=Fixed"}, {"scalable", "Size=48\nType=Scalable\nMinSize=8\nMaxSize=64"}});
  shared.Write("icons/t/fixed/a.png", "");
  shared.Write("icons/t/scalable/a.svg", "");
  EXPECT_EQ(Find("t", {"a"}, 16), "t/scalable/a.svg");
  EXPECT_EQ(Find("t", {"a"}, 17), "t/fixed/a.png");
  EXPECT_EQ(Find("t", {"a"}, 70), "t/scalable/a.svg");
}

TEST_F(IconThemesTest, FoldersForScreensOfDoubleDensity_DontCount) {
  AddTheme(shared, "t", "", {{"16@2", "Size=16\nScale=2"}, {"16", "Size=16"}});
  shared.Write("icons/t/16@2/a.png", "");
  EXPECT_EQ(Find("t", {"a"}, 16), "");
}

TEST_F(IconThemesTest, PngGoesBeforeSvg) {
  AddTheme(shared, "t", "", {{"16", "Size=16"}});
  shared.Write("icons/t/16/a.svg", "");
  shared.Write("icons/t/16/a.xpm", "");
  EXPECT_EQ(Find("t", {"a"}, 16), "t/16/a.svg");
  shared.Write("icons/t/16/a.png", "");
  EXPECT_EQ(Find("t", {"a"}, 16), "t/16/a.png");
}

TEST_F(IconThemesTest, TheFirstNameThatAThemeHas_GoesBeforeItsParents) {
  AddTheme(shared, "t", "parent", {{"16", "Size=16"}});
  AddTheme(shared, "parent", "", {{"16", "Size=16"}});
  shared.Write("icons/t/16/generic.png", "");
  shared.Write("icons/parent/16/exact.png", "");
  EXPECT_EQ(Find("t", {"exact", "generic"}, 16), "t/16/generic.png");
  EXPECT_EQ(Find("t", {"exact", "other"}, 16), "parent/16/exact.png");
}

TEST_F(IconThemesTest, Parents_AreAskedInDepthFirst_AndHicolorLast) {
  AddTheme(shared, "t", "one, two,hicolor", {});
  AddTheme(shared, "one", "hicolor,deep", {{"16", "Size=16"}});
  for (const char* name : {"deep", "two", "hicolor"}) {
    AddTheme(shared, name, "", {{"16", "Size=16"}});
    shared.Write("icons/" + std::string(name) + "/16/a.png", "");
  }
  EXPECT_EQ(Find("t", {"a"}, 16), "deep/16/a.png");
  std::filesystem::remove(shared.Native("icons/deep/16/a.png"));
  EXPECT_EQ(Find("t", {"a"}, 16), "two/16/a.png");
  std::filesystem::remove(shared.Native("icons/two/16/a.png"));
  EXPECT_EQ(Find("t", {"a"}, 16), "hicolor/16/a.png");
}

TEST_F(IconThemesTest, ThemesThatInheritFromEachOther_ComeToAnEnd) {
  AddTheme(shared, "t", "u,t", {{"16", "Size=16"}});
  AddTheme(shared, "u", "t", {{"16", "Size=16"}});
  shared.Write("icons/u/16/a.png", "");
  EXPECT_EQ(Find("t", {"a"}, 16), "u/16/a.png");
  EXPECT_EQ(Find("t", {"b"}, 16), "");
}

TEST_F(IconThemesTest, TheUsersIcons_GoBeforeThoseOfTheSameTheme) {
  AddTheme(shared, "t", "", {{"16", "Size=16"}});
  shared.Write("icons/t/16/a.png", "");
  shared.Write("icons/t/16/b.png", "");
  own.Write("icons/t/16/a.png", "");
  const IconThemes themes({own.Path(), shared.Path()}, "t");
  EXPECT_EQ(themes.Find({"a"}, 16), own / "icons/t/16/a.png");
  EXPECT_EQ(themes.Find({"b"}, 16), shared / "icons/t/16/b.png");
}

TEST_F(IconThemesTest, AThemeThatIsntThere_LeavesHicolor) {
  AddTheme(shared, "hicolor", "", {{"16", "Size=16"}});
  shared.Write("icons/hicolor/16/a.png", "");
  EXPECT_EQ(Find("missing", {"a"}, 16), "hicolor/16/a.png");
  EXPECT_EQ(Find("", {"a"}, 16), "hicolor/16/a.png");
}

TEST_F(IconThemesTest, BrokenFolders_ArePassedOver) {
  AddTheme(shared, "t", "", {{"none", "Type=Fixed"}, {"bad", "Size=x"}, {"16", "Size=16"}});
  for (const char* folder : {"none", "bad"}) shared.Write("icons/t/" + std::string(folder) + "/a.png", "");
  EXPECT_EQ(Find("t", {"a"}, 16), "");
}

}  // namespace
}  // namespace quillbook::detail
