// Writes the help project of a build beside its pages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/OutputSession.h"
#include "host/helpproject/Help2Project.h"
#include "host/helpproject/HelpProjectFacts.h"

namespace quillbook::detail {

/// Asks the current doc type for contents, indexes and files, and writes the control files of the project's help
/// version. What can't go into the help is left out and told.
class HelpProjectWriter {
 public:
  HelpProjectWriter(MVProject& project, OutputSession& output);

  /// Also sets the project's `HelpProjectFile` where the provider didn't.
  void Write();

 private:
  void CollectFacts();
  void NameTheFiles();
  void ChooseLanguage();
  void CollectContents();
  [[nodiscard]] std::vector<IndexLine> KeywordsOf(std::string_view contentType);
  void CollectFiles();
  /// The path within the output of a file that goes into the help; empty, with a warning, for one that can't.
  [[nodiscard]] std::string HelpPath(std::string_view listed);
  void CheckNames();
  void WriteHelp1();
  void WriteHelp2();
  void Encode(const std::string& name, std::string_view text, std::string_view what);
  void Write(const NamedTexts& texts);
  void Warn(const char* code, std::string text);

  MVProject& mProject;
  OutputSession& mOutput;
  Ref<INamespaceProvider> mProvider;
  bool mHelp2;
  HelpProjectFacts mFacts;
};

}  // namespace quillbook::detail
