// What the tests and measurements of the PDF module share.
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include "platform/linux/code_page.h"
#include "platform/linux/pdf/document.h"

namespace pdf_support {

// A4 at 600 pixels per inch with margins of 100 pixels.
inline platform_linux::pdf::PdfPage a4Page() {
    platform_linux::pdf::PdfPage page;
    page.widthPoints = 595.276;
    page.heightPoints = 841.89;
    page.device = {4761, 6816, 600, 600, 4961, 7016, 100, 100};
    return page;
}

inline platform_linux::pdf::PdfSettings settings() {
    platform_linux::pdf::PdfSettings settings;
    settings.title = "Bericht";
    settings.producer = "KRVWinPr";
    settings.created = 1795268707;  // 2026-11-21 13:45:07 UTC
    settings.codePage = platform_linux::dosCodePage(850);
    return settings;
}

// Writes a document of one page.
template <typename Draw>
void onePage(int file, Draw draw, const platform_linux::pdf::PdfPage& page = a4Page(),
             const platform_linux::pdf::PdfSettings& with = settings()) {
    platform_linux::pdf::Document document(with, file);
    document.setPage(page);
    document.beginPage();
    draw(document.surface());
    document.endPage();
    document.finish();
}

// Standard output and error of a command; "#status" and its number at the end where it failed.
inline std::string run(const std::string& command) {
    std::string output;
    std::FILE* pipe = popen(("LC_ALL=C.UTF-8 " + command + " 2>&1").c_str(), "r");
    std::array<char, 4096> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        output.append(buffer.data(), count);
    }
    const int status = pclose(pipe);
    return status == 0 ? output : output + "#status " + std::to_string(status);
}

}  // namespace pdf_support
