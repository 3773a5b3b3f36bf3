// Embedded font programs: every byte leads to the shape that the font file has for its character.
#include <gtest/gtest.h>
#include <hb-ot.h>

#include <algorithm>
#include <array>
#include <functional>

#include "platform/linux/code_page.h"
#include "platform/linux/fonts/font_finder.h"
#include "platform/linux/fonts/table_tag.h"
#include "platform/linux/pdf/font_subset.h"
#include "unit/linux_support.h"

namespace {

using namespace platform_linux::fonts;

std::array<int, 5> shape(hb_font_t* font, unsigned glyph) {
    hb_glyph_extents_t box{};
    hb_font_get_glyph_extents(font, glyph, &box);
    return {box.x_bearing, box.y_bearing, box.width, box.height, hb_font_get_glyph_h_advance(font, glyph)};
}

TEST(PdfFont, LeadsEveryByteToItsShape) {
    const auto codePage = platform_linux::dosCodePage(850);
    FontFinder finder;
    const auto& found = finder.find("Courier New", false, true, false);
    const std::optional<FontFile> file = FontFile::open(found.at(0).path, found.at(0).index);
    ASSERT_TRUE(file);
    ByteGlyphs glyphs{};
    for (std::size_t byte = 0; byte < glyphs.size(); ++byte) {
        glyphs[byte] = byte == 'X' ? 0 : file->glyph(codePage[byte]);
    }
    const std::string program = platform_linux::pdf::fontSubset(*file, glyphs);
    EXPECT_LT(program.size(), 40000U);

    const Scoped<hb_blob_t, hb_blob_destroy> blob(hb_blob_create(program.data(), static_cast<unsigned>(program.size()),
                                                                 HB_MEMORY_MODE_READONLY, nullptr, nullptr));
    const Scoped<hb_face_t, hb_face_destroy> face(hb_face_create(blob.get(), 0));
    const Scoped<hb_font_t, hb_font_destroy> font(hb_font_create(face.get()));
    const Scoped<hb_font_t, hb_font_destroy> original(hb_font_create(file->face()));
    const Scoped<hb_blob_t, hb_blob_destroy> map(hb_face_reference_table(face.get(), tableTag("cmap")));
    const auto number = [&](std::size_t offset) {
        const std::string_view bytes(hb_blob_get_data(map.get(), nullptr), hb_blob_get_length(map.get()));
        return static_cast<unsigned char>(bytes.at(offset)) * 256U + static_cast<unsigned char>(bytes.at(offset + 1));
    };
    const unsigned macTable = number(10);  // the first entry's offset, low half
    EXPECT_EQ(number(4) * 1000 + number(macTable), 1006U);
    EXPECT_EQ(number(macTable + 6) * 1000 + number(macTable + 8), 256U);

    for (unsigned byte = 0; byte < 256; ++byte) {
        hb_codepoint_t glyph = 0;
        hb_font_get_nominal_glyph(font.get(), 0xF000 + byte, &glyph);
        EXPECT_EQ(number(macTable + 10 + 2 * byte), glyph) << byte;
        EXPECT_EQ(glyph == 0, byte == 0 || byte == 'X') << byte;
        if (glyph != 0) {
            EXPECT_EQ(shape(font.get(), glyph), shape(original.get(), glyphs[byte])) << byte;
        }
    }
    EXPECT_EQ(shape(font.get(), 0)[2], 0) << "a byte without a glyph would show a box";
    EXPECT_NE(shape(original.get(), 0)[2], 0);
}

// Asks with a kept text, which gets the one that is kept behind it.
std::string familyWith(std::string& text, bool plenty = true) {
    FontFinder finder({[plenty] { return plenty; }, [](const auto&, auto) { return std::optional<std::string>(); },
                       [&text] { return text; }, [&text](const std::string& kept) { text = kept; }});
    return finder.find("Courier New", true, false, false).at(0).family;
}

TEST(PdfFont, IsNotAskedForAgainUnlessSomethingHasChanged) {
    std::string text;
    const std::string family = familyWith(text);
    auto kept = keptAnswers(text);
    ASSERT_TRUE(kept && kept->answers.size() == 4);
    for (FontAnswer& answer : kept->answers) {
        answer.fonts.at(0).family = "kept";
    }
    const std::string marked = textOf(*kept);
    text = marked;
    EXPECT_EQ(familyWith(text, false), "kept") << "nobody had to be asked";
    EXPECT_EQ(text, marked);
    const auto changed = [&](const std::function<void(KeptAnswers&)>& change) {
        KeptAnswers other = *kept;
        change(other);
        text = textOf(other);
        return familyWith(text);
    };
    EXPECT_EQ(changed([](KeptAnswers&) {}), "kept");
    EXPECT_EQ(changed([](KeptAnswers& other) { other.environment += 'x'; }), family);
    EXPECT_EQ(changed([](KeptAnswers& other) { other.stamps.back().state += '1'; }), family);
    EXPECT_EQ(changed([](KeptAnswers& other) { other.stamps.push_back({"/proc/self/exe", "-"}); }), family);
    EXPECT_EQ(familyWith(text), family) << "what was kept then";
    const auto depends = [&](const std::string& path) {
        return std::ranges::any_of(kept->stamps, [&](const FileStamp& stamp) { return stamp.path == path; });
    };
    EXPECT_TRUE(depends("/etc/fonts/fonts.conf") && depends("/etc/fonts/conf.d") && depends("/usr/share/fonts") &&
                depends(kept->answers.at(0).fonts.at(0).path));
    for (std::size_t at = 0; at < marked.size(); ++at) {
        std::string damaged = marked;
        ++damaged[at];
        ASSERT_FALSE(keptAnswers(damaged) || keptAnswers(marked.substr(0, at))) << at;
    }
}

TEST(PdfFont, RefusesFilesThatAreNoTrueTypeFonts) {
    const linux_support::TemporaryFile file;
    EXPECT_FALSE(FontFile::open(file.path(), 0));
    std::ofstream(file.path()) << std::string("\0\1\0\0\0\x10", 6) << std::string(300, '\xFF');
    EXPECT_FALSE(FontFile::open(file.path(), 0));
}

}  // namespace
