// A logical group of topics within a project.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class QBProject;
class Topics;
class XMLElement;

/// A category that topics name by its key. Made by `QBProject::NewTopicCategory`, owned by `TopicCategories`.
class TopicCategory final : public LibraryObject {
 public:
  /// Unique within the project. Setting it tells nobody.
  std::string Key;

  /// Whether the index gets an entry for the category, with the member topics below it.
  [[nodiscard]] bool AutoIndexEntries() const noexcept { return mAutoIndexEntries; }
  void SetAutoIndexEntries(bool RHS);
  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  void SetName(std::string_view RHS);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& RHS);

  /// The topics of this very category in project order: a new collection at each read, attached to no project. Costs
  /// a walk over all topics.
  [[nodiscard]] Ref<quillbook::Topics> Topics() const;

  // Library-internal
  /// Takes the fields from a record "cat" and tells nobody.
  void Load(XMLElement e);
  void Save(XMLElement e) const;
  /// Tells the project.
  void Changed();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mName;
  bool mAutoIndexEntries = true;
  WeakReference<quillbook::QBProject> mQBProject;
};

}  // namespace quillbook
