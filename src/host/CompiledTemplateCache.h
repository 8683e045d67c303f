// Keeps compiled template texts, by text.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string_view>
#include <unordered_map>

#include "host/CompiledTemplate.h"

namespace quillbook::detail {

/// Bounded: texts that have not been asked for longest go first.
class CompiledTemplateCache {
 public:
  explicit CompiledTemplateCache(std::size_t maximumBytes = 8 * 1024 * 1024) : mMaximumBytes(maximumBytes) {}

  /// The cache of this apartment (thread).
  [[nodiscard]] static CompiledTemplateCache& OfApartment();

  /// The compiled text, compiled now if it isn't there. A text that would fill a quarter of the cache isn't kept.
  [[nodiscard]] std::shared_ptr<const CompiledTemplate> Get(std::string_view text);

  [[nodiscard]] std::size_t Count() const noexcept { return mByText.size(); }
  [[nodiscard]] std::size_t Bytes() const noexcept { return mBytes; }

 private:
  using Entry = std::shared_ptr<const CompiledTemplate>;

  std::size_t mMaximumBytes;
  std::size_t mBytes = 0;
  std::list<Entry> mRecent;  ///< the latest first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> mByText;
};

}  // namespace quillbook::detail
