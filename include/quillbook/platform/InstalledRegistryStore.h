// Registry values of a program that knows where it is installed.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "quillbook/platform/RegistryStore.h"

namespace quillbook {

/// Hands everything on to another store, but where that has no `LiteInstallDir` for the machine, gives the folder of
/// this installation, so that an installed program and one that was only built find their configuration without any
/// setting.
class InstalledRegistryStore final : public RegistryStore {
 public:
  /// `folder` is the native path of the folder above "configuration"; with an empty one nothing is added.
  InstalledRegistryStore(std::shared_ptr<RegistryStore> values, std::string folder)
      : mValues(std::move(values)), mFolder(std::move(folder)) {}

  /// `share/quillbook` beside the folder of the running program, else the source folder that this library was built
  /// from, else the folder that it was to be installed in: the first that holds a configuration. Empty if none does.
  [[nodiscard]] static std::string InstallationFolder();

  [[nodiscard]] std::optional<std::string> GetValue(RegistryHive hive, std::string_view key,
                                                    std::string_view valueName) const override;
  [[nodiscard]] bool HasKey(RegistryHive hive, std::string_view key) const override;
  void CreateKey(RegistryHive hive, std::string_view key) override;
  void SetValue(RegistryHive hive, std::string_view key, std::string_view valueName, std::string_view value,
                Type type = Type::Text) override;

 private:
  std::shared_ptr<RegistryStore> mValues;
  std::string mFolder;
};

}  // namespace quillbook
