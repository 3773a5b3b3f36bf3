// Cuts a print file into pages and finds the paper tray that each page asks for.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace report {

// A page ends at a form feed, which belongs to neither page; but a form feed that is the parameter of "^LR" is none,
// unless the remaining text ends with it. What is left at the end is a page too; nothing left is none.
class PageCutter {
public:
    // The text is borrowed.
    explicit PageCutter(std::string_view printText) : remaining_(printText) {}

    // The next page's text, or nothing at the end. Sets the tray that the page asks for.
    std::optional<std::string_view> nextPage();

    // The tray of the page cut last: "1", "2" or "3" by the last "^TR" on the page; any other character behind it keeps
    // the tray so far, or is "1" where there was none. A page without "^TR" keeps the tray so far, which is empty
    // before any was chosen.
    const std::string& requestedTray() const { return requestedTray_; }

private:
    std::string_view remaining_;
    std::string requestedTray_;
};

}  // namespace report
