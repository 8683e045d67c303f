// An environment variable with another value for a while.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace quillbook::support {

class EnvironmentOverride {
 public:
  /// No `value` takes the variable away.
  EnvironmentOverride(std::string name, std::optional<std::string> value) : mName(std::move(name)) {
    if (const char* before = std::getenv(mName.c_str())) mBefore = before;
    Set(value);
  }
  EnvironmentOverride(const EnvironmentOverride&) = delete;
  EnvironmentOverride& operator=(const EnvironmentOverride&) = delete;
  ~EnvironmentOverride() { Set(mBefore); }

 private:
  void Set(const std::optional<std::string>& value) {
    if (value)
      ::setenv(mName.c_str(), value->c_str(), 1);
    else
      ::unsetenv(mName.c_str());
  }

  std::string mName;
  std::optional<std::string> mBefore;
};

}  // namespace quillbook::support
