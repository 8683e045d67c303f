// The unit of content of a project: one help page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Date.h"
#include "quillbook/base/Event.h"
#include "quillbook/base/Object.h"

namespace quillbook {

class BuildProfile;
class QBProject;
class TopicCategory;
class TopicIndex;
class TopicKeyword;
class TopicKeywords;
class TopicLink;
class TopicLinks;
class TopicSection;
class TopicSections;
class XMLElement;
struct TopicPlace;
enum TopicLinkTypeEnum : int;

/// What a topic tells its own listeners. Changes of its properties are heard at the project instead.
struct TopicEvents {
  static constexpr std::string_view PublishedName = "__Topic";

  /// Raised only when writing a section's data made the section.
  Event<const Ref<TopicSection>&> TopicSectionDataChanged;
  Event<std::string_view> TopicStyleSheetAdded;
  Event<std::string_view> TopicStyleSheetRemoved;
  Event<> TopicStyleSheetsChanged;
  Event<std::string_view> TopicScriptAdded;
  Event<std::string_view> TopicScriptRemoved;
  Event<> TopicScriptsChanged;
};

/// A topic: name, title, workflow data, keywords, related links and content.
///
/// A setter does nothing if the value stays the same; a real change makes the topic dirty, sets `ModifiedOn` and tells
/// the project. Setters that differ say so. While `PauseEvents` is True nobody is told and nothing is marked. Made by
/// `QBProject::NewTopic`, owned by the project's `Topics`; knows its project without keeping it alive.
class Topic final : public LibraryObject {
 public:
  /// A list of file names, each its own key.
  using FileList = Collection<std::string>;

  Topic();
  ~Topic() override;

  TopicEvents Events;
  /// True until the topic was first saved or loaded. Setting it tells nobody.
  bool NewTopicFlag = true;
  /// Identity within the project, unchanging once made. Setting it tells nobody.
  std::string Key;
  /// The content. Setting it tells nobody.
  Ref<quillbook::TopicSections> TopicSections;

  [[nodiscard]] const Ref<TopicKeywords>& Keywords() const;
  /// Does nothing: a topic keeps its own list.
  void SetKeywords(const Ref<TopicKeywords>&) {}

  /// Whether the topic uses every script of the project. Setting True drops the topic's own list.
  [[nodiscard]] bool AllScripts() const noexcept { return mAllScripts; }
  void SetAllScripts(bool RHS);
  /// The chosen scripts, which count when `AllScripts` is False.
  [[nodiscard]] const Ref<FileList>& Scripts() const;
  [[nodiscard]] bool IncludeInHelpFile() const noexcept { return mIncludeInHelpFile; }
  void SetIncludeInHelpFile(bool RHS);
  [[nodiscard]] bool RuntimeIncludeInHelpFile() const noexcept { return mIncludeInHelpFile; }
  /// Whether the index gets an entry made from the title.
  [[nodiscard]] bool AutoGenerateIndexEntry() const noexcept { return mAutoGenerateIndexEntry; }
  void SetAutoGenerateIndexEntry(bool RHS);
  /// As `AllScripts`, for stylesheets.
  [[nodiscard]] bool AllStylesheets() const noexcept { return mAllStylesheets; }
  void SetAllStylesheets(bool RHS);
  [[nodiscard]] const Ref<FileList>& StyleSheets() const;
  /// Empty for the template's default layout.
  [[nodiscard]] const std::string& LayoutName() const noexcept { return mLayoutName; }
  void SetLayoutName(std::string_view RHS);

