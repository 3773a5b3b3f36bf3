// Whole documents, read back with the tools of poppler-utils and with qpdf.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "platform/linux/pdf/document.h"
#include "runtime/error.h"
#include "unit/pdf_support.h"

namespace {

using pdf_support::a4Page;
using pdf_support::TemporaryFile;
using platform::Color;
using platform::TextRole;
using platform_linux::pdf::Document;

constexpr Color black{};

platform::FontRequest courier(int em, bool bold = false, bool italic = false) {
    return {"Courier New", platform::charsetOem, em, bold, italic, false};
}

// Standard output and error of a command; "#status" and its number at the end where it failed.
std::string run(const std::string& command) {
    std::string output;
    std::FILE* pipe = popen(("LC_ALL=C.UTF-8 " + command + " 2>&1").c_str(), "r");
    std::array<char, 4096> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        output.append(buffer.data(), count);
    }
    const int status = pclose(pipe);
    return status == 0 ? output : output + "#status " + std::to_string(status);
}

std::string utf8(char32_t character) {
    std::string text;
    if (character < 0x80) {
        return {static_cast<char>(character)};
    }
    if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
    }
    return text += static_cast<char>(0x80 | (character & 0x3F));
}

// Writes a document of one A4 page.
template <typename Draw>
void onePage(const TemporaryFile& file, Draw draw, const platform_linux::PdfSettings& settings) {
    Document document(settings, file.descriptor());
    document.setPage(a4Page());
    document.beginPage();
    draw(document.surface());
    document.endPage();
    document.finish();
}

template <typename Draw>
void onePage(const TemporaryFile& file, Draw draw) {
    onePage(file, draw, pdf_support::settings());
}

// Where pdftotext finds a word, in points from the sheet's top left corner.
std::array<double, 2> spanOf(const TemporaryFile& file, const std::string& word) {
    const std::string boxes = run("pdftotext -bbox " + file.path() + " -");
    std::smatch found;
    if (!std::regex_search(boxes, found, std::regex("xMin=\"([0-9.]+)\"[^>]*xMax=\"([0-9.]+)\"[^>]*>" + word + "<"))) {
        ADD_FAILURE() << word << " is not in " << boxes;
        return {};
    }
    return {std::stod(found[1]), std::stod(found[2])};
}

TEST(PdfDocument, HoldsManyPagesOfSeveralSizes) {
    static constexpr int pages = 300;  // more than two branches of the page tree
    const auto write = [](const TemporaryFile& file) {
        Document document(pdf_support::settings(), file.descriptor());
        document.setPage(a4Page());
        for (int page = 1; page <= pages; ++page) {
            document.beginPage();
            document.surface().setFont(courier(78, page % 2 == 0));
            document.surface().drawText(0, 0, "Seite " + std::to_string(page), black, TextRole::content);
            if (page == 150 || page == 151) {
                auto other = a4Page();
                if (page == 150) {
                    std::swap(other.widthPoints, other.heightPoints);
                    std::swap(other.device.horzRes, other.device.vertRes);
                    std::swap(other.device.physicalWidth, other.device.physicalHeight);
                }
                document.setPage(other);  // for the page after this one
                EXPECT_EQ(document.surface().capabilities().horzRes, page == 150 ? 4761 : 6816);
            }
            document.endPage();
            EXPECT_EQ(document.surface().capabilities().horzRes, page == 150 ? 6816 : 4761);
        }
        EXPECT_EQ(document.pageCount(), pages);
        document.beginPage();  // left open, left out
        document.finish();
    };
    const TemporaryFile file;
    write(file);
    EXPECT_NE(run("qpdf --check " + file.path()).find("No syntax or stream encoding errors"), std::string::npos);
    EXPECT_EQ(run("qpdf --show-npages " + file.path()), "300\n");
    const std::string sizes = run("pdfinfo -f 150 -l 152 " + file.path());
    EXPECT_TRUE(std::regex_search(sizes, std::regex("150 size: +595.276 x 841.89 pts[^]*151 size: +841.89 x 595.276 "
                                                    "pts[^]*152 size: +595.276 x 841.89 pts")))
        << sizes;
    EXPECT_NE(run("pdftotext -f 299 " + file.path() + " -").find("Seite 299\n\n\fSeite 300\n"), std::string::npos);
    const TemporaryFile again;
    write(again);
    EXPECT_EQ(file.content(), again.content());
}

