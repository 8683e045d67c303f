// One term of the glossary.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/TextIndex.h"

namespace quillbook {

class QBProject;
class XMLElement;

/// A term with its definition. A setter compares first, with regard to case; a real change is told to the project.
class GlossaryItem final : public LibraryObject {
 public:
  /// Unique within the project. Assigning it tells nobody.
  std::string Key;

  [[nodiscard]] const std::string& Term() const noexcept { return mTerm.Value(); }
  void SetTerm(std::string_view value);
  [[nodiscard]] const std::string& Definition() const noexcept { return mDefinition; }
  void SetDefinition(std::string_view value);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  /// A copy made by `ParentQBProject`, which is filled with the item's own project if it is nothing. The copy has the
  /// source's key and stands in no collection.
  Ref<GlossaryItem> Clone(Ref<quillbook::QBProject>& ParentQBProject);
  Ref<GlossaryItem> Clone();

  // Library-internal

  /// Reads the record straight into the fields. Both attributes are mandatory.
  void Load(XMLElement e);
  void Save(XMLElement e);
  /// The term, for the index of a collection.
  [[nodiscard]] IndexedText& TermText() noexcept { return mTerm; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void Changed();

  IndexedText mTerm;
  std::string mDefinition;
  WeakReference<quillbook::QBProject> mQBProject;
};

}  // namespace quillbook
