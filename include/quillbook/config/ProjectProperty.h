// A typed name and value that an author defines for a project.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/TextIndex.h"

namespace quillbook {

class ProjectProperties;
class XMLElement;

/// What a property's value is meant to be; a label for whoever edits or shows it. The values are stored in project
/// files.
enum ProjectPropertyTypeEnum : std::int32_t { pptText = 0, pptHTML = 1, pptNumber = 2, pptDate = 3, pptColor = 4 };

/// A property of a project. The value is text whatever the type says. A setter compares first, with regard to case; a
/// real change is told to the parent collection.
class ProjectProperty final : public LibraryObject {
 public:
  /// Gives the property a new `ID`.
  ProjectProperty();

  /// Key in the collection.
  [[nodiscard]] const std::string& ID() const noexcept { return mID; }
  [[nodiscard]] const std::string& PropertyName() const noexcept { return mPropertyName.Value(); }
  void SetPropertyName(std::string_view value);
  [[nodiscard]] ProjectPropertyTypeEnum PropertyType() const noexcept { return mPropertyType; }
  void SetPropertyType(ProjectPropertyTypeEnum value);
  [[nodiscard]] const std::string& PropertyValue() const noexcept { return mPropertyValue; }
  void SetPropertyValue(std::string_view value);
  [[nodiscard]] Ref<quillbook::ProjectProperties> ProjectProperties() const;
  void SetProjectProperties(const Ref<quillbook::ProjectProperties>& value);

  // Library-internal

  /// Reads the record straight into the fields; all attributes are mandatory. A type that is no number is 0.
  void Load(XMLElement e);
  void Save(XMLElement e);
  /// The name, for the index of a collection.
  [[nodiscard]] IndexedText& NameText() noexcept { return mPropertyName; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void Changed();

  std::string mID;
  IndexedText mPropertyName;
  ProjectPropertyTypeEnum mPropertyType = pptText;
  std::string mPropertyValue;
  WeakReference<quillbook::ProjectProperties> mProjectProperties;
};

}  // namespace quillbook
