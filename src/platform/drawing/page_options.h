// The options of a page, all together.
#pragma once

#include "platform/print_document.h"
#include "runtime/error.h"

namespace platform::drawing {

// The values of platform::PageOption.
struct PageOptions {
    int paperSize = paperA4;
    int paperBin = 0;
    int orientation = 1;
    int colorMode = 2;
};

inline int& valueOf(PageOptions& options, PageOption option) {
    switch (option) {
        case PageOption::paperSize:
            return options.paperSize;
        case PageOption::paperBin:
            return options.paperBin;
        case PageOption::orientation:
            return options.orientation;
        case PageOption::colorMode:
            return options.colorMode;
    }
    throw runtime::Error(runtime::errInvalidCall);
}

}  // namespace platform::drawing
