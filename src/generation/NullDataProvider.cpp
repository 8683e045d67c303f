#include "quillbook/generation/NullDataProvider.h"

#include "quillbook/frame/Procedure.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {

std::string NullDataProvider::DataProvider_ProvideData(const Ref<TemplateElement>& Element, Ref<FileSystemObject>&) {
  return Procedure(*this, "DataProvider_ProvideData", [&](auto& p) { p("Element", Element); }).Run([&] {
    return Element->Source();
  });
}

const TypeInfo& NullDataProvider::StaticType() {
  static const TypeInfo type = Describe<NullDataProvider>("NullDataProvider").Done();
  return type;
}

}  // namespace quillbook
