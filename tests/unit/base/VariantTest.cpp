#include "quillbook/base/Variant.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"

namespace quillbook {
namespace {

FailureNumber FailureOf(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return FailureNumber::None;
}

class Thing final : public Object {
 public:
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Thing>("Thing").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

class Owner final : public Object {
 public:
  Ref<Thing> thing;
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Owner>("Owner").Public<&Owner::thing>("Thing").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

enum class Colour { Red = 4 };

TEST(Variant, Kinds_FollowTheValue) {
  EXPECT_EQ(Variant().GetKind(), Variant::Kind::Empty);
  EXPECT_EQ(Variant(Variant::Null()).GetKind(), Variant::Kind::Null);
  EXPECT_EQ(Variant(true).GetKind(), Variant::Kind::Boolean);
  EXPECT_EQ(Variant(1).GetKind(), Variant::Kind::Integer);
  EXPECT_EQ(Variant(Colour::Red).GetKind(), Variant::Kind::Integer);
  EXPECT_EQ(Variant(1.5).GetKind(), Variant::Kind::Double);
  EXPECT_EQ(Variant(Date(1)).GetKind(), Variant::Kind::Date);
  EXPECT_EQ(Variant("text").GetKind(), Variant::Kind::Text) << "and not a Boolean, as a pointer would be";
  EXPECT_EQ(Variant(Ref<Thing>()).GetKind(), Variant::Kind::Object);
  EXPECT_EQ(Variant(VariantArray()).GetKind(), Variant::Kind::Array);
  EXPECT_EQ(Variant(Variant::ErrorValue{5}).GetKind(), Variant::Kind::Error);
  EXPECT_EQ(Variant(Variant::Opaque{"x"}).GetKind(), Variant::Kind::Opaque);
}

TEST(Variant, ToText_OfWhatHasNoText_FailsWithATypeMismatch) {
  EXPECT_EQ(Variant().ToText(), "");
  EXPECT_EQ(Variant(false).ToText(), "False");
  EXPECT_EQ(Variant(std::int64_t{1} << 40).ToText(), "1099511627776");
  for (const auto& value : {Variant(Variant::Null()), Variant(New<Thing>()), Variant(VariantArray()),
                            Variant(Variant::ErrorValue{1}), Variant(Variant::Opaque{"x"})})
    EXPECT_EQ(FailureOf([&] { (void)value.ToText(); }), FailureNumber::TypeMismatch);
}

TEST(Variant, ToNumber_OfTrue_IsMinusOne) {
  EXPECT_EQ(Variant(true).ToNumber(), -1);
  EXPECT_EQ(Variant(true).ToLong(), -1);
  EXPECT_EQ(Variant().ToNumber(), 0);
  EXPECT_EQ(Variant(" 12.5 ").ToNumber(), 12.5);
  EXPECT_EQ(FailureOf([] { (void)Variant("twelve").ToNumber(); }), FailureNumber::TypeMismatch);
}

TEST(Variant, ToLong_RoundsHalfToEven_AndFailsBeyond32Bits) {
  EXPECT_EQ(Variant(0.5).ToLong(), 0);
  EXPECT_EQ(Variant(1.5).ToLong(), 2);
  EXPECT_EQ(Variant(2.5).ToLong(), 2);
  EXPECT_EQ(Variant(-2.5).ToLong(), -2);
  EXPECT_EQ(Variant(2147483647.4).ToLong(), 2147483647);
  EXPECT_EQ(FailureOf([] { (void)Variant(2147483647.5).ToLong(); }), FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { (void)Variant(-2147483649.0).ToLong(); }), FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { (void)Variant(std::nan("")).ToLong(); }), FailureNumber::Overflow);
}

TEST(Variant, ToBoolean_TakesWordsAndNumbers) {
  EXPECT_TRUE(Variant("true").ToBoolean());
  EXPECT_FALSE(Variant("FALSE").ToBoolean());
  EXPECT_TRUE(Variant("2").ToBoolean());
  EXPECT_FALSE(Variant(0).ToBoolean());
  EXPECT_EQ(FailureOf([] { (void)Variant("yes").ToBoolean(); }), FailureNumber::TypeMismatch);
}

TEST(Variant, ToDate_ReadsTextInTheLocale) {
  setenv("LC_ALL", "C", 1);
  EXPECT_EQ(Variant("3/5/2024 7:08:09 PM").ToDate(), Date::FromParts({2024, 3, 5, 19, 8, 9}));
  EXPECT_EQ(Variant(*Date::FromParts({2024, 3, 5})).ToText(), "3/5/2024");
  unsetenv("LC_ALL");
  EXPECT_EQ(Variant(2.5).ToDate(), Date(2.5));
  EXPECT_EQ(FailureOf([] { (void)Variant("soon").ToDate(); }), FailureNumber::TypeMismatch);
}

TEST(Variant, ToObject_KeepsIdentity_AndRefusesOtherKinds) {
  const auto thing = New<Thing>();
  EXPECT_EQ(Variant(thing).ToObject(), thing);
  EXPECT_FALSE(Variant().ToObject());
  EXPECT_EQ(FailureOf([] { (void)Variant(1).ToObject(); }), FailureNumber::TypeMismatch);
}

TEST(Variant, LateBoundWrite_OfAnotherClassesObject_FailsAndKeepsTheValue) {
  const auto owner = New<Owner>();
  const auto thing = New<Thing>();
  owner->SetMember("thing", thing);
  EXPECT_EQ(FailureOf([&] { owner->SetMember("thing", New<Owner>()); }), FailureNumber::TypeMismatch);
  EXPECT_EQ(owner->thing, thing);
  owner->SetMember("thing", Ref<Thing>());
  EXPECT_FALSE(owner->thing);
}

TEST(Variant, AFailure_NamesTheCallersStatement) {
  int line = 0;
  try {
    line = __LINE__ + 1;
    (void)LongFromText("x");
  } catch (const Failure& failure) {
    EXPECT_EQ(static_cast<int>(failure.Where().line()), line);
    EXPECT_TRUE(failure.HasPlace());
  }
}

TEST(NumberFromText, TakesDecimalNumbersOnly) {
  EXPECT_EQ(NumberFromText("+5"), 5);
  EXPECT_EQ(NumberFromText(" -1e3 "), -1000);
  for (const char* text : {"", " ", "+", "+-5", "++5", "5 5", "0x10", "inf", "nan", "1,5", "5\t"})
    EXPECT_EQ(FailureOf([&] { (void)NumberFromText(text); }), FailureNumber::TypeMismatch) << text;
  EXPECT_EQ(FailureOf([] { (void)NumberFromText("1e999"); }), FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { (void)LongFromText("4294967296"); }), FailureNumber::Overflow);
}

TEST(LeadingNumber, ReadsAsFarAsItGoes) {
  EXPECT_EQ(LeadingNumber("12abc"), 12);
  EXPECT_EQ(LeadingNumber("  -1.5px"), -1.5);
  EXPECT_EQ(LeadingNumber("+7"), 7);
  EXPECT_EQ(LeadingNumber("1e"), 1);
  for (const char* text : {"", "abc", "+-5", "inf", "nan", "-"}) EXPECT_EQ(LeadingNumber(text), 0) << text;
}

TEST(NumberToText, ShowsFifteenDigitsAndAPoint) {
  EXPECT_EQ(NumberToText(0.1), "0.1");
  EXPECT_EQ(NumberToText(0.1 + 0.2), "0.3");
  EXPECT_EQ(NumberToText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(NumberToText(123456789012345), "123456789012345");
  EXPECT_EQ(NumberToText(1e20), "1E+20");
  EXPECT_EQ(NumberToText(-1e-7), "-1E-07");
  EXPECT_EQ(NumberToText(-0.0), "0");
  EXPECT_EQ(NumberToText(-2), "-2");
}

}  // namespace
}  // namespace quillbook
