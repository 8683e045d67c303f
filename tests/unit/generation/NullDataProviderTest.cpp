#include "quillbook/generation/NullDataProvider.h"

#include <gtest/gtest.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {
namespace {

TEST(NullDataProvider, YieldsWhatAnElementEncloses) {
  const auto provider = New<NullDataProvider>();
  EXPECT_EQ(ParserServices::ParseText("a%%x%%inner%%/x%%b%%y:n=v%%c", *provider), "ainnerbc");
}

TEST(NullDataProvider, ParsingIsNotAnIdentity) {
  const auto provider = New<NullDataProvider>();
  EXPECT_EQ(provider->DataProvider_ParseForProperties("text without tags"), "");
  EXPECT_EQ(provider->DataProvider_GetProperty("title"), "");
}

TEST(NullDataProvider, DropsWhatItIsTold) {
  const auto provider = New<NullDataProvider>();
  const Ref<NamespaceDef> kind = New<NamespaceDef>("n:topic");
  const Ref<Object> item = New<FileSystemObject>();
  provider->DataProvider_Initialise(item);
  provider->DataProvider_SetCurrentItem(kind, item, "Topic", item);
  provider->SetDataProvider_CurrentItem(item);
  provider->SetDataProvider_CurrentItemType("Topic");
  provider->SetDataProvider_CurrentParentItem(item);
  provider->SetDataProvider_CurrentRootItem(item);
  provider->SetDataProvider_NamespaceDef(kind);
  EXPECT_FALSE(provider->DataProvider_CurrentItem());
  EXPECT_EQ(provider->DataProvider_CurrentItemType(), "");
  EXPECT_FALSE(provider->DataProvider_CurrentParentItem());
  EXPECT_FALSE(provider->DataProvider_CurrentRootItem());
  EXPECT_FALSE(provider->DataProvider_NamespaceDef());
  EXPECT_FALSE(provider->DataProvider_Clone());
  provider->DataProvider_Terminate();
}

}  // namespace
}  // namespace quillbook
