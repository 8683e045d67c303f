// Words of a text by Unicode rules, for full-text search.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillbook::compile {

/// Finds the words of running text: letters, digits and the marks on them, in lower case. Scripts that put no blanks
/// between words (Han, Kana, Thai and others) are divided by Unicode's dictionary-based rules.
class WordSplitter {
 public:
  using WordSink = std::function<void(std::string_view word)>;

  WordSplitter();
  ~WordSplitter();
  WordSplitter(const WordSplitter&) = delete;
  WordSplitter& operator=(const WordSplitter&) = delete;

  /// Gives each word in order. Words are UTF-8; a word is cut after `MaximumBytes`.
  void Split(std::string_view text, const WordSink& sink);

  static constexpr std::size_t MaximumBytes = 96;

 private:
  struct Breaker;
  void Emit(const WordSink& sink);
  void SplitByDictionary(std::string_view run, const WordSink& sink);

  std::unique_ptr<Breaker> mBreaker;  ///< made when the first such script is met
  std::string mWord;
};

}  // namespace quillbook::compile
