// What a help file's code page can't hold, and where it stands.
#pragma once

#include <string>
#include <string_view>

#include "host/compile/CodePageText.h"
#include "host/compile/HelpProject.h"
#include "host/compile/PageScan.h"
#include "host/compile/Sitemap.h"
#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// Looks at everything that will be stored in the code page of the help file, before it is stored.
class EncodingAudit {
 public:
  EncodingAudit(CodePageText& codePage, MessageList& messages) : mCodePage(codePage), mMessages(messages) {}

  void CheckProject(const HelpProject& project);
  void CheckContents(const Sitemap& contents, const std::string& file);
  void CheckIndex(const Sitemap& index, const std::string& file);
  /// Characters of a page that stand there themselves, not as references. One message for all of them: a page in
  /// UTF-8 shows them rightly, only the search doesn't find their words.
  void CheckPage(std::string_view page, const PageFacts& facts, const std::string& file);

 private:
  void CheckText(std::string_view code, std::string_view what, std::string_view text, const FileMention& mention);
  void CheckTitle(std::string_view page, const PageFacts& facts, const std::string& file);
  [[nodiscard]] std::string CodePageName() const;

  CodePageText& mCodePage;
  MessageList& mMessages;
};

}  // namespace quillbook::compile
