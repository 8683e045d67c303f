// An installed template: layouts, scraps, variables, definitions and support files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/PageLayout.h"

namespace quillbook {

/// Kind of value that a template variable holds. The numbers are frozen.
enum class VariableType : int {
  Text = 0,
  MultiLineText = 1,
  Number = 2,
  Boolean = 3,
  Colour = 4,
  File = 5,
  Choice = 6
};

/// A variable that a template declares.
class TemplateVariable final : public Object {
 public:
  TemplateVariable(std::string Name, VariableType ValueType, std::string Default, std::string Caption)
      : mName(std::move(Name)), mValueType(ValueType), mDefault(std::move(Default)), mCaption(std::move(Caption)) {}

  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  [[nodiscard]] VariableType ValueType() const noexcept { return mValueType; }
  [[nodiscard]] const std::string& Default() const noexcept { return mDefault; }
  /// What an editor shows beside the value.
  [[nodiscard]] const std::string& Caption() const noexcept { return mCaption; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mName;
  VariableType mValueType;
  std::string mDefault;
  std::string mCaption;
};

/// A template as it lies in its folder. Read-only once it is loaded; `TemplateReader` fills it.
class PageTemplate final : public Object {
 public:
  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  /// Marks of what the template is for; upper and lower case differ.
  [[nodiscard]] const std::string& Supports() const noexcept { return mSupports; }
  /// Names of the namespaces that the template can show.
  [[nodiscard]] const Ref<Collection<std::string>>& Namespaces() const noexcept { return mNamespaces; }
  /// By name.
  [[nodiscard]] const Ref<Collection<Ref<TemplateVariable>>>& Variables() const noexcept { return mVariables; }
  /// By name, in the order of the template.
  [[nodiscard]] const Ref<Collection<Ref<PageLayout>>>& Layouts() const noexcept { return mLayouts; }
  [[nodiscard]] const Ref<quillbook::NamespaceDefs>& NamespaceDefs() const noexcept { return mNamespaceDefs; }
  /// The template's folder in the form of stored paths, ending in a backslash.
  [[nodiscard]] const std::string& Folder() const noexcept { return mFolder; }
  /// Null if the template has no such scrap. Names ignore case.
  [[nodiscard]] const std::string* FindScrap(std::string_view Name) const noexcept { return mScraps.Find(Name); }
  /// Files that are copied to the output: paths relative to `Folder`, with "/", in a fixed order.
  [[nodiscard]] const std::vector<std::string>& SupportFiles() const noexcept { return mSupportFiles; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

  PageTemplate();

 private:
  friend class TemplateReader;

  std::string mName;
  std::string mSupports;
  Ref<Collection<std::string>> mNamespaces;
  Ref<Collection<Ref<TemplateVariable>>> mVariables;
  Ref<Collection<Ref<PageLayout>>> mLayouts;
  Ref<quillbook::NamespaceDefs> mNamespaceDefs;
  std::string mFolder;
  Collection<std::string> mScraps;
  std::vector<std::string> mSupportFiles;
};

/// Templates under their names.
using PageTemplates = Collection<Ref<PageTemplate>>;

}  // namespace quillbook
