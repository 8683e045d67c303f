#include "host/CompiledTemplateCache.h"

#include <gtest/gtest.h>

namespace quillbook::detail {
namespace {

TEST(CompiledTemplateCache, SameText_IsCompiledOnce) {
  CompiledTemplateCache cache;
  const auto first = cache.Get("a %%b%% c");
  EXPECT_EQ(cache.Get(std::string("a %%b%% ") + "c"), first);
  EXPECT_NE(cache.Get("a %%b%% d"), first);
  EXPECT_EQ(cache.Count(), 2u);
}

TEST(CompiledTemplateCache, Bound_DropsTheTextUnusedLongest) {
  CompiledTemplateCache cache(8 * 1024);
  const auto kept = cache.Get("%%kept%%");
  const auto dropped = cache.Get("%%dropped%%");
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(cache.Get("%%kept%%"), kept);
    static_cast<void>(cache.Get("%%x" + std::to_string(i) + "%%"));
    EXPECT_LE(cache.Bytes(), 8u * 1024);
  }
  EXPECT_NE(cache.Get("%%dropped%%"), dropped);
}

TEST(CompiledTemplateCache, HugeText_IsNotKept) {
  CompiledTemplateCache cache(8 * 1024);
  EXPECT_EQ(cache.Get(std::string(8 * 1024, 'x') + "%%a%%")->Pieces().size(), 2u);
  EXPECT_EQ(cache.Count(), 0u);
}

TEST(CompiledTemplateCache, DroppedText_StaysUsableForItsHolder) {
  CompiledTemplateCache cache(4 * 1024);
  const auto held = cache.Get("held %%a:b=c%%");
  for (int i = 0; i < 20; ++i) static_cast<void>(cache.Get("%%x" + std::to_string(i) + "%%"));
  ASSERT_EQ(held->Pieces().size(), 2u);
  EXPECT_EQ(held->Pieces()[1].element->Attribute("b"), "c");
}

}  // namespace
}  // namespace quillbook::detail
