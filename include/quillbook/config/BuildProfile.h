// A named set of build settings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/host/VariableValue.h"

namespace quillbook {

class BuildProfiles;
class BuildResult;
class Locale;
class QBProject;
class Topic;
class XMLElement;

/// Where the output of a build goes, what it is compiled into, under what title, for which locale, and with which
/// overrides of template properties and project properties.
///
/// A setter compares first, with regard to case; a real change is told to the project through the parent collection
/// and marks the project dirty.
class BuildProfile final : public LibraryObject {
 public:
  /// Gives the profile a new `ID`.
  BuildProfile();

  /// Result of the last build of this session; never stored.
  Ref<BuildResult> LastBuildResult;

  /// Key in the collection.
  [[nodiscard]] const std::string& ID() const noexcept { return mID; }
  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  void SetName(std::string_view value);

  /// Absolute, with a trailing "\". The project's output directory if the profile has none.
  [[nodiscard]] std::string OutputDirectory() const;
  /// Kept relative to the project file.
  void SetOutputDirectory(std::string_view value);
  [[nodiscard]] bool CompileHelpFile() const noexcept { return mCompileHelpFile; }
  void SetCompileHelpFile(bool value);
  /// 1 is HTML Help 1.x, 2 is Microsoft Help 2.x.
  [[nodiscard]] std::int16_t HTMLHelpVersion() const noexcept { return mHTMLHelpVersion; }
  void SetHTMLHelpVersion(std::int16_t value);
  /// Help 2 namespace.
  [[nodiscard]] const std::string& H2Namespace() const noexcept { return mH2Namespace; }
  void SetH2Namespace(std::string_view value);
  /// Help 2 file id.
  [[nodiscard]] const std::string& H2FileID() const noexcept { return mH2FileID; }
  void SetH2FileID(std::string_view value);
  /// Absolute; empty if there is none.
  [[nodiscard]] std::string HelpFileName() const;
  /// Kept relative to the project file.
  void SetHelpFileName(std::string_view value);

  /// Overrides of template properties, by name.
  [[nodiscard]] const Ref<quillbook::VariableValues>& VariableValues() const noexcept { return mVariableValues; }
  /// Tells nobody.
  void ClearVariableValues();
  /// The override under `Name`; empty if there is none.
  [[nodiscard]] std::string VariableValue(std::string_view Name) const;
  /// A first value is stored without telling anybody; a real change of one is told.
  void SetVariableValue(std::string_view Name, std::string_view value);

  /// Empty for the project's title.
  [[nodiscard]] const std::string& ProjectTitle() const noexcept { return mProjectTitle; }
  void SetProjectTitle(std::string_view value);
  /// Remove output files after compiling.
  [[nodiscard]] bool RemoveOutputFiles() const noexcept { return mRemoveOutputFiles; }
  void SetRemoveOutputFiles(bool value);
  /// True if the profile took part in the last build. Kept for callers; the library selects nothing by it.
  [[nodiscard]] bool IncludeInBuild() const noexcept { return mIncludeInBuild; }
  void SetIncludeInBuild(bool value);
  /// The profile's own default topic, else the project's, if it is included in the build; else the first topic of the
  /// table of contents that is; possibly nothing.
  [[nodiscard]] Ref<Topic> DefaultTopic() const;
  void SetDefaultTopic(const Ref<Topic>& value);

  /// Overrides of project properties, by the property's `ID`.
  [[nodiscard]] const Ref<quillbook::VariableValues>& ProjectPropertyValues() const noexcept {
    return mProjectPropertyValues;
  }
  [[nodiscard]] std::string ProjectPropertyValue(std::string_view Name) const;
  /// As `SetVariableValue`.
  void SetProjectPropertyValue(std::string_view Name, std::string_view value);

  /// Comma-delimited Help 2 namespaces into which the output is plugged in.
  [[nodiscard]] const std::string& H2PlugIn() const noexcept { return mH2PlugIn; }
  void SetH2PlugIn(std::string_view value);
  [[nodiscard]] Ref<quillbook::BuildProfiles> BuildProfiles() const;
  void SetBuildProfiles(const Ref<quillbook::BuildProfiles>& value);

  /// Windows locale id; 0 is the default, UTF-8 output.
  [[nodiscard]] std::int32_t LocaleID() const noexcept { return mLocaleID; }
  void SetLocaleID(std::int32_t value);
  /// Nothing if `LocaleID` is 0 or unknown.
  [[nodiscard]] Ref<Locale> GetLocale() const;
  /// Code page of the output: the locale's, and 65001 (UTF-8) without a locale.
  [[nodiscard]] std::int32_t CodePage() const;

  // Values while building
  [[nodiscard]] std::string RuntimeProjectTitle() const;
  /// Value of a template property: the profile's, else the project's, else the template's default.
  [[nodiscard]] std::string RuntimeVariableValue(std::string_view Name) const;
  /// Value of a project property, found by name or `ID`: the profile's, else the property's own.
  [[nodiscard]] std::string RuntimeProjectProperty(std::string_view Name) const;

  /// Name and kind of output for a reader.
  [[nodiscard]] std::string Summary() const;
  /// Always False: inclusion is decided by the topic alone.
  [[nodiscard]] bool UseBuildFlags() const noexcept { return false; }
  /// Always False.
  [[nodiscard]] bool IsBooklet() const noexcept { return false; }
  /// Shows the built help file in its viewer. False, after a message box, if it is missing or has no viewer.
  bool ShowLastBuiltHelpFile();

  // Library-internal

  /// Reads the record straight into the fields. Every profile that has been loaded is a Microsoft Help 2.x profile.
  void Load(XMLElement e);
  void Save(XMLElement e);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  [[nodiscard]] Ref<quillbook::QBProject> Project() const;
  void Changed();
  void Override(quillbook::VariableValues& values, std::string_view name, std::string_view value);
  void LoadMandatory(const XMLElement& e);
  void CompleteHelp2Settings();
  void LoadOptional(const XMLElement& e);
  void LoadOverrides(const XMLElement& e);

  std::string mID;
  std::string mName;
  std::string mOutputDirectory;
  bool mCompileHelpFile = true;
  std::int16_t mHTMLHelpVersion = 1;
  std::string mH2Namespace;
  std::string mH2FileID;
  std::string mHelpFileName;
  Ref<quillbook::VariableValues> mVariableValues;
  std::string mProjectTitle;
  bool mRemoveOutputFiles = false;
  bool mIncludeInBuild = false;
  std::string mDefaultTopicID;
  Ref<quillbook::VariableValues> mProjectPropertyValues;
  std::string mH2PlugIn;
  WeakReference<quillbook::BuildProfiles> mBuildProfiles;
  std::int32_t mLocaleID = 0;
  mutable std::int32_t mCachedCodePage = 0;  ///< 0 is not known yet
};

}  // namespace quillbook
