// A folder of a test's own.
#pragma once

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook::support {

/// Made empty, removed with everything in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() : mPath((std::filesystem::temp_directory_path() / "quillbook-XXXXXX").string()) {
    if (!mkdtemp(mPath.data())) throw std::runtime_error("no temporary folder");
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
  }

  /// Native path without "/" at its end.
  [[nodiscard]] const std::string& Path() const noexcept { return mPath; }
  /// Native path of something in the folder, as text.
  [[nodiscard]] std::string operator/(std::string_view name) const { return mPath + "/" + std::string(name); }
  /// Native path of something in the folder.
  [[nodiscard]] std::filesystem::path Native(const std::string& name) const {
    return std::filesystem::path(mPath) / name;
  }
  /// The same in the form of stored paths.
  [[nodiscard]] std::string Stored(std::string_view name = {}) const {
    auto path = *this / name;
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
  }
  void Write(const std::string& name, std::string_view text) const {
    std::filesystem::create_directories(Native(name).parent_path());
    std::ofstream(Native(name), std::ios::binary) << text;
  }
  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(Native(name), std::ios::binary).rdbuf();
    return text.str();
  }
  [[nodiscard]] bool Has(const std::string& name) const { return std::filesystem::exists(Native(name)); }
  /// Number of entries, hidden ones too.
  [[nodiscard]] std::size_t Count() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(mPath), {}));
  }
  /// All files, in subfolders too, relative and in byte order.
  [[nodiscard]] std::vector<std::string> Files() const {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(mPath))
      if (!entry.is_directory()) files.push_back(std::filesystem::relative(entry.path(), mPath).string());
    std::sort(files.begin(), files.end());
    return files;
  }

 private:
  std::string mPath;
};

}  // namespace quillbook::support
