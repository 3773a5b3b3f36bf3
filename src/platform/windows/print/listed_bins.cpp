#include "platform/windows/print/listed_bins.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

constexpr std::size_t nameLength = 24;  // of a field; a name that fills it has no end mark

// The list that the driver fills in with entries of some characters each. It may have grown since it was counted (a
// tray put in, a printer of another machine), and some drivers write more than they count: there is room to spare.
std::vector<wchar_t> list(const BinQuery& ask, WORD what, std::size_t entry) {
    constexpr int most = 0x7FFF;
    constexpr std::size_t spare = 64;
    constexpr int attempts = 3;
    int expected = ask(what, nullptr);
    for (int attempt = 0; expected > 0 && expected <= most && attempt < attempts; ++attempt) {
        const std::size_t room = static_cast<std::size_t>(expected) * 2 + spare;
        std::vector<wchar_t> entries(room * entry);
        const int count = ask(what, entries.data());
        if (count <= static_cast<int>(room)) {
            entries.resize(static_cast<std::size_t>(std::max(0, count)) * entry);
            return entries;
        }
        expected = count;  // more than it was asked for
    }
    return {};
}

}  // namespace

std::vector<platform::PaperBin> listedBins(const BinQuery& ask) {
    const std::vector<wchar_t> numbers = list(ask, DC_BINS, 1);
    const std::vector<wchar_t> names = numbers.empty() ? std::vector<wchar_t>() : list(ask, DC_BINNAMES, nameLength);
    std::vector<platform::PaperBin> bins;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const std::size_t at = index * nameLength;
        const std::wstring_view field =
            at < names.size() ? std::wstring_view(names.data() + at, nameLength) : std::wstring_view();
        bins.push_back({static_cast<std::int16_t>(numbers[index]), narrow(field.substr(0, field.find(L'\0')))});
    }
    return bins;
}

}  // namespace platform_windows::print
