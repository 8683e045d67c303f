// Values of fields that stand for something else: paths and topics.
#pragma once

#include <string>
#include <string_view>

#include "cli/edit/Field.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::cli {

/// A path that a user gave, relative to the project file's folder unless it is absolute, as the model takes it.
[[nodiscard]] std::string PathFromUser(const QBProject& project, std::string_view path);
/// A stored path with "/" between names, and a folder without one at its end.
[[nodiscard]] std::string PathForUser(std::string stored);

/// What an object keeps in a field whose property answers with something else: with a whole path, or with what stands
/// in for an empty value. `field` is the name in the object's description of itself.
[[nodiscard]] std::string StoredText(const Object& object, std::string_view field);

/// Name of the topic with this key; the key itself where there is no such topic.
[[nodiscard]] std::string TopicNameFor(const QBProject& project, const std::string& key);

/// A path that is stored relative to the project file.
template <class T>
Field PathField(std::string_view name, std::string_view help, std::string_view stored,
                void (T::*set)(std::string_view)) {
  return {
      name, help, FieldType::Text,
      [stored](QBProject&, const Record& record) { return Values{PathForUser(StoredText(*record.object, stored))}; },
      [set](QBProject& project, const Record& record, const Values& values) {
        (record.As<T>().*set)(PathFromUser(project, values.front()));
      }};
}

/// The topic whose key is stored as the default topic.
template <class T>
Field DefaultTopicField(std::string_view help) {
  return {"default-topic", help, FieldType::Topic,
          [](QBProject& project, const Record& record) {
            return Values{TopicNameFor(project, StoredText(*record.object, "mDefaultTopicID"))};
          },
          [](QBProject& project, const Record& record, const Values& values) {
            record.As<T>().SetDefaultTopic(project.Topics->Item(values.front()));
          }};
}

}  // namespace quillbook::cli
