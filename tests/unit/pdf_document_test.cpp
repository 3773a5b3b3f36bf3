// Whole documents, read back with the tools of poppler-utils and with qpdf.
#include <gtest/gtest.h>

#include <array>
#include <regex>
#include <string>

#include "platform/linux/pdf/document.h"
#include "runtime/error.h"
#include "unit/linux_support.h"
#include "unit/pdf_support.h"

namespace {

using linux_support::TemporaryFile;
using pdf_support::a4Page;
using pdf_support::run;
using platform::Color;
using platform::TextRole;
using platform_linux::pdf::Document;

constexpr Color black{};

platform::FontRequest courier(int em, bool bold = false, bool italic = false) {
    return {"Courier New", platform::charsetOem, em, bold, italic, false};
}

// Writes a document of one A4 page.
template <typename Draw>
void onePage(const TemporaryFile& file, Draw draw, const platform_linux::pdf::PdfSettings& settings) {
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
    constexpr int pages = 300;  // more than two branches of the page tree
    auto turned = a4Page();
    std::swap(turned.widthPoints, turned.heightPoints);
    std::swap(turned.device.horzRes, turned.device.vertRes);
    const TemporaryFile file;
    Document document(pdf_support::settings(), file.descriptor());
    document.setPage(a4Page());
    for (int page = 1; page <= pages; ++page) {
        document.beginPage();
        document.surface().setFont(courier(78, page % 2 == 0));
        document.surface().drawText(0, 0, "Seite " + std::to_string(page), black, TextRole::content);
        document.setPage(page == 150 ? turned : a4Page());  // for the page after this one
        EXPECT_EQ(document.surface().capabilities().horzRes, page == 151 ? 6816 : 4761);
        document.endPage();
    }
    EXPECT_EQ(document.pageCount(), pages);
    document.beginPage();  // left open, left out
    document.finish();
    EXPECT_NE(run("qpdf --check " + file.path()).find("No syntax or stream encoding errors"), std::string::npos);
    EXPECT_EQ(run("qpdf --show-npages " + file.path()), "300\n");
    EXPECT_EQ(run("pdfinfo -f 150 -l 152 " + file.path() + " | grep -o 'size: .*pts'"),
              "size:  595.276 x 841.89 pts\nsize:  841.89 x 595.276 pts\nsize:  595.276 x 841.89 pts\n");
    EXPECT_EQ(run("pdftotext -f 299 " + file.path() + " -"), "Seite 299\n\n\fSeite 300\n\n\f");
}

TEST(PdfDocument, PutsTextOfProportionalFontsOnThePixel) {
    const TemporaryFile file;
    int width = 0;
    onePage(file, [&width](platform::Surface& surface) {
        surface.setFont({"Liberation Sans", platform::charsetOem, 83, false, false, false});
        const std::string text = "Rechnungsnummer:MWi" + std::string(40, '.');
        width = surface.textWidth(text);
        surface.drawText(1000, 2000, text + "#", black, TextRole::content);
        surface.drawText(1000 + width, 2200, "Ende", black, TextRole::content);
    });
    constexpr double tolerance = 0.05;  // points; 0.1 mm are 0.28
    EXPECT_NEAR(spanOf(file, "Ende")[0], (1100 + width) * 0.12, tolerance);
    // The cells of the long run add up: its last character, .556 of the size wide, begins where the run "Ende" does.
    EXPECT_NEAR(spanOf(file, "Rechnungsnummer:MWi\\.*#")[1], (1100 + width + 83 * 0.556) * 0.12, 0.15);
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

}  // namespace
