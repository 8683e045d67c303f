// A help project in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Date.h"
#include "quillbook/base/Event.h"
#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"
#include "quillbook/host/VariableValue.h"
#include "quillbook/project/QBProjectEvents.h"

namespace quillbook {

class BuildProfiles;
class FileSystemObject;
class GlossaryItems;
class HtmlDocument;
class MVProjectBuild;
class NamespaceDef;
class OtherFiles;
class PageLayout;
class PageTemplate;
class ProjectProperties;
class ProjectProperty;
class QBNodes;
class Tasks;
class TopicCategories;
class Topics;
class XMLDocument;
class XMLElement;
enum ProjectPropertyTypeEnum : std::int32_t;

/// How a project lies on disk. Only the single file is in use. Frozen values.
enum ProjectTypeEnum : std::int32_t { ProjectTypeSingleFile = 0, ProjectTypeSeparateFiles = 1 };

/// How the last load of a project went, for programs that must not save over what they could not read.
struct ProjectLoadResult {
  enum class Outcome {
    NotLoaded,     ///< no load yet
    Loaded,        ///< read to its end
    FileNotFound,  ///< there is no such file
    Unreadable,    ///< the file is there, its text can't be had
    NotXml,        ///< the text isn't well-formed; `line` and `column` tell where
    OtherRoot,     ///< well-formed, but the root element isn't a project's
    Failed,        ///< a failure ended the load half way
  };
  Outcome outcome = Outcome::NotLoaded;
  std::size_t line = 0;    ///< from 1; 0 where no place is known
  std::size_t column = 0;  ///< from 1; 0 where no place is known
  std::string message;     ///< what is wrong, for people; empty after success
  std::string rootName;    ///< name of the root element

  [[nodiscard]] bool Ok() const noexcept { return outcome == Outcome::Loaded; }
};

/// The root of a help project: owns its topics, categories, table of contents, glossary, tasks, other files, build
/// profiles and properties, and reads and writes the project file.
///
/// Made with `New<QBProject>()`; it ends when its last reference goes. Members of its collections reach it through
/// weak references only. One thread. Setters do nothing where the value is unchanged; a real change raises `Changed`
/// and marks the project dirty, but not during a load.
class QBProject final : public LibraryObject {
 public:
  QBProject();
  ~QBProject() override;

  // ---- Public variables -------------------------------------------------------------------------------------------

  Ref<FileSystemObject> Filename;                       ///< location of the project file; no name in a new project
  Ref<quillbook::VariableValues> VariableValues;        ///< named values kept with the project, keyed by name
  Ref<quillbook::Topics> Topics;                        ///< keyed by the topics' `Key`
  Ref<quillbook::TopicCategories> TopicCategories;      ///< keyed by the categories' `Key`
  Ref<quillbook::OtherFiles> OtherFiles;                ///< keyed by full path
  Ref<quillbook::BuildProfiles> BuildProfiles;          ///< keyed by `ID`
  Ref<quillbook::Tasks> Tasks;                          ///< keyed by the tasks' `Key`
  Ref<Collection<std::string>> SpellIgnoreAllWordList;  ///< words that spelling ignores, keyed by themselves
  bool Silent = false;                  ///< messages of a build go to `BuildMessage` instead of a message box
  bool LoadedFromLite = false;          ///< the file's `Lite` attribute at the last load
  bool InvalidLiteProjectType = false;  ///< a load met a `ProjectType` other than 0; never cleared
  Ref<quillbook::QBNodes> QBNodes;      ///< top level of the table of contents

  /// What the project tells its listeners.
  QBProjectEvents Events;

  /// Library-internal: the counters of a build's templates, by name.
  Ref<Collection<std::int32_t>> IncrementingValues;

  // ---- Properties -------------------------------------------------------------------------------------------------

