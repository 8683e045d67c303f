// How callers name a member of a collection.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Variant.h"

namespace quillbook {

/// A key or a position from 1, or nothing at all for an argument that was left out. A view: it must not outlive the
/// text it was made from.
class KeyOrPosition {
 public:
  KeyOrPosition() noexcept = default;
  template <std::integral I>
  KeyOrPosition(I position) noexcept : mKind(Kind::Position), mPosition(static_cast<std::int64_t>(position)) {}
  KeyOrPosition(std::string_view key) noexcept : mKind(Kind::Key), mKey(key) {}
  KeyOrPosition(const std::string& key) noexcept : mKind(Kind::Key), mKey(key) {}
  KeyOrPosition(const char* key) noexcept : mKind(Kind::Key), mKey(key) {}

  [[nodiscard]] bool IsMissing() const noexcept { return mKind == Kind::Missing; }
  [[nodiscard]] bool IsKey() const noexcept { return mKind == Kind::Key; }
  [[nodiscard]] bool IsPosition() const noexcept { return mKind == Kind::Position; }
  [[nodiscard]] std::string_view Key() const noexcept { return mKey; }
  [[nodiscard]] std::int64_t Position() const noexcept { return mPosition; }
  /// For the state dump.
  [[nodiscard]] Variant ToVariant() const {
    if (IsKey()) return Variant(mKey);
    if (IsPosition()) return Variant(mPosition);
    return {};
  }

 private:
  enum class Kind { Missing, Key, Position };
  Kind mKind = Kind::Missing;
  std::string_view mKey;
  std::int64_t mPosition = 0;
};

}  // namespace quillbook
