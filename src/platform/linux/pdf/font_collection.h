// The fonts of a document: found when first asked for, written at its end.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/linux/pdf/embedded_font.h"
#include "platform/linux/pdf/font_finder.h"

namespace platform_linux::pdf {

class FontCollection {
public:
    struct Choice {
        EmbeddedFont* font = nullptr;  // lives as long as the collection
        std::string name;              // the name asked for, if the font is that one or has its metrics; else its own
    };

    explicit FontCollection(const CodePage& codePage) : codePage_(codePage) {}

    // The font for a request, or the nearest; valid until the next call. Throws runtime::Error (errPrinter) where no
    // TrueType font is installed.
    const Choice& choose(const std::string& name, bool bold, bool italic);

    // Writes the fonts used and appends the entry of the resource dictionary.
    void write(ObjectWriter& writer, std::string& resources) const;

private:
    struct Request {
        std::string name;
        bool bold = false;
        bool italic = false;
        bool operator==(const Request&) const = default;
    };
    struct Loaded {
        FontLocation location;
        EmbeddedFont font;
    };
    struct Known {
        Request request;
        Choice choice;
    };

    Choice load(const Request& request);
    Loaded* open(const FontLocation& location);

    CodePage codePage_;
    FontFinder finder_;
    std::deque<Loaded> loaded_;  // their addresses stay
    std::vector<Known> known_;
};

}  // namespace platform_linux::pdf
