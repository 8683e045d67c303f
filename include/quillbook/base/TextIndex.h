// Finds the members of a list by one of their texts, and follows when that text changes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbook {

class Object;
class TextIndex;

/// A text that tells the indexes in which it stands when it changes. Neither copied nor moved.
class IndexedText {
 public:
  IndexedText() = default;
  IndexedText(const IndexedText&) = delete;
  IndexedText& operator=(const IndexedText&) = delete;
  ~IndexedText();

  [[nodiscard]] const std::string& Value() const noexcept { return mValue; }
  void Set(std::string_view value);

 private:
  friend class TextIndex;

  std::string mValue;
  std::vector<TextIndex*> mIndexes;  ///< one entry for each time that it stands in an index
};

/// Texts with the objects that they belong to, found ignoring case in constant time.
class TextIndex {
 public:
  TextIndex() = default;
  TextIndex(const TextIndex&) = delete;
  TextIndex& operator=(const TextIndex&) = delete;
  ~TextIndex() { Clear(); }

  /// The index doesn't keep `owner` alive; take the text out before `owner` goes. A text may be added more than once.
  void Add(IndexedText& text, Object* owner);
  /// Takes the text out once; nothing happens if it isn't there.
  void Remove(IndexedText& text);
  void Clear() noexcept;

  /// Owners of the texts that equal `text` ignoring case, in no particular order and at most `limit` of them.
  [[nodiscard]] std::vector<Object*> Find(std::string_view text, std::size_t limit = SIZE_MAX) const;

 private:
  friend class IndexedText;

  struct Entry {
    IndexedText* text;
    Object* owner;
  };
  using Entries = std::unordered_multimap<std::uint64_t, Entry>;

  [[nodiscard]] Entries::iterator Locate(const IndexedText& text, std::uint64_t hash);
  void Rehash(const IndexedText& text, std::uint64_t before, std::uint64_t after);

  Entries mEntries;  ///< by hash of the case-folded text
};

}  // namespace quillbook
