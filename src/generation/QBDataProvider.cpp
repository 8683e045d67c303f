#include "quillbook/generation/QBDataProvider.h"

#include "generation/ItemProperties.h"
#include "generation/OtherFileFacts.h"
#include "generation/elements/Evaluation.h"
#include "quillbook/base/Failure.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {
namespace {

constexpr int MaximumRounds = 4;

bool HasElements(std::string_view text) noexcept {
  return text.find("%%") != std::string_view::npos;
}

}  // namespace

QBDataProvider::QBDataProvider() = default;
QBDataProvider::~QBDataProvider() = default;

Ref<MVProject> QBDataProvider::MVProject() const {
  return mMVProject.Target();
}

void QBDataProvider::SetMVProject(const Ref<quillbook::MVProject>& Project) {
  mMVProject.SetTarget(Project);
}

Ref<QBProject> QBDataProvider::QBProject() const {
  return modMain::GetQBProject(MVProject());
}

void QBDataProvider::Reset() {
  Procedure(*this, "Reset").Run([&] {
    mCurrentItem = {};
    mNamespaceDef = {};
    mCurrentParentItem = {};
    mCurrentRootItem = {};
    mMVProject.SetTarget({});
    mFileFacts.reset();
    if (!mCommonProvider) return;
    mCommonProvider->Reset();
    mCommonProvider = {};
    mCommonProviderSet = false;
  });
}

// The current item.

void QBDataProvider::SetDataProvider_CurrentRootItem(const Ref<Object>& RootItem) {
  Procedure(*this, "DataProvider_CurrentRootItem", [&](auto& p) { p("RootItem", RootItem); }).Run([&] {
    auto* project = dynamic_cast<quillbook::QBProject*>(RootItem.get());
    if (RootItem && !project) throw Failure(FailureNumber::TypeMismatch);
    mCurrentRootItem = Ref<quillbook::QBProject>(project);
    // The numbering starts again here whoever sets the root, also a clone or a list: templates count on it.
    const auto counting = mCurrentRootItem ? mCurrentRootItem : QBProject();
    if (counting) counting->IncrementingValues = New<Collection<std::int32_t>>();
  });
}

Ref<Object> QBDataProvider::DataProvider_CurrentRootItem() const {
  return mCurrentRootItem;
}

void QBDataProvider::SetDataProvider_NamespaceDef(const Ref<NamespaceDef>& Definition) {
  mNamespaceDef = Definition;
}

Ref<NamespaceDef> QBDataProvider::DataProvider_NamespaceDef() const {
  return mNamespaceDef;
}

void QBDataProvider::DataProvider_SetCurrentItem(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                                 std::string_view ItemType, const Ref<Object>& ParentItem) {
  mNamespaceDef = Definition;
  mCurrentItem = Item;
  mCurrentItemType = ItemType;
  mCurrentParentItem = ParentItem;
  if (auto* project = dynamic_cast<quillbook::QBProject*>(Item.get()))
    mCurrentRootItem = Ref<quillbook::QBProject>(project);
  mCommonProviderSet = false;
}

// Other providers.

const Ref<CommonProvider>& QBDataProvider::CommonProvider() {
  if (!mCommonProvider) {
    mCommonProvider = New<quillbook::CommonProvider>();
    mCommonProvider->SetMVProject(MVProject());
  }
  if (!mCommonProviderSet) {
    mCommonProvider->DataProvider_SetCurrentItem(mNamespaceDef, mCurrentItem, mCurrentItemType, mCurrentParentItem);
    mCommonProvider->SetDataProvider_CurrentRootItem(mCurrentRootItem);
    mCommonProviderSet = true;
  }
  return mCommonProvider;
}

Ref<QBDataProvider> QBDataProvider::ClonedDataProvider() const {
  auto provider = New<QBDataProvider>();
  provider->SetMVProject(MVProject());
  provider->SetDataProvider_CurrentRootItem(mCurrentRootItem);
  return provider;
}

Ref<DataProvider> QBDataProvider::DataProvider_Clone() {
  return Procedure(*this, "DataProvider_Clone").Run([&]() -> Ref<DataProvider> {
    auto clone = New<QBDataProvider>();
    clone->DataProvider_SetCurrentItem(mNamespaceDef, mCurrentItem, mCurrentItemType, mCurrentParentItem);
    clone->SetDataProvider_CurrentRootItem(mCurrentRootItem);
    clone->ForEdit = ForEdit;
    clone->SetMVProject(MVProject());
    return clone;
  });
}

std::string QBDataProvider::LinkPreProcessScrapName(std::string_view Value, std::string_view Default) const {
  return Value.empty() ? MVProject()->Scrap(Default) : std::string(Value);
}

void QBDataProvider::BeginGeneration() {
  mFileFacts = std::make_unique<OtherFileFacts>();
}

void QBDataProvider::EndGeneration() noexcept {
  mFileFacts.reset();
}

// Evaluation.

std::string QBDataProvider::DataProvider_ProvideData(const Ref<TemplateElement>& Element,
                                                     Ref<FileSystemObject>& FileSystemObj) {
  return Procedure(*this, "DataProvider_ProvideData",
                   [&](auto& p) {
                     p("Element", Element);
                     p("FileSystemObj", FileSystemObj);
                   })
      .Run([&] { return Evaluation(*this, Element, FileSystemObj).Run(); });
}

std::string QBDataProvider::DataProvider_GetProperty(std::string_view Name) {
  return Procedure(*this, "DataProvider_GetProperty", [&](auto& p) { p("Name", Name); }).Run([&] {
    return ItemProperty(*this, Name);
  });
}

void QBDataProvider::ExpandProperties(std::string& text) {
  for (int round = 0; round < MaximumRounds && HasElements(text); ++round)
    text = ParserServices::ParseText(text, *this);
}

std::string QBDataProvider::DataProvider_ParseForProperties(std::string_view Text) {
  return ParsedForProperties(std::string(Text));
}

std::string QBDataProvider::ParsedForProperties(std::string Text) {
  return Procedure(*this, "DataProvider_ParseForProperties", [&](auto& p) { p("Text", Text); })
      .RunSetting(std::string(), [&](std::string& result) {
        ExpandProperties(Text);
        result = std::move(Text);
      });
}

const TypeInfo& QBDataProvider::StaticType() {
  static const TypeInfo type = Describe<QBDataProvider>("QBDataProvider")
                                   .Public<&QBDataProvider::ForEdit>("ForEdit")
                                   .Public<&QBDataProvider::DesignTime>("DesignTime")
                                   .Field<&QBDataProvider::mCurrentItem>("mCurrentItem")
                                   .Field<&QBDataProvider::mNamespaceDef>("mNamespaceDef")
                                   .Field<&QBDataProvider::mCurrentParentItem>("mCurrentParentItem")
                                   .Field<&QBDataProvider::mCurrentItemType>("mCurrentItemType")
                                   .Field<&QBDataProvider::mCurrentRootItem>("mCurrentRootItem")
                                   .Field<&QBDataProvider::mMVProject>("mMVProject")
                                   .Field<&QBDataProvider::mCommonProvider>("mCommonProvider")
                                   .Field<&QBDataProvider::mCommonProviderSet>("mCommonProviderSet")
                                   .Field<&QBDataProvider::IncludeStack>("IncludeStack")
                                   .Property<&QBDataProvider::MVProject, &QBDataProvider::SetMVProject>("MVProject")
                                   .Done();
  return type;
}

}  // namespace quillbook
