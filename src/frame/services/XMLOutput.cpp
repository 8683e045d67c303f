#include "quillbook/frame/services/XMLOutput.h"

#include <utility>

#include "frame/services/XMLWriter.h"

namespace quillbook {

XMLOutput::XMLOutput(XMLElement Root, Sink sink)
    : mRoot(std::move(Root)), mSink(std::move(sink)), mWriter(std::make_unique<detail::XMLWriter>(mSink)) {}

XMLOutput::~XMLOutput() = default;

void XMLOutput::Flush() {
  const auto root = detail::NodeOf(mRoot.Node());
  if (!root.first_child()) return;
  if (!std::exchange(mStarted, true)) mWriter->Open(root);
  mWriter->WriteChildren(root);
  mRoot.DiscardChildren();
}

void XMLOutput::Finish() {
  const auto root = detail::NodeOf(mRoot.Node());
  if (!mStarted) {
    mWriter->Write(root);
    return;
  }
  Flush();
  mWriter->Close(root);
}

}  // namespace quillbook
