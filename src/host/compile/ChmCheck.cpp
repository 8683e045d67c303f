#include "host/compile/ChmCheck.h"

#include <algorithm>

#include "host/compile/ChmTables.h"
#include "host/compile/HelpProject.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

class Check {
 public:
  Check(const StorageReader& result, const ChmExpectation& expected, MessageList& messages)
      : mReader(result), mTables(result, expected.codePage), mExpected(expected), mMessages(messages) {}

  void Run() {
    CheckSystem();
    CheckTopics();
    if (mExpected.contents) CheckContents();
    if (mExpected.keywords) CheckKeywords();
    for (const auto& problem : mTables.Problems()) Differ(problem);
  }

 private:
  void Differ(const std::string& what) {
    mMessages.Error("HC5001", "The new help file differs from the project: " + what);
  }
  /// What a text becomes on its way through the code page.
  [[nodiscard]] std::string Through(std::string_view text) const {
    return DecodeHelpText(mExpected.encode(text), mExpected.codePage);
  }

  void CheckSystem() {
    const auto records = ReadSystemRecords(mReader);
    const auto text = [&](int code) {
      const auto found = records.find(code);
      return found == records.end() ? std::string() : found->second.substr(0, found->second.find('\0'));
    };
    const auto compare = [&](int code, const char* what, const std::string& wanted) {
      if (text(code) != mExpected.encode(wanted))
        Differ("the " + std::string(what) + " is '" + DecodeHelpText(text(code), mExpected.codePage) + "'");
    };
    compare(0, "contents file", mExpected.contentsFile);
    compare(1, "index file", mExpected.indexFile);
    compare(2, "default topic", mExpected.defaultTopic);
    compare(3, "title", mExpected.title);
  }

  void CheckTopics() {
    const auto& topics = *mExpected.topics;
    if (mTables.TopicCount() != topics.Count()) return Differ("the number of topics");
    for (std::uint32_t i = 0; i < topics.Count(); ++i)
      if (mTables.TopicAt(i).local != DecodeHelpText(topics.LocalOf(i), mExpected.codePage))
        return Differ("topic " + std::to_string(i) + " is '" + mTables.TopicAt(i).local + "'");
  }

  void CheckContents() {
    const auto& entries = mExpected.contents->entries;
    const auto read = mTables.ReadContents().entries;
    if (read.size() != entries.size()) return Differ("the number of contents entries");
    std::vector<int> depth;  // of the entries that are open, by their stated levels
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const auto level = std::min(static_cast<std::size_t>(entries[i].level), depth.size());
      depth.resize(level);
      depth.push_back(0);
      const auto local = entries[i].targets.empty() ? std::string() : Through(entries[i].targets.front().local);
      const auto& other = read[i];
      if (other.name != Through(entries[i].name) || other.level != static_cast<int>(level) ||
          (other.targets.empty() ? std::string() : other.targets.front().local) != local)
        return Differ("the contents entry '" + entries[i].name + "'");
    }
  }

  void CheckKeywords() {
    const auto& keywords = *mExpected.keywords;
    const auto read = mTables.ReadKeywords("/$WWKeywordLinks/");
    if (read.size() != keywords.size()) return Differ("the number of keywords");
    for (std::size_t i = 0; i < keywords.size(); ++i) {
      const auto stored = StoredPartOf(keywords[i]);
      const auto& topics = keywords[i].topics;
      const auto end = topics.begin() + static_cast<std::ptrdiff_t>(stored.topics);
      if (read[i].name != stored.name || read[i].seeAlso != stored.seeAlso ||
          !std::equal(read[i].topics.begin(), read[i].topics.end(), topics.begin(), end) ||
          read[i].level + 1 != static_cast<int>(keywords[i].path.size()))
        return Differ("the keyword '" + keywords[i].path.back() + "'");
    }
  }

  const StorageReader& mReader;
  ChmTables mTables;
  const ChmExpectation& mExpected;
  MessageList& mMessages;
};

}  // namespace

void CheckChm(const StorageReader& result, const ChmExpectation& expected, MessageList& messages) {
  Check(result, expected, messages).Run();
}

}  // namespace quillbook::compile