  [[nodiscard]] const std::string& Title() const noexcept { return mTitle; }
  void SetTitle(std::string_view RHS);
  /// Kept in memory only, never stored.
  [[nodiscard]] const std::string& DictionaryFileName() const noexcept { return mDictionaryFileName; }
  void SetDictionaryFileName(std::string_view RHS);
  [[nodiscard]] const std::string& TemplateName() const noexcept { return mTemplateName; }
  /// Compares ignoring case. After a change also raises `TopicTemplateChanged`, unless `Topics` is paused.
  void SetTemplateName(std::string_view RHS);
  [[nodiscard]] Date SpellLastCheckDateTime() const noexcept { return mSpellLastCheckDateTime; }
  void SetSpellLastCheckDateTime(Date RHS);
  [[nodiscard]] bool AutoGenerateIndexEntries() const noexcept { return mAutoGenerateIndexEntries; }
  void SetAutoGenerateIndexEntries(bool RHS);
  [[nodiscard]] bool AutoGenerateCategoryIndex() const noexcept { return mAutoGenerateCategoryIndex; }
  void SetAutoGenerateCategoryIndex(bool RHS);
  [[nodiscard]] bool BuildMVProject() const noexcept { return mBuildMVProject; }
  void SetBuildMVProject(bool RHS);
  /// Absolute, with a trailing separator; empty where none is set. Stored relative to the `Filename` of the moment of
  /// writing.
  [[nodiscard]] std::string OutputDirectory() const;
  void SetOutputDirectory(std::string_view RHS);
  /// Full path of the related host project file, or empty. Stored as `OutputDirectory` is; "\\\" counts as empty.
  [[nodiscard]] std::string MVPFileName() const;
  void SetMVPFileName(std::string_view RHS);
  /// The default topic; nothing where there is none or it is kept out of the help file.
  [[nodiscard]] Ref<Topic> DefaultTopic() const;
  void SetDefaultTopic(const Ref<Topic>& RHS);
  /// The profile that a build works through. Setting it tells nobody.
  [[nodiscard]] const Ref<BuildProfile>& CurrentBuildProfile() const noexcept { return mCurrentBuildProfile; }
  void SetCurrentBuildProfile(const Ref<BuildProfile>& RHS) { mCurrentBuildProfile = RHS; }
  /// Made at the first read.
  [[nodiscard]] const Ref<quillbook::GlossaryItems>& GlossaryItems();
  [[nodiscard]] const Ref<quillbook::ProjectProperties>& ProjectProperties() const noexcept {
    return mProjectProperties;
  }

  /// Always `ProjectTypeSingleFile`; writing it does nothing.
  [[nodiscard]] ProjectTypeEnum ProjectType() const noexcept { return mStorageForm; }
  void SetProjectType(ProjectTypeEnum) noexcept {}
  /// Always False.
  [[nodiscard]] bool SCCActivated() const noexcept { return false; }
  /// The read-only attribute of the project file.
  [[nodiscard]] bool ReadOnly() const;
  /// Full path of the project file. Used during help file generation only.
  [[nodiscard]] std::string QualifiedName() const;
  /// Folder of the project file followed by "TopicData\".
  [[nodiscard]] std::string TopicDataPath() const;
  /// Folder of the project file followed by "ProjectData\".
  [[nodiscard]] std::string ProjectDataPath() const;

  // ---- Dirty state and pausing ------------------------------------------------------------------------------------

  /// Anything in the project changed: its settings, a topic, the contents, the glossary or the tasks.
  [[nodiscard]] bool Dirty();
  /// Stores without comparing; False also clears the flags of topics, tasks, glossary and contents. Raises
  /// `DirtyStateChanged` at every write outside a load.
  void SetDirty(bool RHS);
  /// The project's own settings and lists changed.
  [[nodiscard]] bool ProjectDirty() const noexcept { return mDirty; }
  [[nodiscard]] bool TopicsDirty() const noexcept { return mTopicsDirty; }
  /// True raises `DirtyStateChanged` outside a load; clearing raises nothing.
  void SetTopicsDirty(bool RHS);
  /// True only if `Topics`, `QBNodes`, `GlossaryItems`, `OtherFiles`, `Tasks` and `TopicCategories` are all paused.
  [[nodiscard]] bool PauseEvents();
  /// Forwards the value to these six.
  void SetPauseEvents(bool RHS);

