#include "quillbook/host/Condition.h"

#include <array>

#include "quillbook/base/Text.h"
#include "quillbook/host/CollectionServices.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"

namespace quillbook {

namespace {

struct Subject {
  const Ref<Object>& item;
  const Ref<NamespaceDef>& definition;
  Ref<MVProject> project;
};

bool IsKind(const Subject& subject, std::string_view kind) {
  if (!subject.definition) return false;
  const std::string_view own = subject.definition->Kind();
  const bool qualified = kind.find(':') != std::string_view::npos;
  return EqualsIgnoringCase(qualified ? own : CollectionServices::AfterColon(own), kind);
}

bool IsType(const Subject& subject, std::string_view type) {
  return subject.item && subject.item->IsOfType(type);
}

bool IsBlankValue(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: return true;
    case Variant::Kind::Text: return value.ToText().empty();
    case Variant::Kind::Object: {
      const auto object = value.ToObject();
      return !object || (object->Enumerable() && CollectionServices::Items(object).empty());
    }
    default: return false;
  }
}

/// A member that the item doesn't have is blank.
bool IsBlank(const Subject& subject, std::string_view member) {
  return !subject.item || !subject.item->HasMember(member) || IsBlankValue(subject.item->Member(member));
}
bool IsNotBlank(const Subject& subject, std::string_view member) {
  return !IsBlank(subject, member);
}

bool IsTrue(const Subject& subject, std::string_view member) {
  if (!subject.item || !subject.item->HasMember(member)) return false;
  const auto value = subject.item->Member(member);
  switch (value.GetKind()) {
    case Variant::Kind::Boolean:
    case Variant::Kind::Integer:
    case Variant::Kind::Double: return value.ToBoolean();
    case Variant::Kind::Text: return value.ToText() == "True";
    default: return false;
  }
}

/// "Name" asks whether the variable has a value, "Name=Value" for that very value.
bool HasVariable(const Subject& subject, std::string_view argument) {
  if (!subject.project) return false;
  const auto equals = argument.find('=');
  const auto value = subject.project->ValueOfVariable(argument.substr(0, equals));
  return equals == std::string_view::npos ? !value.empty() : value == argument.substr(equals + 1);
}

bool IsOutput(const Subject& subject, std::string_view output) {
  return subject.project && subject.project->CompileHelpFile == EqualsIgnoringCase(output, "compiled");
}

bool IsHelpVersion(const Subject& subject, std::string_view version) {
  return subject.project && subject.project->HelpVersion == version;
}

bool IsDefaultPage(const Subject& subject, std::string_view) {
  return subject.project && !subject.project->CurrentPage().empty() &&
         EqualsIgnoringCase(subject.project->CurrentPage(), subject.project->DefaultPage);
}

struct Test {
  std::string_view name;
  bool takesArgument;
  bool (*holds)(const Subject& subject, std::string_view argument);
  std::array<std::string_view, 2> arguments = {};  ///< the only ones allowed; empty: any
};

constexpr Test Tests[] = {
    {"kind", true, IsKind},
    {"type", true, IsType},
    {"blank", true, IsBlank},
    {"notblank", true, IsNotBlank},
    {"true", true, IsTrue},
    {"variable", true, HasVariable},
    {"output", true, IsOutput, {"web", "compiled"}},
    {"help", true, IsHelpVersion, {"1", "2"}},
    {"defaultpage", false, IsDefaultPage},
};

/// A condition taken apart: "not output:web".
struct Parsed {
  const Test* test = nullptr;
  std::string_view argument;
  bool negated = false;
};

bool Allows(const Test& test, std::string_view argument, bool hasArgument) {
  if (test.takesArgument != hasArgument || (hasArgument && argument.empty())) return false;
  if (test.arguments[0].empty()) return true;
  for (const auto allowed : test.arguments)
    if (EqualsIgnoringCase(allowed, argument)) return true;
  return false;
}

Parsed Parse(std::string_view condition) {
  Parsed parsed;
  condition = TrimBlanks(condition);
  if (StartsWithIgnoringCase(condition, "not ")) {
    parsed.negated = true;
    condition = TrimBlanks(condition.substr(4));
  }
  const auto name = TrimBlanks(CollectionServices::BeforeColon(condition));
  const bool hasArgument = condition.find(':') != std::string_view::npos;
  parsed.argument = TrimBlanks(CollectionServices::AfterColon(condition));
  for (const auto& test : Tests)
    if (EqualsIgnoringCase(test.name, name) && Allows(test, parsed.argument, hasArgument)) parsed.test = &test;
  return parsed;
}

/// The host project itself, or the one that a project of the author's leads to.
Ref<MVProject> HostProject(const Ref<Object>& project) {
  if (auto* host = dynamic_cast<MVProject*>(project.get())) return Ref<MVProject>(host);
  if (!project || !project->HasMember("MVProject")) return nullptr;
  return Ref<MVProject>(dynamic_cast<MVProject*>(project->Member("MVProject").ToObject().get()));
}

}  // namespace

bool Condition::IsValid() const {
  return Parse(mConditionType).test != nullptr;
}

bool Condition::Evaluate(const Ref<Object>& Item, const Ref<NamespaceDef>& Definition,
                         const Ref<Object>& Project) const {
  const auto parsed = Parse(mConditionType);
  if (!parsed.test) return false;
  return parsed.test->holds({Item, Definition, HostProject(Project)}, parsed.argument) != parsed.negated;
}

const TypeInfo& Condition::StaticType() {
  static const TypeInfo type = Describe<Condition>("Condition")
                                   .Property<&Condition::ConditionType, &Condition::SetConditionType>("Type")
                                   .ReadOnly<&Condition::IsValid>("IsValid")
                                   .Field<&Condition::mConditionType>("mConditionType")
                                   .Done();
  return type;
}

}  // namespace quillbook
