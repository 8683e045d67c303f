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

  [[nodiscard]] Outcome Compile(std::string_view ProjectFile, std::string_view HelpFile, const GoOn& goOn) override {
    const auto native = [](std::string_view path) {
      return path.empty() ? std::string() : New<FileSystemObject>(path)->NativePath();
    };
    const auto report = compile::CompileHelp({native(ProjectFile), native(HelpFile), false, goOn});
    Outcome outcome;
    outcome.Result = ResultOf(report);
    for (const auto& message : report.messages.All()) {
      if (message.level == compile::MessageLevel::Note) continue;
      outcome.Log += message.ToLine() + "\r\n";
      outcome.Notes.push_back(NoteOf(message));
    }
    return outcome;
  }

 private:
  static HelpCompileResult ResultOf(const compile::CompileReport& report) {
    using End = compile::CompileReport::Outcome;
    if (report.outcome == End::Cancelled) return HelpCompileResult::Cancelled;
    if (report.outcome != End::Made) return HelpCompileResult::Failed;
    return report.messages.Warnings() > 0 ? HelpCompileResult::Warnings : HelpCompileResult::Succeeded;
  }
  static BuildNote NoteOf(const compile::CompileMessage& message) {
    const auto level = message.level == compile::MessageLevel::Error ? NoteLevel::Error : NoteLevel::Warning;
    return {level,
            message.code,
            message.text,
            message.file,
            static_cast<std::size_t>(message.line),
            static_cast<std::size_t>(message.column)};
  }
};

}  // namespace

Ref<HelpCompiler> MakeBuiltInHelpCompiler(int helpVersion) {
  if (helpVersion != 1 && helpVersion != 2) return {};
  return New<BuiltInHelpCompiler>();
}

}  // namespace quillbook
