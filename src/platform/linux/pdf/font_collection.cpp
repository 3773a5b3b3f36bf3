#include "platform/linux/pdf/font_collection.h"

#include <algorithm>
#include <utility>

#include "platform/linux/pdf/page_content.h"
#include "runtime/error.h"

namespace platform_linux::pdf {

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

const FontCollection::Choice& FontCollection::choose(const std::string& name, bool bold, bool italic) {
    Request request{name, bold, italic};
    const auto known =
        std::find_if(known_.begin(), known_.end(), [&](const Known& entry) { return entry.request == request; });
    if (known != known_.end()) {
        return known->choice;
    }
    Choice choice = load(request);
    return known_.emplace_back(Known{std::move(request), std::move(choice)}).choice;
}

FontCollection::Choice FontCollection::load(const Request& request) {
    for (const bool all : {false, true}) {
        for (const FontLocation& location : finder_.find(request.name, request.bold, request.italic, all)) {
            if (Loaded* found = open(location)) {
                const bool same = location.sameFamily || (isHostFont(request.name) &&
                                                          platform::drawing::hasCourierMetrics(found->font.units()));
                return {&found->font, same ? request.name : location.family};
            }
        }
    }
    throw runtime::Error(runtime::errPrinter,
                         "Es ist kein TrueType-Zeichensatz installiert. Bitte das Paket 'fonts-liberation' "
                         "installieren.");
}

FontCollection::Loaded* FontCollection::open(const FontLocation& location) {
    const auto same = std::find_if(loaded_.begin(), loaded_.end(), [&](const Loaded& entry) {
        return entry.location.path == location.path && entry.location.index == location.index;
    });
    if (same != loaded_.end()) {
        return &*same;
    }
    std::optional<FontFile> file = FontFile::open(location.path, location.index);
    if (!file) {
        return nullptr;
    }
    const auto resource = static_cast<int>(loaded_.size());
    return &loaded_.emplace_back(Loaded{location, EmbeddedFont(std::move(*file), codePage_, resource)});
}

void FontCollection::write(ObjectWriter& writer, std::string& resources) const {
    resources += "/Font<<";
    for (std::size_t index = 0; index < loaded_.size(); ++index) {
        if (loaded_[index].font.used()) {
            resources += '/' + fontResourceName(static_cast<int>(index)) + ' ';
            appendReference(resources, loaded_[index].font.write(writer));
        }
    }
    resources += ">>";
}

}  // namespace platform_linux::pdf
