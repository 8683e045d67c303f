// Windows locales by number.
#pragma once

#include <cstdint>
#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

/// A Windows locale: its number, its name for a reader and its ANSI code page.
class Locale final : public Object {
 public:
  /// Nothing for a number that names no known language.
  [[nodiscard]] static Ref<Locale> FromID(std::int32_t id);
  /// The locale of this system; English (United States) where it has none.
  [[nodiscard]] static Ref<Locale> Default();

  [[nodiscard]] std::int32_t LocaleID() const noexcept { return mLocaleID; }
  /// Language and region in English, such as "German (Switzerland)".
  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  /// 65001 for a language that has no ANSI code page.
  [[nodiscard]] std::int32_t CodePage() const noexcept { return mCodePage; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  template <class T, class... Args>
  friend Ref<T> New(Args&&... args);
  Locale(std::int32_t id, std::string name);

  std::int32_t mLocaleID;
  std::string mName;
  std::int32_t mCodePage;
};

}  // namespace quillbook
