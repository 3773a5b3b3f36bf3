#include "platform/linux/pdf/font_collection.h"

#include "platform/linux/forked_call.h"
#include "platform/linux/memory_room.h"
#include "platform/linux/pdf/page_content.h"

namespace platform_linux::pdf {

FontCollection::FontCollection(const fonts::CodePage& codePage) : catalog_(codePage, {memoryIsPlenty, forkedText}) {}

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

}  // namespace platform_linux::pdf
