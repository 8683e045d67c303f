#include "generation/CompilerFile.h"

#include <algorithm>

#include "quillbook/base/Text.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/RegistryHelper.h"

namespace quillbook {
namespace {

constexpr std::string_view UserKey = "Software\\Corvane\\Quillbook2";
constexpr std::string_view UsualPlace = "c:\\program files\\html help workshop\\hhc.exe";

/// The compiler beside the file that the user chose; empty if that file is gone.
std::string ChosenCompiler(std::string_view valueName, std::string_view baseName) {
  const auto value = RegistryHelper::GetValue(RegistryHelper::CurrentUser, UserKey, valueName);
  if (value.empty()) return {};
  FileSystemObject file(value);
  if (!file.FileExists()) return {};
  file.SetBaseName(baseName);
  return file.FullName();
}

/// The compiler beside the program of a shell command such as `"C:\Help\hhw.exe" "%1"`.
std::string RegisteredCompiler(std::string_view key, std::string_view baseName) {
  auto command = RegistryHelper::GetValue(RegistryHelper::LocalMachine, key, "");
  if (command.empty()) return {};
  command.resize(std::min(command.find('%'), command.size()));
  const auto program = modMain::StripQuotes(TrimBlanks(modMain::StripQuotes(command)));
  FileSystemObject file(program);
  file.SetBaseName(baseName);
  return file.FileExists() ? file.FullName() : std::string();
}

}  // namespace

std::string GetCompilerFileName(std::string_view RegKeyString, bool IsHHC) {
  const std::string_view baseName = IsHHC ? "hhc" : "hcrtf";
  if (auto chosen = ChosenCompiler(IsHHC ? "HHCPath" : "HCRTFPath", baseName); !chosen.empty()) return chosen;
  // The usual place wins over the registered program, also for the older format.
  const FileSystemObject usual(UsualPlace);
  return usual.FileExists() ? usual.FullName() : RegisteredCompiler(RegKeyString, baseName);
}

}  // namespace quillbook
