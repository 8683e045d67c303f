#include "platform/RegistryText.h"

#include <gtest/gtest.h>

#include <random>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "support/FailureOf.h"

namespace quillbook {
namespace {

constexpr auto text = RegistryStore::Type::Text;
constexpr auto number = RegistryStore::Type::Number;
constexpr std::string_view key = "HKEY_CURRENT_USER\\Software\\Corvane";

TEST(RegistryText, ReadsTheFormsOfAnExport) {
  const RegistryText file(
      "Windows Registry Editor Version 5.00\r\n\r\n"
      "[HKEY_CURRENT_USER\\Software\\Corvane]\r\n"
      "@=\"the default\"\r\n"
      "\"Path\"=\"C:\\\\Help \\\"one\\\"\"\r\n"
      "\"Count\"=dword:0000001f\r\n"
      "\"Text\"=hex(1):61,00,e4,00,00,00\r\n"
      "\"Expand\"=hex(2):61,00,\\\r\n"
      "  62,00,00,00\r\n"
      "\"Binary\"=hex:01,02\r\n"
      "\"Gone\"=-\r\n");
  EXPECT_EQ(file.GetValue(key, ""), "the default");
  EXPECT_EQ(file.GetValue(key, "Path"), "C:\\Help \"one\"");
  EXPECT_EQ(file.GetValue(key, "Count"), "31");
  EXPECT_EQ(file.GetValue(key, "Text"), "aä");
  EXPECT_EQ(file.GetValue(key, "Expand"), "ab");
  EXPECT_EQ(file.GetValue(key, "Binary"), std::nullopt);
  EXPECT_EQ(file.GetValue(key, "Gone"), std::nullopt);
  EXPECT_EQ(file.GetValue(key, "Missing"), std::nullopt);
}

TEST(RegistryText, NamesIgnoreCase) {
  RegistryText file("[hkey_current_user\\SOFTWARE\\corvane]\n\"größe\"=\"1\"\n");
  EXPECT_EQ(file.GetValue(key, "GRÖSSE"), std::nullopt);
  EXPECT_EQ(file.GetValue(key, "GRÖßE"), "1");
  EXPECT_TRUE(file.HasKey("HKEY_Current_User\\Software\\Corvane\\"));
  EXPECT_TRUE(file.SetValue(key, "GRÖßE", "2", text));
  EXPECT_EQ(file.GetValue(key, "größe"), "2");
  EXPECT_EQ(Split(file.Text(), '\n').size(), 3U);
}

TEST(RegistryText, LaterValueCounts) {
  RegistryText file(
      "[HKEY_CURRENT_USER\\Software\\Corvane]\n\"a\"=\"1\"\n[other]\n[HKEY_CURRENT_USER\\Software\\Corvane]\n\"A\"="
      "\"2\"\n");
  EXPECT_EQ(file.GetValue(key, "a"), "2");
  file.SetValue(key, "a", "3", text);
  EXPECT_EQ(file.GetValue(key, "a"), "3");
}

TEST(RegistryText, NewFileHasHeadingKeyAndValue) {
  RegistryText file("");
  file.SetValue(key, "Name", "va\\l\"ue", text);
  file.SetValue(key, "Number", "4294967295", number);
  file.SetValue(key, "", "default", text);
  EXPECT_EQ(file.Text(),
            "Windows Registry Editor Version 5.00\n\n"
            "[HKEY_CURRENT_USER\\Software\\Corvane]\n"
            "\"Name\"=\"va\\\\l\\\"ue\"\n"
            "\"Number\"=dword:ffffffff\n"
            "@=\"default\"\n");
}

TEST(RegistryText, ChangeKeepsAllOtherLines) {
  const std::string before =
      "; made by hand\n"
      "[HKEY_CURRENT_USER\\Software\\Corvane]\n"
      "\"a\"=\"1\"\n"
      "\"b\"=hex(7):41,00,\\\n  00,00\n"
      "what is this\n"
      "\"broken\"=\"no end\n"
      "\n"
      "[HKEY_CURRENT_USER\\Software\\Other]\n"
      "\"a\"=\"other\"\n";
  RegistryText file(before);
  EXPECT_EQ(file.Text(), before);
  file.SetValue(key, "a", "2", text);
  file.SetValue(key, "new", "n", text);
  auto expected = ReplaceAll(before, "\"a\"=\"1\"", "\"a\"=\"2\"");
  expected = ReplaceAll(expected, "no end\n", "no end\n\"new\"=\"n\"\n");
  EXPECT_EQ(file.Text(), expected);
}

TEST(RegistryText, UnchangedValueIsNoChange) {
  RegistryText file("");
  EXPECT_TRUE(file.SetValue(key, "a", "1", text));
  EXPECT_FALSE(file.SetValue(key, "a", "1", text));
  EXPECT_FALSE(file.CreateKey(key));
}

TEST(RegistryText, KeepsLineEndsOfTheFile) {
  RegistryText file("[HKEY_CURRENT_USER\\Software\\Corvane]\r\n\"a\"=\"1\"\r\n");
  file.SetValue(key, "b", "2", text);
  EXPECT_EQ(file.Text(), "[HKEY_CURRENT_USER\\Software\\Corvane]\r\n\"a\"=\"1\"\r\n\"b\"=\"2\"\r\n");
}

TEST(RegistryText, ReadsUtf16AsRealExportsHaveIt) {
  const auto bytes = "\xFF\xFE" + ToUtf16Bytes("[HKEY_CURRENT_USER\\Software\\Corvane]\r\n\"ä\"=\"日本\"\r\n");
  EXPECT_EQ(RegistryText(bytes).GetValue(key, "Ä"), "日本");
}

TEST(RegistryText, AnyTextComesBack) {
  for (const auto& value : {std::string(), std::string("line\r\nbreak\ttab"), std::string("\0x\0", 3),
                            std::string("trailing \\"), std::string("\"\\\"]["), std::string("日本 😀 ä")}) {
    RegistryText file("");
    file.SetValue(key, "a=\"b\\", value, text);
    file.SetValue(key, "after", "x", text);
    const RegistryText again(file.Text());
    EXPECT_EQ(again.GetValue(key, "a=\"b\\"), value);
    EXPECT_EQ(again.GetValue(key, "after"), "x");
  }
}

TEST(RegistryText, RejectsWhatTheFormCantHold) {
  RegistryText file("");
  EXPECT_EQ(support::NumberOfFailure([&] { file.SetValue(key, "a\nb", "", text); }), FailureNumber::InvalidCall);
  EXPECT_EQ(support::NumberOfFailure([&] { file.CreateKey("a\n[b]"); }), FailureNumber::InvalidCall);
  for (const char* bad : {"", "x", "-1", "4294967296", "1 "})
    EXPECT_EQ(support::NumberOfFailure([&] { file.SetValue(key, "n", bad, number); }), FailureNumber::TypeMismatch);
  EXPECT_FALSE(file.HasKey(key));
}

TEST(RegistryText, DamagedFilesLoseNothingAndNeverCrash) {
  const std::string seed =
      "[HKEY_CURRENT_USER\\Software\\Corvane]\n\"a\"=\"1\"\n\"h\"=hex(1):61,00,\\\n 00,00\n@=dword:1\n";
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    auto bytes = seed;
    for (int i = 0; i < 4; ++i) bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
    bytes.resize(random() % (bytes.size() + 1));
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) continue;
    RegistryText file(bytes);
    file.SetValue("HKEY_CURRENT_USER\\New", "v", "value", text);
    const auto after = file.Text();
    EXPECT_EQ(RegistryText(after).GetValue("HKEY_CURRENT_USER\\New", "v"), "value");
    for (const auto line : Split(bytes, '\n'))
      EXPECT_NE(after.find(line.substr(0, line.find('\r'))), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace quillbook
