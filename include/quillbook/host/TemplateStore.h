// The installed templates.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Object.h"
#include "quillbook/host/BuildNote.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

/// Lists the templates of a configuration directory: each folder of "Templates" that holds a "template.xml". They are
/// read when first asked for and kept; a template that cannot be read gives a message, and the others still load.
class TemplateStore final : public Object {
 public:
  /// The store of this apartment (thread), made on first use.
  [[nodiscard]] static Ref<TemplateStore> OfApartment();

  /// Directory in the form of stored paths. A change forgets what has been read.
  void SetConfigPath(std::string_view ConfigPath);
  [[nodiscard]] const std::string& ConfigPath() const noexcept { return mConfigPath; }

  /// All readable templates by name, in the order of their folders' names.
  [[nodiscard]] const Ref<PageTemplates>& Templates();
  /// Nothing if there is no such template.
  [[nodiscard]] Ref<PageTemplate> Find(std::string_view Name);
  /// What was wrong with those that could not be read, with file, line and column.
  [[nodiscard]] const std::vector<BuildNote>& Messages();
  /// The next question reads the disk again. Templates handed out stay as they are.
  void Forget();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void EnsureLoaded();

  std::string mConfigPath;
  Ref<PageTemplates> mTemplates;
  std::vector<BuildNote> mMessages;
};

}  // namespace quillbook
