// Draws barcodes with the program's own code onto a PDF of the program's own, a page for each, as large as the symbol
// and a quiet zone around it. For the tests that read them back.
//
//     barcode_sheet file.pdf dpi < requests
//
// A request is a line "symbology rotation ratio text data": the ratio 0 sets none, text is 0, 1 (above) or 2 (below).
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "barcode/clsLinearBarCodes.h"
#include "platform/linux/pdf/document.h"
#include "unit/pdf_support.h"

int main(int, char** arguments) {
    const int file = open(arguments[1], O_RDWR | O_CREAT | O_TRUNC, 0644);
    const int dpi = std::atoi(arguments[2]);
    const int quietZone = dpi / 4;
    platform_linux::pdf::Document document(pdf_support::settings(), file);
    const auto setPage = [&](int width, int height) {
        document.setPage({72.0 * width / dpi, 72.0 * height / dpi, {width, height, dpi, dpi, width, height, 0, 0}});
    };
    setPage(dpi, dpi);

    int symbology = 0;
    int rotation = 0;
    double ratio = 0;
    int text = 0;
    std::string data;
    while (std::cin >> symbology >> rotation >> ratio >> text && std::getline(std::cin.ignore(), data)) {
        barcode::clsLinearBarCodes barcode;
        barcode.Symbology(symbology);
        barcode.BarcodeOutput(&document.surface());
        if (ratio > 0) {
            barcode.BarRatio(ratio);
        }
        barcode.BarRotation(rotation);
        barcode.HRTextPlacement(static_cast<barcode::TextPlacement>(text));
        barcode.BarTextGap(dpi / 50);
        barcode.BarCodeX(quietZone);
        barcode.BarCodeY(quietZone);
        barcode.BarcodeHeight(dpi * 3 / 10);
        barcode.BarCodeData(data);
        const int length = static_cast<int>(barcode.TotalBarWidth()) + 2 * quietZone;
        const int depth = static_cast<int>(barcode.TotalBarHeight()) + 2 * quietZone;
        const bool upright = rotation == 90 || rotation == 270;
        setPage(upright ? depth : length, upright ? length : depth);
        document.beginPage();
        barcode.DrawBarCode();
        document.endPage();
    }
    document.finish();
    return close(file);
}
