#include "topics/TopicIndex.h"

#include <functional>

#include "quillbook/frame/modMain.h"
#include "quillbook/topics/Topic.h"

namespace quillbook {

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
  if (mAll) {
    mAll->erase(member);
    mFirst = mAll->empty() ? Handle() : *mAll->begin();
  } else if (mFirst == member) {
    mFirst = {};
  }
}

TopicIndex::TopicIndex(const Members& members) : mMembers(members) {
  for (std::size_t position = 1; position <= members.Count(); ++position) Add(members.HandleOf(position));
}

TopicIndex::~TopicIndex() {
  for (const auto& topic : mMembers)
    if (topic) std::erase_if(topic->mPlaces, [&](const TopicPlace& place) { return place.index == this; });
}

void TopicIndex::Add(Handle member) {
  const auto& topic = *member;
  if (!topic) return;  // nothing can be a member too; it has no name
  topic->mPlaces.push_back({this, member});
  if (mByName) AddTo(*mByName, topic->Name(), member);
  if (mByQualifiedName) AddTo(*mByQualifiedName, topic->QualifiedName(), member);
}

void TopicIndex::Remove(Handle member) {
  const auto& topic = *member;
  if (!topic) return;
  std::erase_if(topic->mPlaces, [&](const TopicPlace& place) { return place.index == this && place.member == member; });
  if (mByName) RemoveFrom(*mByName, topic->Name(), member);
  if (mByQualifiedName) RemoveFrom(*mByQualifiedName, topic->QualifiedName(), member);
}

void TopicIndex::Renamed(Handle member, std::string_view oldName) {
  const auto& topic = *member;
  if (mByName) {
    RemoveFrom(*mByName, oldName, member);
    AddTo(*mByName, topic->Name(), member);
  }
  if (mByQualifiedName) {
    RemoveFrom(*mByQualifiedName, modMain::SafeFileName(oldName), member);
    AddTo(*mByQualifiedName, topic->QualifiedName(), member);
  }
}

TopicIndex::Handle TopicIndex::FirstOf(const Topic& topic) const {
  Handle first;
  for (const auto& place : topic.mPlaces)
    if (place.index == this && (!first || place.member < first)) first = place.member;
  return first;
}

TopicIndex::Handle TopicIndex::FirstByName(std::string_view name) {
  return FirstIn(Filled(mByName, &Topic::Name), name);
}

TopicIndex::Handle TopicIndex::FirstByQualifiedName(std::string_view name) {
  return FirstIn(Filled(mByQualifiedName, &Topic::QualifiedName), name);
}

template <class NameOf>
const TopicIndex::Table& TopicIndex::Filled(std::optional<Table>& table, NameOf nameOf) const {
  if (!table) {
    table.emplace(mMembers.Count());
    for (std::size_t position = 1; position <= mMembers.Count(); ++position) {
      const auto member = mMembers.HandleOf(position);
      if (const auto& topic = *member) AddTo(*table, std::invoke(nameOf, *topic), member);
    }
  }
  return *table;
}

void TopicIndex::AddTo(Table& table, std::string_view name, Handle member) {
  table.try_emplace(std::string(name)).first->second.Add(member);
}

void TopicIndex::RemoveFrom(Table& table, std::string_view name, Handle member) {
  const auto bucket = table.find(name);
  if (bucket == table.end()) return;
  bucket->second.Remove(member);
  if (!bucket->second.First()) table.erase(bucket);
}

TopicIndex::Handle TopicIndex::FirstIn(const Table& table, std::string_view name) {
  const auto bucket = table.find(name);
  return bucket == table.end() ? Handle() : bucket->second.First();
}

}  // namespace quillbook
