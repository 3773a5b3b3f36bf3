// Paints a sheet of paper with its page, or a message in its place.
#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"
#include "preview/preview_pages.h"
#include "preview/sheet_layout.h"

namespace preview {

// What there is to say where no page can be shown.
struct PageMessage {
    std::string heading;
    std::string reason;
    std::string remedy;
};

// What lies on the sheet.
struct SheetContent {
    const PreviewPage* page = nullptr;
    std::vector<platform::drawing::Area> hits;
    std::vector<platform::drawing::Area> currentHit;
    std::vector<platform::drawing::Area> selection;
};

void paintSheet(platform::Canvas& canvas, const SheetLayout& layout, const SheetContent& content);

void paintMessage(platform::Canvas& canvas, const platform::Box& room, const PageMessage& message);

// Writes a text over the whole width at the upper edge; returns the height that it takes, 0 for an empty one.
double paintNotice(platform::Canvas& canvas, const std::string& text);

}  // namespace preview
