// Reads .chm files with libmspack, which knows nothing of this system's own reader.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct mschm_decompressor;
struct mschmd_header;
struct mschmd_file;

namespace quillbook::support {

class MspackReader {
 public:
  /// `Error` tells whether the file could be opened.
  explicit MspackReader(std::string file);
  ~MspackReader();
  MspackReader(const MspackReader&) = delete;
  MspackReader& operator=(const MspackReader&) = delete;

  /// The library's number for what went wrong in opening; 0 for nothing.
  [[nodiscard]] int Error() const noexcept { return mError; }
  /// Names of the content in the order of the directory, without the container's own streams.
  [[nodiscard]] const std::vector<std::string>& Names() const noexcept { return mNames; }
  /// Whether the name with that number is also found by the directory's index, at the same place.
  [[nodiscard]] bool FindsByIndex(std::size_t number);
  /// Writes the content of the name with that number to a file; gives the library's number for what went wrong, or 0.
  [[nodiscard]] int Extract(std::size_t number, const std::string& path);

 private:
  std::string mFile;  ///< the library keeps no copy of it
  mschm_decompressor* mReader = nullptr;
  mschmd_header* mHelp = nullptr;
  int mError = 0;
  std::vector<std::string> mNames;
  std::vector<mschmd_file*> mFiles;
};

}  // namespace quillbook::support
