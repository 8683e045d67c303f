// Extracts a .chm with libmspack, an independent reader: mspack_extract FILE DIR. Names are listed on standard output.
#include <mspack.h>

#include <cstdio>
#include <filesystem>
#include <string>

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  auto* reader = mspack_create_chm_decompressor(nullptr);
  if (!reader) return 2;
  auto* help = reader->open(reader, argv[1]);
  if (!help) {
    std::printf("open: error %d\n", reader->last_error(reader));
    return 1;
  }
  int errors = 0;
  for (auto* file = help->files; file; file = file->next) {
    const std::string name(file->filename);
    if (name.ends_with('/')) continue;
    const auto path = std::filesystem::path(argv[2]) / name.substr(name.starts_with('/') ? 1 : 0);
    std::filesystem::create_directories(path.parent_path());
    if (reader->extract(reader, file, path.c_str()) != MSPACK_ERR_OK) {
      std::printf("%s: error %d\n", name.c_str(), reader->last_error(reader));
      ++errors;
    } else {
      std::printf("%s\n", name.c_str());
    }
  }
  reader->close(reader, help);
  mspack_destroy_chm_decompressor(reader);
  return errors > 0 ? 1 : 0;
}
