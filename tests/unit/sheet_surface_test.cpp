// Sheets on the screen, compared with the PDF of the same drawing that another program renders at the same size.
#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <functional>

#include "pictures/picture_size.h"
#include "platform/linux/qt/sheet_surface.h"
#include "unit/linux_support.h"
#include "unit/pdf_support.h"

namespace {

using linux_support::TemporaryFile;
using platform::Color;
using platform::Surface;
using platform_linux::pdf::PdfPage;
using platform_linux::qt::SheetSurface;
using Draw = std::function<void(Surface&)>;

constexpr Color black;
constexpr Color red{200, 0, 0};

PdfPage pageOf(int pixelsPerInchX, int pixelsPerInchY, bool color = true) {
    PdfPage page;
    page.widthPoints = 4 * 72;
    page.heightPoints = 2 * 72;
    const int width = 4 * pixelsPerInchX;
    const int height = 2 * pixelsPerInchY;
    page.device = {width - 40, height - 60, pixelsPerInchX, pixelsPerInchY, width, height, 20, 30};
    page.color = color;
    return page;
}

// Rendered far finer, because the renderer moves edges to whole pixels of its own.
QImage printed(const Draw& draw, const PdfPage& page, int dpi) {
    const int finer = 600 / dpi;
    const TemporaryFile file;
    pdf_support::onePage(file.descriptor(), draw, page);
    const std::string command = "pdftoppm -singlefile -r " + std::to_string(dpi * finer) + " ";
    EXPECT_EQ(pdf_support::run(command + file.path() + " " + file.path()), "");
    const QImage image(QString::fromStdString(file.path() + ".ppm"));
    return image.scaled(image.size() / finer, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

QImage shown(SheetSurface& surface, const Draw& draw, const PdfPage& page, int dpi) {
    QImage image(4 * dpi, 2 * dpi, QImage::Format_RGB32);
    image.fill(Qt::white);
    platform::SheetView view;
    view.device = page.device;
    view.color = page.color;
    view.scaleX = static_cast<double>(dpi) / page.device.logPixelsX;
    view.scaleY = static_cast<double>(dpi) / page.device.logPixelsY;
    view.left = page.device.physicalOffsetX * view.scaleX;
    view.top = page.device.physicalOffsetY * view.scaleY;
    surface.beginSheet({reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(), image.width()},
                       view);
    draw(surface);
    surface.endSheet();
    return image;
}

// Of all that is clearly not white.
QRect inkBox(const QImage& image) {
    QRect box;
    constexpr int faint = 200;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (std::min({qRed(pixel), qGreen(pixel), qBlue(pixel)}) < faint) {
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    return box;
}

// The largest difference between the mean colours of any two squares of a few pixels at the same place.
double difference(const QImage& one, const QImage& other) {
    constexpr int side = 6;
    double largest = 0;
    for (int y = 0; y + side <= one.height(); y += side / 2) {
        for (int x = 0; x + side <= one.width(); x += side / 2) {
            std::array<double, 3> sum{};
            for (int at = 0; at < side * side; ++at) {
                const QRgb a = one.pixel(x + at % side, y + at / side);
                const QRgb b = other.pixel(x + at % side, y + at / side);
                sum[0] += qRed(a) - qRed(b);
                sum[1] += qGreen(a) - qGreen(b);
                sum[2] += qBlue(a) - qBlue(b);
            }
            for (const double channel : sum) {
                largest = std::max(largest, std::abs(channel) / (side * side));
            }
        }
    }
    return largest;
}

int largestMove(const QRect& one, const QRect& other) {
    return std::max({std::abs(one.left() - other.left()), std::abs(one.top() - other.top()),
                     std::abs(one.right() - other.right()), std::abs(one.bottom() - other.bottom())});
}

platform::FontRequest font(int emHeight, bool bold = false, bool italic = false, int rotation = 0,
                           const char* name = "Courier New") {
    return {name, platform::charsetOem, emHeight, bold, italic, rotation == 0 && bold, rotation};
}

Draw text(const platform::FontRequest& font, int x, int y, const char* bytes, Color color = black) {
    return [=](Surface& surface) {
        surface.setFont(font);
        surface.drawText(x, y, bytes, color, platform::TextRole::content);
    };
}

// A frame of single pixels, one of them missing, and a dark corner: no two of its corners are alike.
Draw picture(int bitsPerPixel, int x, int y, int width, int height) {
    auto made = std::make_shared<platform::Picture>(pictures::makePicture(160, 120, bitsPerPixel));
    std::fill(made->palette.begin(), made->palette.end(), Color{255, 255, 255});
    const std::size_t pixel = made->stride() / 20;  // bytes of eight pixels
    for (std::size_t row = 0; row < 120; ++row) {
        for (std::size_t byte = 0; byte < made->stride(); ++byte) {
            const bool dark = row < 40 && byte < made->stride() / 2;
            const bool line = row % 16 == 3 || row == 119 || byte / pixel == 18;
            made->pixels[row * made->stride() + byte] = static_cast<std::uint8_t>(dark ? 0x3C : line ? 0 : 0xFF);
        }
    }
    for (std::size_t color = 0; color < made->palette.size(); ++color) {
        const auto level = static_cast<std::uint8_t>(color * 255 / (made->palette.size() - 1));
        made->palette[color] = {level, level, static_cast<std::uint8_t>(255 - (255 - level) / 2)};
    }
    return [=](Surface& surface) { surface.drawPicture(made, x, y, width, height); };
}

Draw rectangle(int x, int y, int width, int height, Color color = black) {
    return [=](Surface& surface) { surface.fillRectangle(x, y, width, height, color); };
}

Draw bars(int narrow) {
    return [=](Surface& surface) {
        for (int bar = 0; bar < 40; ++bar) {
            surface.fillRectangle(100 + bar * 3 * narrow, 200, narrow * (1 + bar % 2), 300, black);
        }
    };
}

TEST(SheetSurface, LooksAsThePdf) {
    SheetSurface surface([] { return platform_linux::dosCodePage(850); });
    const PdfPage fine = pageOf(600, 600);
    const PdfPage oblong = pageOf(600, 300);
    const PdfPage high = pageOf(180, 360);
    const PdfPage grey = pageOf(300, 300, false);
    const char* words = "Stra\xE1 12,50 \xC9\xCD\xBB Mxyg|";
    struct Row {
        const char* name;
        Draw draw;
        const PdfPage& page;
    };
    const std::vector<Row> rows = {
        {"text", text(font(100), 100, 100, words), fine},
        {"large text", text(font(700, false, true), 90, 300, "R\x81\x67"), fine},
        {"bold, underlined, red", text(font(83, true), 301, 203, words, red), fine},
        {"proportional", text(font(90, false, false, 0, "Liberation Sans"), 301, 203, words), fine},
        {"oblong pixels", text(font(50, true, true), 301, 203, words), oblong},
        {"high pixels", text(font(50), 30, 203, words), high},
        {"up", text(font(70, true, false, 90), 1000, 1100, words), fine},
        {"upside down", text(font(100, true, true, 180), 2200, 700, words), fine},
        {"down, oblong pixels", text(font(50, true, false, 270), 1000, 20, words), oblong},
        {"beyond the sheet", text(font(400, true), -150, -200, words), fine},
        {"grey", text(font(70, true), 30, 20, words, red), grey},
        {"bars", bars(12), fine},
        {"thin bars", bars(4), fine},
        {"colour", rectangle(101, 303, 777, 501, red), fine},
        {"picture shrunk", picture(1, 100, 100, 600, 500), fine},
        {"picture of the same size", picture(8, 33, 77, 160, 120), grey},
        {"picture enlarged", picture(4, 100, 100, 1900, 1300), fine},
        {"picture mirrored", picture(24, 2000, 1500, -1300, -1000), oblong},
        {"picture beyond the sheet", picture(2, -500, -300, 1500, 900), fine},
    };
    for (const Row& row : rows) {
        for (const int dpi : {96, 150}) {
            SCOPED_TRACE(row.name + (" at " + std::to_string(dpi)));
            const QImage screen = shown(surface, row.draw, row.page, dpi);
            const QImage paper = printed(row.draw, row.page, dpi);
            ASSERT_EQ(screen.size(), paper.size());
            const QRect box = inkBox(paper);
            EXPECT_FALSE(box.isEmpty());
            EXPECT_LE(largestMove(inkBox(screen), box), 1);
            EXPECT_LE(difference(screen, paper), 20);
        }
    }
}

}  // namespace
