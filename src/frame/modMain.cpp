// Library-wide state and configuration.
#include "quillbook/frame/modMain.h"

#include "frame/Apartment.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/documents/DocumentFactory.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/RegistryHelper.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicStatuses.h"

namespace quillbook {

const Module& modMainModule() noexcept {
  // Only what no other module sees; the rest of the state belongs to the dump of the library-wide variables.
  static constexpr Module module{"modMain", [](const Object::FieldVisitor& visit) {
                                   const auto& installed = Apartment::Current().mMavenscriptInstalled;
                                   visit("mMavenscriptInstalled", installed.value_or(false));
                                   visit("mMavenscriptTested", installed.has_value());
                                 }};
  return module;
}

namespace modMain {
namespace {

constexpr std::string_view kAppKey = "Software\\Corvane\\Quillbook2";

std::string AppKey(std::string_view extraPath) {
  std::string key(kAppKey);
  if (!extraPath.empty()) key.append("\\").append(extraPath);
  return key;
}

void LoadStatusCodes(quillbook::TopicStatuses& statuses, std::string_view fileName) {
  const auto file = New<FileSystemObject>(fileName);
  if (!file->FileExists()) return;
  XMLDocument document;
  document.LoadXML(file->ReadAll());
  statuses.Load(document.DocumentElement());
}

}  // namespace

std::int32_t& RootIncrement() noexcept {
  return Apartment::Current().RootIncrement;
}
std::int32_t& mCacheCount() noexcept {
  return Apartment::Current().mCacheCount;
}
Ref<Collection<Ref<Object>>>& mCacheTopics() noexcept {
  return Apartment::Current().mCacheTopics;
}
std::int16_t& mClipboardDataFormat() noexcept {
  return Apartment::Current().mClipboardDataFormat;
}
std::int16_t& mClipboardTypeFormat() noexcept {
  return Apartment::Current().mClipboardTypeFormat;
}
Ref<Collection<std::string>>& LoadedNodes() noexcept {
  return Apartment::Current().LoadedNodes;
}
std::string& mSpellImagePath() noexcept {
  return Apartment::Current().mSpellImagePath;
}
bool& mReloadFlag() noexcept {
  return Apartment::Current().mReloadFlag;
}

Ref<DocumentFactory>& mDOMFactory() noexcept {
  return Apartment::Current().mDOMFactory;
}

Ref<quillbook::TopicStatuses> TopicStatuses() {
  return Procedure(modMainModule(), "mTopicStatuses").Run([] {
    auto& cache = Apartment::Current().mTopicStatuses;
    if (!cache) {
      cache = New<quillbook::TopicStatuses>();
      LoadStatusCodes(*cache, ConfigPath() + "statuscodes.xml");
    }
    return cache;
  });
}

Ref<quillbook::TopicSectionDefs> TopicSectionDefs() {
  return Procedure(modMainModule(), "mTopicSectionDefs").Run([] {
    auto& apartment = Apartment::Current();
    if (apartment.RootIncrement != 0 && apartment.mTopicSectionDefs) return apartment.mTopicSectionDefs;
    auto definitions = New<quillbook::TopicSectionDefs>();
    definitions->Populate();
    if (apartment.RootIncrement != 0) apartment.mTopicSectionDefs = definitions;
    return definitions;
  });
}

std::string ConfigPath() {
  auto path = RegistryHelper::GetValue(RegistryHelper::LocalMachine, kAppKey, "LiteInstallDir");
  if (!path.ends_with('\\')) path += '\\';
  return path + "Configuration\\";
}

std::string GetAppValue(std::string_view ValueName, std::string_view DefaultValue, std::string_view ExtraPath) {
  auto value = RegistryHelper::GetValue(RegistryHelper::CurrentUser, AppKey(ExtraPath), ValueName);
  return value.empty() ? std::string(DefaultValue) : value;
}

void SetAppValue(std::string_view ValueName, std::string_view Value, std::string_view ExtraPath) {
  Procedure(modMainModule(), "SetAppValue", [&](auto& p) {
    p("ValueName", ValueName);
    p("Value", Value);
    p("ExtraPath", ExtraPath);
  }).Run([&] {
    const auto key = AppKey(ExtraPath);
    RegistryHelper::CreateKey(RegistryHelper::CurrentUser, key);
    RegistryHelper::SetValue(RegistryHelper::CurrentUser, key, ValueName, Value, RegistryHelper::TypeString);
  });
}

bool IsMavenscriptInstalled() {
  auto& installed = Apartment::Current().mMavenscriptInstalled;
  if (!installed)
    installed = RegistryHelper::GetValue(RegistryHelper::LocalMachine, "Software\\Corvane\\Mavenscript4",
                                         "MVFullInstall") == "True";
  return *installed;
}

}  // namespace modMain
}  // namespace quillbook
