#include "quillbook/topics/Topic.h"

#include "frame/Assign.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/frame/services/UnicodeHelper.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicSections.h"
#include "topics/TopicIndex.h"

namespace quillbook {

Topic::Topic() : TopicSections(New<quillbook::TopicSections>()) {}

Topic::~Topic() = default;

// Lists that are made when read.

void Topic::LazyFileList::Drop() noexcept {
  mList = nullptr;
  mPresent = false;
}

void Topic::LazyFileList::Renew() noexcept {
  mList = nullptr;
  mPresent = true;
}

const Ref<Topic::FileList>& Topic::LazyFileList::Get() {
  if (!mList) mList = New<FileList>();
  mPresent = true;
  return mList;
}

Ref<Topic::FileList> Topic::LazyFileList::ForDump() {
  return mPresent ? Get() : nullptr;
}

bool Topic::LazyFileList::Contains(std::string_view filename) const noexcept {
  return TextHelper::InCollection(filename, mList);
}

const Ref<TopicKeywords>& Topic::Keywords() const {
  if (!mKeywords) {
    mKeywords = New<TopicKeywords>();
    mKeywords->SetTopic(Ref(const_cast<Topic*>(this)));
  }
  return mKeywords;
}

const Ref<Topic::FileList>& Topic::Scripts() const {
  return mScripts.Get();
}

const Ref<Topic::FileList>& Topic::StyleSheets() const {
  return mStyleSheets.Get();
}

const Ref<TopicLinks>& Topic::TopicLinks() const {
  if (!mTopicLinks) {
    mTopicLinks = New<quillbook::TopicLinks>();
    if (!mTopicLinksLoaded) mTopicLinks->SetTopic(Ref(const_cast<Topic*>(this)));
    ConnectTopicLinks();
  }
  return mTopicLinks;
}

// Properties.

template <class Stored, class Value>
void Topic::Assign(Stored& field, const Value& value, std::string_view property) {
  quillbook::Assign(*this, field, value, property, [](Topic& topic) { topic.Changed(true); });
}

void Topic::SetAllScripts(bool RHS) {
  Procedure(*this, "AllScripts", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    if (mAllScripts == RHS) return;
    mAllScripts = RHS;
    if (RHS) mScripts.Drop();
    if (!mLoading) Events.TopicScriptsChanged.Raise();
    Changed(true);
  });
}

void Topic::SetIncludeInHelpFile(bool RHS) {
  Assign(mIncludeInHelpFile, RHS, "IncludeInHelpFile");
}

void Topic::SetAutoGenerateIndexEntry(bool RHS) {
  Assign(mAutoGenerateIndexEntry, RHS, "AutoGenerateIndexEntry");
}

void Topic::SetAllStylesheets(bool RHS) {
  Procedure(*this, "AllStylesheets", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    if (mAllStylesheets == RHS) return;
    mAllStylesheets = RHS;
    if (RHS) mStyleSheets.Renew();
    if (!mLoading) Events.TopicStyleSheetsChanged.Raise();
    Changed(true);
  });
}

void Topic::SetLayoutName(std::string_view RHS) {
  Assign(mLayoutName, RHS, "LayoutName");
}

void Topic::SetDirty(bool RHS) {
  Procedure(*this, "Dirty", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    mDirty = RHS;
    if (RHS) QBProject()->SetDirty(true);
  });
}

void Topic::SetNotes(std::string_view RHS) {
  Assign(mNotes, RHS, "Notes");
}

void Topic::SetStatus(std::string_view RHS) {
  Assign(mStatus, RHS, "Status");
}

Ref<quillbook::TopicCategory> Topic::TopicCategory() const {
  return Procedure(*this, "TopicCategory").Run([&]() -> Ref<quillbook::TopicCategory> {
    if (mTopicCategoryID.empty()) return {};
    Ref<quillbook::TopicCategory> category;
    if (const auto project = QBProject())
      IgnoreFailures([&] { category = project->TopicCategories->Item(mTopicCategoryID); });
    if (!category) mTopicCategoryID.clear();
    return category;
  });
}

void Topic::SetTopicCategory(const Ref<quillbook::TopicCategory>& RHS) {
  Assign(mTopicCategoryID, RHS ? std::string_view(RHS->Key) : std::string_view(), "TopicCategory");
}

void Topic::SetContentsTitle(std::string_view RHS) {
  Assign(mContentsTitle, RHS, "ContentsTitle");
}

