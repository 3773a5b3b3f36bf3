#include <gtest/gtest.h>

#include "unit/support/recording_printer.h"

namespace {

using platform::TextRole;
using testing_support::DrawnRectangle;
using testing_support::RecordedPage;

class PageRecordingTest : public ::testing::Test {
protected:
    static platform::FontRequest font(int emHeight) { return {"Courier New", platform::charsetOem, emHeight}; }

    testing_support::RecordingDevice device;
    testing_support::RecordingSurface printer{device};                                   // whose measures count
    platform::drawing::RecordingSurface page{static_cast<platform::Surface&>(printer)};  // what is tested
};

TEST_F(PageRecordingTest, IsPlayedInItsOrderWithTheFontsItWasDrawnIn) {
    const auto picture = std::make_shared<platform::Picture>();
    page.setFont(font(9));
    page.setFont(font(10));
    page.drawText(1, 2, "eins", {3, 4, 5}, TextRole::content);
    page.fillRectangle(1, 2, 3, 4, {5, 6, 7});
    page.drawText(6, 7, "zwei", {}, TextRole::effect);
    page.setFont(font(20));
    EXPECT_EQ(page.textWidth("xy"), 24) << "measured as the device does";
    page.drawPicture(picture, 1, 2, -3, 4);
    page.drawText(8, 9, "drei", {}, TextRole::content);
    page.setFont(font(30));
    EXPECT_TRUE(printer.page().texts.empty()) << "nothing is drawn yet";

    page.playOnDevice();
    const RecordedPage drawn = printer.page();
    ASSERT_EQ(drawn.texts.size(), 3U);
    EXPECT_EQ(std::tuple(drawn.texts[0].font, drawn.texts[1].font, drawn.texts[2].font),
              std::tuple(font(10), font(10), font(20)));
    EXPECT_EQ(drawn.texts[0].color, (platform::Color{3, 4, 5}));
    EXPECT_EQ(std::tuple(drawn.texts[1].text, drawn.texts[1].role), std::tuple("zwei", TextRole::effect));
    EXPECT_EQ(drawn.rectangles, (std::vector{DrawnRectangle{1, 2, 3, 4, {5, 6, 7}}}));
    ASSERT_EQ(drawn.pictures.size(), 1U);
    EXPECT_EQ(drawn.pictures[0].picture, picture) << "shared, not copied";
    EXPECT_EQ(drawn.pictures[0].width, -3);
    EXPECT_EQ(printer.recording().steps()[1].index(), 1U) << "the rectangle comes second";
    EXPECT_EQ(page.textWidth("xy"), 36) << "the font selected last is still selected";

    // A new page forgets the one before, but not its font.
    page.clear();
    printer.clear();
    page.drawText(1, 2, "neu", {}, TextRole::content);
    page.recording().play(printer);
    ASSERT_EQ(printer.page().texts.size(), 1U);
    EXPECT_EQ(printer.page().texts[0].font, font(30));
    EXPECT_TRUE(printer.page().rectangles.empty());
}

}  // namespace
