#include "project/ProjectWriter.h"

#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/LibraryVersion.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {

XMLDocument ProjectWriter::Document() {
  XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("QBProject");
  WriteAttributes(root);
  WriteSpelling(root);
  WriteCategories(root);
  WriteVariableValues(root);
  WriteOtherFiles(root);
  WriteTopics(root);
  WriteCollections(root);
  return document;
}

void ProjectWriter::WriteAttributes(XMLElement root) const {
  root.AddAttribute("ProjectType", std::to_string(mProject.ProjectType()));
  root.AddAttribute("Version", LibraryVersion());
  root.AddAttribute("SaveDateTime", Date::Now().Format("dd/mm/yyyy hh:nn:ss"));
  root.AddAttribute("MVPFileName", mProject.mMVPFileName);
  root.AddAttribute("TemplateName", mProject.mTemplateName);
  root.AddAttribute("SpellLastCheckDateTime", mProject.mSpellLastCheckDateTime.ToLocaleText());
  root.AddAttribute("Title", mProject.mTitle);
  // Source control and header files have gone from the library; their attributes stay in the file.
  root.AddAttribute("SCCActivated", BooleanText(false));
  root.AddAttribute("SCCProject", "");
  root.AddAttribute("HelpContextIDHeaderFile", "");
  root.AddAttribute("OutputDirectory", mProject.mOutputDirectory);
  root.AddAttribute("AutoGenerateIndexEntries", BooleanText(mProject.mAutoGenerateIndexEntries));
  root.AddAttribute("AutoGenerateCategoryIndex", BooleanText(mProject.mAutoGenerateCategoryIndex));
  root.AddAttribute("BuildMVProject", BooleanText(mProject.mBuildMVProject));
  root.AddAttribute("DefaultTopic", mProject.mDefaultTopicID);
  root.AddAttribute("Lite", BooleanText(true));
}

void ProjectWriter::WriteSpelling(XMLElement root) const {
  root.AddChild("SpellIgnoreAllWordList", TextHelper::Join(*mProject.SpellIgnoreAllWordList, "|"));
}

void ProjectWriter::WriteCategories(XMLElement root) const {
  for (const auto& category : *mProject.TopicCategories) category->Save(root.AddChild("cat"));
}

void ProjectWriter::WriteVariableValues(XMLElement root) const {
  for (const auto& value : *mProject.VariableValues)
    if (!value->Name.empty()) root.AddChild("VariableValue", value->Value).AddAttribute("Name", value->Name);
}

void ProjectWriter::WriteOtherFiles(XMLElement root) const {
  for (const auto& file : *mProject.OtherFiles) file->Save(root.AddChild("file"));
}

void ProjectWriter::WriteTopics(XMLElement root) const {
  for (const auto& topic : *mProject.Topics) topic->Save(root.AddChild("Topic"));
}

void ProjectWriter::WriteCollections(XMLElement root) const {
  mProject.GlossaryItems()->Save(root.AddChild("GlossaryItems"));
  mProject.QBNodes->Save(root.AddChild("Nodes"));
  mProject.Tasks->Save(root.AddChild("Tasks"));
  mProject.BuildProfiles->Save(root.AddChild("BuildProfiles"));
  mProject.mProjectProperties->Save(root.AddChild("ProjectProperties"));
}

}  // namespace quillbook
