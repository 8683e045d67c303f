// The order of texts in a language.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace quillbook {

/// Compares as the readers of a language sort: letter case counts for nothing.
class Collation {
 public:
  /// `localeId` is the number of a Windows locale; an unknown one gives an order that no language objects to.
  explicit Collation(std::uint32_t localeId);
  Collation(Collation&&) noexcept;
  Collation& operator=(Collation&&) noexcept;
  ~Collation();

  /// Negative, zero or positive. Two texts are equal only if `CompareIgnoringCase` finds them so.
  [[nodiscard]] int Compare(std::string_view left, std::string_view right) const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace quillbook
