#include "quillbook/base/Object.h"

#include <atomic>
#include <mutex>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

std::mutex registryGuard;

std::vector<const TypeInfo*>& Registry() {
  static std::vector<const TypeInfo*> all;
  return all;
}

/// A field whose value can't be read must not hide those behind it.
Variant FieldValue(const Object& object, const TypeInfo::Entry& entry) {
  try {
    return (entry.dump ? entry.dump : entry.get)(object);
  } catch (...) {
    return Variant::Opaque{UnreadableText(CurrentFailure().Number())};
  }
}

}  // namespace

/// What stays at one place while the description itself is moved.
struct TypeInfo::Shared {
  std::vector<const Entry*> table;  ///< late-bound members by folded name, open addressing
  std::atomic<long> live{0};

  void Build(const std::vector<Entry>& entries) {
    std::size_t capacity = 8;
    while (capacity < entries.size() * 2) capacity *= 2;
    table.assign(capacity, nullptr);
    for (const auto& entry : entries) {
      if (!entry.get && !entry.call) continue;
      auto slot = FoldedHash(entry.name) & (capacity - 1);
      while (table[slot]) slot = (slot + 1) & (capacity - 1);
      table[slot] = &entry;
    }
  }
};

TypeInfo::TypeInfo(std::string_view name, const TypeInfo* base, std::vector<Entry> entries)
    : mName(name), mBase(base), mEntries(std::move(entries)), mShared(std::make_unique<Shared>()) {
  mShared->Build(mEntries);
  const std::lock_guard lock(registryGuard);
  Registry().push_back(this);
}

TypeInfo::TypeInfo(TypeInfo&& other) noexcept
    : mName(other.mName), mBase(other.mBase), mEntries(std::move(other.mEntries)), mShared(std::move(other.mShared)) {
  const std::lock_guard lock(registryGuard);
  for (auto& known : Registry())
    if (known == &other) known = this;
}

TypeInfo::~TypeInfo() {
  const std::lock_guard lock(registryGuard);
  std::erase(Registry(), this);
}

const TypeInfo::Entry* TypeInfo::FindMember(std::string_view name) const noexcept {
  const auto& table = mShared->table;
  const auto mask = table.size() - 1;
  for (auto slot = FoldedHash(name) & mask; table[slot]; slot = (slot + 1) & mask)
    if (EqualsIgnoringCase(table[slot]->name, name)) return table[slot];
  return mBase ? mBase->FindMember(name) : nullptr;
}

long TypeInfo::LiveCount() const noexcept {
  return mShared->live.load(std::memory_order_relaxed);
}

void TypeInfo::CountLive(int change) const noexcept {
  mShared->live.fetch_add(change, std::memory_order_relaxed);
}

std::vector<const TypeInfo*> TypeInfo::All() {
  const std::lock_guard lock(registryGuard);
  return Registry();
}

void detail::RaiseTypeMismatch() {
  throw Failure(FailureNumber::TypeMismatch).WithoutPlace();
}

const Variant& detail::ArgumentAt(const std::vector<Variant>& arguments, std::size_t position) {
  static const Variant omitted = Variant::Omitted();
  return position < arguments.size() ? arguments[position] : omitted;
}

void detail::RequireAtMost(const std::vector<Variant>& arguments, std::size_t count) {
  if (arguments.size() > count) throw Failure(FailureNumber::WrongArgumentCount).WithoutPlace();
}

void detail::RaiseNotOptional() {
  throw Failure(FailureNumber::ArgumentNotOptional).WithoutPlace();
}

std::string_view Object::TypeName() const {
  return Type().Name();
}

bool Object::IsOfType(std::string_view typeName) const {
  for (const auto* type = &Type(); type; type = type->Base())
    if (EqualsIgnoringCase(type->Name(), typeName)) return true;
  return false;
}

Variant Object::Member(std::string_view name, std::source_location where) const {
  const auto* entry = Type().FindMember(name);
  if (!entry || !entry->get)
    throw Failure(FailureNumber::NoSuchMember,
                  "Object of type '" + std::string(TypeName()) + "' has no member '" + std::string(name) + "'", where);
  return entry->get(*this);
}

Variant Object::Invoke(std::string_view name, const std::vector<Variant>& arguments, std::source_location where) {
  const auto* entry = Type().FindMember(name);
  if (!entry || !entry->call)
    throw Failure(FailureNumber::NoSuchMember,
                  "Object of type '" + std::string(TypeName()) + "' has no method '" + std::string(name) + "'", where);
  return entry->call(*this, arguments);
}

void Object::SetMember(std::string_view name, const Variant& value, std::source_location where) {
  const auto* entry = Type().FindMember(name);
  if (!entry || !entry->set)
    throw Failure(FailureNumber::NoSuchMember,
                  "Object of type '" + std::string(TypeName()) + "' has no member '" + std::string(name) +
                      "' that can be written",
                  where);
  entry->set(*this, value);
}

bool Object::HasMember(std::string_view name) const {
  const auto* entry = Type().FindMember(name);
  return entry && entry->get;
}

void Object::Fields(const FieldVisitor& visitor) const {
  std::vector<const TypeInfo*> chain;
  for (const auto* type = &Type(); type; type = type->Base()) chain.push_back(type);
  for (auto type = chain.rbegin(); type != chain.rend(); ++type)
    for (const auto& entry : (*type)->Entries())
      if (entry.field) visitor(entry.name, FieldValue(*this, entry));
}

}  // namespace quillbook
