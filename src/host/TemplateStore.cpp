#include "quillbook/host/TemplateStore.h"

#include "host/TemplateReader.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/FileStore.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

/// Folders of templates in the order of their names, with a backslash at their ends.
std::vector<std::string> TemplateFolders(const std::string& configPath) {
  FileSystemObject root;
  root.SetPath(configPath);
  const auto templates = root.Path() + "Templates\\";
  root.SetPath(templates);
  std::vector<std::string> folders;
  if (configPath.empty() || !root.DirectoryExists()) return folders;
  for (const auto& entry : Platform::Current().Files().ListDirectory(root.NativePath())) {
    auto folder = templates + entry.name + "\\";
    if (entry.isDirectory && FileSystemObject(folder + "template.xml").FileExists())
      folders.push_back(std::move(folder));
  }
  return folders;
}

}  // namespace

Ref<TemplateStore> TemplateStore::OfApartment() {
  thread_local Ref<TemplateStore> store;
  if (!store) store = New<TemplateStore>();
  return store;
}

void TemplateStore::SetConfigPath(std::string_view ConfigPath) {
  if (mConfigPath == ConfigPath) return;
  mConfigPath = ConfigPath;
  Forget();
}

const Ref<PageTemplates>& TemplateStore::Templates() {
  EnsureLoaded();
  return mTemplates;
}

Ref<PageTemplate> TemplateStore::Find(std::string_view Name) {
  const auto* found = Templates()->Find(Name);
  return found ? *found : nullptr;
}

const std::vector<BuildNote>& TemplateStore::Messages() {
  EnsureLoaded();
  return mMessages;
}

void TemplateStore::Forget() {
  mTemplates = nullptr;
  mMessages.clear();
}

void TemplateStore::EnsureLoaded() {
  if (mTemplates) return;
  mTemplates = New<PageTemplates>();
  for (const auto& folder : TemplateFolders(mConfigPath)) {
    try {
      const auto pageTemplate = TemplateReader(folder).Read();
      if (mTemplates->Contains(pageTemplate->Name())) {
        const auto native = FileSystemObject(folder + "template.xml").NativePath();
        mMessages.push_back({NoteLevel::Warning, "template.duplicate-name",
                             native + ": there is another template '" + pageTemplate->Name() + "'", native});
      } else {
        mTemplates->Add(pageTemplate, pageTemplate->Name());
      }
    } catch (const TemplateFault& fault) {
      mMessages.push_back(fault.note);
    }
  }
}

const TypeInfo& TemplateStore::StaticType() {
  static const TypeInfo type = Describe<TemplateStore>("TemplateStore")
                                   .Field<&TemplateStore::mConfigPath>("mConfigPath")
                                   .Field<&TemplateStore::mTemplates>("mTemplates")
                                   .ReadOnly<&TemplateStore::Templates>("Templates")
                                   .Done();
  return type;
}

}  // namespace quillbook
