#include "quillbook/config/BuildProfile.h"

#include "frame/Assign.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/PathHelper.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "structure/NodeWalk.h"

namespace quillbook {

namespace {

std::string ValueUnder(const VariableValues& values, std::string_view name) {
  const auto* entry = values.Find(name);
  return entry ? (*entry)->Value : std::string();
}

}  // namespace

BuildProfile::BuildProfile()
    : mID(modMain::CreateGUID()),
      mVariableValues(New<quillbook::VariableValues>()),
      mProjectPropertyValues(New<quillbook::VariableValues>()) {}

Ref<quillbook::BuildProfiles> BuildProfile::BuildProfiles() const {
  return mBuildProfiles.Target();
}

void BuildProfile::SetBuildProfiles(const Ref<quillbook::BuildProfiles>& value) {
  mBuildProfiles.SetTarget(value);
}

Ref<quillbook::QBProject> BuildProfile::Project() const {
  return BuildProfiles()->QBProject();
}

void BuildProfile::Changed() {
  Procedure(*this, "Changed").Run([&] {
    if (const auto profiles = BuildProfiles()) profiles->BuildProfileChanged(Ref<BuildProfile>(this));
  });
}

// Settings.

void BuildProfile::SetName(std::string_view value) {
  Assign(*this, mName, value, "Name", &BuildProfile::Changed);
}
void BuildProfile::SetCompileHelpFile(bool value) {
  Assign(*this, mCompileHelpFile, value, "CompileHelpFile", &BuildProfile::Changed);
}
void BuildProfile::SetHTMLHelpVersion(std::int16_t value) {
  Assign(*this, mHTMLHelpVersion, value, "HTMLHelpVersion", &BuildProfile::Changed);
}
void BuildProfile::SetH2Namespace(std::string_view value) {
  Assign(*this, mH2Namespace, value, "H2Namespace", &BuildProfile::Changed);
}
void BuildProfile::SetH2FileID(std::string_view value) {
  Assign(*this, mH2FileID, value, "H2FileID", &BuildProfile::Changed);
}
void BuildProfile::SetProjectTitle(std::string_view value) {
  Assign(*this, mProjectTitle, value, "ProjectTitle", &BuildProfile::Changed);
}
void BuildProfile::SetRemoveOutputFiles(bool value) {
  Assign(*this, mRemoveOutputFiles, value, "RemoveOutputFiles", &BuildProfile::Changed);
}
void BuildProfile::SetIncludeInBuild(bool value) {
  Assign(*this, mIncludeInBuild, value, "IncludeInBuild", &BuildProfile::Changed);
}
void BuildProfile::SetH2PlugIn(std::string_view value) {
  Assign(*this, mH2PlugIn, value, "H2PlugIn", &BuildProfile::Changed);
}

std::string BuildProfile::HelpFileName() const {
  return Procedure(*this, "HelpFileName").Run([&]() -> std::string {
    if (mHelpFileName.empty()) return {};
    return PathHelper::AbsolutePath(Project()->Filename, New<FileSystemObject>(mHelpFileName));
  });
}

void BuildProfile::SetHelpFileName(std::string_view value) {
  Procedure(*this, "HelpFileName", [&](auto& p) { p("RHS", value); }).Run([&] {
    std::string relative;
    if (!value.empty()) relative = PathHelper::RelativePath(Project()->Filename, New<FileSystemObject>(value));
    if (relative == mHelpFileName) return;
    mHelpFileName = relative;
    Changed();
  });
}

std::string BuildProfile::OutputDirectory() const {
  return Procedure(*this, "OutputDirectory").Run([&] {
    const auto project = Project();
    auto result = mOutputDirectory.empty()
                      ? project->OutputDirectory()
                      : PathHelper::AbsolutePath(project->Filename, New<FileSystemObject>(mOutputDirectory));
    if (!result.empty() && !result.ends_with('\\')) result += '\\';
    return result;
  });
}

void BuildProfile::SetOutputDirectory(std::string_view value) {
  Procedure(*this, "OutputDirectory", [&](auto& p) { p("RHS", value); }).Run([&] {
    std::string relative;
    if (!value.empty()) {
      const auto folder = New<FileSystemObject>();
      folder->SetPath(value);
      relative = PathHelper::RelativePath(Project()->Filename, folder);
    }
    if (relative == mOutputDirectory) return;
    mOutputDirectory = relative;
    Changed();
  });
}

Ref<Topic> BuildProfile::DefaultTopic() const {
  return Procedure(*this, "DefaultTopic").Run([&]() -> Ref<Topic> {
    const auto project = Project();
    const Ref<BuildProfile> self(const_cast<BuildProfile*>(this));  // only handed on, never changed
    auto topic = mDefaultTopicID.empty() ? project->DefaultTopic() : project->Topics->Item(mDefaultTopicID);
    if (topic && topic->IncludedInBuildProfile(self, true)) return topic;
    if (project->Topics->Count() == 0) return {};
    NodeWalk walk(*project->QBNodes);
    while (const auto node = walk.Next()) {
      topic = node->Topic();
      if (topic && topic->IncludedInBuildProfile(self, true)) return topic;
    }
    return {};
  });
}

void BuildProfile::SetDefaultTopic(const Ref<Topic>& value) {
  Procedure(*this, "DefaultTopic", [&](auto& p) { p("RHS", value); }).Run([&] {
    const auto key = value ? value->Key : std::string();
    if (key == mDefaultTopicID) return;
    mDefaultTopicID = key;
    Changed();
  });
}

// Overrides.

void BuildProfile::ClearVariableValues() {
  mVariableValues = New<quillbook::VariableValues>();
}

std::string BuildProfile::VariableValue(std::string_view Name) const {
  return ValueUnder(*mVariableValues, Name);
}

void BuildProfile::SetVariableValue(std::string_view Name, std::string_view value) {
  Procedure(*this, "VariableValue", [&](auto& p) {
    p("Name", Name);
    p("RHS", value);
  }).Run([&] { Override(*mVariableValues, Name, value); });
}

std::string BuildProfile::ProjectPropertyValue(std::string_view Name) const {
  return ValueUnder(*mProjectPropertyValues, Name);
}

void BuildProfile::SetProjectPropertyValue(std::string_view Name, std::string_view value) {
  Procedure(*this, "ProjectPropertyValue", [&](auto& p) {
    p("Name", Name);
    p("RHS", value);
  }).Run([&] { Override(*mProjectPropertyValues, Name, value); });
}

void BuildProfile::Override(quillbook::VariableValues& values, std::string_view name, std::string_view value) {
  if (auto* entry = values.Find(name)) {
    if ((*entry)->Value == value) return;
    (*entry)->Value = value;
    Changed();
  } else {
    values.AddKeyed(New<quillbook::VariableValue>(std::string(name), std::string(value)), name);
  }
}

// Locale.

void BuildProfile::SetLocaleID(std::int32_t value) {
  Procedure(*this, "LocaleID", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mLocaleID) return;
    mLocaleID = value;
    mCachedCodePage = 0;
    Changed();
  });
}

