// The properties that an author has defined for a project.
#pragma once

#include <string_view>

#include "quillbook/base/Event.h"
#include "quillbook/base/TextIndex.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/MemberCollection.h"

namespace quillbook {

class QBProject;

/// Source interface of `ProjectProperties`. The project listens to all three and becomes dirty.
struct ProjectPropertiesEvents {
  static constexpr std::string_view PublishedName = "__ProjectProperties";
  Event<const Ref<ProjectProperty>&> ProjectPropertyChanged;
  Event<const Ref<ProjectProperty>&> ProjectPropertyAdded;
  Event<const Ref<ProjectProperty>&> ProjectPropertyRemoved;
};

/// The properties of a project in the order of adding, keyed by `ProjectProperty::ID`.
class ProjectProperties final : public MemberCollection<ProjectProperty> {
 public:
  ~ProjectProperties() override;

  ProjectPropertiesEvents Events;

  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  /// By `ID` for a key that begins with "{", else by name, ignoring case, of which the first in the collection
  /// counts; or by position from 1. Nothing if there is none.
  [[nodiscard]] Ref<ProjectProperty> Item(KeyOrPosition Key) const;
  /// By `ID` or position. An unknown one does nothing.
  void Remove(KeyOrPosition Key);

  /// Adds the properties stored below `e` without raising events. Of properties with one `ID` the first is kept.
  void Load(XMLElement e);
  void Save(XMLElement e);

  // Library-internal

  void FireProjectPropertyChanged(const Ref<quillbook::ProjectProperty>& ProjectProperty);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<ProjectProperty>& member, std::string_view key) override;

 private:
  WeakReference<quillbook::QBProject> mQBProject;
  TextIndex mNames;
};

}  // namespace quillbook
