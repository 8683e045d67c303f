#include "host/TemplateReader.h"

#include <algorithm>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/platform/FileStore.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

constexpr int MaximumDepth = 32;
constexpr std::string_view PageExtension = ".html";

constexpr std::string_view TypeNames[] = {"text", "lines", "number", "boolean", "colour", "file", "choice"};

/// The name of "layouts/Topic.html" within "layouts/"; empty for any other file.
std::string_view PageWithin(std::string_view folder, std::string_view path) {
  if (!StartsWithIgnoringCase(path, folder) || !EndsWithIgnoringCase(path, PageExtension)) return {};
  const auto name = path.substr(folder.size());
  return name.find('/') == std::string_view::npos ? name : std::string_view();
}

bool IsPlainFileName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find_first_of("/\\:") == std::string_view::npos;
}

}  // namespace

TemplateReader::TemplateReader(std::string folder)
    : mFolder(std::move(folder)),
      mFile(FileSystemObject(mFolder + "template.xml").NativePath()),
      mTemplate(New<PageTemplate>()) {}

Ref<PageTemplate> TemplateReader::Read() {
  try {
    mTemplate->mFolder = mFolder;
    ReadDefinitionFile();
    CheckLayouts();
    ReadFiles();
  } catch (const Failure& failure) {
    FailAt(failure.Description(), 0, 0);
  }
  return mTemplate;
}

void TemplateReader::ReadDefinitionFile() {
  mText = FileText("template.xml");
  if (const auto check = XMLDocument::Check(mText); !check) FailAt(check.message, check.line, check.column);
  XMLDocument document;
  document.LoadXML(mText);
  const auto root = document.DocumentElement();
  if (!EqualsIgnoringCase(root.Name(), "template")) Fail(root, "the root element is not 'template'");
  mTemplate->mName = Required(root, "name");
  mTemplate->mSupports = root.Attributes().Find("supports").value_or("");
  for (const auto& element : root.ChildElements()) ReadEntry(element);
}

void TemplateReader::ReadEntry(const XMLElement& element) {
  const auto name = element.Name();
  if (EqualsIgnoringCase(name, "namespace")) return ReadNamespace(element);
  if (EqualsIgnoringCase(name, "variable")) return ReadVariable(element);
  if (EqualsIgnoringCase(name, "layout")) return ReadLayout(element);
  if (EqualsIgnoringCase(name, "definition")) return ReadDefinition(element, *mTemplate->mNamespaceDefs, 0);
  Fail(element, "unknown element '" + std::string(name) + "'");
}

void TemplateReader::ReadNamespace(const XMLElement& element) {
  const auto name = Required(element, "name");
  if (mTemplate->mNamespaces->Contains(name)) Fail(element, "the namespace '" + std::string(name) + "' is named twice");
  mTemplate->mNamespaces->Add(std::string(name), name);
}

void TemplateReader::ReadVariable(const XMLElement& element) {
  const auto name = Required(element, "name");
  const auto typeName = element.Attributes().Find("type").value_or("text");
  const auto* type = std::find_if(std::begin(TypeNames), std::end(TypeNames),
                                  [&](std::string_view known) { return EqualsIgnoringCase(known, typeName); });
  if (type == std::end(TypeNames)) Fail(element, "unknown type '" + std::string(typeName) + "'");
  if (mTemplate->mVariables->Contains(name)) Fail(element, "the variable '" + std::string(name) + "' is named twice");
  const auto value = element.Attributes().Find("default");
  mTemplate->mVariables->Add(New<TemplateVariable>(std::string(name), static_cast<VariableType>(type - TypeNames),
                                                   value ? std::string(*value) : element.Text(),
                                                   std::string(element.Attributes().Find("caption").value_or(name))),
                             name);
}

