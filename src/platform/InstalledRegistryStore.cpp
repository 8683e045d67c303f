#include "quillbook/platform/InstalledRegistryStore.h"

#include <algorithm>
#include <filesystem>

#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

namespace fs = std::filesystem;

bool IsInstallDir(RegistryHive hive, std::string_view key, std::string_view valueName) {
  return hive == RegistryHive::LocalMachine && EqualsIgnoringCase(valueName, "LiteInstallDir") &&
         EqualsIgnoringCase(key, "Software\\Corvane\\Quillbook2");
}

}  // namespace

std::string InstalledRegistryStore::InstallationFolder() {
  std::error_code missing;
  const auto program = fs::read_symlink("/proc/self/exe", missing);
  const fs::path candidates[] = {program.parent_path().parent_path() / "share/quillbook", QUILLBOOK_SOURCE_FOLDER,
                                 QUILLBOOK_INSTALL_FOLDER};
  const auto* found = std::find_if(std::begin(candidates), std::end(candidates), [&](const fs::path& folder) {
    return fs::is_directory(folder / "configuration", missing);
  });
  return found == std::end(candidates) ? std::string() : found->string();
}

std::optional<std::string> InstalledRegistryStore::GetValue(RegistryHive hive, std::string_view key,
                                                            std::string_view valueName) const {
  auto value = mValues->GetValue(hive, key, valueName);
  if (!mFolder.empty() && (!value || value->empty()) && IsInstallDir(hive, key, valueName))
    return ReplaceAll(mFolder, "/", "\\");
  return value;
}

bool InstalledRegistryStore::HasKey(RegistryHive hive, std::string_view key) const {
  return mValues->HasKey(hive, key);
}

void InstalledRegistryStore::CreateKey(RegistryHive hive, std::string_view key) {
  mValues->CreateKey(hive, key);
}

void InstalledRegistryStore::SetValue(RegistryHive hive, std::string_view key, std::string_view valueName,
                                      std::string_view value, Type type) {
  mValues->SetValue(hive, key, valueName, value, type);
}

}  // namespace quillbook
