#include "platform/windows/gdi/typeface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/windows/gdi/font_shape.h"
#include "platform/windows/gdi/font_tables.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"

namespace platform_windows::gdi {

namespace {

constexpr int firstPrintable = 32;
constexpr int missingAllowed = 8;
constexpr int usualUnitsPerEm = 2048;
// No sheet takes a larger letter, nor do the system's functions.
constexpr int mostPixels = 0x7FFF;

// The fixed-pitch font that hosts print with; fonts of the same metrics stand for it under other names.
constexpr std::wstring_view hostFont = L"Courier New";

LOGFONTW describe(const platform::FontRequest& request, Smoothing smoothing) {
    LOGFONTW description{};
    const std::wstring name = widen(request.name);
    name.copy(description.lfFaceName, LF_FACESIZE - 1);
    description.lfWeight = request.bold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = request.italic ? TRUE : FALSE;
    description.lfCharSet = static_cast<BYTE>(request.charset);
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    description.lfQuality = smoothing == Smoothing::grey ? ANTIALIASED_QUALITY : DEFAULT_QUALITY;
    // Where the font is missing, the nearest one is to be of fixed pitch like it.
    description.lfPitchAndFamily = isSameName(name, hostFont) ? FIXED_PITCH | FF_MODERN : DEFAULT_PITCH | FF_DONTCARE;
    return description;
}

// Where the font does not tell them itself. A driver's own fonts are as wide as its pixels ask for.
std::array<int, 256> measuredAdvances(HDC device, const Glyphs* glyphs, int averageWidth) {
    Glyphs numbers = glyphs != nullptr ? *glyphs : Glyphs{};
    std::array<int, 256> advances{};
    advances.fill(averageWidth);
    if (glyphs != nullptr) {
        ::GetCharWidthI(device, 0, static_cast<UINT>(numbers.size()), numbers.data(), advances.data());
    }
    const int across = std::max(1, ::GetDeviceCaps(device, LOGPIXELSX));
    const int down = std::max(1, ::GetDeviceCaps(device, LOGPIXELSY));
    for (int& advance : advances) {
        advance = static_cast<int>(std::int64_t{std::max(0, advance)} * down / across);
    }
    return advances;
}

// Within what rounding to whole units makes of it.
bool isNear(double one, double other) {
    constexpr double most = 0.005;
    return std::abs(one - other) <= most * other;
}

std::wstring faceName(HDC device) {
    std::array<wchar_t, LF_FACESIZE> name{};
    ::GetTextFaceW(device, LF_FACESIZE, name.data());
    return name.data();
}

}  // namespace

Typeface::Typeface(HDC device, const platform::FontRequest& request, const DosCharacters& characters,
                   Smoothing smoothing)
    : request_(request), description_(describe(request, smoothing)) {
    units_.perEm = usualUnitsPerEm;
    std::wstring name;
    for (bool again = true; again;) {
        const Font font = create(units_.perEm, 0, {});
        if (!font) {
            throw runtime::Error(runtime::errPrinter, "Der Zeichensatz „" + request.name +
                                                          "“ lässt sich nicht anlegen. Bitte andere Programme "
                                                          "beenden und erneut drucken.");
        }
        const Selection selection(device, font.get());
        OUTLINETEXTMETRICW outline{};
        const bool hasOutline = ::GetOutlineTextMetricsW(device, sizeof outline, &outline) != 0;
        const auto units = static_cast<int>(outline.otmEMSquare);
        again = hasOutline && units > 0 && units <= mostPixels && units != units_.perEm;
        if (again) {
            units_.perEm = units;
        } else {
            name = faceName(device);
            measure(device, characters);
        }
    }
    const std::wstring requested = widen(request.name);
    const bool same = isSameName(name, requested) ||
                      (isSameName(requested, hostFont) && platform::drawing::hasCourierMetrics(units_));
    face_ = {same ? request.name : narrow(name), coversCodePage_ ? request.charset : platform::charsetAnsi};
}

void Typeface::measure(HDC device, const DosCharacters& characters) {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(device, &metrics);
    units_.ascent = metrics.tmAscent;
    units_.descent = metrics.tmDescent;

    constexpr WORD noGlyph = 0xFFFF;
    constexpr WORD replacementGlyph = 0;
    Glyphs glyphs{};
    const bool told = ::GetGlyphIndicesW(device, characters.data(), static_cast<int>(characters.size()), glyphs.data(),
                                         GGI_MARK_NONEXISTING_GLYPHS) != GDI_ERROR;
    const auto missing = std::count(glyphs.begin() + firstPrintable, glyphs.end(), noGlyph);
    coversCodePage_ = told && missing <= missingAllowed;
    std::replace(glyphs.begin(), glyphs.end(), noGlyph, replacementGlyph);
    const FontTables tables(device);
    const auto advances = told ? tables.advances(glyphs) : std::nullopt;
    units_.advance = advances ? *advances : measuredAdvances(device, told ? &glyphs : nullptr, metrics.tmAveCharWidth);

    const auto underline = tables.underline();
    units_.underlineTop = underline ? underline->top : -units_.descent / 3;
    units_.underlineThickness = underline ? underline->thickness : units_.perEm / 20;
    averageWidth_ = metrics.tmAveCharWidth / ownStretch(device, letterAdvance());
}

bool Typeface::isFor(const platform::FontRequest& request) const noexcept {
    return request_.name == request.name && request_.charset == request.charset && request_.bold == request.bold &&
           request_.italic == request.italic;
}

Font Typeface::create(HDC device, int emHeight, platform::drawing::Turn turn,
                      platform::drawing::TextScale scale) const noexcept {
    if (scale == platform::drawing::TextScale{}) {
        return create(emHeight, 0, turn);
    }
    if (!turn.upright()) {
        const Font own = create(units_.perEm, 0, {});
        const Selection selection(device, own.get());
        if (isNear(ownStretch(device, letterAdvance()), scale.along)) {
            return create(emHeight, 0, turn);
        }
    }
    const Size size = sizeFor(device, turn, scale);
    const double points = static_cast<double>(emHeight) / units_.perEm;
    return create(size.height * points, size.width * points, turn);
}

// What a device makes of a stated width, and of turned letters where its pixels are not square, is not the same
// everywhere. So the letter H is tried, and what it lacks is made up for.
Typeface::Size Typeface::sizeFor(HDC device, platform::drawing::Turn turn,
                                 platform::drawing::TextScale scale) const noexcept {
    const auto boxOf = [&](const Font& font) {
        const Selection selection(device, font.get());
        return letterBox(device);
    };
    Size size{units_.perEm * scale.across, averageWidth_ * scale.along};
    const Font plain = create(units_.perEm, 0, {});
    LetterBox letter = boxOf(plain);
    {
        const Selection selection(device, plain.get());
        letter.across /= ownStretch(device, letterAdvance());
    }
    LetterBox tried = boxOf(create(size.height, size.width, turn));
    if (turn.upright()) {
        std::swap(tried.across, tried.down);
    }
    if (letter.known() && tried.known()) {
        size.width *= letter.across * scale.along / tried.across;
        size.height *= letter.down * scale.across / tried.down;
    }
    return size;
}

Font Typeface::create(double height, double width, platform::drawing::Turn turn) const noexcept {
    const auto pixels = [](double length) {
        return static_cast<LONG>(std::lround(std::clamp<double>(length, 1, mostPixels)));
    };
    LOGFONTW description = description_;
    description.lfHeight = -pixels(height);
    description.lfWidth = width > 0 ? pixels(width) : 0;
    description.lfEscapement = description.lfOrientation = turn.degrees() * 10;
    return Font(::CreateFontIndirectW(&description));
}

}  // namespace platform_windows::gdi