TEST(PdfDocument, KeepsEveryByteOfTheCodePageInEveryFace) {
    const auto codePage = pdf_support::codePage850();
    const TemporaryFile file;
    onePage(file, [](platform::Surface& surface) {
        for (int face = 0; face < 4; ++face) {
            const auto found = surface.setFont(courier(78, (face & 1) != 0, (face & 2) != 0));
            EXPECT_EQ(found.name, "Courier New");
            EXPECT_EQ(found.charset, platform::charsetOem);
            for (int row = 0; row < 8; ++row) {
                std::string text = "|";
                for (int column = 0; column < 32; ++column) {
                    text += static_cast<char>(row * 32 + column);
                }
                surface.drawText(0, (face * 8 + row) * 100, text + '|', black, TextRole::content);
            }
        }
    });
    std::string expected;
    for (int face = 0; face < 4; ++face) {
        for (std::size_t byte = 1; byte < 256; ++byte) {
            const bool blank = codePage[byte] == ' ' || codePage[byte] == 0xA0;
            expected += blank ? "" : utf8(codePage[byte]);
        }
    }
    std::string text = run("pdftotext -layout " + file.path() + " -");
    text = std::regex_replace(text, std::regex("(^|\n)\\|"), "$1");
    text = std::regex_replace(text, std::regex("\\|(?=\n)|[ \n\f]|\u00A0"), "");
    EXPECT_EQ(text, expected);
    const std::string fonts = run("pdffonts " + file.path());
    for (const char* face : {"Mono ", "Mono-Bold ", "Mono-Italic ", "Mono-BoldItalic "}) {
        EXPECT_NE(fonts.find(face), std::string::npos) << fonts;
    }
}

TEST(PdfDocument, PutsTextOnThePixel) {
    const std::array<std::string, 3> names = {"Courier New", "Liberation Sans", "Liberation Serif"};
    for (const std::string& name : names) {
        const TemporaryFile file;
        int width = 0;
        onePage(file, [&](platform::Surface& surface) {
            surface.setFont({name, platform::charsetOem, 83, false, false, false});
            const std::string text = "Rechnungsnummer:MWi" + std::string(40, '.');
            width = surface.textWidth(text);
            surface.drawText(1000, 2000, text + "#", black, TextRole::content);
            surface.drawText(1000, 2100, "Ziel", black, TextRole::content);
            surface.drawText(1000 + width, 2200, "Ende", black, TextRole::content);
        });
        constexpr double tolerance = 0.05;  // points; 0.1 mm are 0.28
        EXPECT_NEAR(spanOf(file, "Ziel")[0], 1100 * 0.12, tolerance) << name;
        EXPECT_NEAR(spanOf(file, "Ende")[0], (1100 + width) * 0.12, tolerance) << name;
        // The cells of the long run add up: its last character begins where the run "Ende" does.
        EXPECT_NEAR(spanOf(file, "Rechnungsnummer:MWi\\.*#")[1] - (1100 + width) * 0.12,
                    name == "Courier New" ? 50 * 0.12 : 83 * 0.12 * (name == "Liberation Sans" ? 0.556 : 0.5), 0.15)
            << name;
    }
}

TEST(PdfDocument, ShowsEffectsOnceToReaders) {
    const TemporaryFile file;
    onePage(file, [](platform::Surface& surface) {
        surface.setFont(courier(300, true));
        surface.drawText(2, 2, "Mahnung", {128, 128, 128}, TextRole::effect);
        surface.drawText(0, 0, "Mahnung", black, TextRole::content);
        surface.drawText(60, 1060, "Rechnung", {128, 128, 128}, TextRole::effect);
        surface.drawText(0, 1000, "Rechnung", black, TextRole::content);
    });
    EXPECT_EQ(run("pdftotext " + file.path() + " - | grep -oE 'Mahnung|Rechnung'"), "Mahnung\nRechnung\n");
    EXPECT_NE(run("qpdf --check " + file.path()).find("No syntax or stream encoding errors"), std::string::npos);
}

