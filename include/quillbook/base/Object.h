// Root of everything that can be an item: counted, named, readable by member name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "quillbook/base/Ref.h"
#include "quillbook/base/Variant.h"

namespace quillbook {

class TypeInfo;

/// A counted object with a description of its class.
///
/// Make objects with `New<T>(...)`. A class states its description once, in `static const TypeInfo& StaticType()`;
/// the state dump, late binding and type tests all read it from there.
class Object {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  [[nodiscard]] virtual const TypeInfo& Type() const = 0;
  [[nodiscard]] std::string_view TypeName() const;
  /// True if the object's class, or a class that it derives from, has this name, ignoring case.
  [[nodiscard]] bool IsOfType(std::string_view typeName) const;

  /// Late-bound read. Failure 438 for a member that the class doesn't have. Names ignore case.
  [[nodiscard]] Variant Member(std::string_view name,
                               std::source_location where = std::source_location::current()) const;
  /// Late-bound write. Failure 438 for an unknown member or one that can only be read.
  void SetMember(std::string_view name, const Variant& value,
                 std::source_location where = std::source_location::current());
  /// Late-bound call. An argument that is `Variant::Omitted()`, or that is missing at the end, is left to the method.
  /// Failure 438 for a name that is no method of the class, 449 for an argument that the method can't do without, 450
  /// for too many.
  Variant Invoke(std::string_view name, const std::vector<Variant>& arguments = {},
                 std::source_location where = std::source_location::current());
  /// True for a member that can be read.
  [[nodiscard]] bool HasMember(std::string_view name) const;

  using FieldVisitor = std::function<void(std::string_view name, const Variant& value)>;
  /// All fields in declared order, those of base classes first, for the state dump. A field that can't be read is
  /// given as the text of its failure.
  void Fields(const FieldVisitor& visitor) const;

  /// True if the object lists items, which `ForEachItem` then gives in order.
  [[nodiscard]] virtual bool Enumerable() const { return false; }
  virtual void ForEachItem(const std::function<void(const Variant&)>&) const {}

 protected:
  Object() = default;
  virtual ~Object() = default;

 private:
  friend void detail::AddReference(Object*) noexcept;
  friend void detail::ReleaseReference(Object*) noexcept;
  friend detail::WeakBlock* detail::AcquireWeakBlock(Object*);
  friend struct ObjectReaper;

  std::uint32_t mReferences = 1;
  detail::WeakBlock* mWeakBlock = nullptr;
};

/// Base of the classes of the object library. The state dump names a field of such a class but doesn't open it.
class LibraryObject : public Object {};

/// Description of one class: its name and its members in declared order.
class TypeInfo {
 public:
  struct Entry {
    std::string_view name;
    bool field = false;  ///< belongs to the state dump
    Variant (*dump)(const Object&) = nullptr;
    Variant (*get)(const Object&) = nullptr;
    void (*set)(Object&, const Variant&) = nullptr;
    Variant (*call)(Object&, const std::vector<Variant>&) = nullptr;
  };

  TypeInfo(std::string_view name, const TypeInfo* base, std::vector<Entry> entries);
  TypeInfo(TypeInfo&&) noexcept;
  ~TypeInfo();

  [[nodiscard]] std::string_view Name() const noexcept { return mName; }
  [[nodiscard]] const TypeInfo* Base() const noexcept { return mBase; }
  [[nodiscard]] const std::vector<Entry>& Entries() const noexcept { return mEntries; }
  /// The late-bound member of this class or a base class; null if there is none.
  [[nodiscard]] const Entry* FindMember(std::string_view name) const noexcept;

  /// Number of living objects of exactly this class. Counted in debug builds only; else always 0.
  [[nodiscard]] long LiveCount() const noexcept;
  /// For `New` and the end of an object.
  void CountLive(int change) const noexcept;
  /// Every description made so far, for tests that walk all classes.
  [[nodiscard]] static std::vector<const TypeInfo*> All();

 private:
  struct Shared;

