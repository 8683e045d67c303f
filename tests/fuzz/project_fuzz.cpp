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

std::string Resaved(std::string_view text) {
  const auto project = quillbook::New<quillbook::QBProject>();
  project->Load(text);
  return project->Save();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillbook;
  const PlatformOverride<MessageBox> mute(std::make_shared<Mute>());
  // The first save may still hold what a load mends, such as a key that stands twice. After a load that broke off, the
  // next one makes the default profile, and the one after that turns it to Help 2. From then on all is fixed.
  auto text = Resaved(std::string_view(reinterpret_cast<const char*>(data), size));
  for (int mending = 0; mending < 2; ++mending) text = Resaved(text);
  if (WithoutSaveTime(Resaved(text)) != WithoutSaveTime(text)) std::abort();
  return 0;
}
