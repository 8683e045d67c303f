// A kind of record that the editing commands know.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/edit/Field.h"
#include "cli/edit/Record.h"

namespace quillbook::cli {

/// What a user wants a field to hold.
struct Assignment {
  const Field* field;
  Values values;
};

/// What the commands can do with a kind of record.
enum class Action : std::uint8_t { List, Show, Add, Set, Remove, Move };

/// How a kind is called and addressed.
struct KindInfo {
  std::string_view name;      ///< the command, such as "topics"
  std::string_view singular;  ///< such as "topic"
  std::string_view summary;   ///< for the help
  std::string_view address;   ///< what NAME is, for the help
  std::string_view nameField = "name";
  std::vector<Action> actions = {Action::List, Action::Show, Action::Add, Action::Set, Action::Remove, Action::Move};
  bool uniqueNames = true;  ///< two records of one name are refused
  bool ofTopic = false;     ///< records belong to a topic, which is named first
  bool single = false;      ///< there is one record, which isn't named
  bool named = true;        ///< `add` takes the name as an argument of its own
  bool tree = false;        ///< records stand below each other
};

/// Reads and changes the records of one kind in a project.
class RecordKind {
 public:
  RecordKind() = default;
  RecordKind(const RecordKind&) = delete;
  RecordKind& operator=(const RecordKind&) = delete;
  virtual ~RecordKind() = default;

  [[nodiscard]] virtual const KindInfo& Info() const = 0;
  /// In the order of help and views. Values are written in this order too.
  [[nodiscard]] virtual const std::vector<Field>& Fields() const = 0;
  /// In the order of the project.
  [[nodiscard]] virtual std::vector<Record> All(const Scope& scope) const = 0;

  /// A new record, still without anything but its name.
  [[nodiscard]] virtual Record Add(const Scope& scope, const std::string& name, const Place& place) const;
  virtual void Remove(const Scope& scope, const Record& record) const;
  virtual void Move(const Scope& scope, const Record& record, const Place& place) const;

  /// Adds what follows from the values given, and refuses what contradicts itself. `record` is nothing for one that
  /// is to be added.
  virtual void Complete(QBProject& /*project*/, const Record& /*record*/,
                        std::vector<Assignment>& /*assignments*/) const {}
  /// Refuses a record that the project file couldn't hold.
  virtual void Verify(QBProject& /*project*/, const Record& /*record*/) const {}
  /// The record as it stands after a change, with its new place.
  [[nodiscard]] virtual Record Refreshed(const Scope& /*scope*/, const Record& record) const { return record; }
  /// What a reader should know of a change, though it was made; empty for nothing.
  [[nodiscard]] virtual std::string Warning(QBProject& /*project*/, const Record& /*record*/) const { return {}; }
  /// For people, such as: topic "watering"
  [[nodiscard]] virtual std::string Describe(QBProject& project, const Record& record) const;
  /// True if the address names this record; by default its name ignoring case.
  [[nodiscard]] virtual bool IsNamed(QBProject& project, const Record& record, std::string_view address) const;

  /// The one record with this key, path or name. Raises `Refusal`.
  [[nodiscard]] Record Find(const Scope& scope, std::string_view address) const;
  [[nodiscard]] const Field* FindField(std::string_view name) const;
  [[nodiscard]] std::string NameOf(QBProject& project, const Record& record) const;
  /// Empty for a record without.
  [[nodiscard]] std::string KeyOf(QBProject& project, const Record& record) const;
};

/// Gives the assignment of a field; null if there is none.
[[nodiscard]] Assignment* FindAssignment(std::vector<Assignment>& assignments, std::string_view field);

}  // namespace quillbook::cli