  // ---- Factories: all but `NewProjectProperty` leave adding to the caller -------------------------------------------

  [[nodiscard]] Ref<Topic> NewTopic();
  [[nodiscard]] Ref<TopicCategory> NewTopicCategory();
  [[nodiscard]] Ref<OtherFile> NewOtherFile(std::string_view Filename);
  [[nodiscard]] Ref<GlossaryItem> NewGlossaryItem(std::string_view Term, std::string_view Definition);
  [[nodiscard]] Ref<Task> NewTask();
  /// Adds the property to `ProjectProperties`.
  Ref<ProjectProperty> NewProjectProperty(std::string_view PropertyName, ProjectPropertyTypeEnum PropertyType,
                                          std::string_view PropertyValue = {});
  [[nodiscard]] Ref<BuildProfile> NewBuildProfile(std::string_view Name = {}, std::string_view ProjectTitle = {},
                                                  bool CompileHelpFile = true, std::int32_t HTMLHelpVersion = 1);

  // ---- Lookups: an unknown name gives nothing, never a failure -----------------------------------------------------

  /// The first topic in collection order with this `Name`, ignoring case. Constant time.
  [[nodiscard]] Ref<Topic> TopicByName(std::string_view Name) const;
  /// The first topic in collection order with this `QualifiedName`, ignoring case. Constant time.
  [[nodiscard]] Ref<Topic> TopicByQualifiedName(std::string_view Name) const;
  /// The topic of a URL that ends in exactly ".html" after `ParseURL`.
  [[nodiscard]] Ref<Topic> GetTopicFromURL(std::string_view URL) const;
  /// A file URL as a file name, without the project's folder where it begins with that; any other URL unchanged.
  [[nodiscard]] std::string ParseURL(std::string_view Source) const;
  /// A document of a page with this body and the project's folder as its base.
  [[nodiscard]] Ref<HtmlDocument> NewDOM(std::string_view BodyHTML) const;
  /// A new collection of the same topics in ascending order of `Name`, ignoring case. It has no project.
  [[nodiscard]] Ref<quillbook::Topics> SortedTopics() const;
  /// `RuntimeVariableValue`, or `DefaultValue` where that is empty.
  [[nodiscard]] std::string GetVariableValue(std::string_view Name, std::string_view DefaultValue) const;
  [[nodiscard]] std::string RuntimeVariableValue(std::string_view Name) const;
  [[nodiscard]] std::string RuntimeProjectPropertyValue(std::string_view Name) const;

  /// Adds a word unless it is there. Doesn't touch the dirty state.
  void SpellAddIgnoreAllWord(std::string_view Word);
  /// Writes the ignored words, the glossary's terms and three entities, one a line; nothing if both lists are empty.
  void SaveSpellIgnoreAllWordListToFile(std::string_view Filename);

  // ---- Persistence ------------------------------------------------------------------------------------------------

  /// Reads a project file. A file that doesn't exist shows itself in `Title` only; see also `LastLoadResult`.
  void LoadFromFile(std::string_view Filename);
  /// Reads the project file again, keeping the contents, tasks, glossary and present topics as they are in memory.
  void Reload();
  /// Reads a project from its text; `Filename` isn't touched.
  void Load(std::string_view Source);
  /// The whole file as text. Changes neither the project's dirty state nor anything on disk.
  [[nodiscard]] std::string Save();
  /// Writes the project file, after a copy of the present one to ".bak". False, with the dirty state unchanged, if
  /// it could not be written.
  bool SaveToDisk(bool CheckForNewOrDeletedSSItems = true);
  [[nodiscard]] const ProjectLoadResult& LastLoadResult() const noexcept { return mLoadResult; }

  // ---- Build ------------------------------------------------------------------------------------------------------

