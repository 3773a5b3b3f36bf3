#include "platform/linux/pdf/font_finder.h"

#include <optional>

namespace platform_linux::pdf {

namespace {

using Pattern = Scoped<FcPattern, FcPatternDestroy>;
using FontSet = Scoped<FcFontSet, FcFontSetSortDestroy>;

const FcChar8* fcText(const char* text) { return reinterpret_cast<const FcChar8*>(text); }

std::string textOf(const FcPattern* pattern, const char* property, int number = 0) {
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, property, number, &value) == FcResultMatch ? reinterpret_cast<const char*>(value)
                                                                                  : std::string();
}

bool namesFamily(const FcPattern* pattern, const std::string& family) {
    FcChar8* value = nullptr;
    for (int number = 0; FcPatternGetString(pattern, FC_FAMILY, number, &value) == FcResultMatch; ++number) {
        if (FcStrCmpIgnoreCase(value, fcText(family.c_str())) == 0) {
            return true;
        }
    }
    return false;
}

std::optional<FontLocation> locationOf(const FcPattern* pattern, const std::string& family) {
    int index = 0;
    FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
    constexpr int faces = 0x10000;  // above it an index tells the instances of a variable font apart
    if (textOf(pattern, FC_FONTFORMAT) != "TrueType" || index < 0 || index >= faces) {
        return std::nullopt;
    }
    return FontLocation{textOf(pattern, FC_FILE), index, textOf(pattern, FC_FAMILY), namesFamily(pattern, family)};
}

Pattern requestFor(FcConfig* config, const std::string& family, bool bold, bool italic) {
    Pattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, fcText(family.c_str()));
    FcPatternAddString(pattern.get(), FC_FONTFORMAT, fcText("TrueType"));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(pattern.get(), FC_VARIABLE, FcFalse);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

}  // namespace

std::vector<FontLocation> FontFinder::find(const std::string& family, bool bold, bool italic, bool all) {
    if (!config_) {
        config_.reset(FcInitLoadConfigAndFonts());
    }
    std::vector<FontLocation> found;
    if (!config_) {
        return found;
    }
    const Pattern request = requestFor(config_.get(), family, bold, italic);
    const auto add = [&](const FcPattern* pattern) {
        if (const auto location = locationOf(pattern, family)) {
            found.push_back(*location);
        }
    };
    FcResult result = FcResultNoMatch;
    if (!all) {
        const Pattern match(FcFontMatch(config_.get(), request.get(), &result));
        if (match) {
            add(match.get());
        }
        return found;
    }
    const FontSet sorted(FcFontSort(config_.get(), request.get(), FcFalse, nullptr, &result));
    for (int number = 0; sorted && number < sorted->nfont; ++number) {
        add(sorted->fonts[number]);
    }
    return found;
}

}  // namespace platform_linux::pdf
