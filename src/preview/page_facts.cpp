#include "preview/page_facts.h"

#include <array>
#include <cmath>

#include "runtime/numbers.h"

namespace preview {

namespace {

struct Paper {
    int number = 0;  // of the printer driver's record
    const char* name = "";
};
constexpr std::array papers = {Paper{1, "Letter"}, Paper{5, "Legal"}, Paper{8, "A3"}, Paper{9, "A4"}, Paper{11, "A5"}};

long long millimetres(int pixels, int pixelsPerInch) {
    constexpr double inch = 25.4;
    return std::llround(pixels * inch / (pixelsPerInch > 0 ? pixelsPerInch : 1));
}

std::string withOneDecimal(double value, const runtime::Locale& locale) {
    return runtime::doubleText(std::round(value * 10) / 10, locale);
}

}  // namespace

std::string paperText(int paperSize, const platform::DeviceCapabilities& device) {
    for (const Paper& paper : papers) {
        if (paper.number == paperSize) {
            const long long width = millimetres(device.physicalWidth, device.logPixelsX);
            const long long height = millimetres(device.physicalHeight, device.logPixelsY);
            return std::string(paper.name) + (width > height ? " quer" : "");
        }
    }
    return std::to_string(millimetres(device.physicalWidth, device.logPixelsX)) + " x " +
           std::to_string(millimetres(device.physicalHeight, device.logPixelsY)) + " mm";
}

std::string sizeText(std::uint64_t bytes, const runtime::Locale& locale) {
    constexpr std::uint64_t kilo = 1024;
    if (bytes < kilo) {
        return std::to_string(bytes) + " Byte";
    }
    const double kilobytes = static_cast<double>(bytes) / kilo;
    return kilobytes < kilo ? withOneDecimal(kilobytes, locale) + " KB"
                            : withOneDecimal(kilobytes / kilo, locale) + " MB";
}

}  // namespace preview
