#include "quillbook/host/BuiltInHelpCompiler.h"

#include "quillbook/base/Object.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/HelpCompilation.h"

namespace quillbook {

namespace {

class BuiltInHelpCompiler final : public HelpCompiler {
 public:
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<BuiltInHelpCompiler>("BuiltInHelpCompiler").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

  [[nodiscard]] Outcome Compile(std::string_view ProjectFile, std::string_view HelpFile) override {
    const auto native = [](std::string_view path) {
      return path.empty() ? std::string() : New<FileSystemObject>(path)->NativePath();
    };
    const auto report = compile::CompileHelp({native(ProjectFile), native(HelpFile), false});
    Outcome outcome;
    for (const auto& message : report.messages.All())
      if (message.level != compile::MessageLevel::Note) outcome.Log += message.ToLine() + "\r\n";
    outcome.Result = report.outcome != compile::CompileReport::Outcome::Made ? HelpCompileResult::Failed
                     : report.messages.Warnings() > 0                        ? HelpCompileResult::Warnings
                                                                             : HelpCompileResult::Succeeded;
    return outcome;
  }
};

}  // namespace

Ref<HelpCompiler> MakeBuiltInHelpCompiler(int helpVersion) {
  if (helpVersion != 1 && helpVersion != 2) return {};
  return New<BuiltInHelpCompiler>();
}

}  // namespace quillbook
