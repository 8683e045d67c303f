#include "quillbook/base/SortedCollection.h"

namespace quillbook {

void SortedCollection::Add(Ref<Object> item, std::string_view key, std::source_location where) {
  auto folded = FoldCase(key);
  if (!Sorted && std::any_of(mMembers.begin(), mMembers.end(), [&](const Member& m) { return m.key == folded; }))
    throw Failure(FailureNumber::KeyAlreadyExists, {}, where);
  mInOrder = mInOrder && (mMembers.empty() || mMembers.back().key <= folded);
  mMembers.push_back({std::move(folded), std::move(item)});
}

const Ref<Object>& SortedCollection::Item(std::size_t position, std::source_location where) const {
  if (position < 1 || position > mMembers.size()) throw Failure(FailureNumber::SubscriptOutOfRange, {}, where);
  PutInOrder();
  return mMembers[position - 1].item;
}

void SortedCollection::ForEachItem(const std::function<void(const Variant&)>& visit) const {
  PutInOrder();
  for (const auto& member : mMembers) visit(Variant(member.item));
}

void SortedCollection::PutInOrder() const {
  if (mInOrder) return;
  std::stable_sort(mMembers.begin(), mMembers.end(),
                   [](const Member& left, const Member& right) { return left.key < right.key; });
  mInOrder = true;
}

const TypeInfo& SortedCollection::StaticType() {
  static const TypeInfo type = Describe<SortedCollection>("SortedCollection")
                                   .Public<&SortedCollection::Sorted>("Sorted")
                                   .ReadOnly<&SortedCollection::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
