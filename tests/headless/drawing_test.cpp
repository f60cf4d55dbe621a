#include <turbojpeg.h>

#include <cmath>

#include "backends/headless/drawing/Image.h"
#include "backends/headless/drawing/Renderer.h"
#include "backends/headless/views/ImageView.h"
#include "tests/headless/TouchScreen.h"

namespace tarni::headless::test {
namespace {

using platform::CGColor;

constexpr CGColor kRed{1, 0, 0, 1};
constexpr CGColor kBlue{0, 0, 1, 1};
constexpr CGColor kWhite{1, 1, 1, 1};

// What somebody sees who decodes the JPEG.
class Picture {
 public:
  explicit Picture(const std::vector<std::byte>& jpeg) {
    const std::unique_ptr<void, decltype(&tjDestroy)> decoder(tjInitDecompress(), tjDestroy);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(jpeg.data());
    if (tjDecompressHeader(decoder.get(), const_cast<unsigned char*>(bytes), jpeg.size(), &width,
                           &height) != 0) {
      return;
    }
    pixels_.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    tjDecompress2(decoder.get(), bytes, jpeg.size(), pixels_.data(), width, 0, height, TJPF_RGB, 0);
  }

  // Whether the pixel has about this colour.
  bool shows(const CGColor& color, int x, int y) const {
    const std::size_t at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x)) *
                           3;
    const double expected[] = {color.red, color.green, color.blue};
    for (std::size_t i = 0; i < 3; ++i) {
      if (std::abs(pixels_.at(at + i) - expected[i] * 255) > 60) return false;
    }
    return true;
  }

  int width = 0;
  int height = 0;

 private:
  std::vector<unsigned char> pixels_;
};

class DrawingTest : public TouchScreen {
 protected:
  DrawingTest() { environment.screen().setScale(1); }

  Picture draw(View& view) {
    return Picture(complete(view.drawViewHierarchy())->JPEGRepresentation(1));
  }
  static ViewRef filled(const CGRect& frame, const CGColor& color, View& parent) {
    return build<View>().frame(frame).background(color).in(parent);
  }

  ViewRef page = filled({{0, 0}, {200, 200}}, kWhite, *window);
};

TEST_F(DrawingTest, ViewsHideClipAndFadeWhatIsInThem) {
  const auto outer = filled({{50, 50}, {50, 50}}, kRed, *page);
  filled({{25, 25}, {100, 10}}, kBlue, *outer);
  EXPECT_TRUE(draw(*page).shows(kBlue, 150, 80));
  outer->setClipsToBounds(true);
  const Picture clipped = draw(*page);
  EXPECT_TRUE(clipped.shows(kWhite, 150, 80));
  EXPECT_TRUE(clipped.shows(kBlue, 90, 80));
  outer->setAlpha(0.5);
  const Picture faded = draw(*page);
  EXPECT_TRUE(faded.shows({1, 0.5, 0.5, 1}, 60, 60));
  EXPECT_TRUE(faded.shows({0.5, 0.5, 1, 1}, 90, 80)) << "as a whole";
  outer->setAlpha(1);
  outer->setHidden(true);
  EXPECT_TRUE(draw(*page).shows(kWhite, 60, 60));
  EXPECT_TRUE(draw(*outer).shows(kRed, 5, 5)) << "not the one that is asked for";
}

TEST_F(DrawingTest, AnImageFillsItsViewAndACropMayReachBeyondIt) {
  const auto view = build<ImageView>(Image::filled({10, 10}, 2, kRed)).in(*page);
  EXPECT_EQ(view->frame(), (CGRect{{0, 0}, {10, 10}}));
  view->setFrame({{0, 0}, {20, 20}});
  environment.screen().setScale(2);
  const auto image = complete(page->drawViewHierarchy());
  const auto cropped = image->crop({{-100, -100}, {300, 200}});
  EXPECT_EQ(cropped->size(), (platform::CGSize{300, 200}));
  EXPECT_EQ(cropped->scale(), 2);
  const Picture picture(cropped->JPEGRepresentation(0.6));
  EXPECT_EQ(picture.width, 600);
  EXPECT_TRUE(picture.shows(kRed, 210, 210));
  EXPECT_TRUE(picture.shows({0, 0, 0, 1}, 190, 190));
  EXPECT_TRUE(image->crop({{0, 0}, {0, 5}})->JPEGRepresentation(0.6).empty());
  const auto bytes = cropped->PNGRepresentation();
  ASSERT_GT(bytes.size(), 24U);
  EXPECT_EQ(bytes[1], std::byte{'P'});
  EXPECT_EQ(int(bytes[18]) * 256 + int(bytes[19]), 600) << "the width in the header";
}

TEST_F(DrawingTest, WhatCannotBeDrawnIsAnEmptyImage) {
  for (const platform::CGSize size :
       {platform::CGSize{0, 10}, platform::CGSize{-5, 10}, platform::CGSize{1e6, 10},
        platform::CGSize{std::nan(""), 10}, platform::CGSize{HUGE_VAL, 10}}) {
    page->setBounds({{0, 0}, size});
    const auto image = complete(page->drawViewHierarchy());
    EXPECT_EQ(image->size(), (platform::CGSize{0, 0}));
    EXPECT_TRUE(image->JPEGRepresentation(0.6).empty());
  }
}

}  // namespace
}  // namespace tarni::headless::test
