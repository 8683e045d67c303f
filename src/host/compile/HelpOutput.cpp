#include "host/compile/HelpOutput.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "host/compile/ItolitlsWriter.h"
#include "host/compile/ItsfWriter.h"
#include "host/compile/Names.h"
#include "host/compile/ProjectFiles.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

std::string FolderForSpool(const std::string& path) {
  const std::string folder(FolderOf(path));
  return folder.empty() ? "." : folder;
}

}  // namespace

std::uint64_t HashOfBytes(std::string_view bytes) noexcept {
  constexpr std::uint64_t prime = 0x9E3779B97F4A7C15ULL;
  std::uint64_t hash = bytes.size() * prime;
  while (bytes.size() >= 8) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes.data(), 8);
    hash = (hash ^ eight) * prime;
    hash ^= hash >> 29;
    bytes.remove_prefix(8);
  }
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * prime;
  return hash ^ (hash >> 32);
}

std::uint32_t TimeStampOfEnvironment() {
  const char* text = std::getenv("SOURCE_DATE_EPOCH");
  return text ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : 0;
}

HelpOutput::HelpOutput(const std::string& path) : mPath(path), mSpool(FolderForSpool(path)) {}

std::string HelpOutput::WorkFolder() const {
  return FolderForSpool(mPath);
}

void HelpOutput::AddFile(const std::string& name, std::string_view bytes) {
  mStorage.AddCompressed(name, bytes);
  mFiles.push_back({name, bytes.size(), HashOfBytes(bytes)});
}

void HelpOutput::AddFolders(const std::vector<std::string>& paths) {
  std::vector<std::string> folders{"/"};
  for (const auto& path : paths)
    for (auto at = path.find('/'); at != std::string::npos; at = path.find('/', at + 1))
      folders.push_back("/" + path.substr(0, at + 1));
  std::sort(folders.begin(), folders.end(), NameLess);
  const auto same = [](const auto& left, const auto& right) { return FoldName(left) == FoldName(right); };
  folders.erase(std::unique(folders.begin(), folders.end(), same), folders.end());
  for (const auto& folder : folders) mStorage.AddStored(folder, {});
}

void HelpOutput::Finish(StorageReader::Format format, std::uint32_t timeStamp, std::uint32_t localeId) {
  if (format == StorageReader::Format::HtmlHelp1) {
    mStorage.Finish(ItsfTransform());
    WriteItsfFront(mFront, mStorage, timeStamp, localeId);
  } else {
    mStorage.Finish(ItolitlsTransform());
    WriteItolitlsFront(mFront, mStorage, timeStamp, localeId);
  }
}

void HelpOutput::CheckFiles(const StorageReader& reader, MessageList& messages) const {
  for (const auto& file : mFiles) {
    const auto* entry = reader.Find(file.name);
    if (!entry || entry->length != file.size || HashOfBytes(reader.ReadAll(*entry, file.size)) != file.hash)
      messages.Error("HC5001", "The new help file differs from the project: '" + file.name + "' has other bytes");
  }
  for (const auto& problem : reader.Problems()) messages.Error("HC5001", "The new help file is odd: " + problem);
}

void HelpOutput::Publish() const {
  constexpr std::size_t piece = 1U << 18;
  const auto writer = Platform::Current().Files().ReplaceFile(mPath, true);
  for (std::uint64_t at = 0; at < mBytes.Size(); at += piece) writer->Write(mBytes.Read(at, piece));
  writer->Close();
}

}  // namespace quillbook::compile
