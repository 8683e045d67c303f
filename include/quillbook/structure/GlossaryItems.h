// The glossary of a project.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/TextIndex.h"
#include "quillbook/frame/MemberCollection.h"
#include "quillbook/structure/GlossaryItem.h"

namespace quillbook {

/// The terms of a project in the order of adding, keyed by `GlossaryItem::Key`.
///
/// `Add` and `Remove` tell the project, which must be set. `PauseEvents` True keeps the project from raising its
/// events; `Dirty` is marked all the same.
class GlossaryItems final : public MemberCollection<GlossaryItem> {
 public:
  ~GlossaryItems() override;

  bool PauseEvents = false;

  [[nodiscard]] bool Dirty() const noexcept { return mDirty; }
  /// True is told to the project.
  void SetDirty(bool value);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  /// The first item, in the order of the collection, whose term equals `Term` ignoring case; nothing if there is
  /// none. Takes constant time.
  [[nodiscard]] Ref<GlossaryItem> ItemByTerm(std::string_view Term) const;

  /// Where the separate-file form of a project keeps its glossary.
  [[nodiscard]] std::string LocalSpec() const;
  /// True if the glossary has a file of its own that is read-only.
  [[nodiscard]] bool ReadOnly() const;

  // Library-internal

  /// Replaces the glossary by the one stored below `e`, or in the file at `LocalSpec` for the separate-file form. A
  /// repeated key is a failure.
  void Load(XMLElement e);
  /// False, after a report, if the list has a file of its own that could not be written.
  bool Save(XMLElement e);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<GlossaryItem>& member, std::string_view key) override;
  void MemberRemoved(const Ref<GlossaryItem>& member) override;

 private:
  bool mDirty = false;
  WeakReference<quillbook::QBProject> mQBProject;
  TextIndex mTerms;
};

}  // namespace quillbook
