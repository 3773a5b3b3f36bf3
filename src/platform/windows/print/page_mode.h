// What a driver is told of the coming pages: its own record with the public part in front.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/print_document.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

class PageMode {
public:
    // Room for a record of that size, to be filled by the driver.
    explicit PageMode(std::size_t size);

    DEVMODEW* record() noexcept { return reinterpret_cast<DEVMODEW*>(memory_.data()); }
    const DEVMODEW* record() const noexcept { return reinterpret_cast<const DEVMODEW*>(memory_.data()); }

    // 0 for a size or a bin that the driver does not tell; portrait and colour otherwise.
    int value(platform::PageOption option) const noexcept;

    // Asks for a value; the driver still has to agree.
    void request(platform::PageOption option, int value) noexcept;

    // Takes the paper size of another record of the same driver, one without a number too.
    void takePaperSize(const PageMode& from) noexcept;

private:
    std::vector<BYTE> memory_;
};

}  // namespace platform_windows::print
