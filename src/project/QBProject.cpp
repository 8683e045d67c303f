#include "quillbook/project/QBProject.h"

#include <utility>

#include "frame/Assign.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/PathHelper.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {

QBProject::QBProject() {
  // Registers the clipboard formats in a process that holds no root.
  if (modMain::RootIncrement() == 0) (void)New<Root>()->AppWorkspaceColor();

  VariableValues = New<quillbook::VariableValues>();
  MakeCollection(QBNodes);
  Filename = New<FileSystemObject>();
  MakeCollection(Topics);
  MakeCollection(TopicCategories);
  MakeCollection(OtherFiles);
  SpellIgnoreAllWordList = New<Collection<std::string>>();
  MakeCollection(Tasks);
  MakeCollection(BuildProfiles);
  IncrementingValues = New<Collection<std::int32_t>>();
  MakeCollection(mProjectProperties);
  ConnectSinks();
}

QBProject::~QBProject() {
  if (mMVProject) IgnoreFailures([this] { mMVProject->Reset(); });
}

void QBProject::ConnectSinks() {
  mSinks.clear();
  const auto connect = [this](auto& event, std::string_view handler) {
    mSinks.push_back(
        event.Connect([this, handler](const auto&) { Procedure(*this, handler).Run([this] { SetDirty(true); }); }));
  };
  connect(QBNodes->Events.ItemAdded, "QBNodes_ItemAdded");
  connect(QBNodes->Events.ItemRemoved, "QBNodes_ItemRemoved");
  auto& properties = mProjectProperties->Events;
  connect(properties.ProjectPropertyAdded, "mProjectProperties_ProjectPropertyAdded");
  connect(properties.ProjectPropertyChanged, "mProjectProperties_ProjectPropertyChanged");
  connect(properties.ProjectPropertyRemoved, "mProjectProperties_ProjectPropertyRemoved");
}

// Properties.

void QBProject::Changed() {
  if (mLoading) return;
  Events.Changed.Raise();
  SetDirty(true);
}

void QBProject::SetTitle(std::string_view RHS) {
  Assign(*this, mTitle, RHS, "Title", &QBProject::Changed);
}

void QBProject::SetDictionaryFileName(std::string_view RHS) {
  Assign(*this, mDictionaryFileName, RHS, "DictionaryFileName", &QBProject::Changed);
}

void QBProject::SetTemplateName(std::string_view RHS) {
  Procedure(*this, "TemplateName", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    if (EqualsIgnoringCase(mTemplateName, RHS)) return;
    mTemplateName = RHS;
    Changed();
    if (!Topics->PauseEvents) Events.TopicTemplateChanged.Raise(mTemplateName);
  });
}

void QBProject::SetSpellLastCheckDateTime(Date RHS) {
  Assign(*this, mSpellLastCheckDateTime, RHS, "SpellLastCheckDateTime", &QBProject::Changed);
}

void QBProject::SetAutoGenerateIndexEntries(bool RHS) {
  Assign(*this, mAutoGenerateIndexEntries, RHS, "AutoGenerateIndexEntries", &QBProject::Changed);
}

void QBProject::SetAutoGenerateCategoryIndex(bool RHS) {
  Assign(*this, mAutoGenerateCategoryIndex, RHS, "AutoGenerateCategoryIndex", &QBProject::Changed);
}

void QBProject::SetBuildMVProject(bool RHS) {
  Assign(*this, mBuildMVProject, RHS, "BuildMVProject", &QBProject::Changed);
}

std::string QBProject::StoredPath(const Ref<FileSystemObject>& target) const {
  return PathHelper::RelativePath(Filename, target);
}

std::string QBProject::AbsolutePath(std::string_view stored) const {
  return PathHelper::AbsolutePath(Filename, New<FileSystemObject>(stored));
}

