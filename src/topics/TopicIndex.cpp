#include "topics/TopicIndex.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/topics/Topic.h"

namespace quillbook {

namespace {

std::uint64_t HashOf(const Topic* topic) noexcept {
  return std::hash<const Topic*>()(topic);
}

std::uint64_t NameHash(std::string_view name) noexcept {
  return FoldedHash(name);
}

std::uint64_t QualifiedHash(std::string_view name) {
  return FoldedHash(modMain::SafeFileName(name));
}

}  // namespace

void TopicIndex::Bucket::Add(Handle member) {
  if (!mFirst) {
    mFirst = member;
    return;
  }
  if (!mAll) mAll = std::make_unique<std::set<Handle>>(std::set<Handle>{mFirst});
  mAll->insert(member);
  mFirst = *mAll->begin();
}

void TopicIndex::Bucket::Remove(Handle member) {
  if (mAll) mAll->erase(member);
  if (mAll && !mAll->empty())
    mFirst = *mAll->begin();
  else if (mAll || mFirst == member)
    mFirst = {};
  if (!mFirst) mAll.reset();
}

TopicIndex::Handle TopicIndex::Bucket::Find(const std::function<bool(Handle)>& test) const {
  if (!mFirst || test(mFirst)) return mFirst;
  if (mAll)
    for (const auto member : *mAll)
      if (test(member)) return member;
  return {};
}

void TopicIndex::Bucket::ForEach(const std::function<void(Handle)>& visit) const {
  if (mAll)
    for (const auto member : *mAll) visit(member);
  else if (mFirst)
    visit(mFirst);
}

TopicIndex::TopicIndex(const Members& members) : mMembers(members) {
  mByObject.reserve(members.Count());
  for (std::size_t position = 1; position <= members.Count(); ++position) Add(members.HandleOf(position));
}

TopicIndex::~TopicIndex() {
  for (const auto& topic : mMembers)
    if (topic) std::erase(topic->mIndexes, this);
}

void TopicIndex::Add(Handle member) {
  const auto& topic = *member;
  auto& bucket = mByObject[HashOf(topic.get())];
  if (topic && bucket.IsEmpty()) topic->mIndexes.push_back(this);
  bucket.Add(member);
  if (!topic) return;
  if (mByName) AddTo(*mByName, NameHash(topic->Name()), member);
  if (mByQualifiedName) AddTo(*mByQualifiedName, QualifiedHash(topic->Name()), member);
}

void TopicIndex::Remove(Handle member) {
  const auto& topic = *member;
  const auto hash = HashOf(topic.get());
  RemoveFrom(mByObject, hash, member);
  if (!topic) return;
  if (!mByObject.contains(hash)) std::erase(topic->mIndexes, this);
  if (mByName) RemoveFrom(*mByName, NameHash(topic->Name()), member);
  if (mByQualifiedName) RemoveFrom(*mByQualifiedName, QualifiedHash(topic->Name()), member);
}

void TopicIndex::RemoveFrom(Table& table, std::uint64_t hash, Handle member) {
  const auto bucket = table.find(hash);
  if (bucket == table.end()) return;
  bucket->second.Remove(member);
  if (bucket->second.IsEmpty()) table.erase(bucket);
}

void TopicIndex::Renamed(const Topic& topic, std::string_view oldName) {
  const auto entries = mByObject.find(HashOf(&topic));
  if (entries == mByObject.end()) return;
  const auto move = [&](std::optional<Table>& table, auto hash) {
    if (!table) return;
    entries->second.ForEach([&](Handle member) {
      RemoveFrom(*table, hash(oldName), member);
      AddTo(*table, hash(topic.Name()), member);
    });
  };
  move(mByName, NameHash);
  move(mByQualifiedName, QualifiedHash);
}

TopicIndex::Handle TopicIndex::FirstOf(const Topic* topic) const {
  const auto bucket = mByObject.find(HashOf(topic));
  if (bucket == mByObject.end()) return {};
  return bucket->second.Find([&](Handle member) { return member->get() == topic; });
}

template <class Hash>
TopicIndex::Table& TopicIndex::Filled(std::optional<Table>& table, Hash hash) {
  if (!table) {
    table.emplace();
    table->reserve(mMembers.Count());
    for (std::size_t position = 1; position <= mMembers.Count(); ++position) {
      const auto member = mMembers.HandleOf(position);
      if (*member) AddTo(*table, hash((*member)->Name()), member);
    }
  }
  return *table;
}

TopicIndex::Handle TopicIndex::FirstByName(std::string_view name) {
  const auto& table = Filled(mByName, NameHash);
  const auto bucket = table.find(NameHash(name));
  if (bucket == table.end()) return {};
  return bucket->second.Find([&](Handle member) { return EqualsIgnoringCase((*member)->Name(), name); });
}

TopicIndex::Handle TopicIndex::FirstByQualifiedName(std::string_view name) {
  const auto& table = Filled(mByQualifiedName, QualifiedHash);
  const auto bucket = table.find(FoldedHash(name));
  if (bucket == table.end()) return {};
  return bucket->second.Find([&](Handle member) { return EqualsIgnoringCase((*member)->QualifiedName(), name); });
}

}  // namespace quillbook
