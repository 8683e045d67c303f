// Names on disk, found ignoring case.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace quillbook::detail {

/// Finds files under names from a world that ignores case. One for each thread.
class DiskNames {
 public:
  [[nodiscard]] static DiskNames& Current();

  /// The native path of what is on disk: the path itself if it is there; else each name the first in byte order that
  /// is equal ignoring case. From the first name that isn't there the path is as given.
  [[nodiscard]] std::string Find(const std::string& path);

  /// A file was made or has gone.
  void NoteCreated(const std::string& path);
  void NoteRemoved(const std::string& path);
  /// Anything may have changed.
  void Forget() noexcept { mFolders.clear(); }

  /// Folders are remembered while at least one scope lives.
  void BeginCaching() noexcept { ++mScopes; }
  void EndCaching() noexcept {
    if (--mScopes == 0) Forget();
  }

 private:
  using Names = std::unordered_map<std::string, std::string>;  ///< names by their folded form
  [[nodiscard]] static Names ReadFolder(const std::string& folder);
  [[nodiscard]] std::string FindName(const std::string& folder, std::string_view name);

  int mScopes = 0;
  std::unordered_map<std::string, Names> mFolders;
};

}  // namespace quillbook::detail
