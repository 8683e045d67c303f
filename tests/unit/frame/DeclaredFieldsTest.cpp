// The state dump of every class: which fields it names, and in which order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "quillbook/base/Locale.h"
#include "quillbook/base/SortedCollection.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/config/QBIDEOptions.h"
#include "quillbook/frame/DataObject.h"
#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/Picture.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/documents/DocumentFactory.h"
#include "quillbook/frame/documents/HtmlElement.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/generation/Filter.h"
#include "quillbook/generation/GlossaryLetter.h"
#include "quillbook/generation/NullDataProvider.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/generation/QBMVPlugIn.h"
#include "quillbook/generation/QBNamespaceProvider.h"
#include "quillbook/host/BuiltInHelpCompiler.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/Condition.h"
#include "quillbook/host/DocType.h"
#include "quillbook/host/ExternalHelpCompiler.h"
#include "quillbook/host/Keywords.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/MVProjectBuild.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/PageLayout.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/host/ParserTemplate.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/host/VariableValue.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinkCategory.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicSections.h"
#include "quillbook/topics/TopicStatuses.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

struct ClassFields {
  const TypeInfo* type;
  std::string_view fields;  ///< names in declared order, a blank between
  Ref<Object> (*make)();    ///< null for a class that doesn't make objects of no arguments
};

template <class T>
ClassFields Of(std::string_view fields) {
  if constexpr (requires { new T(); })
    return {&T::StaticType(), fields, []() -> Ref<Object> { return New<T>(); }};
  else
    return {&T::StaticType(), fields, nullptr};
}

/// The class behind `XMLDocument`, which shows itself once there is a document.
const TypeInfo& XMLDocumentType() {
  const XMLDocument document;
  (void)document.DocumentElement();
  for (const auto* type : TypeInfo::All())
    if (type->Name() == "XMLDocument") return *type;
  throw std::logic_error("no document has a type");
}