  Ref<BuildResult> Build(std::string_view CompilerFileName, bool BuildRelatedMVP,
                         const Ref<quillbook::BuildProfile>& BuildProfile, bool ShowBusyDialog, bool ShowResultsDialog);
  void CancelBuild();
  void CopySupportFiles();
  /// False if a file could not be copied and the user gave up.
  bool CopyOtherFiles(std::string_view DestinationDirectory, bool AddToGeneratedFiles, bool UpdateOtherFiles);
  /// Shows a message with the buttons and answers of an ordinary message box. A listener of `MessageBox` may take it
  /// over; with `Silent` it becomes a `BuildMessage` and the answer 0.
  std::int32_t ShowMessageBox(std::string_view Message, std::int32_t Buttons, std::string_view Title);
  /// The installed template named `TemplateName`; nothing if there is none.
  [[nodiscard]] Ref<PageTemplate> Template() const;
  /// Name of the first layout of `Template` for topics; empty if there is none.
  [[nodiscard]] std::string DefaultTopicLayout() const;
  /// The current host project or nothing.
  [[nodiscard]] const Ref<quillbook::MVProject>& MVProject() const noexcept { return mMVProject; }
  [[nodiscard]] bool HasHTMLHelp1BuildProfile() const;
  [[nodiscard]] bool HasHelp2BuildProfile() const;

  // ---- What members report ----------------------------------------------------------------------------------------

  /// For an editor that reorders.
  void FireTopicReOrdered(const Ref<quillbook::Topic>& Topic);
  void FireTopicCategoryReOrdered(const Ref<quillbook::TopicCategory>& TopicCategory);

  // Library-internal from here on.
  void FireTopicAdded(const Ref<quillbook::Topic>& Topic);
  /// Also turns the nodes of the table of contents that show the topic into plain captions.
  void FireTopicRemoved(const Ref<quillbook::Topic>& Topic);
  void FireTopicChanged(const Ref<quillbook::Topic>& Topic);
  void FireTopicTopicLinksChanged(const Ref<quillbook::Topic>& Topic);
  void FireTopicTopicLinkChanged(const Ref<quillbook::Topic>& Topic, const Ref<quillbook::TopicLink>& TopicLink);
  void FireTopicSectionChanged(const Ref<quillbook::Topic>& Topic, const Ref<quillbook::TopicSection>& TopicSection);
  void FireTopicCategoryAdded(const Ref<quillbook::TopicCategory>& TopicCategory);
  void FireTopicCategoryChanged(const Ref<quillbook::TopicCategory>& TopicCategory);
  void FireTopicCategoryRemoved(const Ref<quillbook::TopicCategory>& TopicCategory);
  void FireOtherFileAdded(const Ref<quillbook::OtherFile>& OtherFile);
  void FireOtherFileRemoved(const Ref<quillbook::OtherFile>& OtherFile);
  void FireOtherFileChanged(const Ref<quillbook::OtherFile>& OtherFile);
  void FireOtherFileCheckoutStatusChanged(const Ref<quillbook::OtherFile>& OtherFile);
  void FireQBNodeChanged(const Ref<quillbook::QBNode>& QBNode);
  void FireQBNodeRemoved(const Ref<quillbook::QBNode>& QBNode);
  void FireGlossaryItemAdded(const Ref<GlossaryItem>& Item);
  void FireGlossaryItemChanged(const Ref<GlossaryItem>& Item);
  void FireGlossaryItemRemoved(const Ref<GlossaryItem>& Item);
  void FireTaskAdded(const Ref<quillbook::Task>& Task);
  void FireTaskChanged(const Ref<quillbook::Task>& Task);
  void FireTaskRemoved(const Ref<quillbook::Task>& Task);
  void FireBuildProfilesChanged();
  void FireBuildProfileChanged(const Ref<quillbook::BuildProfile>& BuildProfile);
  void FireBuildProfileAdded(const Ref<quillbook::BuildProfile>& BuildProfile);
  void FireBuildProfileRemoved(const Ref<quillbook::BuildProfile>& BuildProfile);
  void FireDirtyStateChanged();
  void FireBuildProgress(std::string_view Status);
  void FireBuildMessage(std::string_view Message, BuildMessageLevel Level);

  /// For tests of the storage form that is out of use: what `ProjectType` answers from now on.
  void SetStorageForm(ProjectTypeEnum value) noexcept { mStorageForm = value; }

