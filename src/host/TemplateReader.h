// Reads a template from its folder.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/host/BuildNote.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

/// What makes a template unreadable, with its place.
struct TemplateFault {
  BuildNote note;
};

class TemplateReader {
 public:
  /// `folder` has the form of stored paths and ends in a backslash. Raises a `TemplateFault` for a bad template.
  explicit TemplateReader(std::string folder);

  [[nodiscard]] Ref<PageTemplate> Read();

 private:
  void ReadDefinitionFile();
  void ReadEntry(const XMLElement& element);
  void ReadNamespace(const XMLElement& element);
  void ReadVariable(const XMLElement& element);
  void ReadLayout(const XMLElement& element);
  void ReadDefinition(const XMLElement& element, NamespaceDefs& siblings, int depth);
  void CheckLayouts() const;
  void ReadFiles();
  void TakeFile(const std::string& path);

  [[nodiscard]] std::string_view Required(const XMLElement& element, std::string_view attribute) const;
  [[nodiscard]] std::string FileText(const std::string& path) const;
  [[noreturn]] void Fail(const XMLElement& element, const std::string& message) const;
  [[noreturn]] void FailAt(const std::string& message, std::size_t line, std::size_t column) const;

  std::string mFolder;
  std::string mFile;  ///< native path of template.xml
  std::string mText;
  Ref<PageTemplate> mTemplate;
};

}  // namespace quillbook
