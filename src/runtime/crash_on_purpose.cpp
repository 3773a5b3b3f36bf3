#include "runtime/crash_on_purpose.h"

#include <array>
#include <cstddef>
#include <cstdlib>

#include "runtime/error.h"

namespace runtime::development {

namespace {

void writeNowhere() {
    static int* volatile nowhere = nullptr;
    *nowhere = 1;
}

// Needs the frames of its callers, so that none of them can be given up for the next one.
int fillStack(int depth) {
    constexpr std::size_t frame = 4096;
    std::array<volatile char, frame> used;
    used[static_cast<std::size_t>(depth) % frame] = static_cast<char>(depth);
    return depth < 0 ? 0 : fillStack(depth + 1) + used[static_cast<std::size_t>(depth) % frame];
}

char throwUncaught() noexcept { return std::string_view().at(1); }

void crash(std::string_view kind) {
    if (kind == "access") {
        writeNowhere();
    } else if (kind == "abort") {
        std::abort();
    } else if (kind == "overflow") {
        fillStack(1);
    } else if (kind == "throw") {
        throwUncaught();
    } else if (kind == "illegal") {
        __builtin_trap();
    } else if (kind == "error") {
        throw Error(errInvalidCall, "mit Absicht");
    }
}

std::string_view asked() {
    static const char* const order = std::getenv("KRVWINPR_CRASH");
    return order == nullptr ? std::string_view() : order;
}

}  // namespace

void crashWhereAsked(std::string_view place) {
    const std::string_view order = asked();
    if (order.size() > place.size() && order.starts_with(place) && order[place.size()] == ':') {
        crash(order.substr(place.size() + 1));
    }
}

}  // namespace runtime::development