  /// Changed since the last save. Setting True makes the project dirty, and is reported as a failure if there is no
  /// project; setting False leaves the project's flag.
  [[nodiscard]] bool Dirty() const noexcept { return mDirty; }
  void SetDirty(bool RHS);
  [[nodiscard]] const std::string& Notes() const noexcept { return mNotes; }
  void SetNotes(std::string_view RHS);
  /// Zero is "not set". Setting either date tells nobody.
  [[nodiscard]] Date ModifiedOn() const noexcept { return mModifiedOn; }
  void SetModifiedOn(Date RHS) { mModifiedOn = RHS; }
  [[nodiscard]] Date CreatedOn() const noexcept { return mCreatedOn; }
  void SetCreatedOn(Date RHS) { mCreatedOn = RHS; }
  /// Name of a `TopicStatus`, or any other text.
  [[nodiscard]] const std::string& Status() const noexcept { return mStatus; }
  void SetStatus(std::string_view RHS);
  /// Silences the topic, and stops it from becoming dirty.
  [[nodiscard]] bool PauseEvents() const noexcept { return mLoading; }
  void SetPauseEvents(bool RHS) { mLoading = RHS; }
  /// Found by key in the project at each read. A category that has gone is forgotten by that read.
  [[nodiscard]] Ref<quillbook::TopicCategory> TopicCategory() const;
  /// Compares keys; nothing means no category.
  void SetTopicCategory(const Ref<quillbook::TopicCategory>& RHS);
  /// Always False: which topic is the default one is the project's affair.
  [[nodiscard]] bool IsDefault() const noexcept { return mIsDefault; }
  /// The specific title for the table of contents, or else the title.
  [[nodiscard]] const std::string& ContentsTitle() const noexcept {
    return mContentsTitle.empty() ? mTitle : mContentsTitle;
  }
  void SetContentsTitle(std::string_view RHS);
  /// The specific title alone; empty if there is none.
  [[nodiscard]] const std::string& InternalContentsTitle() const noexcept { return mContentsTitle; }
  /// Need not be unique in the project.
  [[nodiscard]] const std::string& Name() const noexcept { return mName; }
  void SetName(std::string_view RHS);
  [[nodiscard]] const std::string& Title() const noexcept { return mTitle; }
  void SetTitle(std::string_view RHS);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& RHS);
  /// Made when first read.
  [[nodiscard]] const Ref<quillbook::TopicLinks>& TopicLinks() const;
  /// The name made fit for a file; base of the generated file's name.
  [[nodiscard]] std::string QualifiedName() const;
  /// Where a file of the topic's own would lie.
  [[nodiscard]] std::string LocalSpec() const;
  /// Whether the topic's own file is read-only; False for a new topic, and where topics have no files of their own.
  [[nodiscard]] bool ReadOnly() const;
  /// `IncludeInHelpFile`; a topic has no state of its own per profile.
  [[nodiscard]] bool IncludedInBuildProfile(const Ref<BuildProfile>& BuildProfile = {},
                                            bool UseBuildFlag = false) const noexcept;

  /// Data of the section of a kind, valid as long as the section; empty if the topic has none.
  [[nodiscard]] const std::string& TopicSectionData(std::string_view Key) const;
  /// Makes the section where it is missing. The change is heard at the project as one of the section, not of the
  /// topic.
  void SetTopicSectionData(std::string_view Key, std::string_view RHS);
  /// The data with one character per UTF-8 byte.
  [[nodiscard]] std::string TopicSectionUTF8(std::string_view Key) const;
  /// A new section, added to `TopicSections`. Nothing for an unknown kind. If the topic has that kind already, the new
  /// section stands in no collection. Makes nothing dirty.
  Ref<TopicSection> NewTopicSection(std::string_view Key, std::string_view Data = {});

  /// A new link at the end of `TopicLinks`. Its category is `Category` as given, also when that is empty and the target
  /// has a category. Ends a pause of this topic.
  Ref<TopicLink> NewTopicLink(TopicLinkTypeEnum TopicLinkType = {}, std::string_view Category = {},
                              std::string_view Title = {}, std::string_view URL = {},
                              const Ref<Topic>& TargetTopic = {});
  Ref<TopicKeyword> AddKeyword(std::string_view Keyword);
  /// Adds the file and sets `AllScripts` to False; does nothing if it is there already.
  void AddScript(std::string_view Filename);
  /// Does nothing if the file isn't there.
  void RemoveScript(std::string_view Filename);
  /// A file that is there already is reported as failure 457. `AllStylesheets` stays as it is.
  void AddStyleSheet(std::string_view Filename);
  /// The change is told also when there was nothing to remove.
  void RemoveStyleSheet(std::string_view Filename);
  [[nodiscard]] bool IncludeStylesheet(std::string_view RelativeFileName) const;
  [[nodiscard]] bool IncludeScript(std::string_view RelativeFileName) const;

