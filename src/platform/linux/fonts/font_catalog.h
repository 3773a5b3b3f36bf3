// The faces that requests lead to: found when first asked for, each opened once.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "platform/linux/fonts/code_page_font.h"
#include "platform/linux/fonts/font_finder.h"

namespace platform_linux::fonts {

class FontCatalog {
public:
    struct Choice {
        const CodePageFont* font = nullptr;  // lives as long as the catalog
        std::size_t number = 0;              // of the face, counted from 0 in the order in which they were opened
        std::string name;                    // the name asked for, if the font is that one or has its metrics
    };

    explicit FontCatalog(const CodePage& codePage, FontFinder::Surroundings surroundings = {})
        : codePage_(codePage), finder_(std::move(surroundings)) {}

    // The font for a request, or the nearest; valid until the next call. Throws runtime::Error (errPrinter) where no
    // TrueType font is installed.
    const Choice& choose(const std::string& name, bool bold, bool italic);

    const CodePage& codePage() const noexcept { return codePage_; }

private:
    struct Request {
        std::string name;
        bool bold = false;
        bool italic = false;
        bool operator==(const Request&) const = default;
    };
    struct Opened {
        FontLocation location;
        CodePageFont font;
    };
    struct Known {
        Request request;
        Choice choice;
    };

    Choice find(const Request& request);
    // The number of the face; nothing where the file is none.
    std::optional<std::size_t> open(const FontLocation& location);

    CodePage codePage_;
    FontFinder finder_;
    std::deque<Opened> opened_;  // their addresses stay
    std::vector<Known> known_;
};

}  // namespace platform_linux::fonts