Ref<Locale> BuildProfile::GetLocale() const {
  return Procedure(*this, "GetLocale").Run([&] { return mLocaleID == 0 ? Ref<Locale>() : Locale::FromID(mLocaleID); });
}

std::int32_t BuildProfile::CodePage() const {
  return Procedure(*this, "CodePage").Run([&] {
    if (mCachedCodePage == 0) {
      const auto locale = GetLocale();
      mCachedCodePage = locale ? locale->CodePage() : CodePageUtf8;
    }
    return mCachedCodePage;
  });
}

// While building.

std::string BuildProfile::RuntimeProjectTitle() const {
  return Procedure(*this, "RuntimeProjectTitle").Run([&] {
    return mProjectTitle.empty() ? Project()->Title() : mProjectTitle;
  });
}

std::string BuildProfile::RuntimeVariableValue(std::string_view Name) const {
  return Procedure(*this, "RuntimeVariableValue", [&](auto& p) { p("Name", Name); }).Run([&] {
    if (auto own = VariableValue(Name); !own.empty()) return own;
    const auto project = Project();
    if (const auto* entry = project->VariableValues->Find(Name)) return (*entry)->Value;
    std::string fallback;
    IgnoreFailures([&] { fallback = project->Template()->Variables()->Item(Name)->Default(); });
    return fallback;
  });
}

std::string BuildProfile::RuntimeProjectProperty(std::string_view Name) const {
  return Procedure(*this, "RuntimeProjectProperty", [&](auto& p) { p("Name", Name); }).Run([&]() -> std::string {
    const auto property = Project()->ProjectProperties()->Item(Name);
    if (!property) return {};
    auto own = ProjectPropertyValue(property->ID());
    return own.empty() ? property->PropertyValue() : own;
  });
}

std::string BuildProfile::Summary() const {
  auto summary = mName;
  if (mCompileHelpFile) summary += mHTMLHelpVersion == 1 ? " (HTML Help 1.x)" : " (Microsoft Help 2.x)";
  return summary;
}

