#include "platform/linux/pdf/font_collection.h"

#include <utility>

#include "platform/linux/files.h"
#include "platform/linux/forked_call.h"
#include "platform/linux/memory_room.h"
#include "platform/linux/pdf/page_content.h"
#include "platform/linux/user_folders.h"

namespace platform_linux::pdf {

namespace {

std::string keptPath() {
    const std::string folder = userFolder("XDG_CACHE_HOME", ".cache");
    return folder.empty() ? folder : folder + "/Zeichensaetze";
}

std::string keptText() {
    std::string text;
    return readWholeFile(keptPath(), text) == 0 ? text : std::string();
}

// Where that fails the next document asks for its fonts, too.
void keepText(const std::string& text) {
    if (const std::string path = keptPath(); !path.empty()) {
        makePrivateFolders(path);
        replaceFile(path, text, {.mode = privateFile});
    }
}

}  // namespace

FontCollection::FontCollection(const fonts::CodePage& codePage)
    : catalog_(codePage, {memoryIsPlenty, forkedText, keptText, keepText}) {}

FontCollection::Choice FontCollection::choose(const std::string& name, bool bold, bool italic) {
    const fonts::FontCatalog::Choice& choice = catalog_.choose(name, bold, italic);
    if (choice.number == fonts_.size()) {
        fonts_.emplace_back(*choice.font, catalog_.codePage(), static_cast<int>(choice.number));
    }
    return {fonts_[choice.number], choice.name};
}

void FontCollection::write(ObjectWriter& writer, std::string& resources) const {
    resources += "/Font<<";
    for (std::size_t index = 0; index < fonts_.size(); ++index) {
        if (fonts_[index].used()) {
            resources += '/' + fontResourceName(static_cast<int>(index)) + ' ';
            appendReference(resources, fonts_[index].write(writer));
        }
    }
    resources += ">>";
}

std::vector<std::string> FontCollection::flaws() const {
    std::vector<std::string> flaws;
    for (const EmbeddedFont& font : fonts_) {
        if (std::string flaw = font.used() ? font.flaw() : std::string(); !flaw.empty()) {
            flaws.push_back(std::move(flaw));
        }
    }
    return flaws;
}

}  // namespace platform_linux::pdf
