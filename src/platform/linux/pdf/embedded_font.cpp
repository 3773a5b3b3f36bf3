#include "platform/linux/pdf/embedded_font.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/linux/pdf/fingerprint.h"
#include "platform/linux/pdf/number_text.h"
#include "platform/linux/pdf/text_string.h"
#include "runtime/utf8.h"

namespace platform_linux::pdf {

namespace {

void appendEntry(std::string& text, std::string_view name, std::int64_t value) {
    text.append(name) += ' ';
    appendInteger(text, value);
}

}  // namespace

EmbeddedFont::EmbeddedFont(const fonts::CodePageFont& font, const fonts::CodePage& codePage, int resource)
    : font_(font), codePage_(codePage), resource_(resource) {
    std::transform(font.units().advance.begin(), font.units().advance.end(), widths_.begin(),
                   [this](int advance) { return perMille(advance); });
}

FontSize EmbeddedFont::atSize(int em, platform::drawing::TextScale scale,
                              const platform::drawing::FontPixels& pixels) const {
    FontSize size;
    size.resource = resource_;
    size.em = em;
    size.along = scale.along;
    size.across = scale.across;
    for (std::size_t byte = 0; byte < widths_.size(); ++byte) {
        size.spacing[byte] =
            static_cast<double>(pixels.advance[byte]) / scale.along - static_cast<double>(widths_[byte]) * em / 1000;
        size.even = size.even && std::abs(size.spacing[byte] - size.spacing[0]) < 1e-9;
    }
    return size;
}

std::string EmbeddedFont::flaw() const {
    if (!font_.file().mayBeEmbedded()) {
        return "Der Hersteller des Zeichensatzes „" + font_.file().postScriptName() +
               "“ erlaubt nicht, ihn in Dateien einzubetten; bitte einen freien installieren, etwa Liberation.";
    }
    for (std::size_t byte = 0; byte < used_.size(); ++byte) {
        if (used_[byte] && font_.glyphs()[byte] == 0) {
            return "Dem Zeichensatz „" + font_.file().postScriptName() + "“ fehlt das Zeichen " + std::to_string(byte) +
                   " und das Leerzeichen, das dafür stehen könnte.";
        }
    }
    return {};
}

void EmbeddedFont::use(std::string_view bytes) {
    anyUsed_ = anyUsed_ || !bytes.empty();
    for (const char byte : bytes) {
        used_[static_cast<unsigned char>(byte)] = true;
    }
}

int EmbeddedFont::write(ObjectWriter& writer) const {
    std::size_t first = 0;
    std::size_t last = used_.size() - 1;
    while (first < last && !used_[first]) {
        ++first;
    }
    while (last > first && !used_[last]) {
        --last;
    }
    std::string font = "<</Type/Font/Subtype/TrueType/BaseFont/" + baseName();
    appendEntry(font, "/FirstChar", static_cast<std::int64_t>(first));
    appendEntry(font, "/LastChar", static_cast<std::int64_t>(last));
    font += "/Widths[";
    for (std::size_t byte = first; byte <= last; ++byte) {
        appendInteger(font, widths_[byte]);
        font += byte < last ? " " : "]/FontDescriptor ";
    }
    appendReference(font, writeDescriptor(writer));
    font += "/ToUnicode ";
    appendReference(font, writeUnicodeMap(writer));
    font += ">>";
    const int number = writer.allocate();
    writer.object(number, font);
    return number;
}

// A tag that differs where the subset differs, as ISO 32000-1, 9.6.4 wants it.
std::string EmbeddedFont::baseName() const {
    Fingerprint fingerprint;
    for (std::size_t byte = 0; byte < used_.size(); ++byte) {
        fingerprint.add(used_[byte] ? codePage_[byte] + 1U : 0U);
    }
    std::uint64_t hash = fingerprint.value();
    std::string name;
    for (int letter = 0; letter < 6; ++letter, hash /= 26) {
        name += static_cast<char>('A' + hash % 26);
    }
    return name + '+' + font_.file().postScriptName();
}

int EmbeddedFont::writeProgram(ObjectWriter& writer) const {
    fonts::ByteGlyphs glyphs{};
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        glyphs[byte] = used_[byte] ? font_.glyphs()[byte] : 0;
    }
    const std::string program = fontSubset(font_.file(), glyphs);
    std::string entries;
    appendEntry(entries, "/Length1", static_cast<std::int64_t>(program.size()));
    const int number = writer.allocate();
    writer.stream(number, entries, program);
    return number;
}

