#include "frame/failure/StateDump.h"

#include <atomic>

#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

using detail::AllDepths;

constexpr std::string_view LineBreak = "\r\n";
constexpr int ItemDepth = 3;

std::atomic<GlobalsWriter> globalsWriter{nullptr};

std::string_view BareName(std::string_view name) {
  return name.substr(0, name.find(' '));
}

/// A list may hold itself. Far beyond any honest data, and far before the stack ends, the dump gives up.
class NestingGuard {
 public:
  NestingGuard() {
    if (++mNesting <= 500) return;
    --mNesting;
    throw Failure(FailureNumber::OutOfStackSpace);
  }
  ~NestingGuard() { --mNesting; }
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;

 private:
  static inline thread_local int mNesting = 0;
};

std::string ObjectContent(std::string_view name, const Ref<Object>& object) {
  if (!object) return "{Nothing}";
  if (!object->Enumerable()) return std::string("{").append(object->TypeName()).append("}");
  std::string content(LineBreak);
  std::size_t index = 0;
  object->ForEachItem([&](const Variant& item) {
    content +=
        fltnDumpVariable(std::string(name).append("[").append(std::to_string(++index)).append("]"), item, ItemDepth);
  });
  return content;
}

/// Visits the indices of an array in row order.
class ArrayIndices {
 public:
  explicit ArrayIndices(const std::vector<VariantArray::Dimension>& dimensions) : mDimensions(dimensions) {
    for (const auto& dimension : dimensions) mIndices.push_back(dimension.lower);
  }
  [[nodiscard]] std::string Text() const {
    std::string text;
    for (const int index : mIndices) text.append(text.empty() ? "" : ",").append(std::to_string(index));
    return text;
  }
  void Advance() {
    for (auto place = mIndices.size(); place-- > 0;) {
      if (++mIndices[place] <= mDimensions[place].upper) return;
      mIndices[place] = mDimensions[place].lower;
    }
  }

 private:
  const std::vector<VariantArray::Dimension>& mDimensions;
  std::vector<int> mIndices;
};

std::string ArrayContent(std::string_view name, const VariantArray& array, int depth) {
  constexpr std::size_t mostDimensions = 3;
  std::string content(LineBreak);
  const auto& dimensions = array.dimensions;
  // Nobody counts further than to the first dimension that is too many.
  if (dimensions.size() > mostDimensions)
    return content.append("{Dump truncated at " + std::to_string(mostDimensions + 1) + " dimensions}")
        .append(LineBreak);
  if (dimensions.empty() || dimensions[0].upper < dimensions[0].lower) return content.append("{UnInitialised Array}");
  for (std::size_t i = 1; i < dimensions.size(); ++i)
    if (dimensions[i].upper < dimensions[i].lower)
      return content.append("{UnInitialised Array Dimension " + std::to_string(i + 1) + "}");
  ArrayIndices indices(dimensions);
  for (const auto& element : array.elements) {
    const auto elementName = std::string(BareName(name)).append(" Index=\"").append(indices.Text()).append("\"");
    content += fltnDumpVariable(elementName, element, depth - 1);
    indices.Advance();
  }
  return content;
}

std::string Content(std::string_view name, const Variant& value, int depth) {
  const NestingGuard guard;
  switch (value.GetKind()) {
    case Variant::Kind::Empty: return "{Empty}";
    case Variant::Kind::Null: return "{Null}";
    case Variant::Kind::Object: return ObjectContent(name, value.ToObject());
    case Variant::Kind::Array: return ArrayContent(name, value.Array(), depth);
    case Variant::Kind::Error: return {};
    case Variant::Kind::Opaque: return value.GetOpaque().text;
    default: return ReplaceAll(value.ToText(), std::string_view("\0", 1), "{Null}");
  }
}

Variant ShortArray(const std::vector<std::int16_t>& values) {
  VariantArray array;
  if (!values.empty()) array.dimensions.push_back({0, static_cast<int>(values.size()) - 1});
  for (const auto value : values) array.elements.emplace_back(value);
  return array;
}

void VisitFailureVariables(const Object::FieldVisitor& visit) {
  const auto& variables = fltnVariables();
  visit("fltnProjectId", variables.fltnProjectId);
  visit("fltnProcessId", variables.fltnProcessId);
  visit("fltnModuleFilename", variables.fltnModuleFilename);
  visit("fltnDebuggerListening", variables.fltnDebuggerListening);
  visit("fltnEnableInstanceCounts", variables.fltnEnableInstanceCounts);
  visit("fltnInstanceCountsServerHandle", variables.fltnInstanceCountsServerHandle);
  visit("fltnInstanceCountComponentNames", ShortArray(variables.fltnInstanceCountComponentNames));
  visit("fltnSkipInstanceCount", ShortArray(variables.fltnSkipInstanceCount));
  visit("fltnComponentID", variables.fltnComponentID);
  visit("fltnHasInitialised", variables.fltnHasInitialised);
  visit("fltnVariableDump", variables.fltnVariableDump);
  visit("fltnErrorNumber", variables.fltnErrorNumber);
  visit("fltnErrorDescription", variables.fltnErrorDescription);
  visit("fltnErrorLine", variables.fltnErrorLine);
  visit("fltnErrorSource", variables.fltnErrorSource);
}

/// A line for each variable that `visitAll` tells of, up to the one that can't be told.
template <class VisitAll>
std::string DumpOf(VisitAll&& visitAll) {
  std::string dump;
  try {
    visitAll([&](std::string_view name, const Variant& value) { dump += fltnDumpVariable(name, value, AllDepths); });
  } catch (...) {
    dump += UnreadableText(CurrentFailure().Number());
  }
  return dump;
}

}  // namespace

std::string fltnDumpVariable(std::string_view Name, const Variant& Value, int Depth) {
  std::string content;
  try {
    content = Content(Name, Value, Depth);
  } catch (...) {
    content = UnreadableText(CurrentFailure().Number());
  }
  std::string line;
  line.reserve(content.size() + Name.size() * 2 + 7);
  return line.append("<").append(Name).append(">").append(content).append("</").append(BareName(Name)).append(">\r\n");
}

std::string fltnDumpGlobals() {
  const detail::DumpScope scope;
  if (!scope.IsOutermost()) return {};
  return DumpOf([](const Object::FieldVisitor& visit) {
    if (const auto writer = globalsWriter.load(std::memory_order_acquire)) writer(visit);
    VisitFailureVariables(visit);
  });
}

std::string DumpModuleVariables(const Object& object) {
  return DumpOf([&](const Object::FieldVisitor& visit) { object.Fields(visit); });
}

std::string detail::DumpModuleVariables(const Module& module) {
  return DumpOf([&](const Object::FieldVisitor& visit) {
    if (module.fields) module.fields(visit);
  });
}

void SetGlobalsWriter(GlobalsWriter writer) noexcept {
  globalsWriter.store(writer, std::memory_order_release);
}

}  // namespace quillbook
