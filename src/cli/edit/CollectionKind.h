// Records that stand in a keyed collection of the library.
#pragma once

#include "cli/edit/RecordKind.h"
#include "quillbook/base/KeyOrPosition.h"

namespace quillbook::cli {

/// A kind whose records are the members of one collection.
template <class T, class List>
class CollectionKind : public RecordKind {
 public:
  [[nodiscard]] std::vector<Record> All(const Scope& scope) const override {
    std::vector<Record> records;
    for (const auto& member : *Members(scope)) records.push_back({member, scope.topic});
    return records;
  }

  [[nodiscard]] Record Add(const Scope& scope, const std::string& name, const Place& place) const override {
    const auto member = Make(scope, name);
    Insert(scope, member, place);
    return {member, scope.topic};
  }

  void Remove(const Scope& scope, const Record& record) const override {
    Members(scope)->Remove(MemberKey(record.As<T>()));
  }

  void Move(const Scope& scope, const Record& record, const Place& place) const override {
    const Ref<T> member(&record.As<T>());
    Members(scope)->Remove(MemberKey(*member));
    Insert(scope, member, place);
  }

 protected:
  [[nodiscard]] virtual Ref<List> Members(const Scope& scope) const = 0;
  /// A new member of this name, in no collection yet.
  [[nodiscard]] virtual Ref<T> Make(const Scope& scope, const std::string& name) const = 0;
  /// Under what the member is filed.
  [[nodiscard]] virtual std::string MemberKey(const T& member) const = 0;

 private:
  void Insert(const Scope& scope, const Ref<T>& member, const Place& place) const {
    const auto members = Members(scope);
    const auto key = MemberKey(*member);
    const auto beside = place.neighbour.object ? MemberKey(place.neighbour.As<T>()) : std::string();
    switch (place.where) {
      case Place::Where::Before: members->Add(member, key, KeyOrPosition(beside)); break;
      case Place::Where::After: members->Add(member, key, {}, KeyOrPosition(beside)); break;
      case Place::Where::First:
        members->Add(member, key, members->Count() == 0 ? KeyOrPosition() : KeyOrPosition(1));
        break;
      default: members->Add(member, key);
    }
  }
};

}  // namespace quillbook::cli