  std::string_view mName;
  const TypeInfo* mBase;
  std::vector<Entry> mEntries;
  std::unique_ptr<Shared> mShared;
};

namespace detail {

template <class T>
struct MemberOf;
template <class C, class V>
struct MemberOf<V C::*> {
  using Class = C;
  using Value = V;
};

template <class T>
struct IsRef : std::false_type {};
template <class T>
struct IsRef<Ref<T>> : std::true_type {
  using Target = T;
};
template <class T>
struct IsWeak : std::false_type {};
template <class T>
struct IsWeak<WeakReference<T>> : std::true_type {};

[[noreturn]] void RaiseTypeMismatch();

/// A member's value as a late-bound read gives it.
template <class V>
Variant MakeVariant(const V& value) {
  if constexpr (IsWeak<V>::value) {
    return Variant(value.Target());
  } else {
    return Variant(value);
  }
}

/// A member's value as the state dump shows it.
template <class V>
Variant MakeDumpValue(const V& value) {
  if constexpr (IsWeak<V>::value) {
    return Variant::Opaque{"{WeakReference}"};
  } else if constexpr (IsRef<V>::value) {
    if constexpr (std::is_base_of_v<LibraryObject, typename IsRef<V>::Target>)
      return Variant::Opaque{"{Cannot dump external UDTs}"};
    else
      return Variant(value);
  } else if constexpr (std::is_base_of_v<LibraryObject, V>) {
    return Variant::Opaque{"{Cannot dump external UDTs}"};
  } else if constexpr (std::is_base_of_v<Object, V>) {
    return Variant(Ref<Object>(const_cast<V*>(&value)));  // the reference lives only as long as the dump
  } else {
    return MakeVariant(value);
  }
}

template <class V>
V FromVariant(const Variant& value) {
  if constexpr (std::is_same_v<V, bool>) {
    return value.ToBoolean();
  } else if constexpr (std::is_enum_v<V> || std::is_integral_v<V>) {
    return static_cast<V>(value.ToLong());
  } else if constexpr (std::is_floating_point_v<V>) {
    return static_cast<V>(value.ToNumber());
  } else if constexpr (std::is_same_v<V, Date>) {
    return value.ToDate();
  } else if constexpr (IsRef<V>::value) {
    const auto object = value.ToObject();
    auto* target = dynamic_cast<typename IsRef<V>::Target*>(object.get());
    if (object && !target) RaiseTypeMismatch();
    return V(target);
  } else if constexpr (std::is_same_v<V, Variant>) {
    return value;
  } else {
    return V(value.ToText());
  }
}

template <class F>
struct Setter;
template <class C, class A>
struct Setter<void (C::*)(A)> {
  using Argument = std::remove_cvref_t<A>;
};
template <class C, class A>
struct Setter<void (C::*)(A) noexcept> : Setter<void (C::*)(A)> {};

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {
  using Value = T;
};

/// What holds an argument until the method has returned.
template <class A>
using StoredArgument =
    std::conditional_t<std::is_same_v<std::remove_cvref_t<A>, std::string_view>, std::string, std::remove_cvref_t<A>>;

template <class F>
struct Signature;
template <class C, class R, class... A>
struct Signature<R (C::*)(A...)> {
  using Result = R;
  using Arguments = std::tuple<StoredArgument<A>...>;
};
template <class C, class R, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)> {};

[[nodiscard]] const Variant& ArgumentAt(const std::vector<Variant>& arguments, std::size_t position);
void RequireAtMost(const std::vector<Variant>& arguments, std::size_t count);
[[noreturn]] void RaiseNotOptional();

template <class V>
V ArgumentFromVariant(const Variant& value) {
  if constexpr (IsOptional<V>::value) {
    return value.IsOmitted() ? V() : V(FromVariant<typename IsOptional<V>::Value>(value));
  } else if constexpr (std::is_same_v<V, Variant>) {
    return value;
  } else {
    if (value.IsOmitted()) RaiseNotOptional();
    return FromVariant<V>(value);
  }
}

}  // namespace detail

/// Builds the description of class `T`:
///
///     static const TypeInfo type = Describe<Topic>("Topic")
///         .Field<&Topic::mName>("mName")                       // dumped, in declared order
///         .Property<&Topic::Name, &Topic::SetName>("Name")     // late-bound read and write
///         .ReadOnly<&Topic::QualifiedName>("QualifiedName")    // late-bound read
///         .Method<&Topic::MoveTo>("MoveTo")                    // late-bound call
///         .Done();
template <class T>
class Describe {
 public:
  explicit Describe(std::string_view name, const TypeInfo* base = nullptr) : mName(name), mBase(base) {}

