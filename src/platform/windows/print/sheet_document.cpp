#include "platform/windows/print/sheet_document.h"

namespace platform_windows::print {

int SheetDocument::option(platform::PageOption option) const {
    platform::drawing::PageOptions options = options_;
    return valueOf(options, option);
}

void SheetDocument::setOption(platform::PageOption option, int value) {
    if (!platform::drawing::plainPrinterAccepts(option, value)) {
        throw runtime::Error(runtime::errInvalidPropertyValue);
    }
    valueOf(options_, option) = value;
    if (state_.betweenPages()) {
        takePage();
    }
}

void SheetDocument::beginPage() {
    state_.mustBeBetweenPages();
    state_.pageBegun();
}

void SheetDocument::endPage() {
    state_.mustBeOnPage();
    state_.pageEnded();
    takePage();
}

void SheetDocument::takePage() {
    surface_.setPage(platform::drawing::plainSheet(options_, 0), options_.colorMode != DMCOLOR_MONOCHROME);
}

}  // namespace platform_windows::print
