// One index keyword of a topic.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

/// A keyword of a topic. Its ID is made anew for each object and never stored. Neither setter tells anybody.
class TopicKeyword final : public LibraryObject {
 public:
  TopicKeyword();

  /// Key of the keyword in its collection.
  [[nodiscard]] const std::string& ID() const noexcept { return mID; }
  void SetID(std::string_view RHS) { mID = RHS; }
  [[nodiscard]] const std::string& Keyword() const noexcept { return mKeyword; }
  void SetKeyword(std::string_view RHS) { mKeyword = RHS; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mID;
  std::string mKeyword;
};

}  // namespace quillbook
