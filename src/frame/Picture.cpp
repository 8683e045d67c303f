#include "quillbook/frame/Picture.h"

namespace quillbook {

const TypeInfo& Picture::StaticType() {
  static const TypeInfo type = Describe<Picture>("Picture")
                                   .ReadOnly<&Picture::Width>("Width")
                                   .ReadOnly<&Picture::Height>("Height")
                                   .ReadOnly<&Picture::MaskColor>("MaskColor")
                                   .ReadOnly<&Picture::BackColor>("BackColor")
                                   .ReadOnly<&Picture::Filename>("Filename")
                                   .Done();
  return type;
}

}  // namespace quillbook
