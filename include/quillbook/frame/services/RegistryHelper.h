// Registry values for the object model.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillbook {

/// Reads and writes the values of this thread's platform. Names of keys and values ignore case.
class RegistryHelper {
 public:
  /// Hives.
  static constexpr std::uint32_t CurrentUser = 0x80000001U;
  static constexpr std::uint32_t LocalMachine = 0x80000002U;
  /// Types of values.
  static constexpr int TypeString = 1;
  static constexpr int TypeNumber = 4;

  /// The value as text; empty if key or value is missing or the store can't be read.
  [[nodiscard]] static std::string GetValue(std::uint32_t Hive, std::string_view Key, std::string_view ValueName);
  /// Existing keys are no failure.
  static void CreateKey(std::uint32_t Hive, std::string_view Key);
  /// Failure 5 for another hive or type.
  static void SetValue(std::uint32_t Hive, std::string_view Key, std::string_view ValueName, std::string_view Value,
                       int Type = TypeString);
};

}  // namespace quillbook
