// Writes a project as the text of its file.
#pragma once

#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

class ProjectWriter {
 public:
  explicit ProjectWriter(QBProject& project) : mProject(project) {}

  /// The whole file.
  [[nodiscard]] XMLDocument Document();

 private:
  void WriteAttributes(XMLElement root) const;
  void WriteSpelling(XMLElement root) const;
  void WriteCategories(XMLElement root) const;
  void WriteVariableValues(XMLElement root) const;
  void WriteOtherFiles(XMLElement root) const;
  void WriteTopics(XMLElement root) const;
  void WriteCollections(XMLElement root) const;

  QBProject& mProject;
};

}  // namespace quillbook
