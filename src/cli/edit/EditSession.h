// One run of a command that may save a project.
#pragma once

#include <memory>
#include <string>

#include "cli/Journal.h"
#include "cli/edit/EditOptions.h"
#include "quillbook/frame/Root.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"

namespace quillbook::cli {

class Refusal;

/// Opens the project, and saves it where that loses nothing.
class EditSession {
 public:
  explicit EditSession(const SaveOptions& options);

  /// Nothing if the project can't be read; the journal then says why.
  [[nodiscard]] const Ref<QBProject>& Open();
  /// Raises `Refusal` if saving would lose a part of the file that wasn't read, unless that is forced; then it is told
  /// in warnings.
  void RequireWholeFile();
  /// The text that a save would write: what is read from it gives the same text again. Raises `Refusal` if the project
  /// can't be written whole.
  [[nodiscard]] std::string Render();
  /// Saves, after a copy to ".bak". Raises `Refusal` if the file stays as it was.
  void Save();
  /// The file as it stands on the disk.
  [[nodiscard]] std::string FileBytes() const;

  [[nodiscard]] Journal& Log() noexcept { return mJournal; }
  [[nodiscard]] const Ref<QBProject>& Project() const noexcept { return mProject; }
  /// Reports what stopped the command and gives the exit code.
  [[nodiscard]] int Report(const Refusal& refusal);

 private:
  const SaveOptions& mOptions;
  Journal mJournal;
  std::shared_ptr<Answers> mAnswers;
  PlatformOverride<MessageBox> mMessages;
  Root mRoot;
  Ref<QBProject> mProject;
  Ref<QBProject> mSettled;  ///< the project, once written and read
};

}  // namespace quillbook::cli
