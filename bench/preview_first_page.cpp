// What the preview takes to read a print file, to make its first page and to paint it, without a window: milliseconds.
//
//     preview-first-page FILE DPI
#include <QImage>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "platform/linux/program/linux_platform.h"
#include "platform/linux/qt/sheet_surface.h"
#include "preview/preview_pages.h"
#include "runtime/error.h"
#include "session/session.h"

namespace {

QImage painted(const preview::PreviewPage& page, double dpi, platform_linux::qt::SheetSurface& surface) {
    platform::SheetView view;
    view.device = page.device;
    view.color = page.color;
    view.scaleX = dpi / page.device.logPixelsX;
    view.scaleY = dpi / page.device.logPixelsY;
    view.left = page.device.physicalOffsetX * view.scaleX;
    view.top = page.device.physicalOffsetY * view.scaleY;
    QImage image(static_cast<int>(std::lround(page.device.physicalWidth * view.scaleX)),
                 static_cast<int>(std::lround(page.device.physicalHeight * view.scaleY)), QImage::Format_RGB32);
    image.fill(Qt::white);
    surface.beginSheet({.first = reinterpret_cast<std::uint32_t*>(image.bits()),
                        .width = image.width(),
                        .height = image.height(),
                        .stride = static_cast<int>(image.bytesPerLine() / 4)},
                       view);
    page.recording.play(surface);
    return image;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: preview-first-page FILE DPI\n", stderr);
        return 1;
    }
    platform_linux::program::LinuxPlatform platform(argc, argv);
    session::Session session(platform.ports());
    const auto begin = std::chrono::steady_clock::now();
    try {
        preview::PreviewPages pages(session, {argv[1], "KEINEGRAFIK", "Korvano PDF", false});
        pages.read();
        pages.prepare();
        platform_linux::qt::SheetSurface surface([] {
            std::array<char32_t, 256> codePage{};
            for (char32_t code = ' '; code < 127; ++code) {
                codePage[code] = code;
            }
            codePage[0xDB] = U'█';
            return codePage;
        });
        const QImage image = painted(pages.page(1), std::atof(argv[2]), surface);
        const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
        std::printf("%.2f\n", image.isNull() ? -1.0 : took.count());
    } catch (const runtime::Error& error) {
        std::fprintf(stderr, "preview-first-page: %s\n", error.message().c_str());
        return 1;
    }
    return 0;
}
