// Named values of the user and of the machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbook {

/// The two trees of values. Frozen numbers.
enum class RegistryHive : std::uint32_t { CurrentUser = 0x80000001U, LocalMachine = 0x80000002U };

/// Values under keys such as "Software\Corvane\Quillbook2". Names of keys and values ignore case; an empty value
/// name is the key's default value.
class RegistryStore {
 public:
  enum class Type : int { Text = 1, Number = 4 };

  RegistryStore() = default;
  RegistryStore(const RegistryStore&) = delete;
  RegistryStore& operator=(const RegistryStore&) = delete;
  virtual ~RegistryStore() = default;

  /// The value as text (a number in decimal); none if key or value is missing or can't be read. Never raises.
  [[nodiscard]] virtual std::optional<std::string> GetValue(RegistryHive hive, std::string_view key,
                                                            std::string_view valueName) const = 0;
  [[nodiscard]] virtual bool HasKey(RegistryHive hive, std::string_view key) const = 0;
  /// An existing key is no failure. Raises what the file store raises if the values can't be kept.
  virtual void CreateKey(RegistryHive hive, std::string_view key) = 0;
  /// Makes the key if need be. A `Number` must be decimal text of 0 to 4294967295, else failure 13.
  virtual void SetValue(RegistryHive hive, std::string_view key, std::string_view valueName, std::string_view value,
                        Type type = Type::Text) = 0;
};

}  // namespace quillbook
