#include "quillbook/base/Ref.h"

#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"

namespace quillbook {

/// Ends objects whose last reference has gone.
///
/// An object that owns others nests their ends inside its own. Beyond a certain depth they wait in a list instead,
/// so that a table of contents of any depth can go without a deep call stack.
struct ObjectReaper {
  static constexpr int MaximumNesting = 64;
  static inline thread_local int nesting = 0;
  static inline thread_local std::vector<Object*>* waiting = nullptr;

  static void End(Object* object) noexcept;
  static void Destroy(Object* object) noexcept;
};

void ObjectReaper::Destroy(Object* object) noexcept {
#ifndef NDEBUG
  object->Type().CountLive(-1);
#endif
  // Weak references are empty before the destructor runs; the count stays above zero so that a temporary `Ref(this)`
  // inside the destructor doesn't end the object again.
  if (auto* block = std::exchange(object->mWeakBlock, nullptr)) {
    block->target = nullptr;
    detail::ReleaseWeakBlock(block);
  }
  object->mReferences = 0x40000000;
  delete object;
}

void ObjectReaper::End(Object* object) noexcept {
  if (nesting >= MaximumNesting) {
    waiting->push_back(object);
    return;
  }
  std::vector<Object*> list;
  const bool outermost = nesting == 0;
  if (outermost) waiting = &list;
  ++nesting;
  Destroy(object);
  if (outermost) {
    while (!list.empty()) {
      auto* next = list.back();
      list.pop_back();
      Destroy(next);
    }
    waiting = nullptr;
  }
  --nesting;
}

namespace detail {

void AddReference(Object* object) noexcept {
  ++object->mReferences;
}

void ReleaseReference(Object* object) noexcept {
  if (--object->mReferences == 0) ObjectReaper::End(object);
}

WeakBlock* AcquireWeakBlock(Object* object) {
  if (!object->mWeakBlock) object->mWeakBlock = new WeakBlock{object, 1};
  ++object->mWeakBlock->count;
  return object->mWeakBlock;
}

void ReleaseWeakBlock(WeakBlock* block) noexcept {
  if (block && --block->count == 0) delete block;
}

void NoteConstructed([[maybe_unused]] Object* object) noexcept {
#ifndef NDEBUG
  object->Type().CountLive(1);
#endif
}

void RaiseObjectNotSet(std::source_location where) {
  throw Failure(FailureNumber::ObjectNotSet, {}, where).WithoutPlace();
}

}  // namespace detail
}  // namespace quillbook
