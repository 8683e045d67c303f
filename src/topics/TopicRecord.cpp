// How a topic reads and writes its record.
#include <array>
#include <charconv>
#include <optional>

#include "quillbook/base/Text.h"
#include "quillbook/base/Variant.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/platform/MessageBox.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicSectionDef.h"
#include "quillbook/topics/TopicSections.h"

namespace quillbook {

namespace {

constexpr std::string_view DefaultStatus = "In Progress";

std::optional<int> DigitsOf(std::string_view text, std::size_t from, std::size_t count) {
  int number = 0;
  const auto part = text.substr(from, count);
  const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
  if (error != std::errc() || end != part.data() + count || part.front() == '-') return std::nullopt;
  return number;
}

/// Day, month and year of a stored date; its time isn't read. Zero for a text that is no date.
Date GetDateFromString(std::string_view s) {
  Date::Parts parts;
  if (s.size() >= 10) {
    const auto day = DigitsOf(s, 0, 2);
    const auto month = DigitsOf(s, 3, 2);
    const auto year = DigitsOf(s, 6, 4);
    if (day && month && year) return Date::FromParts({*year, *month, *day}).value_or(Date());
  }
  const bool parsed = IgnoreFailures([&] {
    parts.year = LongFromText(Utf16Part(s, 6, 4));
    parts.month = LongFromText(Utf16Part(s, 3, 2));
    parts.day = LongFromText(Utf16Part(s, 0, 2));
  });
  return parsed ? Date::FromParts(parts).value_or(Date()) : Date();
}

/// "dd-mm-yyyy hh:nn"
class StoredDate {
 public:
  explicit StoredDate(Date date) {
    const auto parts = date.ToParts();
    Put(0, 2, parts.day);
    Put(3, 2, parts.month);
    Put(6, 4, parts.year);
    Put(11, 2, parts.hour);
    Put(14, 2, parts.minute);
  }
  operator std::string_view() const noexcept { return {mText.data(), mText.size()}; }

 private:
  void Put(std::size_t at, std::size_t digits, int value) noexcept {
    for (; digits > 0; value /= 10) mText[at + --digits] = static_cast<char>('0' + value % 10);
  }

  std::array<char, 16> mText{'0', '0', '-', '0', '0', '-', '0', '0', '0', '0', ' ', '0', '0', ':', '0', '0'};
};

/// Name of a child element of the record, told from others by its letters in lower case.
enum class Child { Keyword, Link, OldBody, Section, Notes, StyleSheets, Scripts, Unknown };

Child ChildOf(std::string_view name) {
  const auto is = [&](std::string_view lower) { return EqualsIgnoringCase(name, lower); };
  switch (name.size()) {
    case 1:
      switch (name[0]) {
        case 's':
        case 'S': return Child::Section;
        case 'k':
        case 'K': return Child::Keyword;
        case 'r':
        case 'R': return Child::Link;
        case 'c':
        case 'C': return Child::OldBody;
        default: return Child::Unknown;
      }
    case 2: return is("st") ? Child::StyleSheets : is("sc") ? Child::Scripts : Child::Unknown;
    case 5: return is("notes") ? Child::Notes : Child::Unknown;
    default: return Child::Unknown;
  }
}

/// Writes a topic's file; asks and tries again where that fails. False if the user gave up.
bool Store(const Ref<QBProject>& project, const std::string& localSpec, const std::string& text) {
  constexpr int RecordLength = 32767;
  const auto write = [&] {
    const auto file = New<FileSystemObject>(localSpec);
    file->CreateDirectory();
    // Locked, the new text takes the old one's place in one step, so that a full disk leaves the old one whole.
    file->Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockWriters,
               RecordLength);
    file->WriteLine(text);
    file->Close();
  };
  const auto question = "Could not save to file '" + localSpec +
                        "'. Please ensure that you have permission to access this file and the containing directory.";
  while (!IgnoreFailures(write)) {
    const auto answer =
        project->ShowMessageBox(question, MessageBox::RetryCancel | MessageBox::Exclamation, "Could not save");
    if (answer != MessageBox::Retry) return false;
  }
  return true;
}

}  // namespace

