// What a compile has to say about its input.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbook::compile {

enum class MessageLevel { Note, Warning, Error };

/// A place in a text. Both numbers count from 1, a column is a character; 0 where none is at fault.
struct TextPlace {
  int line = 0;
  int column = 0;
};

/// Where a file names something.
struct FileMention {
  std::string file;  ///< native path
  TextPlace place = {};
};

/// One message. The codes are frozen: scripts test for them.
struct CompileMessage {
  MessageLevel level = MessageLevel::Warning;
  std::string code;  ///< such as "HC2001"
  std::string text;
  std::string file;  ///< native path; empty where no file is at fault
  int line = 0;      ///< from 1; 0 where no line is at fault
  int column = 0;    ///< from 1, in characters

  /// `file:line:column: error HC2001: text`, without the parts that aren't known.
  [[nodiscard]] std::string ToLine() const;
};

/// Messages in the order in which they arose.
class MessageList {
 public:
  void Add(CompileMessage message) {
    mErrors += message.level == MessageLevel::Error;
    mWarnings += message.level == MessageLevel::Warning;
    mMessages.push_back(std::move(message));
  }
  void Warning(std::string_view code, std::string text, std::string file = {}, int line = 0, int column = 0) {
    Add({MessageLevel::Warning, std::string(code), std::move(text), std::move(file), line, column});
  }
  void Error(std::string_view code, std::string text, std::string file = {}, int line = 0, int column = 0) {
    Add({MessageLevel::Error, std::string(code), std::move(text), std::move(file), line, column});
  }
  void Warning(std::string_view code, std::string text, const FileMention& mention) {
    Warning(code, std::move(text), mention.file, mention.place.line, mention.place.column);
  }
  void Error(std::string_view code, std::string text, const FileMention& mention) {
    Error(code, std::move(text), mention.file, mention.place.line, mention.place.column);
  }
  [[nodiscard]] const std::vector<CompileMessage>& All() const noexcept { return mMessages; }
  [[nodiscard]] std::size_t Errors() const noexcept { return mErrors; }
  [[nodiscard]] std::size_t Warnings() const noexcept { return mWarnings; }

 private:
  std::vector<CompileMessage> mMessages;
  std::size_t mErrors = 0;
  std::size_t mWarnings = 0;
};

}  // namespace quillbook::compile
