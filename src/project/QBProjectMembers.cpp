// Making and finding the members of a project.
#include "quillbook/base/SortedCollection.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/UnicodeHelper.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/Task.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicStatus.h"
#include "quillbook/topics/TopicStatuses.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

/// `text` behind `prefix`, ignoring case; the whole text if it doesn't begin so.
std::string_view WithoutPrefix(std::string_view text, std::string_view prefix) {
  if (!StartsWithIgnoringCase(text, prefix)) return text;
  // Folding maps a character to one character, but not always to one of as many bytes.
  std::size_t inText = 0;
  for (std::size_t inPrefix = 0; inPrefix < prefix.size();) {
    (void)NextCodePoint(prefix, inPrefix);
    (void)NextCodePoint(text, inText);
  }
  return text.substr(inText);
}

}  // namespace

// Factories.

Ref<Topic> QBProject::NewTopic() {
  return Procedure(*this, "NewTopic").Run([this] {
    auto topic = New<Topic>();
    topic->SetQBProject(Ref<QBProject>(this));
    topic->SetPauseEvents(true);
    topic->SetCreatedOn(Date::Now());
    IgnoreFailures([&] { topic->SetStatus(modMain::TopicStatuses()->Item(1)->Name); });
    topic->SetTopicSectionData("BodyText", "<p> </p>");
    topic->Key = modMain::CreateGUID();
    topic->SetPauseEvents(false);
    return topic;
  });
}

Ref<TopicCategory> QBProject::NewTopicCategory() {
  return Procedure(*this, "NewTopicCategory").Run([this] {
    auto category = New<TopicCategory>();
    category->SetQBProject(Ref<QBProject>(this));
    category->Key = modMain::CreateGUID();
    return category;
  });
}

Ref<OtherFile> QBProject::NewOtherFile(std::string_view Filename) {
  return Procedure(*this, "NewOtherFile", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    auto file = New<OtherFile>();
    file->SetQBProject(Ref<QBProject>(this));
    file->Filename->SetFullName(Filename);
    return file;
  });
}

Ref<GlossaryItem> QBProject::NewGlossaryItem(std::string_view Term, std::string_view Definition) {
  return Procedure(*this, "NewGlossaryItem",
                   [&](auto& p) {
                     p("Term", Term);
                     p("Definition", Definition);
                   })
      .Run([&] {
        auto item = New<GlossaryItem>();
        item->SetQBProject(Ref<QBProject>(this));
        item->Key = modMain::CreateGUID();
        item->SetTerm(Term);
        item->SetDefinition(Definition);
        return item;
      });
}

Ref<Task> QBProject::NewTask() {
  return Procedure(*this, "NewTask").Run([this] {
    auto task = New<Task>();
    task->SetQBProject(Ref<QBProject>(this));
    task->SetPauseEvents(true);
    task->SetKey(modMain::CreateGUID());
    task->SetPauseEvents(false);
    return task;
  });
}

Ref<ProjectProperty> QBProject::NewProjectProperty(std::string_view PropertyName, ProjectPropertyTypeEnum PropertyType,
                                                   std::string_view PropertyValue) {
  return Procedure(*this, "NewProjectProperty",
                   [&](auto& p) {
                     p("PropertyName", PropertyName);
                     p("PropertyType", PropertyType);
                     p("PropertyValue", PropertyValue);
                   })
      .Run([&] {
        auto property = New<ProjectProperty>();
        property->SetPropertyName(PropertyName);
        property->SetPropertyType(PropertyType);
        property->SetPropertyValue(PropertyValue);
        property->SetProjectProperties(mProjectProperties);
        mProjectProperties->Add(property, property->ID());
        return property;
      });
}

Ref<BuildProfile> QBProject::NewBuildProfile(std::string_view Name, std::string_view ProjectTitle, bool CompileHelpFile,
                                             std::int32_t HTMLHelpVersion) {
  return Procedure(*this, "NewBuildProfile",
                   [&](auto& p) {
                     p("Name", Name);
                     p("ProjectTitle", ProjectTitle);
                     p("CompileHelpFile", CompileHelpFile);
                     p("HTMLHelpVersion", HTMLHelpVersion);
                   })
      .Run([&] {
        auto profile = New<BuildProfile>();
        profile->SetBuildProfiles(BuildProfiles);
        profile->SetName(Name);
        profile->SetCompileHelpFile(CompileHelpFile);
        profile->SetHTMLHelpVersion(static_cast<std::int16_t>(HTMLHelpVersion));
        profile->SetProjectTitle(ProjectTitle);
        return profile;
      });
}

