// Runs one generation of a host project.
#pragma once

#include <cstddef>
#include <vector>

#include "quillbook/base/Object.h"
#include "quillbook/host/BuildNote.h"
#include "quillbook/host/HelpCompiler.h"

namespace quillbook {

class MVProject;

/// How a generation ended. The numbers are frozen.
enum class BuildStatus : int { Done = 0, Cancelled = 1, Failed = 2 };

/// Walks the current doc type's items, writes the pages and the template's support files, and compiles the help file
/// where that is asked for. Nothing is raised to the caller: what goes wrong is a note and the status. One object
/// serves one build.
class MVProjectBuild final : public Object {
 public:
  /// `ShowBusy` and `ShowResults` are accepted for dialogs, of which there are none.
  [[nodiscard]] BuildStatus Build(const Ref<MVProject>& Project, bool ShowBusy = false, bool ShowResults = false);

  [[nodiscard]] HelpCompileResult CompileResult() const noexcept { return mCompileResult; }
  /// Everything that the author should know, in the order of arising.
  [[nodiscard]] const std::vector<BuildNote>& Notes() const noexcept { return mNotes; }
  /// Pages that stand in the output, written or unchanged.
  [[nodiscard]] std::size_t PageCount() const noexcept { return mPageCount; }
  /// Support files that stand in the output.
  [[nodiscard]] std::size_t SupportFileCount() const noexcept { return mSupportFileCount; }
  /// Pages and support files that stood there already, byte for byte.
  [[nodiscard]] std::size_t UnchangedCount() const noexcept { return mUnchangedCount; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  [[nodiscard]] BuildStatus Generate(MVProject& project);
  [[nodiscard]] bool WriteOutput(MVProject& project);

  HelpCompileResult mCompileResult = HelpCompileResult::None;
  std::vector<BuildNote> mNotes;
  std::size_t mPageCount = 0;
  std::size_t mSupportFileCount = 0;
  std::size_t mUnchangedCount = 0;
};

}  // namespace quillbook
