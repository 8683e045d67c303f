#include "quillbook/platform/LinuxDesktop.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

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

std::string FindProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return ::access(name.c_str(), X_OK) == 0 ? name : "";
  const auto folders = Environment("PATH");
  for (const auto folder : Split(folders, ':')) {
    auto path = std::string(folder) + "/" + name;
    if (!folder.empty() && ::access(path.c_str(), X_OK) == 0) return path;
  }
  return {};
}

std::vector<std::string> SplitCommandLine(std::string_view line) {
  std::vector<std::string> parameters;
  bool quoted = false;
  bool inside = false;
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      inside = false;
      continue;
    }
    if (!inside) parameters.emplace_back();
    inside = true;
    if (c == '"')
      quoted = !quoted;
    else
      parameters.back() += c;
  }
  return parameters;
}

/// Starts a program that this process needn't wait for: its parent ends at once, so that the system takes it over.
bool StartDetached(const std::string& program, const std::vector<std::string>& parameters) {
  std::vector<const char*> arguments{program.c_str()};
  for (const auto& parameter : parameters) arguments.push_back(parameter.c_str());
  arguments.push_back(nullptr);
  const auto child = ::fork();
  if (child < 0) return false;
  if (child == 0) {
    const auto grandchild = ::fork();
    if (grandchild != 0) ::_exit(grandchild < 0 ? 1 : 0);
    ::setsid();
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nothing, standard);
    ::execv(program.c_str(), const_cast<char* const*>(arguments.data()));  // execv promises not to change them
    ::_exit(1);
  }
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
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

std::string LinuxDesktop::UserName() const {
  const auto account = CurrentAccount();
  return account.name.empty() ? Environment("USER") : account.name;
}

std::string LinuxDesktop::TemporaryFolder() const {
  const auto folder = Environment("TMPDIR");
  return folder.starts_with('/') ? WithoutSlash(folder) : "/tmp";
}

int LinuxDesktop::OpenWithViewer(const std::string& target) {
  const auto program = FindProgram(mOpener);
  if (program.empty()) return NoViewer;
  // A name that begins with "-" would be taken for an option.
  const bool started = StartDetached(program, {target.starts_with('-') ? "./" + target : target});
  return started ? Opened : NoViewer;
}

int LinuxDesktop::StartProgram(const std::string& program, const std::string& parameters) {
  const auto path = FindProgram(program);
  return !path.empty() && StartDetached(path, SplitCommandLine(parameters)) ? Opened : NoViewer;
}

int LinuxDesktop::RegisterClipboardFormat(std::string_view Name) {
  constexpr int firstNumber = 0xC000;  // where registered formats begin
  static std::mutex mutex;
  static std::map<std::string, int> numbers;
  const std::lock_guard guard(mutex);
  return numbers.try_emplace(FoldCase(Name), firstNumber + static_cast<int>(numbers.size())).first->second;
}

}  // namespace quillbook
