// What an operation of the model test works on, and what operations on lists have in common.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Model.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/KeyOrPosition.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Root.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "support/FailureLog.h"
#include "support/MemoryRegistryStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook::model {

/// The texts that properties are set to: few, so that the same comes up again, and none of them harmless.
inline constexpr std::string_view Texts[] = {"",
                                             "a",
                                             "A",
                                             "b",
                                             "Größe",
                                             "GRÖßE",
                                             "two words",
                                             " blanks ",
                                             "]]> <b> & \"q\" 'x'",
                                             "\r\n",
                                             "one\r\ntwo",
                                             "one\ntwo\n",
                                             "7",
                                             "High",
                                             "\ttab\t",
                                             "glossary.html",
                                             "Glossary.HTML",
                                             "a/b:c*d?",
                                             "{brace}",
                                             "😀 ﬁ",
                                             "Low",
                                             "Medium",
                                             "a very long text that doesn't fit where short ones do"};

/// Numbers that follow from a seed alone, whatever else a step does.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : mState(seed) {}

  std::uint64_t Next() noexcept;
  /// From 0; `count` must not be 0.
  std::size_t Below(std::size_t count) noexcept { return static_cast<std::size_t>(Next() % count); }
  bool OneIn(std::size_t count) noexcept { return Below(count) == 0; }
  template <class List>
  auto& Of(List& list) noexcept {
    return list[Below(std::size(list))];
  }
  std::string_view Text() noexcept { return Of(Texts); }

 private:
  std::uint64_t mState;
};

/// A project beside its model.
class World {
 public:
  World();

  /// Does a step: runs the operation, then looks for anything that isn't as the model has it. Gives the fault, or
  /// nothing.
  std::string Do(void (*operation)(World&), std::uint64_t seed);

  /// The library is to report this in the present step, "Module.Procedure number".
  void Expect(std::string failure) { mExpected.push_back(std::move(failure)); }
  void Expect(std::string_view procedure, FailureNumber number);
  /// What the present step does, for whoever reads of a fault.
  void Say(std::string_view what, std::string_view value = {});
  [[nodiscard]] const std::string& Said() const noexcept { return mSaid; }
  /// The present step has shown a fault by itself.
  void Fault(std::string what) { mFault = std::move(what); }
  /// A new project, to lie where all projects of this world lie.
  [[nodiscard]] Ref<QBProject> NewProject() const;
  /// A stored path beside the project's folder, which is called "p"; none for no name.
  [[nodiscard]] std::string Path(std::string_view name) const {
    return name.empty() ? std::string() : folder.Stored(name);
  }
  [[nodiscard]] bool IsOfThisStep(Date moment) const { return mStart <= moment && moment <= Date::Now(); }

  support::TemporaryFolder folder;
  support::FailureLog failures;
  PlatformOverride<RegistryStore> registry{std::make_shared<support::MemoryRegistryStore>()};
  Ref<Root> root = New<Root>();  ///< keeps what the library reads from its installation
  Ref<QBProject> project = NewProject();
  Model model;
  std::optional<Model> saved;  ///< what the project's file holds; none as long as there is no file
  Dice dice{0};

 private:
  std::vector<std::string> mExpected;
  std::string mSaid;
  std::string mFault;
  Date mStart;
};

/// Something that a user may do. Each picks its objects and values by the dice.
struct Operation {
  std::string_view name;
  unsigned weight;
  void (*run)(World&);
};
std::span<const Operation> TopicOperations();
std::span<const Operation> ContentsOperations();
std::span<const Operation> ListOperations();
std::span<const Operation> ProjectOperations();

/// Lists don't grow beyond this, so that a step costs about the same throughout.
inline constexpr std::size_t MostMembers = 12;

template <class State>
[[nodiscard]] std::string_view KeyOf(const State& state) {
  if constexpr (requires { state.key; })
    return state.key;
  else
    return {};
}

template <class State>
[[nodiscard]] State* FindByKey(std::vector<State>& states, std::string_view key) {
  for (auto& state : states)
    if (EqualsIgnoringCase(KeyOf(state), key)) return &state;
  return nullptr;
}

/// Where a new member goes: the arguments, and what must come of them.
struct Place {
  KeyOrPosition before;
  KeyOrPosition after;
  std::size_t index = 0;
  FailureNumber failure = FailureNumber::None;
};

