// What a page of a print file says, one thing after another: runs of text, line ends, caret macros.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace report {

inline constexpr std::int16_t linesOfPage = 72;

struct PageToken {
    enum class Kind { text, lineFeed, carriageReturn, macro, unknownMacro };

    Kind kind = Kind::text;
    // The run; of a macro its code. An unknown macro has what follows the caret, two characters at most, which is then
    // read once more, as text.
    std::string_view text;
    // What belongs to the macro: the character of "LR", "TR" and "PL", the digit of a graphic, all before a barcode's
    // backslash.
    std::string_view parameter;
};

class PageReader {
public:
    // The page is borrowed.
    explicit PageReader(std::string_view page, std::int16_t maxLines = linesOfPage) : page_(page), most_(maxLines) {}

    // Nothing at the end: of the text, at a form feed, or behind the line feed that would begin a line too many.
    std::optional<PageToken> next();

    // Bytes of the page that were read.
    std::size_t position() const { return position_; }
    // Number of the line that was read last, from 1.
    std::int16_t line() const { return line_; }
    // Whether the line feed read last would begin a line too many.
    bool full() const { return line_ > most_; }

private:
    PageToken macro();
    std::string_view take(std::size_t length);
    std::string_view parameterOf(std::string_view code);

    std::string_view page_;
    std::size_t position_ = 0;  // of the next character to be read
    std::int16_t most_;
    std::int16_t line_ = 1;
};

// Hears what text a page prints, in its order.
class TextListener {
public:
    virtual ~TextListener() = default;

    // A run that was just printed.
    virtual void textRun(std::string_view run) = 0;
    virtual void lineFeed() = 0;
    virtual void carriageReturn() = 0;
};

// Says what text the page would print, whatever it would look like.
void readText(std::string_view page, TextListener& listener);

}  // namespace report
