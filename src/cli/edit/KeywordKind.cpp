#include "cli/edit/KeywordKind.h"

#include <fmt/format.h>

#include <iterator>

#include "quillbook/topics/Topics.h"

namespace quillbook::cli {

const KindInfo& KeywordKind::Info() const {
  static const KindInfo info = [] {
    KindInfo keywords{"keywords", "keyword", "List and edit the index keywords of topics", "keyword"};
    keywords.nameField = "keyword";
    keywords.ofTopic = true;
    return keywords;
  }();
  return info;
}

const std::vector<Field>& KeywordKind::Fields() const {
  // The library makes a new ID for a keyword at each load, so there is no key to name one by.
  static const std::vector<Field> fields = {
      TopicOfRecordField().Listed(),
      TextField("keyword", "The word, as the index shows it", &TopicKeyword::Keyword, &TopicKeyword::SetKeyword)
          .Listed()
          .Required(),
  };
  return fields;
}

std::vector<Record> KeywordKind::All(const Scope& scope) const {
  if (scope.topic) return CollectionKind::All(scope);
  std::vector<Record> records;
  for (const auto& topic : *scope.project.Topics) {
    auto ofTopic = CollectionKind::All({scope.project, topic});
    records.insert(records.end(), std::make_move_iterator(ofTopic.begin()), std::make_move_iterator(ofTopic.end()));
  }
  return records;
}

std::string KeywordKind::Describe(QBProject& project, const Record& record) const {
  return fmt::format("{} of topic \"{}\"", CollectionKind::Describe(project, record), record.topic->Name());
}

Ref<TopicKeyword> KeywordKind::Make(const Scope&, const std::string& name) const {
  auto keyword = New<TopicKeyword>();
  keyword->SetKeyword(name);
  return keyword;
}

}  // namespace quillbook::cli
