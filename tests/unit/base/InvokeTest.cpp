#include <gtest/gtest.h>

#include <optional>

#include "quillbook/base/Object.h"
#include "quillbook/base/Text.h"
#include "support/FailureOf.h"

namespace quillbook {
namespace {

using support::NumberOfFailure;

/// A class that notes how its methods are called.
class Recorder final : public Object {
 public:
  int Sum(int left, std::int16_t right) const { return left + right; }
  void Note(std::string_view text, const std::optional<int>& number, const Variant& rest) {
    notes += std::string(text) + (number ? "+" + std::to_string(*number) : "") +
             (rest.IsOmitted() ? "" : "+" + rest.ToText()) + ";";
  }
  Ref<Recorder> Self() { return Ref<Recorder>(this); }
  const std::string& Notes() const { return notes; }
  void Fail() { throw Failure(FailureNumber::DiskFull); }

  std::string notes;

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Recorder>("Recorder")
                                     .Public<&Recorder::notes>("notes")
                                     .ReadOnly<&Recorder::Notes>("AllNotes")
                                     .Method<&Recorder::Sum>("Sum")
                                     .Method<&Recorder::Note>("Note")
                                     .Method<&Recorder::Self>("Self")
                                     .Method<&Recorder::Fail>("Fail")
                                     .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

TEST(Invoke, ConvertsArgumentsAndResult) {
  const auto recorder = New<Recorder>();
  EXPECT_EQ(recorder->Invoke("sum", {"40", 2.0}).ToLong(), 42);
  EXPECT_EQ(recorder->Invoke("Self").ToObject().get(), recorder.get());
}

TEST(Invoke, LeavesOutWhatIsOmittedOrMissing) {
  const auto recorder = New<Recorder>();
  recorder->Invoke("Note", {"a", 1, "x"});
  recorder->Invoke("Note", {"b", Variant::Omitted(), 3});
  EXPECT_TRUE(recorder->Invoke("Note", {"c"}).IsEmpty());
  EXPECT_EQ(recorder->notes, "a+1+x;b+3;c;");
}

TEST(Invoke, FailsForTooFewOrTooManyArguments) {
  const auto recorder = New<Recorder>();
  EXPECT_EQ(NumberOfFailure([&] { recorder->Invoke("Sum", {1}); }), FailureNumber::ArgumentNotOptional);
  EXPECT_EQ(NumberOfFailure([&] {
              recorder->Invoke("Sum", {1, Variant::Omitted()});
            }),
            FailureNumber::ArgumentNotOptional);
  EXPECT_EQ(NumberOfFailure([&] { recorder->Invoke("Sum", {1, 2, 3}); }), FailureNumber::WrongArgumentCount);
  EXPECT_EQ(NumberOfFailure([&] { recorder->Invoke("Sum", {"one", 2}); }), FailureNumber::TypeMismatch);
}

TEST(Invoke, KnowsMethodsOnly_AndReadsKnowNoMethods) {
  const auto recorder = New<Recorder>();
  EXPECT_EQ(NumberOfFailure([&] { recorder->Invoke("Nothing"); }), FailureNumber::NoSuchMember);
  EXPECT_EQ(NumberOfFailure([&] { recorder->Invoke("AllNotes"); }), FailureNumber::NoSuchMember);
  EXPECT_EQ(NumberOfFailure([&] { (void)recorder->Member("Sum"); }), FailureNumber::NoSuchMember);
  EXPECT_EQ(NumberOfFailure([&] { recorder->SetMember("Sum", 1); }), FailureNumber::NoSuchMember);
  EXPECT_FALSE(recorder->HasMember("Sum"));
  EXPECT_TRUE(recorder->HasMember("AllNotes"));
}

TEST(Invoke, LetsTheMethodsFailureThrough) {
  EXPECT_EQ(NumberOfFailure([] { New<Recorder>()->Invoke("Fail"); }), FailureNumber::DiskFull);
}

TEST(Variant, BytesAreTextInUtf16) {
  const Variant bytes = Variant::Bytes{std::string("a\0\x16\x04", 4)};
  EXPECT_EQ(bytes.GetKind(), Variant::Kind::Bytes);
  EXPECT_EQ(bytes.ToText(), "a\u0416");
  EXPECT_EQ(Variant("a\u0416").ToBytes(), std::string("a\0\x16\x04", 4));
  EXPECT_EQ(bytes.ToBytes(), std::string("a\0\x16\x04", 4));
  EXPECT_EQ(Variant(Variant::Bytes{ToUtf16Bytes("12")}).ToLong(), 12);
}

TEST(Variant, HalfACharacterAtTheEndOfBytesIsLeftOut_AndHalfAPairIsReplaced) {
  EXPECT_EQ(Variant(Variant::Bytes{std::string("a\0b", 3)}).ToText(), "a");
  EXPECT_EQ(Variant(Variant::Bytes{std::string("\x3D\xD8"
                                               "a\0",
                                               4)})
                .ToText(),
            "\uFFFDa");
  EXPECT_EQ(Variant(Variant::Bytes{"x"}).ToText(), "");
}

}  // namespace
}  // namespace quillbook
