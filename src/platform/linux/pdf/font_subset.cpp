#include "platform/linux/pdf/font_subset.h"

#include <hb-subset.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "platform/linux/fonts/table_tag.h"
#include "platform/linux/forked_call.h"
#include "runtime/error.h"

namespace platform_linux::pdf {

namespace {

using fonts::ByteGlyphs;
using fonts::FontFile;
using fonts::Scoped;
using fonts::tableTag;

using Blob = Scoped<hb_blob_t, hb_blob_destroy>;
using Face = Scoped<hb_face_t, hb_face_destroy>;

// What an embedded TrueType font without hints needs (ISO 32000-1, 9.9); the cmap is made anew.
constexpr std::array neededTables = {tableTag("glyf"), tableTag("head"), tableTag("hhea"),
                                     tableTag("hmtx"), tableTag("loca"), tableTag("maxp")};

void append16(std::string& table, unsigned value) {
    table += static_cast<char>((value >> 8) & 0xFF);
    table += static_cast<char>(value & 0xFF);
}

void append32(std::string& table, unsigned value) {
    append16(table, value >> 16);
    append16(table, value & 0xFFFF);
}

// Format 6 serves platform 1, format 4 platform 3 (OpenType, "cmap"); not the byte-wide format 0, because parts of
// composed glyphs can push a full code page's glyphs beyond number 255.
std::string characterMap(const ByteGlyphs& glyphs) {
    std::string map;
    append16(map, 0);
    append16(map, 2);
    constexpr unsigned directorySize = 4 + 2 * 8;
    constexpr unsigned macSize = 10 + 2 * 256;
    append16(map, 1);
    append16(map, 0);
    append32(map, directorySize);
    append16(map, 3);
    append16(map, 0);
    append32(map, directorySize + macSize);

    append16(map, 6);
    append16(map, macSize);
    append16(map, 0);    // language
    append16(map, 0);    // first code
    append16(map, 256);  // codes
    for (const unsigned glyph : glyphs) {
        append16(map, glyph);
    }

    constexpr unsigned segments = 2;
    append16(map, 4);
    append16(map, 16 + 8 * segments + 2 * 256);
    append16(map, 0);             // language
    append16(map, 2 * segments);  // and the numbers for a binary search in it
    append16(map, 4);
    append16(map, 1);
    append16(map, 0);
    for (const unsigned value : {0xF0FFU, 0xFFFFU, 0U, 0xF000U, 0xFFFFU, 0U, 1U, 4U, 0U}) {
        append16(map, value);  // last codes, a gap, first codes, deltas, offset of the glyphs from their own place
    }
    for (const unsigned glyph : glyphs) {
        append16(map, glyph);
    }
    return map;
}

using Font = Scoped<hb_font_t, hb_font_destroy>;

// What a glyph looks like from outside: its box and its advance.
std::array<int, 5> shapeOf(hb_font_t* font, unsigned glyph) {
    hb_glyph_extents_t box{};
    hb_font_get_glyph_extents(font, glyph, &box);
    return {box.x_bearing, box.y_bearing, box.width, box.height, hb_font_get_glyph_h_advance(font, glyph)};
}

// Whether every byte leads to the shape that it has in the font. The library says nothing where it had no memory for a
// part: then that part is missing, and with it words of the page.
bool isWhole(const std::string& program, const FontFile& font, const ByteGlyphs& glyphs) {
    const Blob blob(hb_blob_create(program.data(), static_cast<unsigned>(program.size()), HB_MEMORY_MODE_READONLY,
                                   nullptr, nullptr));
    const Face face(hb_face_create(blob.get(), 0));
    const Font written(hb_font_create(face.get()));
    const Font original(hb_font_create(font.face()));
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        hb_codepoint_t glyph = 0;
        hb_font_get_nominal_glyph(written.get(), 0xF000U + static_cast<hb_codepoint_t>(byte), &glyph);
        const bool expected = glyphs[byte] != 0;
        if (expected && (glyph == 0 || shapeOf(written.get(), glyph) != shapeOf(original.get(), glyphs[byte]))) {
            return false;
        }
    }
    return hb_face_get_glyph_count(face.get()) > 0;
}

[[noreturn]] void fail(const FontFile& font) {
    throw runtime::Error(
        runtime::errPrinter,
        "Der Zeichensatz '" + font.postScriptName() +
            "' lässt sich nicht in die PDF-Datei einbetten. Bitte den freien "
            "Speicher und die Installation des Zeichensatzes prüfen oder einen anderen Zeichensatz wählen.");
}

std::string makeSubset(const FontFile& font, const ByteGlyphs& glyphs) {
    const Scoped<hb_subset_input_t, hb_subset_input_destroy> input(hb_subset_input_create_or_fail());
    if (!input) {
        fail(font);
    }
    // Hints are for screens of few pixels; viewers of today smooth instead, and without them the font is half the size.
    hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING);
    for (const unsigned glyph : glyphs) {
        hb_set_add(hb_subset_input_glyph_set(input.get()), glyph);
    }
    hb_set_t* dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    hb_set_clear(dropped);
    for (const hb_tag_t tag : neededTables) {
        hb_set_add(dropped, tag);
    }
    hb_set_invert(dropped);

    const Scoped<hb_subset_plan_t, hb_subset_plan_destroy> plan(
        hb_subset_plan_create_or_fail(font.face(), input.get()));
    const Face subset(plan ? hb_subset_plan_execute_or_fail(plan.get()) : nullptr);
    if (!subset) {
        fail(font);
    }
    const hb_map_t* numbers = hb_subset_plan_old_to_new_glyph_mapping(plan.get());
    ByteGlyphs mapped{};
    std::transform(glyphs.begin(), glyphs.end(), mapped.begin(), [&](unsigned glyph) {
        const hb_codepoint_t number = glyph != 0 ? hb_map_get(numbers, glyph) : 0;
        return number != HB_MAP_VALUE_INVALID ? number : 0;
    });

    const Face program(hb_face_builder_create());
    const std::string map = characterMap(mapped);
    const Blob mapBlob(
        hb_blob_create(map.data(), static_cast<unsigned>(map.size()), HB_MEMORY_MODE_DUPLICATE, nullptr, nullptr));
    hb_face_builder_add_table(program.get(), tableTag("cmap"), mapBlob.get());
    for (const hb_tag_t tag : neededTables) {
        const Blob table(hb_face_reference_table(subset.get(), tag));
        if (hb_blob_get_length(table.get()) > 0) {
            hb_face_builder_add_table(program.get(), tag, table.get());
        }
    }
    const Blob file(hb_face_reference_blob(program.get()));
    unsigned size = 0;
    const char* data = hb_blob_get_data(file.get(), &size);
    std::string result(data, size);
    if (!isWhole(result, font, glyphs)) {
        fail(font);
    }
    return result;
}

}  // namespace

std::string fontSubset(const FontFile& font, const ByteGlyphs& glyphs) {
    constexpr std::chrono::seconds limit{60};
    auto program = guardedText([&] { return makeSubset(font, glyphs); }, limit);
    if (!program) {
        fail(font);
    }
    return std::move(*program);
}

}  // namespace platform_linux::pdf
