// The fonts of a document: found when first asked for, written at its end.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/linux/fonts/font_catalog.h"
#include "platform/linux/pdf/embedded_font.h"

namespace platform_linux::pdf {

class FontCollection {
public:
    struct Choice {
        EmbeddedFont& font;       // lives as long as the collection
        const std::string& name;  // as in the catalog; valid until the next call
    };

    explicit FontCollection(const fonts::CodePage& codePage);

    // The font for a request, or the nearest. Throws as the catalog does.
    Choice choose(const std::string& name, bool bold, bool italic);

    // Writes the fonts used and appends the entry of the resource dictionary.
    void write(ObjectWriter& writer, std::string& resources) const;

    // Of the fonts used, what each has.
    std::vector<std::string> flaws() const;

private:
    fonts::FontCatalog catalog_;
    std::deque<EmbeddedFont> fonts_;  // by the catalog's numbers; their addresses stay
};

}  // namespace platform_linux::pdf
