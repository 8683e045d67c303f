// Documents of the library.
#include <chrono>
#include <string>
#include <thread>

#include "frame/Apartment.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/documents/DocumentFactory.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/documents/HtmlElements.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/TempFileHelper.h"
#include "quillbook/frame/services/UnicodeHelper.h"

namespace quillbook::modMain {
namespace {

/// A file of its own for one document; gone when the document has been read, also if that failed.
class PageFile {
 public:
  PageFile() : mFile(New<FileSystemObject>(TempFileHelper::TempFileName("QB", ""))) {}
  PageFile(const PageFile&) = delete;
  PageFile& operator=(const PageFile&) = delete;
  ~PageFile() {
    IgnoreFailures([this] { mFile->Close(); });
    IgnoreFailures([this] { mFile->Delete(); });
  }

  void Write(std::string_view html) {
    mFile->Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockShared, 32767);
    mFile->SetUnicode(false);
    mFile->WriteText(html);
    mFile->Close();
  }
  [[nodiscard]] std::string FullName() const { return mFile->FullName(); }

 private:
  Ref<FileSystemObject> mFile;
};

/// True if every character is one byte in a file of one byte a character.
bool FitsBytes(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size();)
    if (NextCodePoint(text, i) > 0xFF) return false;
  return true;
}

/// Waits until the document is complete, or more than two whole seconds of the clock have passed.
void AwaitCompletion(const HtmlDocument& document) {
  using std::chrono::seconds;
  const auto now = [] { return std::chrono::floor<seconds>(std::chrono::steady_clock::now()); };
  const auto start = now();
  while (document.readyState() != "complete" && now() - start <= seconds(2)) std::this_thread::yield();
}

}  // namespace

std::string HelpPage(std::string_view HeadHTML, std::string_view BodyHTML) {
  std::string page = "<html xmlns:MSHelp=\"http://msdn.microsoft.com/mshelp\">";
  if (!HeadHTML.empty()) page.append("<head>").append(HeadHTML).append("</head>");
  return std::move(page.append("<body>").append(BodyHTML).append("</body></html>"));
}

Ref<HtmlDocument> CreateDOM(std::string_view HTML) {
  return Procedure(modMainModule(), "CreateDOM", [&](auto& p) { p("HTML", HTML); }).Run([&] {
    auto& factory = mDOMFactory();
    if (!factory) factory = New<DocumentFactory>();
    if (HTML.empty()) return factory->FromString(HelpPage({}, {}));
    PageFile file;
    // One byte a character loses what lies beyond U+00FF; such a text can't be bytes yet, so it is written as UTF-8.
    file.Write(FitsBytes(HTML) ? std::string(HTML) : UnicodeHelper::ToUTF8(HTML));
    auto document = factory->FromURL(file.FullName());
    AwaitCompletion(*document);
    return document;
  });
}

bool IsAnchorValid(const Ref<HtmlDocument>& DOM, std::string_view Name) {
  bool valid = false;
  IgnoreFailures([&] { valid = static_cast<bool>(DOM->anchors()->Item(Name)); });
  return valid;
}

}  // namespace quillbook::modMain
