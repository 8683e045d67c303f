#include "quillbook/host/VariableValue.h"

namespace quillbook {

const TypeInfo& VariableValue::StaticType() {
  static const TypeInfo type = Describe<VariableValue>("VariableValue")
                                   .Public<&VariableValue::Name>("Name")
                                   .Public<&VariableValue::Value>("Value")
                                   .Done();
  return type;
}

}  // namespace quillbook