void Topic::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] { InternalLoad(e, false); });
}

void Topic::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] { InternalSave(e, false); });
}

void Topic::SaveToDisk() {
  Procedure(*this, "SaveToDisk").Run([&] { Save({}); });
}

Ref<Topic> Topic::Clone(const Ref<quillbook::QBProject>& ParentQBProject) {
  return Procedure(*this, "Clone", [&](auto& p) { p("ParentQBProject", ParentQBProject); }).Run([&] {
    const auto project = ParentQBProject ? ParentQBProject : QBProject();
    auto topic = project->NewTopic();
    const XMLDocument record;
    InternalSave(record.DocumentElement(), true);
    topic->InternalLoad(record.DocumentElement(), true);
    return topic;
  });
}

// Reading.

void Topic::InternalLoad(XMLElement e, bool ForClone) {
  Procedure(*this, "InternalLoad", [&](auto& p) {
    p("e", e);
    p("ForClone", ForClone);
  }).Run([&] {
    mLoading = true;
    NewTopicFlag = false;
    if (e)
      if (const auto key = e.Attributes().Find("Key")) Key = *key;
    if (UsesSeparateFile(ForClone)) e = LoadSeparateFile();
    LoadAttributes(e);
    if (Key.empty()) Key = modMain::CreateGUID();
    RenewLists();
    for (const auto child : e.ChildElements()) LoadChild(child);
    mLoading = false;
  });
}

void Topic::LoadAttributes(const XMLElement& e) {
  const auto read = [&](std::string_view name, auto&& take) {
    const auto value = e ? e.Attributes().Find(name) : std::nullopt;
    if (value) take(*value);
  };
  const auto readText = [&](std::string_view name, std::string& field) {
    read(name, [&](std::string_view value) { field = value; });
  };
  const auto readBoolean = [&](std::string_view name, bool& field) {
    read(name, [&](std::string_view value) { field = value == "True"; });
  };
  const auto readDate = [&](std::string_view name, Date& field) {
    read(name, [&](std::string_view value) { field = GetDateFromString(value); });
    if (field == Date()) field = Date::Now();
  };
  read("Name", [&](std::string_view value) { SetName(value); });
  read("Title", [&](std::string_view value) { SetTitle(value); });
  readText("ContentsTitle", mContentsTitle);
  if (mContentsTitle == mTitle) mContentsTitle.clear();
  read("Category", [&](std::string_view value) {
    if (const auto project = QBProject())
      IgnoreFailures([&] { SetTopicCategory(project->TopicCategories->Item(value)); });
  });
  readText("Status", mStatus);
  if (mStatus.empty()) mStatus = DefaultStatus;
  readDate("CreatedOn", mCreatedOn);
  readDate("ModifiedOn", mModifiedOn);
  readText("LayoutName", mLayoutName);
  mAllStylesheets = true;
  readBoolean("AllStylesheets", mAllStylesheets);
  mAllScripts = true;
  readBoolean("AllScripts", mAllScripts);
  readBoolean("AutoGenerateIndexEntry", mAutoGenerateIndexEntry);
  readBoolean("IncludeInHelpFile", mIncludeInHelpFile);
}

void Topic::RenewLists() {
  if (mKeywords) mKeywords->Clear();
  mTopicLinksAdded.Disconnect();
  mTopicLinksRemoved.Disconnect();
  mTopicLinks = nullptr;
  mTopicLinksLoaded = true;
  TopicSections = New<quillbook::TopicSections>();
  mStyleSheets.Renew();
  mScripts.Renew();
}

void Topic::LoadChild(const XMLElement& child) {
  switch (ChildOf(child.Name())) {
    case Child::Keyword: Keywords()->LoadKeyword(child); break;
    case Child::Link: LoadLink(child); break;
    case Child::OldBody: NewTopicSection("BodyText", child.TextView()); break;
    case Child::Section:
      NewTopicSection(child.Attributes().Find("k").value_or(std::string_view()), child.TextView());
      break;
    case Child::Notes: LoadNotes(child); break;
    case Child::StyleSheets:
      if (!mAllStylesheets) LoadFileList(child, *StyleSheets());
      break;
    case Child::Scripts:
      if (!mAllScripts) LoadFileList(child, *Scripts());
      break;
    case Child::Unknown: break;
  }
}