void Topic::SetName(std::string_view RHS) {
  Procedure(*this, "Name", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    if (mName == RHS) return;
    const auto oldName = std::exchange(mName, std::string(RHS));
    for (const auto& place : mPlaces) place.index->Renamed(place.member, oldName);
    Changed(true);
  });
}

void Topic::SetTitle(std::string_view RHS) {
  Assign(mTitle, RHS, "Title");
}

Ref<quillbook::QBProject> Topic::QBProject() const {
  return mQBProject.Target();
}

void Topic::SetQBProject(const Ref<quillbook::QBProject>& RHS) {
  mQBProject.SetTarget(RHS);
}

std::string Topic::QualifiedName() const {
  return modMain::SafeFileName(mName);
}

std::string Topic::LocalSpec() const {
  return Procedure(*this, "LocalSpec").Run([&] { return QBProject()->TopicDataPath() + Key + ".xml"; });
}

bool Topic::ReadOnly() const {
  return Procedure(*this, "ReadOnly").Run([&] {
    return !NewTopicFlag && UsesSeparateFile(false) && New<FileSystemObject>(LocalSpec())->ReadOnly();
  });
}

bool Topic::IncludedInBuildProfile(const Ref<BuildProfile>&, bool) const noexcept {
  return mIncludeInHelpFile;
}

std::string Topic::DisplayText() const {
  return mName + " (" + mTitle + ")";
}

// Changes.

void Topic::Changed(bool NotifyQBProject) {
  Procedure(*this, "Changed", [&](auto& p) { p("NotifyQBProject", NotifyQBProject); }).Run([&] {
    if (mLoading) return;
    mDirty = true;  // not by the property, which would make the project dirty whatever it thinks of the change
    mModifiedOn = Date::Now();
    if (!NotifyQBProject) return;
    if (const auto project = QBProject()) project->FireTopicChanged(Ref(this));
  });
}

void Topic::FireChanged() {
  Procedure(*this, "FireChanged").Run([&] { Changed(true); });
}

void Topic::FireTopicLinkChanged(const Ref<quillbook::TopicLink>& TopicLink) {
  Procedure(*this, "FireTopicLinkChanged", [&](auto& p) { p("TopicLink", TopicLink); }).Run([&] {
    const auto project = QBProject();
    if (!mLoading && project) project->FireTopicTopicLinkChanged(Ref(this), TopicLink);
    Changed(true);
  });
}

void Topic::FireTopicSectionChanged(const Ref<quillbook::TopicSection>& TopicSection) {
  Procedure(*this, "FireTopicSectionChanged", [&](auto& p) { p("TopicSection", TopicSection); }).Run([&] {
    const auto project = QBProject();
    if (!mLoading && project) project->FireTopicSectionChanged(Ref(this), TopicSection);
  });
}

void Topic::ConnectTopicLinks() const {
  // The list belongs to a topic that may be changed: only that it is made late happens behind a reader's back.
  auto* self = const_cast<Topic*>(this);
  mTopicLinksAdded =
      mTopicLinks->Events.ItemAdded.Connect([self](const auto&) { self->TopicLinksChanged("mTopicLinks_ItemAdded"); });
  mTopicLinksRemoved = mTopicLinks->Events.ItemRemoved.Connect(
      [self](const auto&) { self->TopicLinksChanged("mTopicLinks_ItemRemoved"); });
}

void Topic::TopicLinksChanged(std::string_view handler) {
  Procedure(*this, handler).Run([&] {
    if (mLoading) return;
    if (const auto project = QBProject()) project->FireTopicTopicLinksChanged(Ref(this));
    Changed(true);
  });
}

// Content.

const std::string& Topic::TopicSectionData(std::string_view Key) const {
  static const std::string none;
  const auto section = TopicSections ? TopicSections->Item(Key) : nullptr;
  return section ? section->Data() : none;
}

void Topic::SetTopicSectionData(std::string_view Key, std::string_view RHS) {
  Procedure(*this, "TopicSectionData", [&](auto& p) {
    p("Key", Key);
    p("RHS", RHS);
  }).Run([&] {
    const auto section = TopicSections ? TopicSections->Item(Key) : nullptr;
    if (!section) {
      NewTopicSection(Key, RHS);
      if (!mLoading) Events.TopicSectionDataChanged.Raise(TopicSections->Item(Key));
      Changed(false);
    } else if (section->Data() != RHS) {
      section->SetData(RHS);
      Changed(false);
    }
  });
}

