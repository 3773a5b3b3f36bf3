#include "platform/linux/fonts/fields.h"

#include <algorithm>

#include "runtime/whole_number.h"

namespace platform_linux::fonts {

void Fields::add(const std::vector<FontLocation>& fonts) {
    add(std::to_string(fonts.size()));
    for (const FontLocation& font : fonts) {
        add(font.path);
        add(std::to_string(font.index));
        add(font.family);
        add(font.sameFamily);
    }
}

std::string TakenFields::take() {
    const std::size_t size = std::min(left_.find(Fields::end), left_.size());
    std::string field(left_.substr(0, size));
    left_.remove_prefix(std::min(size + 1, left_.size()));
    return field;
}

std::size_t TakenFields::takeCount() {
    return std::min(runtime::wholeNumber<std::size_t>(take()).value_or(0), left_.size());
}

std::vector<FontLocation> TakenFields::takeFonts() {
    std::vector<FontLocation> fonts(takeCount());
    for (FontLocation& font : fonts) {
        font.path = take();
        font.index = runtime::wholeNumber<int>(take()).value_or(0);
        font.family = take();
        font.sameFamily = takeFlag();
    }
    return fonts;
}

}  // namespace platform_linux::fonts
