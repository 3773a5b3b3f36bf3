// Draws barcodes with the program's own code onto a PDF of the program's own, a page for each, as large as the symbol
// and a quiet zone around it. For the tests that read them back.
//
//     barcode_sheet file.pdf dpi < requests > sizes
//
// A request is a line "symbology rotation ratio check text data": the ratio 0 sets none, check is 0 or 1, text is 0, 1
// (above) or 2 (below), the data is hexadecimal. The sizes are the symbols' lengths and heights in pixels, a line each.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "barcode/clsLinearBarCodes.h"
#include "platform/linux/pdf/document.h"
#include "unit/pdf_support.h"

namespace {

std::string fromHex(const std::string& digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

platform_linux::pdf::PdfPage pageOf(int width, int height, int dpi) {
    platform_linux::pdf::PdfPage page;
    page.widthPoints = 72.0 * width / dpi;
    page.heightPoints = 72.0 * height / dpi;
    page.device = {width, height, dpi, dpi, width, height, 0, 0};
    return page;
}

}  // namespace

int main(int, char** arguments) {
    const int file = open(arguments[1], O_RDWR | O_CREAT | O_TRUNC, 0644);
    const int dpi = std::atoi(arguments[2]);
    const int quietZone = dpi / 4;
    platform_linux::pdf::Document document(pdf_support::settings(), file);
    document.setPage(pageOf(dpi, dpi, dpi));

    int symbology = 0;
    int rotation = 0;
    double ratio = 0;
    bool check = false;
    int text = 0;
    std::string data;
    while (std::cin >> symbology >> rotation >> ratio >> check >> text >> data) {
        barcode::clsLinearBarCodes barcode;
        barcode.Symbology(symbology);
        barcode.BarcodeOutput(&document.surface());
        if (ratio > 0) {
            barcode.BarRatio(ratio);
        }
        barcode.UseCheckDigit(check);
        barcode.BarRotation(rotation);
        barcode.HRTextPlacement(static_cast<barcode::TextPlacement>(text));
        barcode.BarTextGap(dpi / 50);
        barcode.BarCodeX(quietZone);
        barcode.BarCodeY(quietZone);
        barcode.BarcodeHeight(dpi * 3 / 10);
        barcode.BarCodeData(fromHex(data));
        const int length = static_cast<int>(barcode.TotalBarWidth());
        const int depth = static_cast<int>(barcode.TotalBarHeight());
        std::cout << length << ' ' << depth << '\n';
        const bool upright = rotation == 90 || rotation == 270;
        document.setPage(
            pageOf((upright ? depth : length) + 2 * quietZone, (upright ? length : depth) + 2 * quietZone, dpi));
        document.beginPage();
        barcode.DrawBarCode();
        document.endPage();
    }
    document.finish();
    return close(file);
}
