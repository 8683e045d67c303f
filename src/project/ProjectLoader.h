// Reads a project's file into the project.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quillbook/base/Collection.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

/// True for the names, old and new, that the root element of a project file may have.
[[nodiscard]] inline bool IsProjectRoot(std::string_view name) noexcept {
  return name == "QBProject" || name == "TopicSet";
}

/// One load of one project. Raises what the members' own frames don't handle; the project then stays in its loading
/// state, with its collections as far as they got.
class ProjectLoader {
 public:
  /// `reload` keeps the contents, tasks, glossary and topics that the project has.
  ProjectLoader(QBProject& project, bool reload) : mProject(project), mReload(reload) {}

  void Run(XMLDocument document);

 private:
  using Reader = void (ProjectLoader::*)(const XMLElement& e);
  struct Section {
    std::string_view name;  ///< in lower case
    Reader read;
  };

  void ReadAttributes(const XMLAttributes& attributes);
  void RenewCollections();
  void BeginReload();
  void ReadSections(const XMLElement& root);
  void ReadFirstPass(const XMLElement& root);
  void ReadCategory(const XMLElement& e);
  void ReadTopic(const XMLElement& e);
  void ReadSecondPass();
  void ReadNodes(const XMLElement& e);
  void ReadVariableValue(const XMLElement& e);
  void ReadOtherFile(const XMLElement& e);
  void ReadSpelling(const XMLElement& e);
  void ReadGlossaryItem(const XMLElement& e);
  void ReadGlossaryItems(const XMLElement& e);
  void ReadTasks(const XMLElement& e);
  void ReadBuildProfiles(const XMLElement& e);
  void ReadProjectProperties(const XMLElement& e);
  void TakeTemplateFromValues();
  void ConvertNumberedKeys();
  void RenewKeys();
  void RenewTopicKeys();
  void MakeDefaultProfile();
  void EndReload();
  void Progress(std::string_view caption) const { mProject.Events.LoadProgress.Raise(caption); }

  QBProject& mProject;
  const bool mReload;
  std::vector<XMLElement> mOtherElements;  ///< what the first pass leaves to the second
  bool mNumberedKeys = false;              ///< a topic's key begins with "T": the file is from before keys were GUIDs
  // Settings of older files, for the profile that they get.
  std::string mOutputFileName;
  std::string mHelp2Namespace;
  std::string mHelp2FileID;
  std::int32_t mCompileType = 0;
  // Topics in memory before a reload, and for each key whether the file still has it.
  std::vector<Ref<Topic>> mTopicsBefore;
  Collection<bool> mStillInFile;
};

}  // namespace quillbook
