// The tables of pages in compiled HTML Help: #STRINGS, #TOPICS, #URLTBL and #URLSTR.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/NumberTable.h"

namespace quillbook::compile {

/// The strings that other tables refer to by offset. Equal strings are kept once.
class ChmStrings {
 public:
  /// Offset of a string of bytes in the code page of the help file. The empty string has offset 0.
  std::uint32_t Add(std::string_view text);
  [[nodiscard]] const std::string& Bytes() const noexcept { return mBytes; }

 private:
  static constexpr std::size_t BlockSize = 4096;  ///< no string crosses the border of a block

  std::string mBytes = std::string(1, '\0');
  NumberTable mKnown;  ///< offsets of all strings
};

/// Every page that contents, index, search or context help lead to, by number.
class ChmTopics {
 public:
  static constexpr std::uint32_t NoTitle = 0xFFFFFFFF;

  /// Number of the page or place (`page.htm` or `page.htm#anchor`), which is entered if it is new. A title given
  /// later wins only over none. `local` and `title` are bytes as they will be stored.
  std::uint32_t Add(std::string_view local, std::uint32_t title = NoTitle);
  /// Number of the page or place under exactly this title. Where the page has another title already, it gets a
  /// second entry: contents and index may call one page by several names.
  std::uint32_t AddTitled(std::string_view local, std::uint32_t title);
  void SetInContents(std::uint32_t topic, std::uint32_t contentsOffset);

  [[nodiscard]] std::size_t Count() const noexcept { return mTopics.size(); }
  /// Number of a page that has been entered, else `Count()`.
  [[nodiscard]] std::size_t Find(std::string_view local) const;
  [[nodiscard]] std::uint32_t TitleOf(std::uint32_t topic) const { return mTopics[topic].title; }
  [[nodiscard]] const std::string& LocalOf(std::uint32_t topic) const { return mLocals[mTopics[topic].local]; }

  [[nodiscard]] std::string TopicsBytes() const;
  [[nodiscard]] std::string UrlTableBytes() const;
  [[nodiscard]] std::string UrlStringsBytes() const;

 private:
  struct Topic {
    std::uint32_t local = 0;  ///< in `mLocals`
    std::uint32_t title = NoTitle;
    std::uint32_t contentsOffset = 0;
    bool inContents = false;
  };
  [[nodiscard]] static std::uint32_t UrlTableOffset(std::size_t row);
  [[nodiscard]] std::vector<std::uint32_t> UrlTableOrder() const;
  [[nodiscard]] std::vector<std::uint32_t> UrlStringOffsets(std::string* bytes) const;

  /// Local of another entry for a page that has one already, which as a rule is spelled like the first.
  std::uint32_t SameLocal(std::uint32_t first, std::string_view local);

  std::vector<Topic> mTopics;
  std::vector<std::string> mLocals;
  NumberTable mByLocal;          ///< of the first entries
  NumberTable mByLocalAndTitle;  ///< of the second entries
};

/// The number by which the viewer looks an address up in #URLTBL; contents and index files have one too. Slashes of
/// both kinds and ASCII letters of either case are the same. Found out from the tables of published help files.
[[nodiscard]] std::uint32_t UrlHash(std::string_view local) noexcept;

}  // namespace quillbook::compile
