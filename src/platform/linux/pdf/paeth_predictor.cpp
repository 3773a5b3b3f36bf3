#include "platform/linux/pdf/paeth_predictor.h"

#include <cstdlib>

namespace platform_linux::pdf {

namespace {

constexpr char paeth = 4;

int nearest(int left, int above, int corner) {
    const int farLeft = std::abs(above - corner);
    const int farAbove = std::abs(left - corner);
    const int farCorner = std::abs(left + above - 2 * corner);
    if (farLeft <= farAbove && farLeft <= farCorner) {
        return left;
    }
    return farAbove <= farCorner ? above : corner;
}

void predictRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t stride, std::size_t pixel, char* out) {
    for (std::size_t at = 0; at < pixel; ++at) {
        out[at] = static_cast<char>(row[at] - above[at]);
    }
    for (std::size_t at = pixel; at < stride; ++at) {
        out[at] = static_cast<char>(row[at] - nearest(row[at - pixel], above[at], above[at - pixel]));
    }
}

}  // namespace

std::string predicted(const std::vector<std::uint8_t>& pixels, std::size_t stride, std::size_t bytesPerPixel) {
    const std::vector<std::uint8_t> noRow(stride);
    const std::uint8_t* above = noRow.data();
    std::string rows;
    rows.resize(pixels.size() / stride * (stride + 1));
    char* out = rows.data();
    for (std::size_t start = 0; start < pixels.size(); start += stride) {
        const std::uint8_t* row = pixels.data() + start;
        *out++ = paeth;
        predictRow(row, above, stride, bytesPerPixel, out);
        out += stride;
        above = row;
    }
    return rows;
}

}  // namespace platform_linux::pdf
