#include "quillbook/frame/documents/DocumentFactory.h"

#include "host/compile/PageScan.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

bool HasDrive(std::string_view path) noexcept {
  return path.size() > 1 && path[1] == ':';
}

/// The path that a URL or path names.
std::string FileNameOf(std::string_view url) {
  if (HasDrive(url)) return std::string(url);
  if (!modMain::IsFileURL(url))
    throw Failure(FailureNumber::InvalidCall, "'" + std::string(url) + "' is no file; only files can be loaded");
  if (!StartsWithIgnoringCase(url, "file://")) return std::string(url);
  auto name = modMain::FileURLToFileName(url);
  // The URL of a path without a drive loses its first separator along with the scheme.
  const bool whole = HasDrive(name) || name.starts_with('\\') || !StartsWithIgnoringCase(url, "file:///");
  return whole ? name : "\\" + name;
}

}  // namespace

Ref<HtmlDocument> DocumentFactory::FromString(std::string_view HTML) {
  auto document = New<HtmlDocument>();
  document->Load(HTML);
  return document;
}

Ref<HtmlDocument> DocumentFactory::FromURL(std::string_view URL) {
  auto bytes = Platform::Current().Files().ReadFile(FileSystemObject(FileNameOf(URL)).NativePath());
  const int unstated = IsValidUtf8(bytes) ? CodePageUtf8 : CodePageWindows1252;
  return FromString(compile::DecodePage(std::move(bytes), unstated));
}

const TypeInfo& DocumentFactory::StaticType() {
  static const TypeInfo type = Describe<DocumentFactory>("DocumentFactory").Done();
  return type;
}

}  // namespace quillbook
