#include "quillbook/platform/LinuxDesktop.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

#include "platform/ClipboardContent.h"
#include "platform/ClipboardFormats.h"
#include "platform/ClipboardPrograms.h"
#include "platform/KeyFile.h"
#include "platform/LoggedProgram.h"
#include "platform/Programs.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::string WithoutSlash(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

struct Account {
  std::string name;
  std::string home;
};

Account CurrentAccount() {
  std::array<char, 16 * 1024> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) return {};
  return {entry.pw_name, entry.pw_dir};
}

/// The value of a line such as XDG_DOCUMENTS_DIR="$HOME/Papers"; none for other lines.
std::optional<std::string> DocumentsFromLine(std::string_view line) {
  constexpr std::string_view start = "XDG_DOCUMENTS_DIR=\"";
  constexpr std::string_view home = "$HOME";
  if (!line.starts_with(start)) return std::nullopt;
  line.remove_prefix(start.size());
  line = line.substr(0, line.find('"'));
  if (line.starts_with(home)) return LinuxDesktop::HomeFolder() + std::string(line.substr(home.size()));
  return line.starts_with('/') ? std::optional(std::string(line)) : std::nullopt;
}

std::string DocumentsFolder() {
  const auto& files = Platform::Current().Files();
  const auto settings = LinuxDesktop::ConfigurationFolder() + "/user-dirs.dirs";
  std::string text;
  try {
    if (files.GetStatus(settings).exists) text = files.ReadFile(settings);
  } catch (const Failure&) {  // settings that can't be read are as good as missing
  }
  for (const auto line : Split(text, '\n'))
    if (auto folder = DocumentsFromLine(TrimBlanks(line))) return WithoutSlash(std::move(*folder));
  auto usual = LinuxDesktop::HomeFolder() + "/Documents";
  return files.GetStatus(usual).isDirectory ? usual : LinuxDesktop::HomeFolder();
}

/// The locale name and those that are less particular: language, region and modifier fall away.
void AppendLanguage(std::vector<std::string>& languages, std::string_view name) {
  const auto at = std::min(name.find('@'), name.size());
  const auto modifier = std::string(name.substr(at));
  const auto place = name.substr(0, std::min(name.find('.'), at));
  const auto language = place.substr(0, place.find('_'));
  if (language.empty()) return;
  for (const auto base : {place, language}) {
    if (!modifier.empty()) languages.push_back(std::string(base) + modifier);
    if (languages.empty() || languages.back() != base) languages.emplace_back(base);
  }
}

}  // namespace

std::string LinuxDesktop::HomeFolder() {
  const auto home = Environment("HOME");
  if (home.starts_with('/')) return WithoutSlash(home);
  const auto account = CurrentAccount();
  return account.home.empty() ? "/" : WithoutSlash(account.home);
}

std::string LinuxDesktop::ConfigurationFolder() {
  const auto folder = Environment("XDG_CONFIG_HOME");
  return folder.starts_with('/') ? WithoutSlash(folder) : HomeFolder() + "/.config";
}

std::string LinuxDesktop::SpecialFolder(int Id) const {
  return Id == Desktop::DocumentsFolder ? quillbook::DocumentsFolder() : std::string();
}

std::vector<std::string> LinuxDesktop::DataFolders() const {
  const auto own = Environment("XDG_DATA_HOME");
  std::vector<std::string> folders{own.starts_with('/') ? WithoutSlash(own) : HomeFolder() + "/.local/share"};
  const auto shared = Environment("XDG_DATA_DIRS");
  for (const auto folder : Split(shared.empty() ? "/usr/local/share:/usr/share" : std::string_view(shared), ':'))
    if (folder.starts_with('/')) folders.push_back(WithoutSlash(std::string(folder)));
  return folders;
}

std::vector<std::string> LinuxDesktop::Languages() const {
  std::string locale;
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (locale.empty()) locale = Environment(variable);
  if (locale.empty() || locale == "POSIX" || locale.substr(0, locale.find('.')) == "C") return {};
  const auto listed = Environment("LANGUAGE");
  std::vector<std::string> languages;
  for (const auto name : Split(listed.empty() ? locale : listed, ':')) AppendLanguage(languages, name);
  return languages;
}

std::string LinuxDesktop::IconTheme() const {
  for (const char* toolkit : {"/gtk-4.0", "/gtk-3.0"}) {
    const auto settings = detail::KeyFile::Read(ConfigurationFolder() + toolkit + "/settings.ini");
    if (auto theme = settings.Value("Settings", "gtk-icon-theme-name"); !theme.empty()) return theme;
  }
  return detail::KeyFile::Read(ConfigurationFolder() + "/kdeglobals").Value("Icons", "Theme");
}

std::string LinuxDesktop::UserName() const {
  const auto account = CurrentAccount();
  return account.name.empty() ? Environment("USER") : account.name;
}

std::string LinuxDesktop::TemporaryFolder() const {
  const auto folder = Environment("TMPDIR");
  return folder.starts_with('/') ? WithoutSlash(folder) : "/tmp";
}

int LinuxDesktop::OpenWithViewer(const std::string& target) {
  const auto program = detail::FindProgram(mOpener);
  if (program.empty()) return NoViewer;
  // A name that begins with "-" would be taken for an option.
  const bool started = detail::StartDetached(program, {target.starts_with('-') ? "./" + target : target});
  return started ? Opened : NoViewer;
}

int LinuxDesktop::StartProgram(const std::string& program, const std::string& parameters) {
  const auto path = detail::FindProgram(program);
  return !path.empty() && detail::StartDetached(path, detail::SplitCommandLine(parameters)) ? Opened : NoViewer;
}

Desktop::ProgramRun LinuxDesktop::RunProgram(const std::string& program, const std::vector<std::string>& parameters,
                                             const std::string& folder, const std::function<bool()>& goOn) {
  if (program.find('/') != std::string::npos) return RunToItsEnd(program, parameters, folder, goOn);
  const auto path = detail::FindProgram(program);
  return path.empty() ? ProgramRun() : RunToItsEnd(path, parameters, folder, goOn);
}

int LinuxDesktop::RegisterClipboardFormat(std::string_view Name) {
  return detail::ClipboardFormatNumber(Name);
}

std::string LinuxDesktop::ClipboardFormatName(int Number) const {
  return detail::ClipboardFormatName(Number);
}

bool LinuxDesktop::SetClipboard(const ClipboardContent& content) {
  return detail::CopyToClipboard(std::string(detail::ClipboardMimeType), detail::EncodeClipboard(content), mPatience);
}

ClipboardContent LinuxDesktop::GetClipboard() {
  const auto bytes = detail::PasteFromClipboard(std::string(detail::ClipboardMimeType), mPatience);
  return bytes ? detail::DecodeClipboard(*bytes) : ClipboardContent();
}

}  // namespace quillbook
