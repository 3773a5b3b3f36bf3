#include "platform/linux/fonts/font_finder.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "platform/linux/fonts/fields.h"
#include "platform/linux/fonts/fontconfig_files.h"
#include "runtime/error.h"

namespace platform_linux::fonts {

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

// Fonts of one style as fontconfig orders them.
std::vector<FontLocation> ask(FcConfig* config, const std::string& family, bool bold, bool italic, bool all) {
    std::vector<FontLocation> found;
    const Pattern request = requestFor(config, family, bold, italic);
    const auto add = [&](const FcPattern* pattern) {
        if (const auto location = locationOf(pattern, family)) {
            found.push_back(*location);
        }
    };
    FcResult result = FcResultNoMatch;
    if (!all) {
        const Pattern match(FcFontMatch(config, request.get(), &result));
        if (match) {
            add(match.get());
        }
        return found;
    }
    const FontSet sorted(FcFontSort(config, request.get(), FcFalse, nullptr, &result));
    for (int number = 0; sorted && number < sorted->nfont; ++number) {
        add(sorted->fonts[number]);
    }
    return found;
}

struct Style {
    bool bold;
    bool italic;
};

// The answers for several styles, each behind the number of its fonts.
std::string answersTo(const std::string& family, const std::vector<Style>& styles, bool all) {
    const Scoped<FcConfig, FcConfigDestroy> config(FcInitLoadConfigAndFonts());
    Fields fields;
    for (const Style& style : styles) {
        fields.add(config ? ask(config.get(), family, style.bold, style.italic, all) : std::vector<FontLocation>());
    }
    return std::move(fields).text();
}

constexpr std::array<Style, 4> allStyles{{{false, false}, {true, false}, {false, true}, {true, true}}};

}  // namespace

const FontAnswer* FontFinder::known(const std::string& family, bool bold, bool italic, bool all) const {
    const auto found = std::find_if(answers_.begin(), answers_.end(), [&](const FontAnswer& answer) {
        return answer.family == family && answer.bold == bold && answer.italic == italic && answer.all == all;
    });
    return found != answers_.end() ? &*found : nullptr;
}

const std::vector<FontLocation>& FontFinder::find(const std::string& family, bool bold, bool italic, bool all) {
    readKept();
    if (const FontAnswer* answer = known(family, bold, italic, all)) {
        return answer->fonts;
    }
    if (surroundings_.memoryIsPlenty && !surroundings_.memoryIsPlenty()) {
        askApart(family, bold, italic, all);
        return known(family, bold, italic, all)->fonts;
    }
    if (!config_) {
        config_.reset(FcConfigReference(nullptr));
    }
    anyNew_ = anyNew_ || (config_ && !all);
    return remember({family, bold, italic, all,
                     config_ ? ask(config_.get(), family, bold, italic, all) : std::vector<FontLocation>()})
        .fonts;
}

void FontFinder::readKept() {
    if (std::exchange(keptRead_, true) || !surroundings_.keptText) {
        return;
    }
    auto kept = keptAnswers(surroundings_.keptText());
    if (kept && stillHold(*kept, fontconfigEnvironment())) {
        answers_.assign(kept->answers.begin(), kept->answers.end());
    }
}

FontFinder::~FontFinder() {
    if (!anyNew_ || !surroundings_.keepText) {
        return;
    }
    try {
        keep();
    } catch (...) {  // the next program asks, too
    }
}

// With all styles of each family, so that a report with bold type does not ask for those alone.
void FontFinder::keep() {
    std::set<std::string> families;
    for (const FontAnswer& answer : answers_) {
        families.insert(answer.family);
    }
    KeptAnswers kept;
    kept.environment = fontconfigEnvironment();
    for (const std::string& family : families) {
        for (const Style& style : allStyles) {
            find(family, style.bold, style.italic, false);
            kept.answers.push_back(*known(family, style.bold, style.italic, false));
        }
    }
    const std::vector<std::string> files = fontconfigFiles(config_.get());
    std::set<std::string> paths(files.begin(), files.end());
    for (const FontAnswer& answer : kept.answers) {
        for (const FontLocation& font : answer.fonts) {
            paths.insert(font.path);
        }
    }
    for (const std::string& path : paths) {
        kept.stamps.push_back(stampOf(path));
    }
    surroundings_.keepText(textOf(kept));
}

// A report uses all four styles as a rule, so their fonts are asked for at once; every font of a style hardly ever.
void FontFinder::askApart(const std::string& family, bool bold, bool italic, bool all) {
    // Where fonts are new, their list is made first.
    constexpr std::chrono::seconds limit{60};
    const std::vector<Style> styles =
        all ? std::vector<Style>{{bold, italic}} : std::vector<Style>(allStyles.begin(), allStyles.end());
    const auto text = surroundings_.apart([&] { return answersTo(family, styles, all); }, limit);
    if (!text) {
        throw runtime::Error(
            runtime::errPrinter,
            "Die installierten Zeichensätze lassen sich nicht ermitteln. Bitte den Speicher prüfen, und "
            "die Liste der Zeichensätze mit 'fc-cache -f' neu anlegen.");
    }
    TakenFields fields(*text);
    for (const Style& style : styles) {
        remember({family, style.bold, style.italic, all, fields.takeFonts()});
    }
}

}  // namespace platform_linux::fonts
