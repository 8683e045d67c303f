// What the user asked for: the commands and their options.
#pragma once

#include <string>
#include <variant>

#include "cli/edit/EditOptions.h"

namespace quillbook::cli {

struct BuildOptions {
  std::string project;
  std::string profile;       ///< name or id; empty for the first
  std::string templateName;  ///< empty for the project's own
  std::string output;        ///< empty for the profile's, the project's or the default folder
  std::string format;        ///< "web", "chm" or "hxs"; empty for what the profile says
  std::string helpFile;      ///< empty for the profile's, or one in the output folder
  bool yes = false;
  bool quiet = false;
  bool json = false;
  bool strict = false;
};

struct InfoOptions {
  std::string project;
  bool quiet = false;
  bool json = false;
};

struct CompileCommandOptions {
  std::string project;
  std::string output;  ///< empty for the project's own
  bool quiet = false;
  bool json = false;
  bool strict = false;
};

struct InspectOptions {
  std::string file;
  bool quiet = false;
  bool json = false;
};

struct ExtractOptions {
  std::string file;
  std::string folder;
  bool quiet = false;
};

/// A command to run, or the exit code where the arguments were all there was to it.
using Request = std::variant<BuildOptions, InfoOptions, CompileCommandOptions, InspectOptions, ExtractOptions,
                             FmtOptions, EditOptions, int>;

/// Reads the arguments. Prints help and version on standard output, what is wrong on standard error.
[[nodiscard]] Request ParseArguments(int argc, const char* const* argv);

}  // namespace quillbook::cli
