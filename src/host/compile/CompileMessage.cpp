#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

std::string CompileMessage::ToLine() const {
  std::string result = file;
  for (const int place : {line, column})
    if (place > 0) result += ":" + std::to_string(place);
  if (!result.empty()) result += ": ";
  constexpr std::string_view words[] = {"note", "warning", "error"};
  result.append(words[static_cast<int>(level)]).append(" ").append(code).append(": ").append(text);
  return result;
}

}  // namespace quillbook::compile
