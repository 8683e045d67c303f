#include "quillbook/frame/services/RegistryHelper.h"

#include "quillbook/base/Failure.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

RegistryHive RequireHive(std::uint32_t hive) {
  if (hive != RegistryHelper::CurrentUser && hive != RegistryHelper::LocalMachine)
    throw Failure(FailureNumber::InvalidCall, "Unknown registry hive");
  return static_cast<RegistryHive>(hive);
}

}  // namespace

std::string RegistryHelper::GetValue(std::uint32_t Hive, std::string_view Key, std::string_view ValueName) {
  return Platform::Current().Registry().GetValue(RequireHive(Hive), Key, ValueName).value_or(std::string());
}

void RegistryHelper::CreateKey(std::uint32_t Hive, std::string_view Key) {
  Platform::Current().Registry().CreateKey(RequireHive(Hive), Key);
}

void RegistryHelper::SetValue(std::uint32_t Hive, std::string_view Key, std::string_view ValueName,
                              std::string_view Value, int Type) {
  if (Type != TypeString && Type != TypeNumber)
    throw Failure(FailureNumber::InvalidCall, "Unknown type of registry value");
  Platform::Current().Registry().SetValue(RequireHive(Hive), Key, ValueName, Value,
                                          static_cast<RegistryStore::Type>(Type));
}

}  // namespace quillbook