/// Readers of failure reports know these names and this order; neither may change.
std::vector<ClassFields> AllClasses() {
  return {
      // Base and services.
      Of<Collection<std::string>>(""),
      Of<FileSystemObject>(""),
      Of<Locale>("mLocaleID mName mCodePage"),
      Of<SortedCollection>("Sorted"),
      {&XMLDocumentType(), "", nullptr},
      // Library frame.
      Of<DataObject>(""),
      Of<Picture>(""),
      Of<Root>(""),
      Of<DocumentFactory>(""),
      Of<HtmlDocument>(""),
      Of<HtmlElement>(""),
      Of<HtmlElements>(""),
      // Project.
      Of<QBProject>("Filename VariableValues Topics TopicCategories OtherFiles BuildProfiles Tasks "
                    "SpellIgnoreAllWordList Silent LoadedFromLite InvalidLiteProjectType IncrementingValues "
                    "mCurrentBuildProfile mBuildMVProject mTitle mHelp2Namespace mHelp2FileID mGlossaryItems mDirty "
                    "mMVPFileName mLoading mGeneratedFiles mDefaultTopicLayout mSpellLastCheckDateTime mTemplateName "
                    "mTopicsDirty mDictionaryFileName mBuildCancelled mOutputDirectory mAutoGenerateIndexEntries "
                    "mAutoGenerateCategoryIndex mDefaultTopicID QBNodes mProjectProperties mMVProject "
                    "mMVProjectBuild"),
      // Topics.
      Of<Topic>("NewTopicFlag mIsDefault mLoading mQBProject mName mTitle mContentsTitle mTopicLinkNames "
                "mTopicCategoryID mDirty mStatus mCreatedOn mModifiedOn mNotes mLayoutName mStyleSheets "
                "mAllStylesheets mAutoGenerateIndexEntry mIncludeInHelpFile mReadOnlyCache mReadOnlyCacheSet Key "
                "mKeywords mTopicLinks TopicSections mScripts mAllScripts"),
      Of<Topics>("mQBProject PauseEvents mDeletedTopics mCol"),
      Of<TopicCategory>("Key mName mAutoIndexEntries mQBProject"),
      Of<TopicCategories>("mQBProject PauseEvents mCol"),
      Of<TopicKeyword>("mID mKeyword"),
      Of<TopicKeywords>("mTopic mCol"),
      Of<TopicLink>("ChildTopicKey mCategory mTitle mTopicLinkType mURL mParentTopic"),
      Of<TopicLinkCategory>("Name Topic"),
      Of<TopicLinks>("mTopic mCol"),
      Of<TopicSection>("mTopic mData Tag mTopicSectionDefKey"),
      Of<TopicSections>("mCol"),
      Of<TopicSectionDef>("Key Caption"),
      Of<TopicSectionDefs>("mCol"),
      Of<TopicStatus>("Name Caption Icon"),
      Of<TopicStatuses>("mCol"),
      // Structure.
      Of<QBNode>("Key ChildNodes mQBNodeType mCaptionType mCaptionText mIcon mSubContentsFileName mStandardURL "
                 "mTopicID mParentNode mQBNodes"),
      Of<QBNodes>("PauseEvents mDirty mQBProject mCol"),
      Of<GlossaryItem>("Key mTerm mDefinition mQBProject"),
      Of<GlossaryItems>("PauseEvents mQBProject mDirty mCol"),
      Of<Task>("mQBProject mPauseEvents mKey mPriority mTitle mNotes mAssignedTo mTopicID mStatus mCreatedOn "
               "mCreatedBy mModifiedOn mModifiedBy"),
      Of<Tasks>("PauseEvents mDirty mQBProject mCol"),
      Of<OtherFile>("Tag Filename mIncludeInOutput mCaptureInfo mQBProject mNewFlag"),
      Of<OtherFiles>("PauseEvents mQBProject mCol mDeletedFiles"),
      // Configuration.
      Of<BuildProfile>("LastBuildResult mID mName mOutputDirectory mCompileHelpFile mHTMLHelpVersion mH2Namespace "
                       "mH2FileID mHelpFileName mVariableValues mProjectTitle mRemoveOutputFiles mIncludeInBuild "
                       "mDefaultTopicID mProjectPropertyValues mH2PlugIn mBuildProfiles mLocaleID mCachedCodePage"),
      Of<BuildProfiles>("mQBProject mCol"),
      Of<ProjectProperty>("mID mPropertyName mPropertyType mPropertyValue mProjectProperties"),
      Of<ProjectProperties>("mQBProject mCol"),
      Of<QBIDEOptions>(""),
      // Generation.
      Of<BuildResult>("Cancelled CompilerLog HelpCompileResult"),
      Of<Filter>("ForPageGeneration TypeID"),
      Of<GlossaryLetter>("Name Value"),
      Of<NullDataProvider>(""),
      Of<QBDataProvider>("ForEdit DesignTime mCurrentItem mNamespaceDef mCurrentParentItem mCurrentItemType "
                         "mCurrentRootItem mMVProject mCommonProvider mCommonProviderSet IncludeStack"),
      Of<QBMVPlugIn>("mMVProject"),
      Of<QBNamespaceProvider>("mFiles mMVProject DDP mTopicMap mTopicMapInitialised mTopicMapCount HH2"),
      // Host.
      {&MakeBuiltInHelpCompiler(1)->Type(), "", nullptr},
      {&MakeExternalHelpCompiler("")->Type(), "", nullptr},
      Of<CommonProvider>("mMVProject mCurrentRootItem mCurrentParentItem mCurrentItem mCurrentItemType "
                         "mNamespaceDef"),
      Of<Condition>("mConditionType"),
      Of<DocType>("mID mProject mTemplate mNamespaceProvider mPlugIn mTOCDefinitions"),
      Of<Keyword>("mName"),
      Of<KeywordJump>("mTarget"),
      Of<Keywords>("mItems"),
      Of<MVProject>("OutputDirectory HelpFileName Title HelpVersion Help2Namespace Help2FileID RegisterPlugIn "
                    "PlugInNamespaces CodePage LocaleID CompileHelpFile CompilerPath CopySupportFiles DefaultPage "
                    "HelpProjectFile CompilerLog BookPrefix BookSuffix NodeScrap NodeSuffix mDocTypes "
                    "mCurrentDocType mRootItems mVariables mCurrentPage"),
      Of<MVProjectBuild>("mCompileResult mPageCount mSupportFileCount mUnchangedCount"),
      Of<NamespaceDef>("mNamespace mKind mItemType mFilter"),
      Of<NamespaceDefs>("mDefinitions"),
      Of<NodeDef>("mKey NodeKind Caption URL CustomIcon IconIndex Visible mParent mTOCDefinition"),
      Of<PageLayout>("mName mItemKind mOutputName"),
      Of<PageTemplate>("mName mSupports mFolder"),
      Of<ParserTemplate>("StartTagOpen StartTagClose EndTagOpen EndTagClose RemoveTags DataProvider mText"),
      Of<TOCDefinition>("Template mNodeDefs"),
      Of<TemplateElement>("mElementType mAttributes mSource mNotBlankText mBlankText"),
      Of<TemplateStore>("mConfigPath mTemplates"),
      Of<TemplateVariable>("mName mValueType mDefault mCaption"),
      Of<VariableValue>("Name Value"),
  };
}

