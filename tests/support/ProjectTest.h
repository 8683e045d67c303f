// Base of tests that work on a project in memory.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "support/FailureLog.h"
#include "support/MemoryRegistryStore.h"

namespace quillbook::support {

/// Offers a project that rests on nothing of the machine. At the end no failure may be left that the test didn't ask
/// for, and no object of the library may live.
class ProjectTest : public testing::Test {
 protected:
  using Failures = std::vector<std::string>;

  void SetUp() override { project = New<QBProject>(); }
  void TearDown() override {
    project = nullptr;
    EXPECT_EQ(failures.Take(), Failures());
    // Statuses and section definitions may stay: they belong to the thread.
    for (const auto* type : TypeInfo::All())
      if (BelongsToProjects(type->Name())) {
        EXPECT_EQ(type->LiveCount(), 0) << type->Name();
      }
  }

  static XMLDocument Parse(std::string text) {
    XMLDocument document;
    EXPECT_TRUE(document.LoadXML(std::move(text)));
    return document;
  }
  /// The one element that `save` fills, as text without the XML declaration.
  template <class Saved>
  static std::string Written(Saved& saved, std::string_view name = "r") {
    XMLDocument document;
    document.DocumentElement().SetName(name);
    saved.Save(document.DocumentElement());
    const auto text = document.ToString();
    return text.substr(text.find("?>") + 3);
  }

  static bool BelongsToProjects(std::string_view className) {
    constexpr std::string_view owned[] = {
        "QBProject",        "Topic",         "QBNode",        "QBNodes",          "GlossaryItem",
        "GlossaryItems",    "Task",          "Tasks",         "OtherFile",        "OtherFiles",
        "BuildProfile",     "BuildProfiles", "VariableValue", "FileSystemObject", "ProjectProperty",
        "ProjectProperties"};
    return std::find(std::begin(owned), std::end(owned), className) != std::end(owned);
  }

  FailureLog failures;
  PlatformOverride<RegistryStore> registry{std::make_shared<MemoryRegistryStore>()};
  Ref<QBProject> project;
};

}  // namespace quillbook::support
