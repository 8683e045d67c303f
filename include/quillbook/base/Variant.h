// A value of any kind, as late-bound members, tags and state dumps use it.
#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "quillbook/base/Date.h"
#include "quillbook/base/Ref.h"

namespace quillbook {

class Variant;

/// An array value of up to any number of dimensions, elements in row order.
struct VariantArray {
  struct Dimension {
    int lower = 0;
    int upper = -1;  ///< below `lower`: this dimension is not allocated
  };
  std::vector<Dimension> dimensions;  ///< empty: the array is not initialised
  std::vector<Variant> elements;
};

/// A value: empty, null, Boolean, number, date, text, error value, array, bytes, or a reference to an object.
class Variant {
 public:
  struct Null {};
  struct ErrorValue {
    int number = 0;
  };
  /// A value that the state dump names but does not open.
  struct Opaque {
    std::string text;
  };
  /// An array of bytes.
  struct Bytes {
    std::string bytes;
  };
  enum class Kind { Empty, Null, Boolean, Integer, Double, Date, Text, Object, Array, Error, Opaque, Bytes };

  Variant() noexcept = default;
  Variant(Null) : mValue(Null{}) {}
  template <std::same_as<bool> B>
  Variant(B value) : mValue(value) {}
  template <class I>
  requires(std::is_integral_v<I> && !std::is_same_v<I, bool>) Variant(I value)
      : mValue(static_cast<std::int64_t>(value)) {}
  template <class E>
  requires std::is_enum_v<E> Variant(E value) : mValue(static_cast<std::int64_t>(value)) {}
  Variant(double value) : mValue(value) {}
  Variant(quillbook::Date value) : mValue(value) {}
  Variant(std::string value) : mValue(std::move(value)) {}
  Variant(std::string_view value) : mValue(std::string(value)) {}
  Variant(const char* value) : mValue(std::string(value)) {}
  Variant(ErrorValue value) : mValue(value) {}
  Variant(Opaque value) : mValue(std::move(value)) {}
  Variant(Bytes value) : mValue(std::move(value)) {}
  Variant(VariantArray value) : mValue(std::make_shared<const VariantArray>(std::move(value))) {}
  template <class T>
  Variant(const Ref<T>& object) : mValue(Ref<Object>(object)) {}

  [[nodiscard]] Kind GetKind() const noexcept { return static_cast<Kind>(mValue.index()); }
  [[nodiscard]] bool IsEmpty() const noexcept { return GetKind() == Kind::Empty; }

  /// Stands for an argument that a late-bound call leaves out.
  [[nodiscard]] static Variant Omitted() { return ErrorValue{OmittedArgument}; }
  [[nodiscard]] bool IsOmitted() const noexcept {
    const auto* error = std::get_if<ErrorValue>(&mValue);
    return error && error->number == OmittedArgument;
  }

  /// The usual conversions. Each raises failure 13 (type mismatch) for a value that has no such form. Bytes and text
  /// turn into each other as UTF-16LE without a mark; half a character at the end of bytes is left out.
  [[nodiscard]] std::string ToText(std::source_location where = std::source_location::current()) const;
  [[nodiscard]] std::string ToBytes(std::source_location where = std::source_location::current()) const;
  [[nodiscard]] double ToNumber(std::source_location where = std::source_location::current()) const;
  /// Rounds half to even; failure 6 outside 32 bits.
  [[nodiscard]] std::int32_t ToLong(std::source_location where = std::source_location::current()) const;
  [[nodiscard]] bool ToBoolean(std::source_location where = std::source_location::current()) const;
  [[nodiscard]] quillbook::Date ToDate(std::source_location where = std::source_location::current()) const;
  /// The object, or nothing for an empty value.
  [[nodiscard]] Ref<Object> ToObject(std::source_location where = std::source_location::current()) const;
  [[nodiscard]] const VariantArray& Array() const { return *std::get<std::shared_ptr<const VariantArray>>(mValue); }
  [[nodiscard]] const Opaque& GetOpaque() const { return std::get<Opaque>(mValue); }

 private:
  static constexpr int OmittedArgument = static_cast<int>(0x80020004U);

  std::variant<std::monostate, Null, bool, std::int64_t, double, quillbook::Date, std::string, Ref<Object>,
               std::shared_ptr<const VariantArray>, ErrorValue, Opaque, Bytes>
      mValue;
};

/// Decimal number of a text by the usual conversion: blanks around are allowed; anything else is failure 13.
[[nodiscard]] double NumberFromText(std::string_view text,
                                    std::source_location where = std::source_location::current());
/// 32-bit number of a text; failure 13 if it is no number, failure 6 if it does not fit.
[[nodiscard]] std::int32_t LongFromText(std::string_view text,
                                        std::source_location where = std::source_location::current());
/// Numeric value of the leading digits ("12abc" is 12, "abc" is 0). Never fails.
[[nodiscard]] double LeadingNumber(std::string_view text) noexcept;
/// Text of a number with at most 15 significant digits and a point.
[[nodiscard]] std::string NumberToText(double value);

}  // namespace quillbook