void Topic::LoadLink(const XMLElement& child) {
  const auto link = New<TopicLink>();
  link->SetParentTopic(Ref(this));
  link->Load(child);
  TopicLinks()->Add(link);
}

void Topic::LoadNotes(const XMLElement& child) {
  const auto notes = TrimBlanks(child.TextView());
  SetNotes(notes == "\r\n" ? std::string_view() : notes);
}

void Topic::LoadFileList(const XMLElement& list, FileList& files) {
  for (const auto file : list.ChildElements()) files.Add(file.Text(), file.TextView());
}

// Writing.

void Topic::InternalSave(XMLElement e, bool ForClone) {
  Procedure(*this, "InternalSave", [&](auto& p) {
    p("e", e);
    p("ForClone", ForClone);
  }).Run([&] {
    if (e) e.AddAttribute("Key", Key);
    if (UsesSeparateFile(ForClone)) {
      if (!SaveSeparateFile()) return;
    } else {
      SaveRecord(e);
    }
    NewTopicFlag = false;
    SetDirty(false);
  });
}

void Topic::SaveRecord(XMLElement e) {
  SaveAttributes(e);
  SaveFileLists(e);
  e.AddChild("Notes", mNotes);
  const auto category = TopicCategory();
  e.AddAttribute("Category", category ? std::string_view(category->Key) : std::string_view());
  if (mKeywords) mKeywords->SaveKeywords(e);
  if (mTopicLinks)
    for (const auto& link : *mTopicLinks) link->Save(e.AddChild("r"));
  for (const auto& section : *TopicSections)
    e.AddChild("s", section->Data()).AddAttribute("k", section->TopicSectionDef()->Key);
}

void Topic::SaveAttributes(XMLElement& e) const {
  e.AddAttribute("Name", mName);
  e.AddAttribute("Title", mTitle);
  e.AddAttribute("ContentsTitle", ContentsTitle());
  e.AddAttribute("Status", mStatus);
  e.AddAttribute("CreatedOn", StoredDate(mCreatedOn));
  e.AddAttribute("ModifiedOn", StoredDate(mModifiedOn));
  e.AddAttribute("LayoutName", mLayoutName);
  e.AddAttribute("AllStyleSheets", BooleanText(mAllStylesheets));
  e.AddAttribute("AllScripts", BooleanText(mAllScripts));
  e.AddAttribute("AutoGenerateIndexEntry", BooleanText(mAutoGenerateIndexEntry));
  e.AddAttribute("IncludeInHelpFile", BooleanText(mIncludeInHelpFile));
  e.AddAttribute("HelpContextIDs", "");
}

void Topic::SaveFileLists(XMLElement& e) const {
  if (!mAllStylesheets) {
    auto list = e.AddChild("st");
    for (const auto& file : *StyleSheets()) list.AddChild("f", file);
  }
  if (!mAllScripts) {
    auto list = e.AddChild("sc");
    // As many scripts as there are stylesheets: files have always been written so, and readers count on it.
    const auto count = Scripts()->IsEmpty() ? 0 : StyleSheets()->Count();
    for (std::size_t index = 1; index <= count; ++index) list.AddChild("f", Scripts()->Item(index));
  }
}

// Files of a topic's own.

bool Topic::UsesSeparateFile(bool ForClone) const {
  const auto project = QBProject();
  return !ForClone && project && project->ProjectType() == ProjectTypeSeparateFiles;
}

XMLElement Topic::LoadSeparateFile() const {
  XMLDocument document;
  const auto file = New<FileSystemObject>(LocalSpec());
  if (file->FileExists()) document.LoadXML(file->ReadAll());
  return document.DocumentElement();
}

bool Topic::SaveSeparateFile() {
  const auto localSpec = LocalSpec();
  if (!mDirty && New<FileSystemObject>(localSpec)->FileExists()) return false;
  const XMLDocument document;
  document.DocumentElement().SetName("Topic");
  SaveRecord(document.DocumentElement());
  return Store(QBProject(), localSpec, document.ToString());
}

}  // namespace quillbook
