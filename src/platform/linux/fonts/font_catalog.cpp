#include "platform/linux/fonts/font_catalog.h"

#include <algorithm>
#include <utility>

#include "runtime/error.h"

namespace platform_linux::fonts {

namespace {

// The fixed-pitch font that hosts print with; fonts of the same metrics stand for it under other names.
constexpr std::string_view hostFont = "courier new";

bool isHostFont(std::string_view name) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    };
    return std::equal(name.begin(), name.end(), hostFont.begin(), hostFont.end(),
                      [&](char given, char expected) { return lower(given) == expected; });
}

}  // namespace

const FontCatalog::Choice& FontCatalog::choose(const std::string& name, bool bold, bool italic) {
    Request request{name, bold, italic};
    const auto known =
        std::find_if(known_.begin(), known_.end(), [&](const Known& entry) { return entry.request == request; });
    if (known != known_.end()) {
        return known->choice;
    }
    Choice choice = find(request);
    return known_.emplace_back(Known{std::move(request), std::move(choice)}).choice;
}

FontCatalog::Choice FontCatalog::find(const Request& request) {
    for (const bool all : {false, true}) {
        for (const FontLocation& location : finder_.find(request.name, request.bold, request.italic, all)) {
            if (const std::optional<std::size_t> number = open(location)) {
                const CodePageFont& font = opened_[*number].font;
                const bool same = location.sameFamily ||
                                  (isHostFont(request.name) && platform::drawing::hasCourierMetrics(font.units()));
                return {&font, *number, same ? request.name : location.family};
            }
        }
    }
    throw runtime::Error(runtime::errPrinter,
                         "Es ist kein TrueType-Zeichensatz installiert. Bitte das Paket 'fonts-liberation' "
                         "installieren.");
}

std::optional<std::size_t> FontCatalog::open(const FontLocation& location) {
    const auto same = std::find_if(opened_.begin(), opened_.end(), [&](const Opened& entry) {
        return entry.location.path == location.path && entry.location.index == location.index;
    });
    if (same != opened_.end()) {
        return static_cast<std::size_t>(same - opened_.begin());
    }
    std::optional<FontFile> file = FontFile::open(location.path, location.index);
    if (!file) {
        return std::nullopt;
    }
    opened_.push_back({location, CodePageFont(std::move(*file), codePage_)});
    return opened_.size() - 1;
}

}  // namespace platform_linux::fonts
