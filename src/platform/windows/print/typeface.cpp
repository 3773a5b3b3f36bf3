#include "platform/windows/print/typeface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "platform/windows/newer_functions.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

constexpr int firstPrintable = 32;
constexpr int missingAllowed = 8;
constexpr int usualUnitsPerEm = 2048;
// No sheet takes a larger letter, nor do the system's functions.
constexpr int mostPixels = 0x7FFF;

// The fixed-pitch font that hosts print with; fonts of the same metrics stand for it under other names.
constexpr std::wstring_view hostFont = L"Courier New";

LOGFONTW describe(const platform::FontRequest& request) {
    LOGFONTW description{};
    const std::wstring name = widen(request.name);
    name.copy(description.lfFaceName, LF_FACESIZE - 1);
    description.lfWeight = request.bold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = request.italic ? TRUE : FALSE;
    description.lfCharSet = static_cast<BYTE>(request.charset);
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    // Where the font is missing, the nearest one is to be of fixed pitch like it.
    description.lfPitchAndFamily = isSameName(name, hostFont) ? FIXED_PITCH | FF_MODERN : DEFAULT_PITCH | FF_DONTCARE;
    return description;
}

std::wstring faceName(HDC device) {
    std::array<wchar_t, LF_FACESIZE> name{};
    ::GetTextFaceW(device, LF_FACESIZE, name.data());
    return name.data();
}

}  // namespace

Typeface::Typeface(HDC device, const platform::FontRequest& request, const DosCharacters& characters)
    : request_(request), description_(describe(request)) {
    units_.perEm = usualUnitsPerEm;
    std::wstring name;
    for (bool again = true; again;) {
        const Font font = create(units_.perEm, {}, {});
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
            measureUnderline(device);
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
    averageWidth_ = metrics.tmAveCharWidth;

    constexpr WORD noGlyph = 0xFFFF;
    constexpr WORD replacementGlyph = 0;
    std::array<WORD, 256> glyphs{};
    const bool told = ::GetGlyphIndicesW(device, characters.data(), static_cast<int>(characters.size()), glyphs.data(),
                                         GGI_MARK_NONEXISTING_GLYPHS) != GDI_ERROR;
    const auto missing = std::count(glyphs.begin() + firstPrintable, glyphs.end(), noGlyph);
    coversCodePage_ = told && missing <= missingAllowed;
    std::replace(glyphs.begin(), glyphs.end(), noGlyph, replacementGlyph);
    units_.advance.fill(averageWidth_);
    if (told) {
        ::GetCharWidthI(device, 0, static_cast<UINT>(glyphs.size()), glyphs.data(), units_.advance.data());
    }
    for (int& advance : units_.advance) {
        advance = std::max(0, advance);
    }
}

void Typeface::measureUnderline(HDC device) {
    // Offsets are those of the OpenType table of this name, numbers have their high byte first.
    constexpr DWORD table = 0x74736F70;  // "post"
    constexpr DWORD offset = 8;
    std::array<std::uint8_t, 4> bytes{};
    if (::GetFontData(device, table, offset, bytes.data(), static_cast<DWORD>(bytes.size())) == bytes.size()) {
        const auto signed16 = [&](std::size_t at) { return static_cast<std::int16_t>(bytes[at] << 8 | bytes[at + 1]); };
        units_.underlineTop = signed16(0);
        units_.underlineThickness = signed16(2);
    } else {
        units_.underlineTop = -units_.descent / 3;
        units_.underlineThickness = units_.perEm / 20;
    }
}

bool Typeface::isFor(const platform::FontRequest& request) const noexcept {
    return request_.name == request.name && request_.charset == request.charset && request_.bold == request.bold &&
           request_.italic == request.italic;
}

Font Typeface::create(int emHeight, platform::drawing::Turn turn, platform::drawing::TextScale scale) const noexcept {
    const auto pixels = [](double length) {
        return static_cast<LONG>(std::lround(std::clamp<double>(length, 1, mostPixels)));
    };
    LOGFONTW description = description_;
    description.lfHeight = -pixels(emHeight * scale.across);
    description.lfEscapement = description.lfOrientation = turn.degrees() * 10;
    if (turn.upright() && scale != platform::drawing::TextScale{}) {
        // By itself the system would widen the letters as if they stood upright on the page.
        description.lfWidth = pixels(averageWidth_ * scale.along * emHeight / units_.perEm);
    }
    return Font(::CreateFontIndirectW(&description));
}

}  // namespace platform_windows::print
