#include "platform/linux/pdf/page_content.h"

#include <algorithm>

#include "platform/linux/pdf/number_text.h"
#include "platform/linux/pdf/picture_collection.h"
#include "platform/linux/pdf/text_string.h"

namespace platform_linux::pdf {

namespace {

// Readers of old refuse strings of 32,768 bytes.
constexpr std::size_t longestString = 32000;

// No part of the document's content, and where a reader copies it all the same, copied as nothing.
constexpr std::string_view effectStart = "/Artifact BMC/Span<</ActualText()>>BDC\n";
constexpr std::string_view effectEnd = "EMC EMC\n";

void appendChannel(std::string& text, std::uint8_t channel) {
    appendReal(text, channel / 255.0, 3);
    text += ' ';
}

}  // namespace

std::string fontResourceName(int resource) { return "F" + std::to_string(resource); }

void PageContent::begin(double pointsPerPixelX, double pointsPerPixelY, double heightPoints) {
    content_.clear();
    inText_ = false;
    resource_ = -1;
    stretch_ = 1;
    spacing_ = 0;
    color_ = {};
    appendReal(content_, pointsPerPixelX, 7);
    content_ += " 0 0 ";
    appendReal(content_, pointsPerPixelY, 7);
    content_ += " 0 ";
    appendReal(content_, heightPoints, 3);
    content_ += " cm\n";
}

void PageContent::setColor(platform::Color color) {
    if (color == color_) {
        return;
    }
    color_ = color;
    appendChannel(content_, color.red);
    if (color.red == color.green && color.green == color.blue) {
        content_ += "g\n";
        return;
    }
    appendChannel(content_, color.green);
    appendChannel(content_, color.blue);
    content_ += "rg\n";
}

void PageContent::showText(const FontSize& font, std::string_view text, platform::drawing::Point start,
                           std::int64_t width, platform::TextRole role) {
    const bool effect = role == platform::TextRole::effect;
    openText();
    setFont(font);
    moveTo(font, start);
    if (effect) {
        content_ += effectStart;
    }
    if (font.even) {
        showEvenly(text);
        pen_ = font.turn.toPage(start, platform::drawing::Point{width, 0});
    } else {
        showAdjusted(font, text);
        pen_.reset();  // hundredths of a pixel beside it: the next run is moved to
    }
    if (effect) {
        content_ += effectEnd;
    }
}

void PageContent::fillRectangle(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height) {
    closeText();
    for (const std::int64_t number : {x, -(y + height), width, height}) {
        appendInteger(content_, number);
        content_ += ' ';
    }
    content_ += "re f\n";
}

void PageContent::showPicture(int resource, platform::drawing::Point corner, std::int64_t width, std::int64_t height) {
    closeText();
    content_ += "q ";
    appendInteger(content_, width);
    content_ += " 0 0 ";
    for (const std::int64_t number : {height, corner.x, -(corner.y + height)}) {
        appendInteger(content_, number);
        content_ += ' ';
    }
    content_.append("cm /").append(pictureResourceName(resource)) += " Do Q\n";
}

std::string_view PageContent::finish() {
    closeText();
    return content_;
}

void PageContent::openText() {
    if (!inText_) {
        content_ += "BT\n";
        inText_ = true;
        turn_ = {};
        line_ = {};
        pen_ = line_;
    }
}

void PageContent::closeText() {
    if (inText_) {
        content_ += "ET\n";
        inText_ = false;
    }
}

void PageContent::moveTo(const FontSize& font, platform::drawing::Point start) {
    if (font.turn == turn_ && start == pen_) {
        return;
    }
    if (font.turn.turned()) {
        turnTo(font, start);
        return;
    }
    if (turn_.turned()) {
        closeText();
        openText();
    }
    appendInteger(content_, start.x - line_.x);
    content_ += ' ';
    appendInteger(content_, line_.y - start.y);
    content_ += " Td\n";
    line_ = start;
}

void PageContent::turnTo(const FontSize& font, platform::drawing::Point start) {
    const platform::drawing::Point along = font.turn.along();
    const platform::drawing::Point down = font.turn.down();
    const auto append = [this](double number) {
        appendReal(content_, number, 6);
        content_ += ' ';
    };
    // The text's matrix has its second axis upwards, as the page has.
    append(static_cast<double>(along.x));
    append(static_cast<double>(-along.y));
    append(static_cast<double>(-down.x) * font.across);
    append(static_cast<double>(down.y) * font.across);
    append(static_cast<double>(start.x));
    append(static_cast<double>(-start.y));
    content_ += "Tm\n";
    turn_ = font.turn;
}

void PageContent::setFont(const FontSize& font) {
    if (font.resource != resource_ || font.em != size_) {
        resource_ = font.resource;
        size_ = font.em;
        content_.append("/").append(fontResourceName(resource_)) += ' ';
        appendInteger(content_, size_);
        content_ += " Tf\n";
    }
    if (font.along != stretch_) {
        stretch_ = font.along;
        appendReal(content_, stretch_ * 100, 6);
        content_ += " Tz\n";
    }
    setSpacing(font.even ? font.spacing.front() : 0);
}

void PageContent::setSpacing(double spacing) {
    if (spacing != spacing_) {
        spacing_ = spacing;
        appendReal(content_, spacing, 4);
        content_ += " Tc\n";
    }
}

void PageContent::showEvenly(std::string_view text) {
    while (!text.empty()) {
        const std::string_view part = text.substr(0, longestString);
        appendString(part);
        content_ += "Tj\n";
        text.remove_prefix(part.size());
    }
}

void PageContent::showAdjusted(const FontSize& font, std::string_view text) {
    content_ += '[';
    for (const char byte : text) {
        appendString({&byte, 1});
        appendReal(content_, -1000 * font.spacing[static_cast<unsigned char>(byte)] / static_cast<double>(font.em), 3);
    }
    content_ += "]TJ\n";
}

void PageContent::appendString(std::string_view bytes) {
    content_ += '(';
    appendEscaped(content_, bytes);
    content_ += ')';
}

}  // namespace platform_linux::pdf
