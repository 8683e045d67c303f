// A data provider without data.
#pragma once

#include "quillbook/host/DataProvider.h"

namespace quillbook {

/// Given to a parser, it makes every element yield the text that the element encloses. Everything else that it is
/// told is dropped, and all that it is asked for is empty, also the parsing of a text.
class NullDataProvider final : public DataProvider {
 public:
  [[nodiscard]] std::string DataProvider_ProvideData(const Ref<TemplateElement>& Element,
                                                     Ref<FileSystemObject>& FileSystemObj) override;
  void DataProvider_Initialise(const Ref<Object>&) override {}
  void DataProvider_Terminate() override {}
  void SetDataProvider_CurrentRootItem(const Ref<Object>&) override {}
  [[nodiscard]] Ref<Object> DataProvider_CurrentRootItem() const override { return {}; }
  void SetDataProvider_CurrentParentItem(const Ref<Object>&) override {}
  [[nodiscard]] Ref<Object> DataProvider_CurrentParentItem() const override { return {}; }
  void SetDataProvider_CurrentItemType(std::string_view) override {}
  [[nodiscard]] std::string DataProvider_CurrentItemType() const override { return {}; }
  void SetDataProvider_CurrentItem(const Ref<Object>&) override {}
  [[nodiscard]] Ref<Object> DataProvider_CurrentItem() const override { return {}; }
  void SetDataProvider_NamespaceDef(const Ref<NamespaceDef>&) override {}
  [[nodiscard]] Ref<NamespaceDef> DataProvider_NamespaceDef() const override { return {}; }
  void DataProvider_SetCurrentItem(const Ref<NamespaceDef>&, const Ref<Object>&, std::string_view,
                                   const Ref<Object>&) override {}
  [[nodiscard]] std::string DataProvider_ParseForProperties(std::string_view) override { return {}; }
  [[nodiscard]] std::string DataProvider_GetProperty(std::string_view) override { return {}; }
  [[nodiscard]] Ref<DataProvider> DataProvider_Clone() override { return {}; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