std::string Topic::TopicSectionUTF8(std::string_view Key) const {
  return Procedure(*this, "TopicSectionUTF8", [&](auto& p) { p("Key", Key); }).Run([&] {
    return UnicodeHelper::ToUTF8(TopicSectionData(Key));
  });
}

Ref<TopicSection> Topic::NewTopicSection(std::string_view Key, std::string_view Data) {
  return Procedure(*this, "NewTopicSection",
                   [&](auto& p) {
                     p("Key", Key);
                     p("Data", Data);
                   })
      .Run([&] {
        auto section = New<TopicSection>();
        section->SetTopic(Ref(this));
        const auto definition = modMain::TopicSectionDefs()->Item(Key);
        section->SetTopicSectionDef(definition);
        section->SetData(Data);
        TopicSections->Add(section, definition->Key);
        return section;
      });
}

Ref<TopicLink> Topic::NewTopicLink(TopicLinkTypeEnum TopicLinkType, std::string_view Category, std::string_view Title,
                                   std::string_view URL, const Ref<Topic>& TargetTopic) {
  return Procedure(*this, "NewTopicLink",
                   [&](auto& p) {
                     p("TopicLinkType", TopicLinkType);
                     p("Category", Category);
                     p("Title", Title);
                     p("URL", URL);
                     p("TargetTopic", TargetTopic);
                   })
      .Run([&] {
        mLoading = true;
        auto link = New<TopicLink>();
        link->SetTopicLinkType(TopicLinkType);
        if (TopicLinkType == rttTopic && TargetTopic) {
          link->ChildTopicKey = TargetTopic->Key;
          const auto category = Category.empty() ? TargetTopic->TopicCategory() : nullptr;
          if (category) link->SetCategory(category->Name());
        }
        link->SetURL(URL);
        link->SetTitle(Title);
        link->SetCategory(Category);  // also an empty one: the target's category never wins
        link->SetParentTopic(Ref(this));
        mLoading = false;
        TopicLinks()->Add(link);
        return link;
      });
}

Ref<TopicKeyword> Topic::AddKeyword(std::string_view Keyword) {
  return Keywords()->AddKeyword(Keyword);
}

// Scripts and stylesheets.

void Topic::AddScript(std::string_view Filename) {
  Procedure(*this, "AddScript", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    if (TextHelper::InCollection(Filename, Scripts())) return;
    Scripts()->Add(std::string(Filename), Filename);
    if (!mLoading) {
      Events.TopicScriptAdded.Raise(Filename);
      Events.TopicScriptsChanged.Raise();
    }
    mAllScripts = false;
    Changed(true);
  });
}

void Topic::RemoveScript(std::string_view Filename) {
  Procedure(*this, "RemoveScript", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    if (!TextHelper::InCollection(Filename, Scripts())) return;
    Scripts()->Remove(Filename);
    if (!mLoading) {
      Events.TopicScriptRemoved.Raise(Filename);
      Events.TopicScriptsChanged.Raise();
    }
    Changed(true);
  });
}

void Topic::AddStyleSheet(std::string_view Filename) {
  Procedure(*this, "AddStyleSheet", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    StyleSheets()->Add(std::string(Filename), Filename);
    if (!mLoading) {
      Events.TopicStyleSheetAdded.Raise(Filename);
      Events.TopicStyleSheetsChanged.Raise();
    }
    Changed(true);
  });
}

void Topic::RemoveStyleSheet(std::string_view Filename) {
  Procedure(*this, "RemoveStyleSheet", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    IgnoreFailures([&] { StyleSheets()->Remove(Filename); });
    if (!mLoading) {
      Events.TopicStyleSheetRemoved.Raise(Filename);
      Events.TopicStyleSheetsChanged.Raise();
    }
    Changed(true);
  });
}

bool Topic::IncludeStylesheet(std::string_view RelativeFileName) const {
  return mAllStylesheets || mStyleSheets.Contains(RelativeFileName);
}

bool Topic::IncludeScript(std::string_view RelativeFileName) const {
  return mAllScripts || mScripts.Contains(RelativeFileName);
}

// Description.

Ref<Topic::FileList> Topic::TopicLinkNamesForDump() const {
  return New<FileList>();
}

