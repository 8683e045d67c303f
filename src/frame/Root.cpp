#include "quillbook/frame/Root.h"

#include "frame/Apartment.h"
#include "quillbook/config/QBIDEOptions.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicStatuses.h"

namespace quillbook {
namespace {

void RegisterClipboardFormats(Apartment& apartment) {
  // The names are handed over with the NUL that ends them.
  using namespace std::string_view_literals;
  auto& session = Platform::Current().Session();
  apartment.mClipboardDataFormat = static_cast<std::int16_t>(session.RegisterClipboardFormat("#Quillbook.Data#\0"sv));
  apartment.mClipboardTypeFormat = static_cast<std::int16_t>(session.RegisterClipboardFormat("#Quillbook.Type#\0"sv));
}

}  // namespace

Root::Root() {
  auto& apartment = Apartment::Current();
  ++apartment.RootIncrement;
  if (apartment.mClipboardDataFormat == 0) RegisterClipboardFormats(apartment);
}

Root::~Root() {
  auto& apartment = Apartment::Current();
  if (--apartment.RootIncrement == 0) apartment.DropCaches();
}

const std::string& Root::SpellImagePath() const noexcept {
  return modMain::mSpellImagePath();
}
void Root::SetSpellImagePath(std::string_view RHS) {
  modMain::mSpellImagePath() = RHS;
}
bool Root::ReloadFlag() const noexcept {
  return modMain::mReloadFlag();
}
void Root::SetReloadFlag(bool RHS) noexcept {
  modMain::mReloadFlag() = RHS;
}

Ref<quillbook::TopicStatuses> Root::TopicStatuses() const {
  return modMain::TopicStatuses();
}
Ref<quillbook::TopicSectionDefs> Root::TopicSectionDefs() const {
  return modMain::TopicSectionDefs();
}
std::string Root::QBConfigPath() const {
  return modMain::ConfigPath();
}
bool Root::IsMavenscriptInstalled() const {
  return modMain::IsMavenscriptInstalled();
}
Ref<MVProject> Root::NewMVProject() const {
  return modMain::NewMVProject();
}
Ref<HtmlDocument> Root::CreateDOM(std::string_view HTML) const {
  return modMain::CreateDOM(HTML);
}
std::string Root::FileURLToFileName(std::string_view URL) const {
  return modMain::FileURLToFileName(URL);
}
bool Root::IsFileURL(std::string_view URL) const {
  return modMain::IsFileURL(URL);
}
std::string Root::ReturnBody(std::string_view CompleteDocument) const {
  return modMain::ReturnBody(CompleteDocument);
}

Ref<PageTemplates> Root::QuillbookPageTemplates(std::string_view SupportsFlag) const {
  return modMain::QuillbookPageTemplates(SupportsFlag);
}
Ref<PageTemplates> Root::OnLineTemplates(bool) const {
  return QuillbookPageTemplates("Px");
}
Ref<PageTemplates> Root::PrintTemplates(bool) const {
  return QuillbookPageTemplates("p");
}
Ref<PageTemplates> Root::AllTemplates(bool) const {
  return QuillbookPageTemplates("");
}

void Root::BeforeDeleteTopic(const Ref<Topic>& T, bool& Cancel, bool& NoPrompt) const {
  modMain::BeforeDeleteTopic(T, Cancel, NoPrompt);
}

Ref<quillbook::QBIDEOptions> Root::QBIDEOptions() const {
  return Procedure(*this, "QBIDEOptions").Run([] { return New<quillbook::QBIDEOptions>(); });
}

const TypeInfo& Root::StaticType() {
  static const TypeInfo type = Describe<Root>("Root")
                                   .Property<&Root::SpellImagePath, &Root::SetSpellImagePath>("SpellImagePath")
                                   .ReadOnly<&Root::TopicStatuses>("TopicStatuses")
                                   .ReadOnly<&Root::TopicSectionDefs>("TopicSectionDefs")
                                   .ReadOnly<&Root::QBConfigPath>("QBConfigPath")
                                   .ReadOnly<&Root::IsMavenscriptInstalled>("IsMavenscriptInstalled")
                                   .ReadOnly<&Root::QBIDEOptions>("QBIDEOptions")
                                   .ReadOnly<&Root::ClipboardTypeFormat>("ClipboardTypeFormat")
                                   .ReadOnly<&Root::ClipboardDataFormat>("ClipboardDataFormat")
                                   .ReadOnly<&Root::AppWorkspaceColor>("AppWorkspaceColor")
                                   .Property<&Root::ReloadFlag, &Root::SetReloadFlag>("ReloadFlag")
                                   .Done();
  return type;
}

}  // namespace quillbook
