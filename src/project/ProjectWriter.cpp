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

void ProjectWriter::WriteTo(const XMLOutput::Sink& sink) {
  XMLOutput output(mRoot, sink);
  WriteAttributes();
  WriteSpelling();
  WriteCategories();
  WriteVariableValues();
  WriteOtherFiles();
  WriteTopics(output);
  WriteCollections();
  output.Finish();
}

std::string ProjectWriter::Text() {
  std::string text;
  WriteTo([&text](std::string_view part) { text += part; });
  return text;
}

void ProjectWriter::WriteAttributes() {
  mRoot.AddAttribute("ProjectType", std::to_string(mProject.ProjectType()));
  mRoot.AddAttribute("Version", LibraryVersion());
  mRoot.AddAttribute("SaveDateTime", Date::Now().Format("dd/mm/yyyy hh:nn:ss"));
  mRoot.AddAttribute("MVPFileName", mProject.mMVPFileName);
  mRoot.AddAttribute("TemplateName", mProject.mTemplateName);
  mRoot.AddAttribute("SpellLastCheckDateTime", mProject.mSpellLastCheckDateTime.ToLocaleText());
  mRoot.AddAttribute("Title", mProject.mTitle);
  // Source control and header files have gone from the library; their attributes stay in the file.
  mRoot.AddAttribute("SCCActivated", BooleanText(false));
  mRoot.AddAttribute("SCCProject", "");
  mRoot.AddAttribute("HelpContextIDHeaderFile", "");
  mRoot.AddAttribute("OutputDirectory", mProject.mOutputDirectory);
  mRoot.AddAttribute("AutoGenerateIndexEntries", BooleanText(mProject.mAutoGenerateIndexEntries));
  mRoot.AddAttribute("AutoGenerateCategoryIndex", BooleanText(mProject.mAutoGenerateCategoryIndex));
  mRoot.AddAttribute("BuildMVProject", BooleanText(mProject.mBuildMVProject));
  mRoot.AddAttribute("DefaultTopic", mProject.mDefaultTopicID);
  mRoot.AddAttribute("Lite", BooleanText(true));
}

void ProjectWriter::WriteSpelling() {
  mRoot.AddChild("SpellIgnoreAllWordList", TextHelper::Join(*mProject.SpellIgnoreAllWordList, "|"));
}

void ProjectWriter::WriteCategories() {
  for (const auto& category : *mProject.TopicCategories) category->Save(mRoot.AddChild("cat"));
}

void ProjectWriter::WriteVariableValues() {
  for (const auto& value : *mProject.VariableValues)
    if (!value->Name.empty()) mRoot.AddChild("VariableValue", value->Value).AddAttribute("Name", value->Name);
}

void ProjectWriter::WriteOtherFiles() {
  for (const auto& file : *mProject.OtherFiles) file->Save(mRoot.AddChild("file"));
}

void ProjectWriter::WriteTopics(XMLOutput& output) {
  const bool separate = mProject.ProjectType() == ProjectTypeSeparateFiles;
  for (const auto& topic : *mProject.Topics) {
    topic->Save(mRoot.AddChild("Topic"));
    if (separate && topic->Dirty()) mWroteAllParts = false;  // a topic whose file was written is clean
    output.Flush();
  }
}

void ProjectWriter::WriteCollections() {
  mWroteAllParts &= mProject.GlossaryItems()->Save(mRoot.AddChild("GlossaryItems"));
  mWroteAllParts &= mProject.QBNodes->Save(mRoot.AddChild("Nodes"));
  mWroteAllParts &= mProject.Tasks->Save(mRoot.AddChild("Tasks"));
  mProject.BuildProfiles->Save(mRoot.AddChild("BuildProfiles"));
  mProject.mProjectProperties->Save(mRoot.AddChild("ProjectProperties"));
}

}  // namespace quillbook
