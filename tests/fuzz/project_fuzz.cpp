// A project file's text: whatever it is, loading ends, and what was loaded saves to what loads again as the same.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "quillbook/platform/MessageBox.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"

namespace {

/// Reports of bad records are expected and go nowhere.
class Mute final : public quillbook::MessageBox {
 public:
  int Show(std::string_view /*Prompt*/, int Buttons, std::string_view /*Title*/) override {
    return SafeAnswer(Buttons);
  }
};

std::string WithoutSaveTime(std::string text) {
  const auto at = text.find("SaveDateTime=\"");
  if (at != std::string::npos) text.erase(at, text.find('"', at + 14) - at);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillbook;
  const PlatformOverride<MessageBox> mute(std::make_shared<Mute>());
  const auto first = New<QBProject>();
  first->Load(std::string_view(reinterpret_cast<const char*>(data), size));
  const auto saved = first->Save();
  const auto second = New<QBProject>();
  second->Load(saved);
  const auto again = second->Save();
  const auto third = New<QBProject>();
  third->Load(again);
  // The first save may still hold what a load mends, such as a key that stands twice; from the second on all is fixed.
  if (WithoutSaveTime(third->Save()) != WithoutSaveTime(again)) std::abort();
  return 0;
}
