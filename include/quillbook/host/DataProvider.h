// What evaluates the elements of a template against an item.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class FileSystemObject;
class NamespaceDef;
class TemplateElement;

/// One provider stands for the item that is being rendered. The engine sets the current item and asks for the value
/// of each element of a text. Providers are re-entrant: an answer may parse a further text with the same provider.
class DataProvider : public Object {
 public:
  /// The text that takes the element's place. `FileSystemObj` is the file being written, nothing for a text that goes
  /// to no file; the provider may hand back another one.
  [[nodiscard]] virtual std::string DataProvider_ProvideData(const Ref<TemplateElement>& Element,
                                                             Ref<FileSystemObject>& FileSystemObj) = 0;
  virtual void DataProvider_Initialise(const Ref<Object>& Host) = 0;
  virtual void DataProvider_Terminate() = 0;

  virtual void SetDataProvider_CurrentRootItem(const Ref<Object>& RootItem) = 0;
  [[nodiscard]] virtual Ref<Object> DataProvider_CurrentRootItem() const = 0;
  virtual void SetDataProvider_CurrentParentItem(const Ref<Object>& ParentItem) = 0;
  [[nodiscard]] virtual Ref<Object> DataProvider_CurrentParentItem() const = 0;
  virtual void SetDataProvider_CurrentItemType(std::string_view ItemType) = 0;
  [[nodiscard]] virtual std::string DataProvider_CurrentItemType() const = 0;
  virtual void SetDataProvider_CurrentItem(const Ref<Object>& Item) = 0;
  [[nodiscard]] virtual Ref<Object> DataProvider_CurrentItem() const = 0;
  virtual void SetDataProvider_NamespaceDef(const Ref<NamespaceDef>& Definition) = 0;
  [[nodiscard]] virtual Ref<NamespaceDef> DataProvider_NamespaceDef() const = 0;

  /// Sets definition, item, type name and parent at once.
  virtual void DataProvider_SetCurrentItem(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                           std::string_view ItemType, const Ref<Object>& ParentItem) = 0;
  /// `Text` with its elements expanded, also those that an expansion brings, up to the provider's limit.
  [[nodiscard]] virtual std::string DataProvider_ParseForProperties(std::string_view Text) = 0;
  /// Value of a bare name.
  [[nodiscard]] virtual std::string DataProvider_GetProperty(std::string_view Name) = 0;
  /// A provider of the same kind for the same item; may be nothing.
  [[nodiscard]] virtual Ref<DataProvider> DataProvider_Clone() = 0;
};

}  // namespace quillbook
