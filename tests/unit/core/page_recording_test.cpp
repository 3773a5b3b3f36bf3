#include <gtest/gtest.h>

#include "unit/support/recording_printer.h"

namespace {

using platform::Color;
using platform::TextRole;
using testing_support::RecordedPage;
using testing_support::RecordingDevice;
using testing_support::RecordingSurface;

platform::FontRequest fontOfHeight(int emHeight) {
    platform::FontRequest font;
    font.name = "Courier New";
    font.emHeight = emHeight;
    return font;
}

class PageRecordingTest : public ::testing::Test {
protected:
    RecordingDevice device;
    RecordingSurface printer{device};                                                    // whose measures count
    platform::drawing::RecordingSurface page{static_cast<platform::Surface&>(printer)};  // what is tested
    std::shared_ptr<const platform::Picture> picture = std::make_shared<platform::Picture>();
};

TEST_F(PageRecordingTest, IsPlayedInItsOrderWithTheFontsItWasDrawnIn) {
    page.setFont(fontOfHeight(9));
    page.setFont(fontOfHeight(10));
    page.drawText(1, 2, "eins", {3, 4, 5}, TextRole::content);
    page.fillRectangle(1, 2, 3, 4, {5, 6, 7});
    page.drawText(6, 7, "zwei", {}, TextRole::effect);
    page.setFont(fontOfHeight(20));
    EXPECT_EQ(page.textWidth("xy"), 24) << "measured as the device does";
    page.drawPicture(picture, 1, 2, -3, 4);
    page.drawText(8, 9, "drei", {}, TextRole::content);
    page.setFont(fontOfHeight(30));
    EXPECT_TRUE(printer.page().texts.empty()) << "nothing is drawn yet";

    page.playOnDevice();
    const RecordedPage drawn = printer.page();
    ASSERT_EQ(drawn.texts.size(), 3U);
    EXPECT_EQ(drawn.texts[0].font, fontOfHeight(10));
    EXPECT_EQ(drawn.texts[1].text, "zwei");
    EXPECT_EQ(drawn.texts[1].role, TextRole::effect);
    EXPECT_EQ(drawn.texts[1].font, fontOfHeight(10));
    EXPECT_EQ(drawn.texts[2].font, fontOfHeight(20));
    EXPECT_EQ(drawn.texts[0].color, (Color{3, 4, 5}));
    EXPECT_EQ(drawn.rectangles, (std::vector{testing_support::DrawnRectangle{1, 2, 3, 4, {5, 6, 7}}}));
    ASSERT_EQ(drawn.pictures.size(), 1U);
    EXPECT_EQ(drawn.pictures[0].picture, picture) << "shared, not copied";
    EXPECT_EQ(drawn.pictures[0].width, -3);
    EXPECT_EQ(printer.recording().steps()[1].index(), 1U) << "the rectangle comes second";
    EXPECT_EQ(page.textWidth("xy"), 36) << "the font selected last is still selected";
}

TEST_F(PageRecordingTest, ANewPageForgetsTheOneBeforeButNotItsFont) {
    page.setFont(fontOfHeight(10));
    page.drawText(1, 2, "alt", {}, TextRole::content);
    page.fillRectangle(1, 2, 3, 4, {});
    page.clear();
    page.drawText(1, 2, "neu", {}, TextRole::content);
    page.recording().play(printer);
    const RecordedPage drawn = printer.page();
    ASSERT_EQ(drawn.texts.size(), 1U);
    EXPECT_EQ(drawn.texts[0].text, "neu");
    EXPECT_EQ(drawn.texts[0].font, fontOfHeight(10));
    EXPECT_TRUE(drawn.rectangles.empty());
}

}  // namespace
