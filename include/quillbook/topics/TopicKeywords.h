// The index keywords of a topic.
#pragma once

#include <string_view>

#include "quillbook/base/Event.h"
#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/TopicKeyword.h"

namespace quillbook {

class QBProject;
class Topic;
class XMLElement;

/// What a topic's keywords tell their listeners.
struct TopicKeywordsEvents {
  static constexpr std::string_view PublishedName = "__TopicKeywords";

  Event<const Ref<TopicKeyword>&> TopicKeywordAdded;
  Event<const Ref<TopicKeyword>&> TopicKeywordRemoved;
};

/// A topic's keywords in order, each under its ID. Two keywords may have the same text.
class TopicKeywords final : public MemberCollection<TopicKeyword> {
 public:
  TopicKeywordsEvents Events;

  [[nodiscard]] Ref<quillbook::Topic> Topic() const;
  void SetTopic(const Ref<quillbook::Topic>& RHS);
  /// The topic's project; nothing without a topic.
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  /// Does nothing: the project is always the topic's.
  void SetQBProject(const Ref<quillbook::QBProject>&) {}

  /// Unlike in other collections an unknown key does nothing and reports nothing, and the topic isn't told.
  void Remove(KeyOrPosition Key);
  /// A new keyword at the end. The text isn't tested for duplicates; see `KeywordExists`.
  Ref<TopicKeyword> AddKeyword(std::string_view Keyword);
  /// True if a keyword has this text, ignoring case.
  [[nodiscard]] bool KeywordExists(std::string_view Word) const;
  /// Drops all keywords and tells nobody.
  void Clear();

  /// Adds the keyword of a record "K" and tells nobody; an element of another name is passed over.
  void LoadKeyword(XMLElement c);
  /// Adds one child "K" per keyword to a topic's record.
  void SaveKeywords(XMLElement e) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<TopicKeyword>& member, std::string_view key) override;

 private:
  WeakReference<quillbook::Topic> mTopic;
};

}  // namespace quillbook
