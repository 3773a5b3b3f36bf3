#include "platform/windows/print/page_mode.h"

#include <algorithm>
#include <iterator>

namespace platform_windows::print {

namespace {

constexpr DWORD paperFields = DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME;

}  // namespace

PageMode::PageMode(std::size_t size) : memory_(std::max(size, sizeof(DEVMODEW))) {}

int PageMode::value(platform::PageOption option) const noexcept {
    const DEVMODEW& mode = *record();
    const auto known = [&](DWORD field, short value, int otherwise) {
        return (mode.dmFields & field) != 0 ? value : otherwise;
    };
    switch (option) {
        case platform::PageOption::paperSize:
            return known(DM_PAPERSIZE, mode.dmPaperSize, 0);
        case platform::PageOption::paperBin:
            return known(DM_DEFAULTSOURCE, mode.dmDefaultSource, 0);
        case platform::PageOption::orientation:
            return known(DM_ORIENTATION, mode.dmOrientation, DMORIENT_PORTRAIT);
        case platform::PageOption::colorMode:
            return known(DM_COLOR, mode.dmColor, DMCOLOR_COLOR);
    }
    return 0;
}

void PageMode::request(platform::PageOption option, int value) noexcept {
    DEVMODEW& mode = *record();
    const auto number = static_cast<short>(value);
    switch (option) {
        case platform::PageOption::paperSize:
            mode.dmFields = (mode.dmFields & ~paperFields) | DM_PAPERSIZE;
            mode.dmPaperSize = number;
            break;
        case platform::PageOption::paperBin:
            mode.dmFields |= DM_DEFAULTSOURCE;
            mode.dmDefaultSource = number;
            break;
        case platform::PageOption::orientation:
            mode.dmFields |= DM_ORIENTATION;
            mode.dmOrientation = number;
            break;
        case platform::PageOption::colorMode:
            mode.dmFields |= DM_COLOR;
            mode.dmColor = number;
            break;
    }
}

void PageMode::takePaperSize(const PageMode& from) noexcept {
    DEVMODEW& mode = *record();
    const DEVMODEW& other = *from.record();
    mode.dmFields = (mode.dmFields & ~paperFields) | (other.dmFields & paperFields);
    mode.dmPaperSize = other.dmPaperSize;
    mode.dmPaperLength = other.dmPaperLength;
    mode.dmPaperWidth = other.dmPaperWidth;
    std::copy(std::begin(other.dmFormName), std::end(other.dmFormName), std::begin(mode.dmFormName));
}

}  // namespace platform_windows::print
