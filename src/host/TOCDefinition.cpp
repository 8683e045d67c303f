#include "quillbook/host/TOCDefinition.h"

namespace quillbook {

TOCDefinition::TOCDefinition() : mNodeDefs(New<quillbook::NodeDefs>()) {}

const TypeInfo& TOCDefinition::StaticType() {
  static const TypeInfo type = Describe<TOCDefinition>("TOCDefinition")
                                   .Public<&TOCDefinition::Template>("Template")
                                   .Field<&TOCDefinition::mNodeDefs>("mNodeDefs")
                                   .ReadOnly<&TOCDefinition::NodeDefs>("NodeDefs")
                                   .Done();
  return type;
}

}  // namespace quillbook
