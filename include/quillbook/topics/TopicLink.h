// A related link of a topic.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class Topic;
class XMLElement;

/// What a related link points to. The values are stored in project files.
enum TopicLinkTypeEnum : int {
  rttTopic = 0,  ///< another topic of the project, by its key
  rttURL = 1,    ///< any URL
};

/// A link at the foot of a topic's page. A change is told to the parent topic.
class TopicLink final : public LibraryObject {
 public:
  /// Key of the target topic; may name none. Setting it tells nobody.
  std::string ChildTopicKey;

  /// The whole target of a `rttURL` link.
  [[nodiscard]] const std::string& URL() const noexcept { return mURL; }
  void SetURL(std::string_view RHS);
  [[nodiscard]] TopicLinkTypeEnum TopicLinkType() const noexcept { return mTopicLinkType; }
  void SetTopicLinkType(TopicLinkTypeEnum RHS);
  [[nodiscard]] const std::string& Title() const noexcept { return mTitle; }
  void SetTitle(std::string_view RHS);
  /// Links of one category are grouped on the page.
  [[nodiscard]] const std::string& Category() const noexcept { return mCategory; }
  void SetCategory(std::string_view RHS);
  [[nodiscard]] Ref<Topic> ParentTopic() const;
  void SetParentTopic(const Ref<Topic>& RHS);
  /// The target in the parent topic's project, found by its key anew at each read; nothing if it has gone.
  [[nodiscard]] Ref<Topic> ChildTopic() const;

  // Library-internal
  /// Takes the fields from a record "r" and tells nobody. A record without "t" or "cat" is reported; the link keeps
  /// what was read before.
  void Load(XMLElement e);
  void Save(XMLElement e) const;
  /// Tells the parent topic.
  void Changed();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mCategory;
  std::string mTitle;
  TopicLinkTypeEnum mTopicLinkType = rttTopic;
  std::string mURL;
  WeakReference<Topic> mParentTopic;
};

}  // namespace quillbook