  /// Marks the topic changed and tells the project, as a setter does.
  void FireChanged();
  void FireTopicLinkChanged(const Ref<quillbook::TopicLink>& TopicLink);

  /// A topic with the same record, the `Key` included, made by `ParentQBProject` or else this topic's project and not
  /// yet in its `Topics`. Clears `Dirty` and `NewTopicFlag` of this topic, as a save does.
  Ref<Topic> Clone(const Ref<quillbook::QBProject>& ParentQBProject = {});
  /// "Name (Title)".
  [[nodiscard]] std::string DisplayText() const;

  /// Takes everything from a record "Topic". All lists are replaced; nobody is told and `Dirty` stays.
  void Load(XMLElement e);
  /// Writes the record "Topic" and clears `Dirty` and `NewTopicFlag`.
  void Save(XMLElement e);
  void SaveToDisk();

  // Library-internal
  void FireTopicSectionChanged(const Ref<quillbook::TopicSection>& TopicSection);
  /// `ForClone` keeps the record in the element whatever the project's storage form.
  void InternalLoad(XMLElement e, bool ForClone);
  void InternalSave(XMLElement e, bool ForClone);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  friend class TopicIndex;

  /// A list that is made when somebody reads it. It may already count as made before: the state dump shows that.
  class LazyFileList {
   public:
    /// No list until the next read.
    void Drop() noexcept;
    /// A new, empty list.
    void Renew() noexcept;
    [[nodiscard]] const Ref<FileList>& Get();
    [[nodiscard]] Ref<FileList> ForDump();
    [[nodiscard]] bool Contains(std::string_view filename) const noexcept;

   private:
    Ref<FileList> mList;
    bool mPresent = false;
  };

  template <class Stored, class Value>
  void Assign(Stored& field, const Value& value, std::string_view property);
  void Changed(bool NotifyQBProject);
  void LoadAttributes(const XMLElement& e);
  void RenewLists();
  void LoadChild(const XMLElement& child);
  void LoadLink(const XMLElement& child);
  void LoadNotes(const XMLElement& child);
  static void LoadFileList(const XMLElement& list, FileList& files);
  void SaveRecord(XMLElement e);
  void SaveAttributes(XMLElement& e) const;
  void SaveFileLists(XMLElement& e) const;
  [[nodiscard]] bool UsesSeparateFile(bool ForClone) const;
  [[nodiscard]] XMLElement LoadSeparateFile() const;
  /// False if nothing had to be written or the user gave up.
  bool SaveSeparateFile();
  void ConnectTopicLinks() const;
  void TopicLinksChanged(std::string_view handler);
  [[nodiscard]] Ref<FileList> TopicLinkNamesForDump() const;
  [[nodiscard]] Ref<FileList> StyleSheetsForDump() const { return mStyleSheets.ForDump(); }
  [[nodiscard]] Ref<FileList> ScriptsForDump() const { return mScripts.ForDump(); }

  bool mIsDefault = false;
  bool mLoading = false;
  bool mDirty = false;
  bool mAllStylesheets = true;
  bool mAutoGenerateIndexEntry = true;
  bool mIncludeInHelpFile = true;
  bool mReadOnlyCache = false;
  bool mReadOnlyCacheSet = false;
  bool mAllScripts = true;
  WeakReference<quillbook::QBProject> mQBProject;
  std::string mName;
  std::string mTitle;
  std::string mContentsTitle;
  mutable std::string mTopicCategoryID;
  std::string mStatus;
  Date mCreatedOn;
  Date mModifiedOn;
  std::string mNotes;
  std::string mLayoutName;
  mutable LazyFileList mStyleSheets;
  mutable LazyFileList mScripts;
  // Most topics have neither, so both lists are made by the first read; nobody can tell that from a list that was
  // there all the time.
  mutable Ref<TopicKeywords> mKeywords;
  mutable Ref<quillbook::TopicLinks> mTopicLinks;
  mutable Connection mTopicLinksAdded;
  mutable Connection mTopicLinksRemoved;
  bool mTopicLinksLoaded = false;   ///< the list counts as made by a load, which leaves it without its topic
  std::vector<TopicPlace> mPlaces;  ///< in indexed lists, to be told of a new name
};

}  // namespace quillbook
