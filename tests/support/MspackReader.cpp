#include "support/MspackReader.h"

#include <mspack.h>

#include <utility>

namespace quillbook::support {

MspackReader::MspackReader(std::string file)
    : mFile(std::move(file)), mReader(mspack_create_chm_decompressor(nullptr)) {
  if (mReader) mHelp = mReader->open(mReader, mFile.c_str());
  if (!mHelp) {
    mError = mReader ? mReader->last_error(mReader) : MSPACK_ERR_NOMEMORY;
    return;
  }
  for (auto* entry = mHelp->files; entry; entry = entry->next) {
    mNames.emplace_back(entry->filename);
    mFiles.push_back(entry);
  }
}

MspackReader::~MspackReader() {
  if (mHelp) mReader->close(mReader, mHelp);
  if (mReader) mspack_destroy_chm_decompressor(mReader);
}

bool MspackReader::FindsByIndex(std::size_t number) {
  mschmd_file found{};
  const auto* listed = mFiles.at(number);
  const int error = mReader->fast_find(mReader, mHelp, listed->filename, &found, sizeof found);
  return error == MSPACK_ERR_OK && found.section == listed->section && found.offset == listed->offset &&
         found.length == listed->length;
}

int MspackReader::Extract(std::size_t number, const std::string& path) {
  return mReader->extract(mReader, mFiles.at(number), path.c_str());
}

}  // namespace quillbook::support
