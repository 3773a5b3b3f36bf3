#include "platform/linux/fonts/font_file.h"

#include <hb-ot.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/linux/fonts/table_tag.h"

namespace platform_linux::fonts {

namespace {

using Blob = Scoped<hb_blob_t, hb_blob_destroy>;

// A table of an OpenType font; its fields by their offset, 0 beyond its end.
class Table {
public:
    Table(hb_face_t* face, hb_tag_t tag) : blob_(hb_face_reference_table(face, tag)) {
        data_ = hb_blob_get_data(blob_.get(), &length_);
    }
    bool empty() const { return length_ == 0; }
    int unsigned16(unsigned offset) const { return (byteAt(offset) << 8) | byteAt(offset + 1); }
    int signed16(unsigned offset) const { return static_cast<std::int16_t>(unsigned16(offset)); }

private:
    int byteAt(unsigned offset) const { return offset < length_ ? static_cast<unsigned char>(data_[offset]) : 0; }

    Blob blob_;
    const char* data_ = nullptr;
    unsigned length_ = 0;
};

// Offsets are those of the OpenType tables of these names.
FontMeasures read(hb_face_t* face) {
    FontMeasures measures;
    measures.unitsPerEm = static_cast<int>(hb_face_get_upem(face));
    const Table head(face, tableTag("head"));
    measures.left = head.signed16(36);
    measures.bottom = head.signed16(38);
    measures.right = head.signed16(40);
    measures.top = head.signed16(42);
    const Table hhea(face, tableTag("hhea"));
    measures.lineAscent = hhea.signed16(4);
    measures.lineDescent = hhea.signed16(6);
    const Table os2(face, tableTag("OS/2"));
    measures.weight = os2.empty() ? 400 : os2.unsigned16(4);
    measures.cellAscent = os2.empty() ? measures.lineAscent : os2.unsigned16(74);
    measures.cellDescent = os2.empty() ? -measures.lineDescent : os2.unsigned16(76);
    measures.capHeight = os2.unsigned16(0) >= 2 ? os2.signed16(88) : measures.lineAscent;
    const Table post(face, tableTag("post"));
    measures.italicAngle = post.signed16(4) + post.unsigned16(6) / 65536.0;
    measures.underlineTop = post.signed16(8);
    measures.underlineThickness = post.signed16(10);
    return measures;
}

using DrawFunctions = Scoped<hb_draw_funcs_t, hb_draw_funcs_destroy>;

OutlinePen& penOf(void* data) { return *static_cast<OutlinePen*>(data); }

DrawFunctions drawFunctions() {
    DrawFunctions functions(hb_draw_funcs_create());
    hb_draw_funcs_set_move_to_func(
        functions.get(), [](auto*, void* pen, auto*, float x, float y, void*) { penOf(pen).moveTo(x, y); }, nullptr,
        nullptr);
    hb_draw_funcs_set_line_to_func(
        functions.get(), [](auto*, void* pen, auto*, float x, float y, void*) { penOf(pen).lineTo(x, y); }, nullptr,
        nullptr);
    hb_draw_funcs_set_quadratic_to_func(
        functions.get(),
        [](auto*, void* pen, auto*, float controlX, float controlY, float x, float y, void*) {
            penOf(pen).curveTo(controlX, controlY, x, y);
        },
        nullptr, nullptr);
    hb_draw_funcs_set_close_path_func(
        functions.get(), [](auto*, void* pen, auto*, void*) { penOf(pen).close(); }, nullptr, nullptr);
    return functions;
}

}  // namespace

std::optional<FontFile> FontFile::open(const std::string& path, int index) {
    const Blob blob(hb_blob_create_from_file_or_fail(path.c_str()));
    if (!blob) {
        return std::nullopt;
    }
    FontFile file;
    file.face_.reset(hb_face_create(blob.get(), static_cast<unsigned>(index)));
    if (hb_face_get_glyph_count(file.face_.get()) == 0 || Table(file.face_.get(), tableTag("glyf")).empty()) {
        return std::nullopt;
    }
    file.font_.reset(hb_font_create(file.face_.get()));
    file.measures_ = read(file.face_.get());
    // Without memory the library leaves out what it has no room for; a font without letters is of no use either.
    const unsigned letter = file.glyph(U'A');
    return letter != 0 && file.advance(letter) > 0 ? std::optional(std::move(file)) : std::nullopt;
}

unsigned FontFile::glyph(char32_t character) const {
    hb_codepoint_t glyph = 0;
    return character != 0 && hb_font_get_nominal_glyph(font_.get(), character, &glyph) != 0 ? glyph : 0;
}

int FontFile::advance(unsigned glyph) const { return hb_font_get_glyph_h_advance(font_.get(), glyph); }

void FontFile::outline(unsigned glyph, OutlinePen& pen) const {
    static const DrawFunctions functions = drawFunctions();
#if HB_VERSION_ATLEAST(7, 0, 0)
    hb_font_draw_glyph(font_.get(), glyph, functions.get(), &pen);
#else
    hb_font_get_glyph_shape(font_.get(), glyph, functions.get(), &pen);
#endif
}

bool FontFile::mayBeEmbedded() const {
    constexpr int permissions = 0x000E;
    constexpr int restricted = 0x0002;  // where nothing more is permitted
    constexpr int noPartsOrBitmapsOnly = 0x0300;
    const int type = Table(face_.get(), tableTag("OS/2")).unsigned16(8);
    return (type & permissions) != restricted && (type & noPartsOrBitmapsOnly) == 0;
}

std::string FontFile::postScriptName() const {
    std::array<char, 64> buffer{};
    auto size = static_cast<unsigned>(buffer.size());
    hb_ot_name_get_utf8(face_.get(), HB_OT_NAME_ID_POSTSCRIPT_NAME, HB_LANGUAGE_INVALID, &size, buffer.data());
    std::string name;
    for (const char character : buffer) {
        const bool letter = (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
        if (letter || (character >= '0' && character <= '9') || character == '-') {
            name += character;
        }
    }
    return name.empty() ? "Font" : name;
}

}  // namespace platform_linux::fonts