/// Names a member of a list by key or position; one that the list doesn't have is among the choices.
struct Choice {
  std::size_t position = 0;  ///< from 1
  bool known = false;
  std::string key;
  bool byKey = false;
  [[nodiscard]] KeyOrPosition Name() const { return byKey ? KeyOrPosition(key) : KeyOrPosition(position); }
  [[nodiscard]] FailureNumber Failure() const {
    return byKey ? FailureNumber::InvalidCall : FailureNumber::SubscriptOutOfRange;
  }
};

template <class States>
Choice Choose(World& world, const States& states) {
  Choice choice;
  choice.position = world.dice.Below(states.size() + 2);
  choice.known = choice.position >= 1 && choice.position <= states.size();
  const auto key = choice.known ? KeyOf(states[choice.position - 1]) : std::string_view("{nobody}");
  choice.byKey = !key.empty() && world.dice.OneIn(2);
  choice.key = world.dice.OneIn(2) ? LowerCase(key) : std::string(key);
  return choice;
}

/// `choice` must outlive the place.
template <class States>
Place PlaceBy(World& world, const Choice& choice, const States& states) {
  Place place;
  place.index = states.size();
  if (world.dice.OneIn(2)) return place;
  if (!choice.known) place.failure = choice.Failure();
  if (world.dice.OneIn(2)) {
    place.before = choice.Name();
    place.index = choice.position - 1;
    if (world.dice.OneIn(3)) place.after = KeyOrPosition(99);  // `Before` wins
  } else {
    place.after = choice.Name();
    place.index = choice.position;
  }
  return place;
}

/// Adds a member somewhere, or fails to. The state as it stands in the list; null after a failure.
template <class List, class State>
State* AddTo(World& world, std::string_view name, List& list, std::vector<State>& states, State state) {
  const auto choice = Choose(world, states);
  const auto place = PlaceBy(world, choice, states);
  list.Add(state.object, KeyOf(state), place.before, place.after);
  auto failure = place.failure;
  if (!KeyOf(state).empty() && FindByKey(states, KeyOf(state))) failure = FailureNumber::KeyAlreadyExists;
  if (failure != FailureNumber::None) {
    world.Expect(std::string(name) + ".Add", failure);
    return nullptr;
  }
  return &*states.insert(states.begin() + static_cast<std::ptrdiff_t>(place.index), std::move(state));
}

/// Removes some member, or fails to. The state of the member that left.
template <class List, class State>
std::optional<State> RemoveFrom(World& world, std::string_view name, List& list, std::vector<State>& states,
                                bool reports = true) {
  const auto choice = Choose(world, states);
  list.Remove(choice.Name());
  if (!choice.known) {
    if (reports) world.Expect(std::string(name) + ".Remove", choice.Failure());
    return std::nullopt;
  }
  const auto at = states.begin() + static_cast<std::ptrdiff_t>(choice.position - 1);
  auto removed = std::move(*at);
  states.erase(at);
  return removed;
}

/// Sets one of some properties alike; true if that was a change.
template <class Fields, class State, class Value>
bool SetOne(World& world, const Fields& fields, State& state, const Value& value) {
  const auto& field = world.dice.Of(fields);
  if constexpr (std::is_same_v<Value, bool>)
    world.Say(field.name, value ? "True" : "False");
  else
    world.Say(field.name, value);
  ((*state.object).*field.set)(value);
  if (state.*field.value == value) return false;
  state.*field.value = value;
  return true;
}

// What records keep, and what a change brings with it, where more than one operation needs it.

/// A topic as its record gives it back, in a project with these categories.
[[nodiscard]] TopicState Recorded(TopicState topic, std::vector<CategoryState>& categories);
/// False for a topic whose record breaks off in the list of scripts.
[[nodiscard]] bool RecordIsWhole(const TopicState& topic);
[[nodiscard]] TaskState Recorded(TaskState task);
/// A topic has been saved into a record.
void NoteSaved(World& world, TopicState& topic);
/// A topic has gone from the project: the nodes that show it become plain captions.
void MakeNodesPlain(World& world, const TopicState& topic);
/// Binds the contents to those of the project, which have come out of their record.
void BindContents(World& world);
/// Binds a topic's state to another object that has the same content.
void Bind(TopicState& state, const Ref<Topic>& topic);

/// The first thing in which project and model differ, in words; nothing if they agree.
[[nodiscard]] std::string FindDifference(World& world);

}  // namespace quillbook::model