bool BuildProfile::ShowLastBuiltHelpFile() {
  return Procedure(*this, "ShowLastBuiltHelpFile").Run([&] {
    const auto warn = [](const std::string& text, std::string_view title) {
      Platform::Current().Messages().Show(text, MessageBox::Exclamation, title);
      return false;
    };
    const auto file = New<FileSystemObject>(HelpFileName());
    if (!file->FileExists())
      return warn("Could not find any previously built help file at '" + HelpFileName() + "'", "File not found");
    auto& desktop = Platform::Current().Session();
    if (mHTMLHelpVersion == 1) {
      if (desktop.OpenWithViewer(file->NativePath()) != Desktop::NoViewer) return true;
      return warn("Could not show the HTML Help file.", "No Viewer");
    }
    const auto parameters = "/helpcol \"ms-help://" + mH2Namespace + "\"";
    if (desktop.StartProgram("dexplore", parameters) != Desktop::NoViewer) return true;
    return warn(
        "Could not show the Microsoft Help 2.x file.  In order to view Microsoft Help 2.x files you need to have the "
        "dexplore.exe viewer installed.  Dexplore.exe is usually installed by Visual Studio.NET or the Visual "
        "Studio.NET Help Integration Kit",
        "No Microsoft Help 2.x Viewer");
  });
}

const TypeInfo& BuildProfile::StaticType() {
  static const TypeInfo type =
      Describe<BuildProfile>("BuildProfile")
          .Public<&BuildProfile::LastBuildResult>("LastBuildResult")
          .Field<&BuildProfile::mID>("mID")
          .Field<&BuildProfile::mName>("mName")
          .Field<&BuildProfile::mOutputDirectory>("mOutputDirectory")
          .Field<&BuildProfile::mCompileHelpFile>("mCompileHelpFile")
          .Field<&BuildProfile::mHTMLHelpVersion>("mHTMLHelpVersion")
          .Field<&BuildProfile::mH2Namespace>("mH2Namespace")
          .Field<&BuildProfile::mH2FileID>("mH2FileID")
          .Field<&BuildProfile::mHelpFileName>("mHelpFileName")
          .Field<&BuildProfile::mVariableValues>("mVariableValues")
          .Field<&BuildProfile::mProjectTitle>("mProjectTitle")
          .Field<&BuildProfile::mRemoveOutputFiles>("mRemoveOutputFiles")
          .Field<&BuildProfile::mIncludeInBuild>("mIncludeInBuild")
          .Field<&BuildProfile::mDefaultTopicID>("mDefaultTopicID")
          .Field<&BuildProfile::mProjectPropertyValues>("mProjectPropertyValues")
          .Field<&BuildProfile::mH2PlugIn>("mH2PlugIn")
          .Field<&BuildProfile::mBuildProfiles>("mBuildProfiles")
          .Field<&BuildProfile::mLocaleID>("mLocaleID")
          .Field<&BuildProfile::mCachedCodePage>("mCachedCodePage")
          .ReadOnly<&BuildProfile::ID>("ID")
          .Property<&BuildProfile::Name, &BuildProfile::SetName>("Name")
          .Property<&BuildProfile::OutputDirectory, &BuildProfile::SetOutputDirectory>("OutputDirectory")
          .Property<&BuildProfile::CompileHelpFile, &BuildProfile::SetCompileHelpFile>("CompileHelpFile")
          .Property<&BuildProfile::HTMLHelpVersion, &BuildProfile::SetHTMLHelpVersion>("HTMLHelpVersion")
          .Property<&BuildProfile::H2Namespace, &BuildProfile::SetH2Namespace>("H2Namespace")
          .Property<&BuildProfile::H2FileID, &BuildProfile::SetH2FileID>("H2FileID")
          .Property<&BuildProfile::HelpFileName, &BuildProfile::SetHelpFileName>("HelpFileName")
          .ReadOnly<&BuildProfile::VariableValues>("VariableValues")
          .Property<&BuildProfile::ProjectTitle, &BuildProfile::SetProjectTitle>("ProjectTitle")
          .Property<&BuildProfile::RemoveOutputFiles, &BuildProfile::SetRemoveOutputFiles>("RemoveOutputFiles")
          .Property<&BuildProfile::IncludeInBuild, &BuildProfile::SetIncludeInBuild>("IncludeInBuild")
          .Property<&BuildProfile::DefaultTopic, &BuildProfile::SetDefaultTopic>("DefaultTopic")
          .ReadOnly<&BuildProfile::ProjectPropertyValues>("ProjectPropertyValues")
          .Property<&BuildProfile::H2PlugIn, &BuildProfile::SetH2PlugIn>("H2PlugIn")
          .Property<&BuildProfile::BuildProfiles, &BuildProfile::SetBuildProfiles>("BuildProfiles")
          .Property<&BuildProfile::LocaleID, &BuildProfile::SetLocaleID>("LocaleID")
          .ReadOnly<&BuildProfile::GetLocale>("GetLocale")
          .ReadOnly<&BuildProfile::CodePage>("CodePage")
          .ReadOnly<&BuildProfile::RuntimeProjectTitle>("RuntimeProjectTitle")
          .ReadOnly<&BuildProfile::Summary>("Summary")
          .ReadOnly<&BuildProfile::UseBuildFlags>("UseBuildFlags")
          .ReadOnly<&BuildProfile::IsBooklet>("IsBooklet")
          .Done();
  return type;
}

}  // namespace quillbook
