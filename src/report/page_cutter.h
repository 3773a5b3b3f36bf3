// Cuts a print file into pages and finds the paper tray that each page asks for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace report {

// A page ends at a form feed, which belongs to neither page; but a form feed that is the parameter of "^LR" is none,
// unless the remaining text ends with it. What is left at the end is a page too; nothing left is none.
class PageCutter {
public:
    // The text is borrowed.
    explicit PageCutter(std::string_view printText) : remaining_(printText) {}

    // The next page's text, or nothing at the end.
    std::optional<std::string_view> nextPage();

private:
    std::string_view remaining_;
};

// How many pages of a text are printed: those that the cutter finds, but for a last one that has line ends only.
std::size_t pagesIn(std::string_view printText);

// The tray that a page asks for: "1", "2" or "3" by the last "^TR" on the page; any other character behind it keeps the
// tray so far, or is "1" where there was none. A page without "^TR" keeps the tray so far, which is empty before any
// was chosen.
void requestTray(std::string_view page, std::string& tray);

// All pages of a text, cut while it is read; takes some bytes for each page.
class PageCuts {
public:
    // The text so far, which is borrowed and begins as it did the last time. While it is not whole, its last page is
    // not known.
    void cutOn(std::string_view text, bool isWhole);

    std::size_t count() const { return ends_.size(); }
    // From 1.
    std::string_view page(std::size_t number) const;

private:
    std::string_view text_;
    std::size_t begin_ = 0;   // of the next page
    std::size_t looked_ = 0;  // before this place it does not end
    std::vector<std::size_t> ends_;
};

}  // namespace report
