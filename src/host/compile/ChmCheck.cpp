#include "host/compile/ChmCheck.h"

#include <algorithm>

#include "host/compile/ChmTables.h"
#include "host/compile/HelpProject.h"
#include "host/compile/StorageReader.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

class Check {
 public:
  Check(const HelpOutput& output, const ChmExpectation& expected, MessageList& messages)
      : mOutput(output),
        mReader(output.Bytes()),
        mTables(mReader, expected.codePage),
        mExpected(expected),
        mMessages(messages) {}

  void Run() {
    mOutput.CheckFiles(mReader, mMessages);
    CheckSystem();
    CheckTopics();
    if (mExpected.binaryContents) CheckContents();
    if (mExpected.binaryIndex) CheckKeywords();
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
    if (text(3) != mExpected.encode(mExpected.title)) Differ("the title is '" + text(3) + "'");
    if (text(2) != mExpected.encode(mExpected.defaultTopic)) Differ("the default topic is '" + text(2) + "'");
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
      const auto& topics = keywords[i].topics;
      const bool sameTopics = read[i].topics.size() <= topics.size() &&
                              std::equal(read[i].topics.begin(), read[i].topics.end(), topics.begin());
      if (!IsNamed(keywords[i], read[i].name) || !sameTopics ||
          read[i].level + 1 != static_cast<int>(keywords[i].path.size()))
        return Differ("the keyword '" + keywords[i].path.back() + "'");
    }
  }

  /// A keyword that was too long has been cut, with a message of its own.
  static bool IsNamed(const KeywordEntry& keyword, const std::string& name) {
    std::size_t length = 0;
    for (const auto& part : keyword.path) length += Utf16Length(part) + 2;
    return length - 2 <= LongestKeyword ? name == keyword.path.back() : keyword.path.back().starts_with(name);
  }

  const HelpOutput& mOutput;
  StorageReader mReader;
  ChmTables mTables;
  const ChmExpectation& mExpected;
  MessageList& mMessages;
};

}  // namespace

void CheckChm(const HelpOutput& output, const ChmExpectation& expected, MessageList& messages) {
  try {
    Check(output, expected, messages).Run();
  } catch (const Failure& failure) {
    messages.Error("HC5002", "The new help file can't be read back: " + failure.Description());
  }
}

}  // namespace quillbook::compile
