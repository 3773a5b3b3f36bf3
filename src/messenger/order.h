// An order of a host inside an emulator, as KRVWINPR.COM writes it (docs/MESSENGER.md).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace messenger {

struct Order {
    std::string mark = "00000000";  // eight hexadecimal digits, by which the host knows its answer
    // In the host's DOS code page.
    std::string directory;  // "C:\FIRMA"
    std::string tail;       // the command tail, as it stands

    // Empty, or a German clause that says what is wrong with the order; the mark may be there all the same.
    std::string fault;
};

// The longest command tail that DOS has room for, in bytes.
inline constexpr std::size_t longestTail = 127;

Order readOrder(std::string_view content);

}  // namespace messenger
