// Library-wide state of one apartment.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Ref.h"
#include "quillbook/frame/Procedure.h"

namespace quillbook {

class DocumentFactory;
class TopicSectionDefs;
class TopicStatuses;

namespace detail {
class FileIcons;
}

/// One per thread, and nothing is locked. Reached only through `modMain` and `Root`.
struct Apartment {
  Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();

  std::int32_t RootIncrement = 0;
  Ref<quillbook::TopicSectionDefs> mTopicSectionDefs;  ///< cached while a `Root` lives
  Ref<quillbook::TopicStatuses> mTopicStatuses;        ///< cached until the last `Root` goes
  std::unique_ptr<detail::FileIcons>
      mFileIcons;  ///< what the desktop knows; made on first use, until the last `Root` goes
  std::int32_t mCacheCount = 0;
  Ref<Collection<Ref<Object>>> mCacheTopics = New<Collection<Ref<Object>>>();
  std::int16_t mClipboardDataFormat = 0;
  std::int16_t mClipboardTypeFormat = 0;
  Ref<Collection<std::string>> LoadedNodes;
  std::string mSpellImagePath;
  bool mReloadFlag = false;
  Ref<DocumentFactory> mDOMFactory;           ///< made when the first document is, kept until the last `Root` goes
  std::optional<bool> mMavenscriptInstalled;  ///< nothing until it has been asked for

  /// What the last root leaves behind goes with it.
  void DropCaches();

  [[nodiscard]] static Apartment& Current();
};

/// The module of the free helpers, for the failure frame.
[[nodiscard]] const Module& modMainModule() noexcept;

}  // namespace quillbook