  // ---- Callbacks of the host during a build -------------------------------------------------------------------------

  void mMVProject_ContentCreated(std::string_view Filename);
  void mMVProject_BeforeOutputNamespacePage(const Ref<quillbook::PageLayout>& PageLayout,
                                            const Ref<quillbook::NamespaceDef>& Definition, const Ref<Object>& Item,
                                            bool& DontGenerate);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  /// What the related host project's name may hold in place of no name.
  static constexpr std::string_view NoMVPFileName = "\\\\\\";

  friend class ProjectLoader;
  friend class ProjectWriter;

  void Changed();
  /// A path as it is stored: relative to the project file.
  [[nodiscard]] std::string StoredPath(const Ref<FileSystemObject>& target) const;
  [[nodiscard]] std::string AbsolutePath(std::string_view stored) const;
  /// A new empty collection of this project.
  template <class List>
  void MakeCollection(Ref<List>& list) {
    list = New<List>();
    list->SetQBProject(Ref<QBProject>(this));
  }
  void ConnectSinks();
  void ClearMemberFlags();
  void MarkTopicPartChanged();
  void MakeNodesPlain(const quillbook::Topic& topic);
  void InternalLoadFromFile(std::string_view Filename, bool Reload);
  [[nodiscard]] std::string ReadText(const FileSystemObject& file);
  /// Makes a document of a text and notes in `mLoadResult` what it is.
  [[nodiscard]] XMLDocument Parse(std::string text);
  /// False if a failure ended the load half way; it has been reported then.
  bool LoadXMLDocument(XMLDocument doc, bool Reload);
  void ReportMissingFile(std::string_view name);
  /// Notes the place where a text stops being XML.
  void LocateFault(std::string_view text);
  void KeepBackup(const FileSystemObject& file) const;
  bool OpenForSaving(FileSystemObject& file);
  bool WriteTo(FileSystemObject& file);

  class BuildRun;  ///< the phases of a build
  bool CopyUntilDone(const FileSystemObject& source, const FileSystemObject& target);
  Ref<BuildResult> InternalBuild(const Ref<PageTemplate>& Template, const Ref<quillbook::MVProject>& PassedMVProject,
                                 std::string_view CompilerFileName, bool BuildRelatedMVP,
                                 const Ref<quillbook::BuildProfile>& BuildProfile, bool ShowBusyDialog,
                                 bool ShowResultsDialog);

  // Fields, in the order of the state dump.
  Ref<BuildProfile> mCurrentBuildProfile;
  bool mBuildMVProject = true;
  std::string mTitle;
  std::string mHelp2Namespace;  ///< declared and dumped; nothing reads or writes it
  std::string mHelp2FileID;     ///< likewise
  Ref<quillbook::GlossaryItems> mGlossaryItems;
  bool mDirty = false;
  std::string mMVPFileName;                      ///< relative to the project file
  bool mLoading = false;                         ///< holds back `Changed` and the dirty events
  Ref<Collection<std::string>> mGeneratedFiles;  ///< full paths of what the present build has written
  std::string mDefaultTopicLayout;
  Date mSpellLastCheckDateTime;
  std::string mTemplateName;
  bool mTopicsDirty = false;
  std::string mDictionaryFileName;
  bool mBuildCancelled = false;
  std::string mOutputDirectory;  ///< relative to the project file
  bool mAutoGenerateIndexEntries = true;
  bool mAutoGenerateCategoryIndex = false;
  std::string mDefaultTopicID;  ///< `Key` of the default topic
  Ref<quillbook::ProjectProperties> mProjectProperties;
  Ref<quillbook::MVProject> mMVProject;
  Ref<MVProjectBuild> mMVProjectBuild;

  ProjectTypeEnum mStorageForm = ProjectTypeSingleFile;
  ProjectLoadResult mLoadResult;
  std::vector<Connection> mSinks;       ///< to `QBNodes` and `ProjectProperties`
  std::vector<Connection> mBuildSinks;  ///< to `mMVProject`
};

}  // namespace quillbook
