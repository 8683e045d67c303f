// The index that a build collects.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"

namespace quillbook {

/// Where a keyword leads: the output-relative file of a page.
class KeywordJump final : public Object {
 public:
  explicit KeywordJump(std::string target) : mTarget(std::move(target)) {}
  [[nodiscard]] const std::string& Target() const noexcept { return mTarget; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mTarget;
};

/// One entry of the index.
class Keyword final : public Object {
 public:
  explicit Keyword(std::string name) : mName(std::move(name)) {}

  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  [[nodiscard]] bool HasChildKeywords() const noexcept { return mChildKeywords && !mChildKeywords->IsEmpty(); }
  /// By name; made on first use.
  [[nodiscard]] const Ref<Collection<Ref<Keyword>>>& ChildKeywords();
  /// By target: a target counts once; made on first use.
  [[nodiscard]] const Ref<Collection<Ref<KeywordJump>>>& Jumps();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mName;
  Ref<Collection<Ref<Keyword>>> mChildKeywords;
  Ref<Collection<Ref<KeywordJump>>> mJumps;
};

/// The keyword list that a namespace provider fills. Keywords that differ only in case are one; the first spelling
/// stays. Entries keep the order of adding.
class Keywords final : public Object {
 public:
  Keywords();
  ~Keywords() override;

  /// An entry of the first level. A comma in it belongs to its name. An empty keyword is ignored.
  void Add(std::string_view keyword, std::string_view target);
  /// An entry below others: `levels` names them from the top, separated by commas, blanks around a name cut. Levels
  /// without a name are ignored.
  void AddSubKeyword(std::string_view levels, std::string_view target);

  /// Entries of the first level, by name.
  [[nodiscard]] const Ref<Collection<Ref<Keyword>>>& Items() const noexcept { return mItems; }
  [[nodiscard]] std::size_t Count() const noexcept { return mItems->Count(); }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override { mItems->ForEachItem(visit); }

 private:
  Ref<Collection<Ref<Keyword>>> mItems;
};

}  // namespace quillbook
