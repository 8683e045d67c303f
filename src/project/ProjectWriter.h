// Writes a project as the text of its file.
#pragma once

#include <string>

#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/frame/services/XMLOutput.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

/// Hands out the text in parts, so that a project never stands in memory a second time.
class ProjectWriter {
 public:
  explicit ProjectWriter(QBProject& project) : mProject(project) { mRoot.SetName("QBProject"); }

  void WriteTo(const XMLOutput::Sink& sink);
  [[nodiscard]] std::string Text();
  /// False if a part that has a file of its own could not be written.
  [[nodiscard]] bool WroteAllParts() const noexcept { return mWroteAllParts; }

 private:
  void WriteAttributes();
  void WriteSpelling();
  void WriteCategories();
  void WriteVariableValues();
  void WriteOtherFiles();
  void WriteTopics(XMLOutput& output);
  void WriteCollections();

  QBProject& mProject;
  XMLDocument mDocument;
  XMLElement mRoot = mDocument.DocumentElement();
  bool mWroteAllParts = true;
};

}  // namespace quillbook
