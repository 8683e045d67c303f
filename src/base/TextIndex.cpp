#include "quillbook/base/TextIndex.h"

#include <algorithm>
#include <iterator>

#include "quillbook/base/Text.h"

namespace quillbook {

IndexedText::~IndexedText() {
  while (!mIndexes.empty()) mIndexes.back()->Remove(*this);
}

void IndexedText::Set(std::string_view value) {
  const auto before = FoldedHash(mValue);
  const auto after = FoldedHash(value);
  if (before != after)
    for (auto* index : mIndexes) index->Rehash(*this, before, after);
  mValue = value;
}

void TextIndex::Add(IndexedText& text, Object* owner) {
  text.mIndexes.reserve(text.mIndexes.size() + 1);
  mEntries.emplace(FoldedHash(text.mValue), Entry{&text, owner});
  text.mIndexes.push_back(this);
}

void TextIndex::Remove(IndexedText& text) {
  const auto place = std::find(text.mIndexes.begin(), text.mIndexes.end(), this);
  if (place == text.mIndexes.end()) return;
  text.mIndexes.erase(place);
  mEntries.erase(Locate(text, FoldedHash(text.mValue)));
}

void TextIndex::Clear() noexcept {
  for (const auto& [hash, entry] : mEntries) {
    auto& indexes = entry.text->mIndexes;
    indexes.erase(std::find(indexes.begin(), indexes.end(), this));
  }
  mEntries.clear();
}

std::vector<Object*> TextIndex::Find(std::string_view text, std::size_t limit) const {
  std::vector<Object*> found;
  const auto hash = FoldedHash(text);
  for (auto at = mEntries.find(hash); at != mEntries.end() && at->first == hash && found.size() < limit; ++at)
    if (EqualsIgnoringCase(at->second.text->mValue, text)) found.push_back(at->second.owner);
  return found;
}

TextIndex::Entries::iterator TextIndex::Locate(const IndexedText& text, std::uint64_t hash) {
  const auto [first, last] = mEntries.equal_range(hash);
  return std::find_if(first, last, [&](const auto& entry) { return entry.second.text == &text; });
}

void TextIndex::Rehash(const IndexedText& text, std::uint64_t before, std::uint64_t after) {
  auto node = mEntries.extract(Locate(text, before));
  node.key() = after;
  mEntries.insert(std::move(node));
}

}  // namespace quillbook