std::string Joined(const std::vector<std::string>& names) {
  std::string all;
  for (const auto& name : names) all.append(all.empty() ? "" : " ").append(name);
  return all;
}

TEST(DeclaredFields, OfEveryClass_AreDescribedInTheirOrder) {
  for (const auto& known : AllClasses()) {
    std::vector<std::string> names;
    for (const auto& entry : known.type->Entries())
      if (entry.field) names.emplace_back(entry.name);
    EXPECT_EQ(Joined(names), known.fields) << known.type->Name();
    EXPECT_EQ(known.type->Base(), nullptr) << known.type->Name() << " would dump its base's fields too";
  }
}

TEST(DeclaredFields, OfANewObject_CanAllBeDumped) {
  const auto root = New<Root>();
  for (const auto& known : AllClasses()) {
    if (!known.make) continue;
    std::vector<std::string> names;
    const auto object = known.make();
    object->Fields([&](std::string_view name, const Variant& value) {
      names.emplace_back(name);
      EXPECT_THAT(fltnDumpVariable(name, value, 99), testing::Not(testing::HasSubstr("formatting for output")))
          << known.type->Name();
    });
    EXPECT_EQ(Joined(names), known.fields) << known.type->Name();
  }
}

/// The names of the classes that a source file describes.
void CollectDescribed(const std::filesystem::path& file, std::set<std::string>& names) {
  std::ostringstream stream;
  stream << std::ifstream(file).rdbuf();
  const auto text = stream.str();
  for (auto at = text.find("Describe<"); at != std::string::npos; at = text.find("Describe<", at + 1)) {
    const auto line = text.rfind('\n', at) + 1;
    if (text.find("///", line) < at) continue;  // an example in a header
    const auto start = text.find(">(\"", at);
    if (start > text.find('\n', at)) continue;  // the description's own class
    names.insert(text.substr(start + 3, text.find('"', start + 3) - start - 3));
  }
}

TEST(DeclaredFields, AreKnownOfEveryClassOfTheSources) {
  std::set<std::string> described;
  for (const auto* folder : {"src", "include"})
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(std::filesystem::path(QUILLBOOK_SOURCE_DIR) / folder))
      if (entry.is_regular_file()) CollectDescribed(entry.path(), described);
  std::set<std::string> known;
  for (const auto& row : AllClasses())
    EXPECT_TRUE(known.emplace(row.type->Name()).second) << "two classes are called " << row.type->Name();
  EXPECT_THAT(known, testing::ContainerEq(described));
}

}  // namespace
}  // namespace quillbook
