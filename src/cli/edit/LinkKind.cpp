#include "cli/edit/LinkKind.h"

#include <fmt/format.h>

#include "cli/edit/Assignments.h"
#include "cli/edit/Refusal.h"
#include "cli/edit/StoredValues.h"

namespace quillbook::cli {
namespace {

void AppendLinks(const Ref<Topic>& topic, std::vector<Record>& records) {
  std::size_t place = 0;
  for (const auto& link : *topic->TopicLinks()) records.push_back({link, topic, std::to_string(++place)});
}

Field PlaceField() {
  return {"number", "Place among the links of its topic; can't be set", FieldType::Text,
          [](QBProject&, const Record& record) { return Values{record.path}; }};
}

Field TargetField() {
  return {"target", "Topic that it leads to", FieldType::Topic,
          [](QBProject& project, const Record& record) {
            return Values{TopicNameFor(project, record.As<TopicLink>().ChildTopicKey)};
          },
          [](QBProject&, const Record& record, const Values& values) {
            record.As<TopicLink>().ChildTopicKey = values.front();
          }};
}

void Insert(const Scope& scope, const Ref<TopicLink>& link, const Place& place) {
  auto& links = *scope.topic->TopicLinks();
  std::size_t beside = 0;  // links have no keys, so the neighbour is found by its place
  std::size_t position = 0;
  for (const auto& one : links) {
    ++position;
    if (place.neighbour.object == Ref<Object>(one)) beside = position;
  }
  switch (place.where) {
    case Place::Where::Before: links.Add(link, {}, KeyOrPosition(beside)); break;
    case Place::Where::After: links.Add(link, {}, {}, KeyOrPosition(beside)); break;
    case Place::Where::First: links.Add(link, {}, links.Count() == 0 ? KeyOrPosition() : KeyOrPosition(1)); break;
    default: links.Add(link);
  }
}

}  // namespace

const KindInfo& LinkKind::Info() const {
  static const KindInfo info = [] {
    KindInfo links{"links", "related link", "List, show and edit the related links of topics",
                   "number of a link in its topic, from 1"};
    links.nameField = "number";
    links.uniqueNames = false;
    links.ofTopic = true;
    links.named = false;
    return links;
  }();
  return info;
}

const std::vector<Field>& LinkKind::Fields() const {
  static const std::vector<Field> fields = {
      TopicOfRecordField().Listed(),
      PlaceField().Listed(),
      ChoiceField("type", "Where it leads: follows from target or url", {"topic", "url"}, rttTopic,
                  &TopicLink::TopicLinkType, &TopicLink::SetTopicLinkType),
      TargetField().Listed(),
      TextField("url", "URL that it leads to", &TopicLink::URL, &TopicLink::SetURL).Listed(),
      TextField("title", "Title; empty for the target's", &TopicLink::Title, &TopicLink::SetTitle).Listed(),
      TextField("category", "Heading that it stands under", &TopicLink::Category, &TopicLink::SetCategory).Listed(),
  };
  return fields;
}

std::vector<Record> LinkKind::All(const Scope& scope) const {
  std::vector<Record> records;
  if (scope.topic) {
    AppendLinks(scope.topic, records);
    return records;
  }
  for (const auto& topic : *scope.project.Topics) AppendLinks(topic, records);
  return records;
}

Record LinkKind::Add(const Scope& scope, const std::string&, const Place& place) const {
  const auto link = New<TopicLink>();
  link->SetParentTopic(scope.topic);
  Insert(scope, link, place);
  return {link, scope.topic};
}

void LinkKind::Remove(const Scope& scope, const Record& record) const {
  scope.topic->TopicLinks()->Remove(std::stoul(record.path));
}

void LinkKind::Move(const Scope& scope, const Record& record, const Place& place) const {
  const Ref<TopicLink> link(&record.As<TopicLink>());
  Remove(scope, record);
  Insert(scope, link, place);
}

void LinkKind::Complete(QBProject&, const Record& record, std::vector<Assignment>& assignments) const {
  if (IsGiven(assignments, "target") && IsGiven(assignments, "url"))
    throw Refusal("value.conflict", "a link leads to a topic or to a URL, not to both", "give one of them");
  if (!record.object && !IsGiven(assignments, "target") && !IsGiven(assignments, "url"))
    throw Refusal("value.missing", "a related link leads somewhere", "give target=NAME or url=URL");
  if (IsGiven(assignments, "target")) Imply(*this, assignments, "type", {"topic"});
  if (IsGiven(assignments, "url")) Imply(*this, assignments, "type", {"url"});
}

Record LinkKind::Refreshed(const Scope& scope, const Record& record) const {
  for (auto& one : All(scope))
    if (one.object == record.object) return one;
  return record;
}

std::string LinkKind::Describe(QBProject&, const Record& record) const {
  return fmt::format("related link {} of topic \"{}\"", record.path, record.topic->Name());
}

}  // namespace quillbook::cli
