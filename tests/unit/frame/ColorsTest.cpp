#include "frame/Colors.h"

#include <gtest/gtest.h>

namespace quillbook {
namespace {

TEST(TranslateColor, ResolvesSystemColors) {
  EXPECT_EQ(TranslateColor(0x030201), (Rgb{1, 2, 3}));
  EXPECT_EQ(TranslateColor(0x02030201), (Rgb{1, 2, 3}));
  EXPECT_EQ(TranslateColor(SystemColor::ApplicationWorkspace), (Rgb{0x80, 0x80, 0x80}));
  EXPECT_EQ(TranslateColor(static_cast<std::int32_t>(0x80000005U)), (Rgb{255, 255, 255}));
}

TEST(TranslateColor, KnowsNoOtherValues) {
  EXPECT_EQ(TranslateColor(static_cast<std::int32_t>(0x8000001FU)), std::nullopt);
  EXPECT_EQ(TranslateColor(0x7F000000), std::nullopt);
}

TEST(BlendColors, WeighsTheFirstAgainstTheSecond) {
  EXPECT_EQ(BlendColors({10, 20, 30}, {200, 200, 200}, 255), (Rgb{10, 20, 30}));
  EXPECT_EQ(BlendColors({10, 20, 30}, {200, 201, 202}, 0), (Rgb{200, 201, 202}));
  EXPECT_EQ(BlendColors({255, 0, 100}, {0, 255, 100}, 128), (Rgb{128, 127, 100}));
  EXPECT_EQ(BlendColors({1, 2, 3}, {0, 0, 0}, 128), (Rgb{1, 1, 2})) << "0.50 and 1.0 and 1.5";
}

}  // namespace
}  // namespace quillbook
