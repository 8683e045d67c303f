// A folder of a test's own.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace quillbook::support {

/// Made empty, removed with everything in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() : mPath(testing::TempDir() + "quillbook-XXXXXX") {
    if (!mkdtemp(mPath.data())) throw std::runtime_error("no temporary folder");
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
  }

  /// Native path of something in the folder.
  [[nodiscard]] std::filesystem::path Native(const std::string& name) const {
    return std::filesystem::path(mPath) / name;
  }
  /// The same in the form of stored paths.
  [[nodiscard]] std::string Stored(const std::string& name) const {
    auto path = Native(name).string();
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
  }
  void Write(const std::string& name, const std::string& text) const {
    std::filesystem::create_directories(Native(name).parent_path());
    std::ofstream(Native(name), std::ios::binary) << text;
  }
  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(Native(name), std::ios::binary).rdbuf();
    return text.str();
  }
  [[nodiscard]] bool Has(const std::string& name) const { return std::filesystem::exists(Native(name)); }

 private:
  std::string mPath;
};

}  // namespace quillbook::support
