// Finds the topics of a list without a walk over it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Ref.h"
#include "quillbook/base/Text.h"

namespace quillbook {

class Topic;
class TopicIndex;

/// One member of an indexed list, as the member itself keeps it: a topic tells all its places of a new name.
struct TopicPlace {
  TopicIndex* index = nullptr;
  Collection<Ref<Topic>>::Handle member;
};

/// Members of a topic list by object, by name and by qualified name, each in list order.
///
/// The list tells it of additions and removals, and the topics of new names, so that an answer is always the one that
/// a walk from the front would give. Each table is filled when it is first asked. Constant time, logarithmic in the
/// number of members that share one name.
class TopicIndex {
 public:
  using Members = Collection<Ref<Topic>>;
  using Handle = Members::Handle;

  explicit TopicIndex(const Members& members);
  TopicIndex(const TopicIndex&) = delete;
  TopicIndex& operator=(const TopicIndex&) = delete;
  ~TopicIndex();

  /// For a member that has just been added.
  void Add(Handle member);
  /// For a member that is just about to be removed.
  void Remove(Handle member);
  /// For a member whose name has just changed.
  void Renamed(Handle member, std::string_view oldName);

  /// Each the first in list order, or empty. Names ignore case.
  [[nodiscard]] Handle FirstOf(const Topic& topic) const;
  [[nodiscard]] Handle FirstByName(std::string_view name);
  [[nodiscard]] Handle FirstByQualifiedName(std::string_view name);

 private:
  /// The members that share one name. Nearly always there is only one.
  class Bucket {
   public:
    void Add(Handle member);
    void Remove(Handle member);
    /// Empty if there is none.
    [[nodiscard]] Handle First() const noexcept { return mFirst; }

   private:
    Handle mFirst;
    std::unique_ptr<std::set<Handle>> mAll;  ///< null while there is only one
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return FoldedHash(text); }
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const noexcept { return EqualsIgnoringCase(a, b); }
  };
  using Table = std::unordered_map<std::string, Bucket, Hash, Equal>;

  /// The table, filled by what `nameOf` gives for each topic if it isn't there yet.
  template <class NameOf>
  const Table& Filled(std::optional<Table>& table, NameOf nameOf) const;
  static void AddTo(Table& table, std::string_view name, Handle member);
  static void RemoveFrom(Table& table, std::string_view name, Handle member);
  static Handle FirstIn(const Table& table, std::string_view name);

  const Members& mMembers;
  std::optional<Table> mByName;
  std::optional<Table> mByQualifiedName;
};

}  // namespace quillbook
