// The full-text index of compiled HTML Help: $FIftiMain.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/ByteChains.h"
#include "host/compile/WordRuns.h"

namespace quillbook::compile {

/// Collects words page by page and writes the index. What is kept of words' places is already in the form in which it
/// will be written, and goes to a file now and then, so memory grows with the number of different words only.
///
/// Source of the format: the public description of the files inside compiled help.
class FullTextIndex {
 public:
  static constexpr std::size_t MemoryForPlaces = 8U << 20;

  /// The file, if one is needed, arises in `folder`. It takes the place of more than `memory` bytes.
  explicit FullTextIndex(std::string folder, std::size_t memory = MemoryForPlaces)
      : mMemory(memory), mRuns(std::move(folder)) {}

  /// `topic` is the page's number in the table of topics; numbers ascend from page to page.
  void BeginPage(std::uint32_t topic);
  /// The next word of the page, in bytes of the help file's code page and in lower case. At most 250 bytes count.
  void AddWord(std::string_view word, bool inTitle);
  /// A word that isn't to be found, but takes a place: the distance between its neighbours is that of the page.
  void PassWord() noexcept { ++mPosition; }
  void EndPage();

  [[nodiscard]] bool IsEmpty() const noexcept { return mWords.empty(); }
  /// Writes the whole stream in pieces. Call it once, at the end.
  void Write(std::uint32_t codePage, std::uint32_t localeId, const std::function<void(std::string_view)>& sink);

 private:
  struct Word {
    std::uint32_t text = 0;  ///< offset in `mText`
    std::uint8_t length = 0;
    bool inTitle = false;
    std::uint32_t lastTopic = 0;
    std::uint32_t pages = 0;
    std::uint32_t bytes = 0;             ///< of its places as written
    std::uint32_t bytesInMemory = 0;     ///< of these, since the last run
    std::uint32_t firstPlace = NoPlace;  ///< of the current page, into `mPlaces`
    std::uint32_t lastPlace = NoPlace;
    ByteChains::Chain places;
  };
  struct Place {
    std::uint32_t position;
    std::uint32_t next;
  };
  static constexpr std::uint32_t NoPlace = 0xFFFFFFFF;

  [[nodiscard]] std::string_view TextOf(const Word& word) const;
  std::uint32_t FindOrAdd(std::string_view text, bool inTitle);
  void GrowTable();
  void WritePlacesOfPage(Word& word);
  /// Numbers of all words by their text. Words that come later don't change the order of those before.
  [[nodiscard]] std::vector<std::uint32_t> WordOrder() const;
  void MovePlacesToFile();
  [[nodiscard]] std::string Header(std::uint32_t codePage, std::uint32_t localeId, std::uint32_t root,
                                   std::uint32_t lastLeaf, std::size_t depth) const;

  std::vector<Word> mWords;
  std::vector<std::uint32_t> mTable;  ///< open addressing; word number + 1, 0 empty
  std::string mText;
  std::size_t mMemory;
  ByteChains mChains;
  WordRuns mRuns;                         ///< places of earlier pages than those in `mChains`
  std::vector<Place> mPlaces;             ///< of the current page
  std::vector<std::uint32_t> mPageWords;  ///< words of the current page, in order of first occurrence
  std::uint32_t mTopic = 0;
  std::uint32_t mPosition = 0;
  std::uint32_t mPages = 0;
  std::uint64_t mTotalWords = 0;
};

}  // namespace quillbook::compile