  /// A private field: dumped under this name, not a late-bound member.
  template <auto M>
  Describe& Field(std::string_view name) {
    mEntries.push_back({name, true, &DumpMember<M>, nullptr, nullptr});
    return *this;
  }
  /// A public variable: dumped, and late-bound for reading and writing.
  template <auto M>
  Describe& Public(std::string_view name) {
    using V = typename detail::MemberOf<decltype(M)>::Value;
    TypeInfo::Entry entry{name, true, &DumpMember<M>, &GetMember<M>, nullptr};
    if constexpr (!std::is_base_of_v<Object, V> && !detail::IsWeak<V>::value) entry.set = &SetMember<M>;
    mEntries.push_back(entry);
    return *this;
  }
  /// A value that is dumped as a field but computed by a getter.
  template <auto Getter>
  Describe& ComputedField(std::string_view name) {
    mEntries.push_back({name, true, &CallGetter<Getter>, nullptr, nullptr});
    return *this;
  }
  template <auto Getter, auto SetterFunction>
  Describe& Property(std::string_view name) {
    mEntries.push_back({name, false, nullptr, &CallGetter<Getter>, &CallSetter<SetterFunction>});
    return *this;
  }
  template <auto Getter>
  Describe& ReadOnly(std::string_view name) {
    mEntries.push_back({name, false, nullptr, &CallGetter<Getter>, nullptr});
    return *this;
  }
  /// Parameters of type `std::optional` may be left out, and those of type `Variant`, which then is `Omitted`.
  template <auto M>
  Describe& Method(std::string_view name) {
    mEntries.push_back({name, false, nullptr, nullptr, nullptr, &CallMethod<M>});
    return *this;
  }
  [[nodiscard]] TypeInfo Done() { return TypeInfo(mName, mBase, std::move(mEntries)); }

 private:
  template <auto M>
  static Variant DumpMember(const Object& object) {
    return detail::MakeDumpValue(static_cast<const T&>(object).*M);
  }
  template <auto M>
  static Variant GetMember(const Object& object) {
    const auto& value = static_cast<const T&>(object).*M;
    using V = std::remove_cvref_t<decltype(value)>;
    if constexpr (std::is_base_of_v<Object, V>)
      return Variant(Ref<Object>(const_cast<V*>(&value)));
    else
      return detail::MakeVariant(value);
  }
  template <auto M>
  static void SetMember(Object& object, const Variant& value) {
    auto& member = static_cast<T&>(object).*M;
    member = detail::FromVariant<std::remove_cvref_t<decltype(member)>>(value);
  }
  template <auto Getter>
  static Variant CallGetter(const Object& object) {
    // Getters that fill a lazily made member aren't const; the object handed in is never a constant one.
    return detail::MakeVariant((const_cast<T&>(static_cast<const T&>(object)).*Getter)());
  }
  template <auto SetterFunction>
  static void CallSetter(Object& object, const Variant& value) {
    using A = typename detail::Setter<decltype(SetterFunction)>::Argument;
    using V = std::conditional_t<std::is_same_v<A, std::string_view>, std::string, A>;
    (static_cast<T&>(object).*SetterFunction)(detail::FromVariant<V>(value));
  }

  template <auto M>
  static Variant CallMethod(Object& object, const std::vector<Variant>& arguments) {
    using Arguments = typename detail::Signature<decltype(M)>::Arguments;
    detail::RequireAtMost(arguments, std::tuple_size_v<Arguments>);
    return Spread<M, Arguments>(static_cast<T&>(object), arguments,
                                std::make_index_sequence<std::tuple_size_v<Arguments>>());
  }
  template <auto M, class Arguments, std::size_t... I>
  static Variant Spread(T& object, const std::vector<Variant>& arguments, std::index_sequence<I...>) {
    const auto call = [&] {
      return (object.*
              M)(detail::ArgumentFromVariant<std::tuple_element_t<I, Arguments>>(detail::ArgumentAt(arguments, I))...);
    };
    if constexpr (std::is_void_v<typename detail::Signature<decltype(M)>::Result>) {
      call();
      return {};
    } else {
      return detail::MakeVariant(call());
    }
  }

  std::string_view mName;
  const TypeInfo* mBase;
  std::vector<TypeInfo::Entry> mEntries;
};

}  // namespace quillbook
