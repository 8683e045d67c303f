// Template texts: whatever they hold, evaluating them ends.
#include <cstdint>
#include <string_view>

#include "quillbook/base/Failure.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/ParserTemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillbook;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto project = New<MVProject>();
  const auto provider = New<CommonProvider>();
  provider->SetMVProject(project);
  try {
    (void)ParserServices::ParseText(text, *provider);
    const auto parser = New<ParserTemplate>();
    parser->StartTagOpen = "<!--START";
    parser->EndTagOpen = "<!--END";
    parser->StartTagClose = parser->EndTagClose = "-->";
    parser->DataProvider = provider;
    parser->Load(text);
    (void)parser->Result();
  } catch (const Failure&) {  // too deep, or elements without end: told, not crashed
  }
  return 0;
}
