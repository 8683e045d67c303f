// Owning and non-owning references to counted objects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <source_location>
#include <type_traits>
#include <utility>

namespace quillbook {

class Object;

namespace detail {

/// Shared between an object and the weak references to it; outlives the object.
struct WeakBlock {
  Object* target = nullptr;
  std::uint32_t count = 0;
};

void AddReference(Object* object) noexcept;
void ReleaseReference(Object* object) noexcept;
WeakBlock* AcquireWeakBlock(Object* object);
void ReleaseWeakBlock(WeakBlock* block) noexcept;
/// Counts a finished object into its class's live count (debug builds only).
void NoteConstructed(Object* object) noexcept;
[[noreturn]] void RaiseObjectNotSet(std::source_location where = std::source_location::current());

}  // namespace detail

/// Owning, counted reference to an object, or nothing.
///
/// Using `->` or `*` on nothing raises failure 91 (`FailureNumber::ObjectNotSet`), never a crash.
/// The count is not atomic: an object belongs to the thread that made it.
template <class T>
class Ref {
 public:
  Ref() noexcept = default;
  Ref(std::nullptr_t) noexcept {}
  /// Shares ownership of `object`; nothing for a null pointer.
  explicit Ref(T* object) noexcept
      : mObject(const_cast<std::remove_const_t<T>*>(object)) {  // counting is no change of the object's value
    if (mObject) detail::AddReference(mObject);
  }
  Ref(const Ref& other) noexcept : mObject(other.mObject) {
    if (mObject) detail::AddReference(mObject);
  }
  Ref(Ref&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
  template <class U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
  noexcept : Ref(static_cast<T*>(other.get())) {}
  ~Ref() {
    if (mObject) detail::ReleaseReference(mObject);
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(mObject, other.mObject);
    return *this;
  }

  /// Takes over the one reference that a newly made object is born with.
  [[nodiscard]] static Ref Adopt(T* object) noexcept {
    Ref result;
    result.mObject = object;
    return result;
  }

  [[nodiscard]] T* get() const noexcept { return static_cast<T*>(mObject); }
  T* operator->() const {
    if (!mObject) detail::RaiseObjectNotSet();
    return static_cast<T*>(mObject);
  }
  T& operator*() const {
    if (!mObject) detail::RaiseObjectNotSet();
    return *static_cast<T*>(mObject);
  }
  explicit operator bool() const noexcept { return mObject != nullptr; }

  /// Identity: the same object, or both nothing.
  template <class U>
  friend bool operator==(const Ref& left, const Ref<U>& right) noexcept {
    return left.identity() == right.identity();
  }
  friend bool operator==(const Ref& left, std::nullptr_t) noexcept { return left.mObject == nullptr; }

  [[nodiscard]] const Object* identity() const noexcept { return mObject; }

 private:
  // Held as the base class, so that a `Ref` to a class that is only declared can be a member and be dropped.
  Object* mObject = nullptr;
};

/// Makes an object and gives its first reference. Within the constructor `Ref(this)` is already valid.
template <class T, class... Args>
[[nodiscard]] Ref<T> New(Args&&... args) {
  auto* object = new T(std::forward<Args>(args)...);
  detail::NoteConstructed(object);
  return Ref<T>::Adopt(object);
}

/// Non-owning link to an object, normally from a member to its parent. Empty as soon as the object has gone.
template <class T>
class WeakReference {
 public:
  WeakReference() noexcept = default;
  WeakReference(const WeakReference& other) noexcept : mBlock(other.mBlock) {
    if (mBlock) ++mBlock->count;
  }
  WeakReference(WeakReference&& other) noexcept : mBlock(std::exchange(other.mBlock, nullptr)) {}
  ~WeakReference() { detail::ReleaseWeakBlock(mBlock); }
  WeakReference& operator=(WeakReference other) noexcept {
    std::swap(mBlock, other.mBlock);
    return *this;
  }

  /// The object while it lives, else nothing.
  [[nodiscard]] Ref<T> Target() const { return Ref<T>(mBlock ? static_cast<T*>(mBlock->target) : nullptr); }
  void SetTarget(const Ref<T>& target) {
    auto* block = target ? detail::AcquireWeakBlock(target.get()) : nullptr;
    detail::ReleaseWeakBlock(std::exchange(mBlock, block));
  }

 private:
  detail::WeakBlock* mBlock = nullptr;
};

}  // namespace quillbook

template <class T>
struct std::hash<quillbook::Ref<T>> {
  std::size_t operator()(const quillbook::Ref<T>& ref) const noexcept {
    return std::hash<const quillbook::Object*>()(ref.identity());
  }
};
