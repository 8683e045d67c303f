#include "quillbook/platform/FileStore.h"

namespace quillbook {

namespace {

void WriteAndClose(const std::unique_ptr<FileWriter>& writer, std::string_view bytes) {
  writer->Write(bytes);
  writer->Close();
}

}  // namespace

void FileStore::WriteFile(const std::string& path, std::string_view bytes) {
  WriteAndClose(CreateFile(path), bytes);
}

void FileStore::ReplaceFileWith(const std::string& path, std::string_view bytes) {
  WriteAndClose(ReplaceFile(path, false), bytes);
}

}  // namespace quillbook
