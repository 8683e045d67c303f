#include "quillbook/generation/Filter.h"

#include "quillbook/base/Text.h"

namespace quillbook {

void Filter::Load(std::string_view Source) {
  if (Source.empty()) return;
  for (const auto part : Split(Source, ',')) {
    const auto fields = Split(part, '=');
    if (fields.size() < 2) continue;
    const auto name = LowerCase(fields[0]);
    auto value = LowerCase(fields[1]);
    if (name == "forpagegeneration")
      ForPageGeneration = value == "true";
    else if (name == "type")
      TypeID = std::move(value);
  }
}

const TypeInfo& Filter::StaticType() {
  static const TypeInfo type = Describe<Filter>("Filter")
                                   .Public<&Filter::ForPageGeneration>("ForPageGeneration")
                                   .Public<&Filter::TypeID>("TypeID")
                                   .Done();
  return type;
}

}  // namespace quillbook