int EmbeddedFont::writeDescriptor(ObjectWriter& writer) const {
    const fonts::FontMeasures& measures = font_.file().measures();
    constexpr int fixedPitch = 1;
    constexpr int symbolic = 4;
    constexpr int italic = 64;
    const bool even = std::all_of(widths_.begin(), widths_.end(), [&](int width) { return width == widths_[0]; });
    std::string text = "<</Type/FontDescriptor/FontName/" + baseName();
    appendEntry(text, "/Flags", symbolic + (even ? fixedPitch : 0) + (measures.italicAngle != 0 ? italic : 0));
    text += "/FontBBox[";
    for (const int edge : {measures.left, measures.bottom, measures.right, measures.top}) {
        appendInteger(text, perMille(edge));
        text += ' ';
    }
    text.back() = ']';
    text += "/ItalicAngle ";
    appendReal(text, measures.italicAngle, 2);
    appendEntry(text, "/Ascent", perMille(measures.lineAscent));
    appendEntry(text, "/Descent", perMille(measures.lineDescent));
    appendEntry(text, "/CapHeight", perMille(measures.capHeight));
    // No table of a TrueType font holds the width of stems; readers use it for a substitute only.
    appendEntry(text, "/StemV", measures.weight / 5);
    text += "/FontFile2 ";
    appendReference(text, writeProgram(writer));
    text += ">>";
    const int number = writer.allocate();
    writer.object(number, text);
    return number;
}

int EmbeddedFont::writeUnicodeMap(ObjectWriter& writer) const {
    std::vector<std::size_t> bytes;
    for (std::size_t byte = 0; byte < used_.size(); ++byte) {
        if (used_[byte]) {
            bytes.push_back(byte);
        }
    }
    std::string map =
        "/CIDInit/ProcSet findresource begin 12 dict begin begincmap\n"
        "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
        "/CMapName/Adobe-Identity-UCS def/CMapType 2 def\n"
        "1 begincodespacerange\n<00><FF>\nendcodespacerange\n";
    constexpr std::size_t mostInBlock = 100;
    for (std::size_t start = 0; start < bytes.size(); start += mostInBlock) {
        const std::size_t end = std::min(bytes.size(), start + mostInBlock);
        appendInteger(map, static_cast<std::int64_t>(end - start));
        map += " beginbfchar\n";
        for (std::size_t index = start; index < end; ++index) {
            map += '<';
            appendHexByte(map, static_cast<unsigned>(bytes[index]));
            map += '>';
            map += '<';
            appendUtf16Hex(map, characterOf(bytes[index]));
            map += ">\n";
        }
        map += "endbfchar\n";
    }
    map += "endcmap CMapName currentdict/CMap defineresource pop end end\n";
    const int number = writer.allocate();
    writer.stream(number, {}, map);
    return number;
}

// What a reader gets for a byte, also where the code page has no character: 0 is a blank, as on the screen of DOS.
char32_t EmbeddedFont::characterOf(std::size_t byte) const {
    const char32_t character = codePage_[byte];
    return character != 0 ? character : byte == 0 ? U' ' : runtime::replacementCharacter;
}

int EmbeddedFont::perMille(double units) const {
    return static_cast<int>(std::lround(1000 * units / font_.file().measures().unitsPerEm));
}

}  // namespace platform_linux::pdf