void TemplateReader::ReadLayout(const XMLElement& element) {
  const std::string name(Required(element, "name"));
  if (!IsPlainFileName(name)) Fail(element, "'" + name + "' is no name for a layout's file");
  if (mTemplate->mLayouts->Contains(name)) Fail(element, "the layout '" + name + "' is named twice");
  if (!FileSystemObject(mFolder + "layouts\\" + name).FileExists())
    Fail(element, "the layout's file 'layouts/" + name + "' is missing");
  const std::string item(Required(element, "item"));
  const std::string output(element.Attributes().Find("output").value_or(name));
  mTemplate->mLayouts->Add(New<PageLayout>(name, item, output, FileText("layouts\\" + name)), name);
}

void TemplateReader::ReadDefinition(const XMLElement& element, NamespaceDefs& siblings, int depth) {
  if (depth >= MaximumDepth) Fail(element, "definitions nest too deeply");
  if (!EqualsIgnoringCase(element.Name(), "definition"))
    Fail(element, "unknown element '" + std::string(element.Name()) + "'");
  const auto kind = Required(element, "kind");
  if (kind.find(':') == std::string_view::npos) Fail(element, "the kind '" + std::string(kind) + "' has no namespace");
  const auto attributes = element.Attributes();
  const auto definition =
      New<NamespaceDef>(kind, attributes.Find("type").value_or(""), attributes.Find("filter").value_or(""));
  siblings.Add(definition);
  for (const auto& child : element.ChildElements()) ReadDefinition(child, *definition->Children(), depth + 1);
}

/// A layout that shows what no definition asks for would never make a page.
void TemplateReader::CheckLayouts() const {
  for (const auto& layout : *mTemplate->mLayouts)
    if (!mTemplate->mNamespaceDefs->Find(layout->ItemKind()))
      FailAt("the layout '" + layout->Name() + "' shows '" + layout->ItemKind() + "', for which there is no definition",
             0, 0);
}

void TemplateReader::ReadFiles() {
  auto& files = Platform::Current().Files();
  const auto root = FileSystemObject(mFolder).NativePath();
  std::vector<std::string> waiting{""};  // folders, relative to the template's with "/" at their ends
  while (!waiting.empty()) {
    const auto folder = waiting.back();
    waiting.pop_back();
    if (std::count(folder.begin(), folder.end(), '/') > MaximumDepth) FailAt("its folders nest too deeply", 0, 0);
    std::vector<std::string> below;
    for (const auto& entry : files.ListDirectory(root + "/" + folder)) {
      if (entry.isDirectory)
        below.push_back(folder + entry.name + "/");
      else
        TakeFile(folder + entry.name);
    }
    waiting.insert(waiting.end(), below.rbegin(), below.rend());
  }
}

void TemplateReader::TakeFile(const std::string& path) {
  if (EqualsIgnoringCase(path, "template.xml") || !PageWithin("layouts/", path).empty()) return;
  auto scrap = PageWithin("scraps/", path);
  if (scrap.empty()) return mTemplate->mSupportFiles.push_back(path);
  scrap.remove_suffix(PageExtension.size());
  if (mTemplate->mScraps.Contains(scrap)) FailAt("there are two scraps '" + std::string(scrap) + "'", 0, 0);
  mTemplate->mScraps.AddKeyed(FileText(path), scrap);
}

std::string_view TemplateReader::Required(const XMLElement& element, std::string_view attribute) const {
  const auto value = element.Attributes().Find(attribute);
  if (!value || value->empty())
    Fail(element, "'" + std::string(element.Name()) + "' has no attribute '" + std::string(attribute) + "'");
  return *value;
}

std::string TemplateReader::FileText(const std::string& path) const {
  return FileSystemObject(mFolder + path).ReadAll();
}

void TemplateReader::Fail(const XMLElement& element, const std::string& message) const {
  XMLLoadResult place;
  place.offset = element.SourceOffset();
  place.Locate(mText);
  FailAt(message, place.line, place.column);
}

void TemplateReader::FailAt(const std::string& message, std::size_t line, std::size_t column) const {
  auto text = mFile;
  if (line > 0) text += ":" + std::to_string(line) + ":" + std::to_string(column);
  throw TemplateFault{{NoteLevel::Warning, "template.unreadable", text + ": " + message, mFile, line, column}};
}

}  // namespace quillbook
