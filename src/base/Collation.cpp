#include "quillbook/base/Collation.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/uloc.h>

#include <array>

#include "quillbook/base/Text.h"

namespace quillbook {

struct Collation::State {
  std::unique_ptr<icu::Collator> collator;
};

Collation::Collation(std::uint32_t localeId) : mState(std::make_unique<State>()) {
  UErrorCode status = U_ZERO_ERROR;
  std::array<char, ULOC_FULLNAME_CAPACITY> name{};
  uloc_getLocaleForLCID(localeId, name.data(), name.size(), &status);
  const auto locale = U_SUCCESS(status) ? icu::Locale(name.data()) : icu::Locale::getRoot();
  status = U_ZERO_ERROR;
  mState->collator.reset(icu::Collator::createInstance(locale, status));
  if (mState->collator) mState->collator->setStrength(icu::Collator::SECONDARY);
}

Collation::Collation(Collation&&) noexcept = default;
Collation& Collation::operator=(Collation&&) noexcept = default;
Collation::~Collation() = default;

int Collation::Compare(std::string_view left, std::string_view right) const {
  UErrorCode status = U_ZERO_ERROR;
  const auto compared = mState->collator ? mState->collator->compareUTF8(left, right, status) : UCOL_EQUAL;
  if (compared != UCOL_EQUAL) return compared;
  return CompareIgnoringCase(left, right);
}

}  // namespace quillbook
