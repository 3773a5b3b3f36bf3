#include "preview/page_facts.h"

#include <array>
#include <cmath>

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

}  // namespace preview
