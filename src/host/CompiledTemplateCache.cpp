#include "host/CompiledTemplateCache.h"

#include <string>

namespace quillbook::detail {

namespace {

/// What an entry occupies, near enough for a bound: its text, and its elements with their attributes.
std::size_t Weight(const CompiledTemplate& compiled) {
  return 2 * compiled.Text().size() + 512 * (compiled.Pieces().size() + 1);
}

}  // namespace

CompiledTemplateCache& CompiledTemplateCache::OfApartment() {
  thread_local CompiledTemplateCache cache;
  return cache;
}

std::shared_ptr<const CompiledTemplate> CompiledTemplateCache::Get(std::string_view text) {
  if (const auto known = mByText.find(text); known != mByText.end()) {
    mRecent.splice(mRecent.begin(), mRecent, known->second);
    return *known->second;
  }
  auto compiled = CompiledTemplate::Compile(std::string(text));
  const auto weight = Weight(*compiled);
  if (weight > mMaximumBytes / 4) return compiled;
  mRecent.push_front(compiled);
  mByText.emplace(compiled->Text(), mRecent.begin());
  mBytes += weight;
  while (mBytes > mMaximumBytes) {
    mBytes -= Weight(*mRecent.back());
    mByText.erase(mRecent.back()->Text());
    mRecent.pop_back();
  }
  return compiled;
}

}  // namespace quillbook::detail