TEST(PdfDocument, KeepsTheWidthOfCharactersThatTheFontLacks) {
    auto settings = pdf_support::settings();
    settings.codePage['X'] = 0x4E00;
    settings.codePage['Y'] = 0;
    const TemporaryFile file;
    const TemporaryFile blank;
    const auto rendered = [](const TemporaryFile& pdf) { return run("pdftoppm -r 50 -gray " + pdf.path()); };
    onePage(
        file,
        [](platform::Surface& surface) {
            EXPECT_EQ(surface.setFont(courier(78)).charset, platform::charsetOem);  // one missing is one of a few
            EXPECT_EQ(surface.textWidth(std::string_view("aXYZ\0", 5)), 5 * 47);
            surface.drawText(0, 0, std::string_view("XY\0", 3), black, TextRole::content);
        },
        settings);
    onePage(blank, [](platform::Surface&) {});
    EXPECT_EQ(rendered(file), rendered(blank));
    EXPECT_NE(run("pdftotext " + file.path() + " -").find("\u4E00"), std::string::npos);

    for (std::size_t byte = 128; byte < 160; ++byte) {
        settings.codePage[byte] = 0x4E00;
    }
    onePage(
        blank,
        [](platform::Surface& surface) { EXPECT_EQ(surface.setFont(courier(78)).charset, platform::charsetAnsi); },
        settings);
}

TEST(PdfDocument, SaysWhatItTookForAMissingFont) {
    const TemporaryFile file;
    onePage(file, [](platform::Surface& surface) {
        EXPECT_EQ(surface.setFont({"liberation mono", platform::charsetOem, 78, false, false, false}).name,
                  "liberation mono");
        const auto found = surface.setFont({"Keine Schrift (\xFF", platform::charsetOem, 78, false, false, false});
        EXPECT_FALSE(found.name.empty());
        EXPECT_EQ(found.name.find("Keine"), std::string::npos);
    });

    const TemporaryFile none;
    std::ofstream(none.path()) << "<?xml version=\"1.0\"?><fontconfig></fontconfig>";
    setenv("FONTCONFIG_FILE", none.path().c_str(), 1);
    Document document(pdf_support::settings(), file.descriptor());
    try {
        document.surface().setFont(courier(78));
        ADD_FAILURE() << "no error";
    } catch (const runtime::Error& error) {
        EXPECT_EQ(error.number(), runtime::errPrinter);
        EXPECT_NE(error.detail().find("fonts-liberation"), std::string::npos);
    }
    unsetenv("FONTCONFIG_FILE");
}

TEST(PdfDocument, SaysThatItCouldNotBeWritten) {
    const auto errorOn = [](const char* path, int mode) {
        const int descriptor = open(path, mode);
        Document document(pdf_support::settings(), descriptor);
        std::int32_t number = 0;
        try {
            document.setPage(a4Page());
            document.beginPage();
            document.surface().setFont(courier(78));
            document.surface().drawText(0, 0, "x", black, TextRole::content);
            document.endPage();
            document.finish();
        } catch (const runtime::Error& error) {
            number = error.number();
            EXPECT_NE(error.detail().find(": "), std::string::npos) << error.detail();
        }
        close(descriptor);
        return number;
    };
    EXPECT_EQ(errorOn("/dev/full", O_WRONLY), runtime::errDiskFull);
    EXPECT_EQ(errorOn("/dev/null", O_RDONLY), runtime::errDeviceIo);
    Document document(pdf_support::settings(), -1);
    EXPECT_THROW(document.beginPage(), runtime::Error);
    EXPECT_THROW(document.endPage(), runtime::Error);
}

}  // namespace
