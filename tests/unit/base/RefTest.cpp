#include "quillbook/base/Ref.h"

#include <gtest/gtest.h>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"

namespace quillbook {
namespace {

class Link final : public Object {
 public:
  Ref<Link> next;
  std::string mName;
  [[nodiscard]] const std::string& Name() const { return mName; }
  void SetName(std::string_view name) { mName = name; }
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Link>("Link")
                                     .Field<&Link::mName>("mName")
                                     .Public<&Link::next>("next")
                                     .Property<&Link::Name, &Link::SetName>("Name")
                                     .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

TEST(Ref, ArrowOnNothing_RaisesFailure91) {
  const Ref<Link> nothing;
  try {
    (void)nothing->Name();
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::ObjectNotSet);
  }
}

TEST(Ref, WeakReference_IsEmpty_WhenTheObjectHasGone) {
  WeakReference<Link> weak;
  {
    const auto link = New<Link>();
    weak.SetTarget(link);
    EXPECT_EQ(weak.Target(), link);
  }
  EXPECT_FALSE(weak.Target());
}

TEST(Ref, ChainOfAMillionObjects_GoesWithoutOverflowingTheStack) {
  Ref<Link> head;
  for (int i = 0; i < 1'000'000; ++i) {
    auto link = New<Link>();
    link->next = head;
    head = link;
  }
  head = nullptr;
#ifndef NDEBUG
  EXPECT_EQ(Link::StaticType().LiveCount(), 0);
#endif
}

TEST(Object, Member_IsFoundIgnoringCase_AndUnknownFails438) {
  const auto link = New<Link>();
  link->SetMember("NAME", "a");
  EXPECT_EQ(link->Member("name").ToText(), "a");
  try {
    (void)link->Member("Nmae");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::NoSuchMember);
  }
}

TEST(Object, Fields_ComeInDeclaredOrder) {
  std::string names;
  New<Link>()->Fields([&](std::string_view name, const Variant&) { names.append(name).append(" "); });
  EXPECT_EQ(names, "mName next ");
}

}  // namespace
}  // namespace quillbook