const TypeInfo& Topic::StaticType() {
  static const TypeInfo type =
      Describe<Topic>("Topic")
          .Public<&Topic::NewTopicFlag>("NewTopicFlag")
          .Field<&Topic::mIsDefault>("mIsDefault")
          .Field<&Topic::mLoading>("mLoading")
          .Field<&Topic::mQBProject>("mQBProject")
          .Field<&Topic::mName>("mName")
          .Field<&Topic::mTitle>("mTitle")
          .Field<&Topic::mContentsTitle>("mContentsTitle")
          .ComputedField<&Topic::TopicLinkNamesForDump>("mTopicLinkNames")
          .Field<&Topic::mTopicCategoryID>("mTopicCategoryID")
          .Field<&Topic::mDirty>("mDirty")
          .Field<&Topic::mStatus>("mStatus")
          .Field<&Topic::mCreatedOn>("mCreatedOn")
          .Field<&Topic::mModifiedOn>("mModifiedOn")
          .Field<&Topic::mNotes>("mNotes")
          .Field<&Topic::mLayoutName>("mLayoutName")
          .ComputedField<&Topic::StyleSheetsForDump>("mStyleSheets")
          .Field<&Topic::mAllStylesheets>("mAllStylesheets")
          .Field<&Topic::mAutoGenerateIndexEntry>("mAutoGenerateIndexEntry")
          .Field<&Topic::mIncludeInHelpFile>("mIncludeInHelpFile")
          .Field<&Topic::mReadOnlyCache>("mReadOnlyCache")
          .Field<&Topic::mReadOnlyCacheSet>("mReadOnlyCacheSet")
          .Public<&Topic::Key>("Key")
          .Field<&Topic::mKeywords>("mKeywords")
          .Field<&Topic::mTopicLinks>("mTopicLinks")
          .Public<&Topic::TopicSections>("TopicSections")
          .ComputedField<&Topic::ScriptsForDump>("mScripts")
          .Field<&Topic::mAllScripts>("mAllScripts")
          .Property<&Topic::Keywords, &Topic::SetKeywords>("Keywords")
          .Property<&Topic::AllScripts, &Topic::SetAllScripts>("AllScripts")
          .ReadOnly<&Topic::Scripts>("Scripts")
          .Property<&Topic::IncludeInHelpFile, &Topic::SetIncludeInHelpFile>("IncludeInHelpFile")
          .ReadOnly<&Topic::RuntimeIncludeInHelpFile>("RuntimeIncludeInHelpFile")
          .Property<&Topic::AutoGenerateIndexEntry, &Topic::SetAutoGenerateIndexEntry>("AutoGenerateIndexEntry")
          .Property<&Topic::AllStylesheets, &Topic::SetAllStylesheets>("AllStylesheets")
          .ReadOnly<&Topic::StyleSheets>("StyleSheets")
          .Property<&Topic::LayoutName, &Topic::SetLayoutName>("LayoutName")
          .Property<&Topic::Dirty, &Topic::SetDirty>("Dirty")
          .Property<&Topic::Notes, &Topic::SetNotes>("Notes")
          .Property<&Topic::ModifiedOn, &Topic::SetModifiedOn>("ModifiedOn")
          .Property<&Topic::CreatedOn, &Topic::SetCreatedOn>("CreatedOn")
          .Property<&Topic::Status, &Topic::SetStatus>("Status")
          .Property<&Topic::PauseEvents, &Topic::SetPauseEvents>("PauseEvents")
          .Property<&Topic::TopicCategory, &Topic::SetTopicCategory>("TopicCategory")
          .ReadOnly<&Topic::IsDefault>("IsDefault")
          .Property<&Topic::ContentsTitle, &Topic::SetContentsTitle>("ContentsTitle")
          .ReadOnly<&Topic::InternalContentsTitle>("InternalContentsTitle")
          .Property<&Topic::Name, &Topic::SetName>("Name")
          .Property<&Topic::Title, &Topic::SetTitle>("Title")
          .Property<&Topic::QBProject, &Topic::SetQBProject>("QBProject")
          .ReadOnly<&Topic::TopicLinks>("TopicLinks")
          .ReadOnly<&Topic::QualifiedName>("QualifiedName")
          .ReadOnly<&Topic::LocalSpec>("LocalSpec")
          .ReadOnly<&Topic::ReadOnly>("ReadOnly")
          .Done();
  return type;
}

}  // namespace quillbook
