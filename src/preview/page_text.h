// The text of a page with its places, for selecting, copying and marking.
#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/drawing/page_area.h"

namespace preview {

// Blanks, and what DOS shows as one.
constexpr bool isBlank(unsigned char byte) {
    constexpr unsigned char none = 0;
    constexpr unsigned char fixedBlank = 255;
    return byte == ' ' || byte == none || byte == fixedBlank;
}

// One character as it lies on the page.
struct TextCell {
    unsigned char byte = 0;               // of the DOS code page
    platform::drawing::Area area;         // pixels of the device, the whole character cell
    std::size_t inPlainText = notInText;  // its place in PreviewPages::plainText()
    static constexpr std::size_t notInText = static_cast<std::size_t>(-1);
};

// A place between two characters in reading order.
struct TextPosition {
    std::size_t line = 0;
    std::size_t cell = 0;

    bool operator==(const TextPosition&) const = default;
    auto operator<=>(const TextPosition& other) const {
        return line != other.line ? line <=> other.line : cell <=> other.cell;
    }
};

class PageText {
public:
    // Cells in reading order, as the page prints them: lines from the top, in each from the left. A line printed over
    // another comes behind it. What lies beyond the sheet is left out, and so is the text of barcodes.
    std::vector<std::vector<TextCell>> lines;

    bool empty() const { return lines.empty(); }
    std::size_t bytes() const;  // of memory
    // The place nearest to a point of the page.
    TextPosition positionAt(platform::drawing::Point point) const;
    // Whether there is a character at the point.
    bool hasTextAt(platform::drawing::Point point) const;
    // The word around a place.
    std::pair<TextPosition, TextPosition> wordAt(TextPosition position) const;
    TextPosition begin() const { return {}; }
    TextPosition end() const;

    // What lies between two places in any order: bytes as the PDF gives them when copied, one blank where characters
    // stand apart, no blanks at line ends, lines ended by "\n".
    std::string textBetween(TextPosition one, TextPosition other) const;
    // One area for each line.
    std::vector<platform::drawing::Area> areasBetween(TextPosition one, TextPosition other) const;
    // Areas of the characters that have these places in the plain text, one for each line that they are on.
    std::vector<platform::drawing::Area> areasOfPlainText(std::size_t first, std::size_t length) const;

private:
    template <typename Step>
    void eachLine(TextPosition one, TextPosition other, Step step) const;
};

}  // namespace preview
