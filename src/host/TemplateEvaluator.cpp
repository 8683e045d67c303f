#include "host/CompiledTemplate.h"
#include "quillbook/base/Failure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/DataProvider.h"
#include "quillbook/host/ParserServices.h"

namespace quillbook {

namespace {

/// What the evaluation that runs on this thread has used up. An answer may start an evaluation within it.
struct Budget {
  int depth = 0;
  long elements = 0;
  bool exhausted = false;
};
thread_local Budget budget;

class Level {
 public:
  Level() noexcept { ++budget.depth; }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;
  ~Level() {
    if (--budget.depth == 0) budget = {};
  }
};

/// True if the element may be evaluated. The first refusal is a failure; further ones are silent, so that an
/// evaluation whose inner failures are handled on the way comes to an end all the same.
bool Admit(const TemplateElement& element) {
  if (budget.exhausted) return false;
  if (budget.depth <= ParserServices::MaximumDepth && ++budget.elements <= ParserServices::MaximumElements) return true;
  budget.exhausted = true;
  throw Failure(FailureNumber::OutOfStackSpace,
                "Elements nest too deeply or generate each other without end, at '%%" + element.ElementType() + "%%'");
}

/// An element may write to the page's file instead of giving back a text: that stands before it.
void AppendElement(DataProvider& provider, const Ref<TemplateElement>& element, Ref<FileSystemObject>& file,
                   std::string& output) {
  const auto text = provider.DataProvider_ProvideData(element, file);
  if (file) output += file->TakeText();
  output += text;
}

}  // namespace

void CompiledTemplate::Evaluate(DataProvider& provider, Ref<FileSystemObject>& file, std::string& output) const {
  const Level level;
  for (const auto& piece : mPieces) {
    if (!piece.element)
      output.append(mText, piece.begin, piece.end - piece.begin);
    else if (Admit(*piece.element))
      AppendElement(provider, piece.element, file, output);
  }
}

}  // namespace quillbook
