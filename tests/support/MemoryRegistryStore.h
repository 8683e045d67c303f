// Registry values in memory.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "quillbook/base/Text.h"
#include "quillbook/platform/RegistryStore.h"

namespace quillbook::support {

class MemoryRegistryStore final : public RegistryStore {
 public:
  [[nodiscard]] std::optional<std::string> GetValue(RegistryHive hive, std::string_view key,
                                                    std::string_view valueName) const override {
    const auto values = mKeys.find(Name(hive, key));
    if (values == mKeys.end()) return std::nullopt;
    const auto value = values->second.find(FoldCase(valueName));
    if (value == values->second.end()) return std::nullopt;
    return value->second;
  }
  [[nodiscard]] bool HasKey(RegistryHive hive, std::string_view key) const override {
    return mKeys.contains(Name(hive, key));
  }
  void CreateKey(RegistryHive hive, std::string_view key) override { mKeys[Name(hive, key)]; }
  void SetValue(RegistryHive hive, std::string_view key, std::string_view valueName, std::string_view value,
                Type = Type::Text) override {
    mKeys[Name(hive, key)][FoldCase(valueName)] = value;
  }

 private:
  using KeyName = std::pair<RegistryHive, std::string>;
  static KeyName Name(RegistryHive hive, std::string_view key) { return {hive, FoldCase(key)}; }

  std::map<KeyName, std::map<std::string, std::string>> mKeys;
};

}  // namespace quillbook::support
