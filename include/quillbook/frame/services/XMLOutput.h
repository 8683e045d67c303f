// XML documents that never stand in memory as a whole.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "quillbook/frame/services/XMLElement.h"

namespace quillbook {

namespace detail {
class XMLWriter;
}

/// Writes a document child by child: whoever fills it adds children to the root and flushes from time to time.
///
///     XMLOutput output(document.DocumentElement(), sink);
///     for (const auto& topic : topics) {
///       topic->Save(root.AddChild("Topic"));
///       output.Flush();
///     }
///     output.Finish();
///
/// The text is that of `XMLDocument::ToString` for a root with the same children and no text of its own.
class XMLOutput {
 public:
  using Sink = std::function<void(std::string_view)>;

  /// `Root` has its name; its attributes may come until the first `Flush`. The text goes to the sink in parts.
  XMLOutput(XMLElement Root, Sink sink);
  XMLOutput(const XMLOutput&) = delete;
  XMLOutput& operator=(const XMLOutput&) = delete;
  ~XMLOutput();

  /// Writes the children that the root has by now and takes them out of it; handles of them are used up.
  void Flush();
  /// Writes what is left and the end of the document. Call it once.
  void Finish();

 private:
  XMLElement mRoot;
  Sink mSink;
  std::unique_ptr<detail::XMLWriter> mWriter;
  bool mStarted = false;
};

}  // namespace quillbook
