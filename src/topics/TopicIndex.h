// Finds the first topic of a list that has a name, without a walk over the list.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Ref.h"

namespace quillbook {

class Topic;

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
  /// For a topic whose name has just changed.
  void Renamed(const Topic& topic, std::string_view oldName);

  /// Each the first in list order, or empty. Names ignore case.
  [[nodiscard]] Handle FirstOf(const Topic* topic) const;
  [[nodiscard]] Handle FirstByName(std::string_view name);
  [[nodiscard]] Handle FirstByQualifiedName(std::string_view name);

 private:
  /// The members that share one hash. Nearly always there is only one.
  class Bucket {
   public:
    void Add(Handle member);
    void Remove(Handle member);
    [[nodiscard]] bool IsEmpty() const noexcept { return !mFirst; }
    /// The first for which the test holds, in list order.
    [[nodiscard]] Handle Find(const std::function<bool(Handle)>& test) const;
    void ForEach(const std::function<void(Handle)>& visit) const;

   private:
    Handle mFirst;
    std::unique_ptr<std::set<Handle>> mAll;  ///< null while there is only one
  };
  using Table = std::unordered_map<std::uint64_t, Bucket>;

  static void AddTo(Table& table, std::uint64_t hash, Handle member) { table[hash].Add(member); }
  static void RemoveFrom(Table& table, std::uint64_t hash, Handle member);
  template <class Hash>
  Table& Filled(std::optional<Table>& table, Hash hash);

  const Members& mMembers;
  Table mByObject;
  std::optional<Table> mByName;
  std::optional<Table> mByQualifiedName;
};

}  // namespace quillbook
