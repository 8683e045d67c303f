// Registry values in two text files.
#pragma once

#include <functional>
#include <string>

#include "quillbook/platform/RegistryStore.h"

namespace quillbook {

class RegistryText;

/// Keeps each hive in a file in the text form of registry exports. Every read sees the file as it is now; every
/// write locks out other processes, reads the file anew, changes the one value and replaces the file in one step.
/// What this store doesn't understand in a file stays there.
class FileRegistryStore final : public RegistryStore {
 public:
  FileRegistryStore(std::string userFile, std::string machineFile)
      : mUserFile(std::move(userFile)), mMachineFile(std::move(machineFile)) {}

  /// The file of the current user: `$QUILLBOOK_REGISTRY/registry.reg` if that variable is set, else
  /// `$XDG_CONFIG_HOME/quillbook/registry.reg`, else `~/.config/quillbook/registry.reg`.
  [[nodiscard]] static std::string DefaultUserFile();
  /// The file of the machine: `$QUILLBOOK_REGISTRY/machine.reg` if that variable is set, else
  /// `../share/quillbook/machine.reg` beside the folder of the program.
  [[nodiscard]] static std::string DefaultMachineFile();

  [[nodiscard]] std::optional<std::string> GetValue(RegistryHive hive, std::string_view key,
                                                    std::string_view valueName) const override;
  [[nodiscard]] bool HasKey(RegistryHive hive, std::string_view key) const override;
  void CreateKey(RegistryHive hive, std::string_view key) override;
  void SetValue(RegistryHive hive, std::string_view key, std::string_view valueName, std::string_view value,
                Type type = Type::Text) override;

 private:
  [[nodiscard]] const std::string& FileOf(RegistryHive hive) const;
  void Change(RegistryHive hive, const std::function<bool(RegistryText&)>& change);

  std::string mUserFile;
  std::string mMachineFile;
};

}  // namespace quillbook
