// The description of a project for the state dump and for late binding.
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/MVProjectBuild.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {

const TypeInfo& QBProject::StaticType() {
  using P = QBProject;
  static const TypeInfo type =
      Describe<P>("QBProject")
          .Public<&P::Filename>("Filename")
          .Public<&P::VariableValues>("VariableValues")
          .Public<&P::Topics>("Topics")
          .Public<&P::TopicCategories>("TopicCategories")
          .Public<&P::OtherFiles>("OtherFiles")
          .Public<&P::BuildProfiles>("BuildProfiles")
          .Public<&P::Tasks>("Tasks")
          .Public<&P::SpellIgnoreAllWordList>("SpellIgnoreAllWordList")
          .Public<&P::Silent>("Silent")
          .Public<&P::LoadedFromLite>("LoadedFromLite")
          .Public<&P::InvalidLiteProjectType>("InvalidLiteProjectType")
          .Field<&P::IncrementingValues>("IncrementingValues")
          .Field<&P::mCurrentBuildProfile>("mCurrentBuildProfile")
          .Field<&P::mBuildMVProject>("mBuildMVProject")
          .Field<&P::mTitle>("mTitle")
          .Field<&P::mHelp2Namespace>("mHelp2Namespace")
          .Field<&P::mHelp2FileID>("mHelp2FileID")
          .Field<&P::mGlossaryItems>("mGlossaryItems")
          .Field<&P::mDirty>("mDirty")
          .Field<&P::mMVPFileName>("mMVPFileName")
          .Field<&P::mLoading>("mLoading")
          .Field<&P::mGeneratedFiles>("mGeneratedFiles")
          .Field<&P::mDefaultTopicLayout>("mDefaultTopicLayout")
          .Field<&P::mSpellLastCheckDateTime>("mSpellLastCheckDateTime")
          .Field<&P::mTemplateName>("mTemplateName")
          .Field<&P::mTopicsDirty>("mTopicsDirty")
          .Field<&P::mDictionaryFileName>("mDictionaryFileName")
          .Field<&P::mBuildCancelled>("mBuildCancelled")
          .Field<&P::mOutputDirectory>("mOutputDirectory")
          .Field<&P::mAutoGenerateIndexEntries>("mAutoGenerateIndexEntries")
          .Field<&P::mAutoGenerateCategoryIndex>("mAutoGenerateCategoryIndex")
          .Field<&P::mDefaultTopicID>("mDefaultTopicID")
          .Public<&P::QBNodes>("QBNodes")
          .Field<&P::mProjectProperties>("mProjectProperties")
          .Field<&P::mMVProject>("mMVProject")
          .Field<&P::mMVProjectBuild>("mMVProjectBuild")
          .Property<&P::CurrentBuildProfile, &P::SetCurrentBuildProfile>("CurrentBuildProfile")
          .Property<&P::BuildMVProject, &P::SetBuildMVProject>("BuildMVProject")
          .Property<&P::Title, &P::SetTitle>("Title")
          .ReadOnly<&P::GlossaryItems>("GlossaryItems")
          .Property<&P::Dirty, &P::SetDirty>("Dirty")
          .ReadOnly<&P::ProjectDirty>("ProjectDirty")
          .Property<&P::TopicsDirty, &P::SetTopicsDirty>("TopicsDirty")
          .Property<&P::PauseEvents, &P::SetPauseEvents>("PauseEvents")
          .Property<&P::MVPFileName, &P::SetMVPFileName>("MVPFileName")
          .Property<&P::SpellLastCheckDateTime, &P::SetSpellLastCheckDateTime>("SpellLastCheckDateTime")
          .Property<&P::TemplateName, &P::SetTemplateName>("TemplateName")
          .Property<&P::DictionaryFileName, &P::SetDictionaryFileName>("DictionaryFileName")
          .Property<&P::OutputDirectory, &P::SetOutputDirectory>("OutputDirectory")
          .Property<&P::AutoGenerateIndexEntries, &P::SetAutoGenerateIndexEntries>("AutoGenerateIndexEntries")
          .Property<&P::AutoGenerateCategoryIndex, &P::SetAutoGenerateCategoryIndex>("AutoGenerateCategoryIndex")
          .Property<&P::DefaultTopic, &P::SetDefaultTopic>("DefaultTopic")
          .ReadOnly<&P::ProjectProperties>("ProjectProperties")
          .Property<&P::ProjectType, &P::SetProjectType>("ProjectType")
          .ReadOnly<&P::SCCActivated>("SCCActivated")
          .ReadOnly<&P::ReadOnly>("ReadOnly")
          .ReadOnly<&P::QualifiedName>("QualifiedName")
          .ReadOnly<&P::TopicDataPath>("TopicDataPath")
          .ReadOnly<&P::ProjectDataPath>("ProjectDataPath")
          .ReadOnly<&P::SortedTopics>("SortedTopics")
          .ReadOnly<&P::Template>("Template")
          .ReadOnly<&P::DefaultTopicLayout>("DefaultTopicLayout")
          .ReadOnly<&P::MVProject>("MVProject")
          .ReadOnly<&P::HasHTMLHelp1BuildProfile>("HasHTMLHelp1BuildProfile")
          .ReadOnly<&P::HasHelp2BuildProfile>("HasHelp2BuildProfile")
          .Done();
  return type;
}

}  // namespace quillbook
