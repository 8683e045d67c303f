// Extracts a .chm with libmspack, an independent reader: mspack_extract FILE DIR. Names are listed on standard output.
#include <cstdio>
#include <filesystem>

#include "support/MspackReader.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  quillbook::support::MspackReader reader(argv[1]);
  if (reader.Error()) {
    std::printf("open: error %d\n", reader.Error());
    return 1;
  }
  int errors = 0;
  for (std::size_t i = 0; i < reader.Names().size(); ++i) {
    const auto& name = reader.Names()[i];
    if (name.ends_with('/')) continue;
    const auto path = std::filesystem::path(argv[2]) / name.substr(name.starts_with('/') ? 1 : 0);
    std::filesystem::create_directories(path.parent_path());
    const int error = reader.Extract(i, path);
    if (error) std::printf("%s: error %d\n", name.c_str(), error);
    if (!error) std::printf("%s\n", name.c_str());
    errors += error != 0;
  }
  return errors > 0 ? 1 : 0;
}