// Lookups.

Ref<Topic> QBProject::TopicByName(std::string_view Name) const {
  return Topics->FirstByName(Name);
}

Ref<Topic> QBProject::TopicByQualifiedName(std::string_view Name) const {
  return Topics->FirstByQualifiedName(Name);
}

Ref<Topic> QBProject::GetTopicFromURL(std::string_view URL) const {
  return Procedure(*this, "GetTopicFromURL", [&](auto& p) { p("URL", URL); }).Run([&]() -> Ref<Topic> {
    constexpr std::string_view pageExtension = ".html";
    const auto name = ParseURL(URL);
    if (!name.ends_with(pageExtension)) return {};
    return TopicByQualifiedName(std::string_view(name).substr(0, name.size() - pageExtension.size()));
  });
}

std::string QBProject::ParseURL(std::string_view Source) const {
  return Procedure(*this, "ParseURL", [&](auto& p) { p("Source", Source); }).Run([&] {
    if (!modMain::IsFileURL(Source)) return std::string(Source);
    const auto name = modMain::FileURLToFileName(Source);
    const auto directory = Filename->Path();
    auto relative = WithoutPrefix(name, directory);
    // The URL of a path without a drive loses its first separator along with the scheme.
    if (relative.size() == name.size() && directory.starts_with('\\') && StartsWithIgnoringCase(Source, "file:///"))
      relative = WithoutPrefix(name, std::string_view(directory).substr(1));
    return std::string(relative);
  });
}

Ref<HtmlDocument> QBProject::NewDOM(std::string_view BodyHTML) const {
  return Procedure(*this, "NewDOM", [&](auto& p) { p("BodyHTML", BodyHTML); }).Run([&] {
    const auto folder = ReplaceAll(ReplaceAll(ReplaceAll(Filename->Path(), "\\", "/"), "&", "&amp;"), "\"", "&quot;");
    // The page is made of bytes, so that its file holds UTF-8 whatever one byte a character makes of other characters.
    return modMain::CreateDOM(
        modMain::HelpPage("<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=UTF-8\">"
                          "<base href=\"file:///" +
                              UnicodeHelper::ToUTF8(folder) + "\">",
                          UnicodeHelper::ToUTF8(BodyHTML)));
  });
}

Ref<quillbook::Topics> QBProject::SortedTopics() const {
  return Procedure(*this, "SortedTopics").Run([this] {
    SortedCollection sorted;
    sorted.Sorted = true;
    for (const auto& topic : *Topics) sorted.Add(topic, topic->Name());
    auto result = New<quillbook::Topics>();
    sorted.ForEachItem([&result](const Variant& item) {
      const Ref<Topic> topic(static_cast<Topic*>(item.ToObject().get()));
      result->Add(topic, topic->Key);
    });
    return result;
  });
}

// Values.

std::string QBProject::GetVariableValue(std::string_view Name, std::string_view DefaultValue) const {
  auto value = RuntimeVariableValue(Name);
  return value.empty() ? std::string(DefaultValue) : value;
}

std::string QBProject::RuntimeVariableValue(std::string_view Name) const {
  if (mCurrentBuildProfile) return mCurrentBuildProfile->RuntimeVariableValue(Name);
  const auto* value = VariableValues->Find(Name);
  return value ? (*value)->Value : std::string();
}

std::string QBProject::RuntimeProjectPropertyValue(std::string_view Name) const {
  if (mCurrentBuildProfile) return mCurrentBuildProfile->RuntimeProjectProperty(Name);
  const auto property = mProjectProperties->Item(Name);
  return property ? property->PropertyValue() : std::string();
}

// Spelling.

void QBProject::SpellAddIgnoreAllWord(std::string_view Word) {
  IgnoreFailures([&] { SpellIgnoreAllWordList->AddKeyed(std::string(Word), Word); });
}

void QBProject::SaveSpellIgnoreAllWordListToFile(std::string_view Filename) {
  Procedure(*this, "SaveSpellIgnoreAllWordListToFile", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    if (SpellIgnoreAllWordList->IsEmpty() && GlossaryItems()->Count() == 0) return;
    const auto file = New<FileSystemObject>(Filename);
    file->CreateDirectory();
    file->Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockShared, 32767);
    for (const auto& word : *SpellIgnoreAllWordList) file->WriteLine(word);
    for (const auto& item : *GlossaryItems()) file->WriteLine(item->Term());
    for (const auto* entity : {"&nbsp;", "&gt;", "&lt;"}) file->WriteLine(entity);
    file->Close();
  });
}

}  // namespace quillbook