std::string QBProject::OutputDirectory() const {
  return Procedure(*this, "OutputDirectory").Run([this] {
    auto directory = AbsolutePath(mOutputDirectory);
    if (!directory.empty() && !directory.ends_with('\\')) directory += '\\';
    return directory;
  });
}

void QBProject::SetOutputDirectory(std::string_view RHS) {
  Procedure(*this, "OutputDirectory", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    std::string stored;
    if (!RHS.empty()) {
      const auto directory = New<FileSystemObject>();
      directory->SetPath(RHS);
      stored = StoredPath(directory);
    }
    Assign(*this, mOutputDirectory, stored, "OutputDirectory", &QBProject::Changed);
  });
}

std::string QBProject::MVPFileName() const {
  return Procedure(*this, "MVPFileName").Run([this] {
    return mMVPFileName.empty() ? std::string() : AbsolutePath(mMVPFileName);
  });
}

void QBProject::SetMVPFileName(std::string_view RHS) {
  Procedure(*this, "MVPFileName", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    const bool none = RHS.empty() || RHS == NoMVPFileName;
    Assign(*this, mMVPFileName, none ? std::string() : StoredPath(New<FileSystemObject>(RHS)), "MVPFileName",
           &QBProject::Changed);
  });
}

Ref<Topic> QBProject::DefaultTopic() const {
  const auto topic = Topics->Item(mDefaultTopicID);
  return topic && topic->IncludeInHelpFile() ? topic : Ref<Topic>();
}

void QBProject::SetDefaultTopic(const Ref<Topic>& RHS) {
  Assign(*this, mDefaultTopicID, RHS ? RHS->Key : std::string(), "DefaultTopic", &QBProject::Changed);
}

const Ref<quillbook::GlossaryItems>& QBProject::GlossaryItems() {
  if (!mGlossaryItems) MakeCollection(mGlossaryItems);
  return mGlossaryItems;
}

bool QBProject::ReadOnly() const {
  return Procedure(*this, "ReadOnly").Run([this] { return New<FileSystemObject>(Filename->FullName())->ReadOnly(); });
}

std::string QBProject::QualifiedName() const {
  return Filename->FullName();
}

std::string QBProject::TopicDataPath() const {
  return Filename->Path() + "TopicData\\";
}

std::string QBProject::ProjectDataPath() const {
  return Filename->Path() + "ProjectData\\";
}

// Dirty state and pausing.

bool QBProject::Dirty() {
  return GlossaryItems()->Dirty() || QBNodes->Dirty() || Tasks->Dirty() || mTopicsDirty || mDirty;
}

void QBProject::SetDirty(bool RHS) {
  Procedure(*this, "Dirty", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    mDirty = RHS;
    if (!RHS) ClearMemberFlags();
    if (!mLoading) Events.DirtyStateChanged.Raise();
  });
}

void QBProject::ClearMemberFlags() {
  mTopicsDirty = false;
  // The project's own notice follows; those of its members would say the same.
  const bool loading = std::exchange(mLoading, true);
  Tasks->SetDirty(false);
  GlossaryItems()->SetDirty(false);
  QBNodes->SetDirty(false);
  mLoading = loading;
}

void QBProject::SetTopicsDirty(bool RHS) {
  mTopicsDirty = RHS;
  if (RHS) FireDirtyStateChanged();
}

bool QBProject::PauseEvents() {
  return Topics->PauseEvents && QBNodes->PauseEvents && GlossaryItems()->PauseEvents && OtherFiles->PauseEvents &&
         Tasks->PauseEvents && TopicCategories->PauseEvents;
}

void QBProject::SetPauseEvents(bool RHS) {
  Topics->PauseEvents = RHS;
  QBNodes->PauseEvents = RHS;
  GlossaryItems()->PauseEvents = RHS;
  OtherFiles->PauseEvents = RHS;
  Tasks->PauseEvents = RHS;
  TopicCategories->PauseEvents = RHS;
}

}  // namespace quillbook
