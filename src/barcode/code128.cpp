// Code 128.
#include <array>
#include <string>
#include <vector>

#include "barcode/code128_path.h"
#include "barcode/families.h"

namespace barcode {

namespace {

// ISO/IEC 15417:2007, table 1; module counts. The stop character lacks its last bar, which is added to the symbol.
constexpr std::array<std::string_view, 107> patterns = {
    "212222", "222122", "222221", "121223", "121322", "131222", "122213", "122312", "132212", "221213", "221312",
    "231212", "112232", "122132", "122231", "113222", "123122", "123221", "223211", "221132", "221231", "213212",
    "223112", "312131", "311222", "321122", "321221", "312212", "322112", "322211", "212123", "212321", "232121",
    "111323", "131123", "131321", "112313", "132113", "132311", "211313", "231113", "231311", "112133", "112331",
    "132131", "113123", "113321", "133121", "313121", "211331", "231131", "213113", "213311", "213131", "311123",
    "311321", "331121", "312113", "312311", "332111", "314111", "221411", "431111", "111224", "111422", "121124",
    "121421", "141122", "141221", "112214", "112412", "122114", "122411", "142112", "142211", "241211", "221114",
    "413111", "241112", "134111", "111242", "121142", "121241", "114212", "124112", "124211", "411212", "421112",
    "421211", "212141", "214121", "412121", "111143", "111341", "131141", "114113", "114311", "411113", "411311",
    "113141", "114131", "311141", "411131", "211412", "211214", "211232", "233111",
};
constexpr std::string_view stop = patterns.back();
constexpr char finalBar = '2';
constexpr std::size_t modulus = 103;

// All of the data in one code set.
std::vector<std::uint8_t> valuesInOneSet(CodeSet set, std::string_view data) {
    std::vector<std::uint8_t> values{startValue(set)};
    if (set == CodeSet::c) {
        for (std::size_t index = 0; index + 1 < data.size(); index += 2) {
            values.push_back(static_cast<std::uint8_t>((data[index] - '0') * 10 + data[index + 1] - '0'));
        }
        return values;
    }
    for (const char character : data) {
        values.push_back(valueOf(set, static_cast<unsigned char>(character)));
    }
    return values;
}

std::size_t checkValue(const std::vector<std::uint8_t>& values) {
    std::size_t sum = values.front();
    for (std::size_t index = 1; index < values.size(); ++index) {
        sum += index % modulus * values[index];
    }
    return sum % modulus;
}

}  // namespace

Symbol encodeCode128(int symbology, std::string_view data) {
    Symbol symbol;
    // Code set C stands for pairs of digits.
    symbol.text = symbology == code128C && data.size() % 2 != 0 ? "0" + std::string(data) : std::string(data);
    const std::vector<std::uint8_t> values = symbology == code128    ? shortestValues(data)
                                             : symbology == code128A ? valuesInOneSet(CodeSet::a, data)
                                             : symbology == code128B ? valuesInOneSet(CodeSet::b, data)
                                                                     : valuesInOneSet(CodeSet::c, symbol.text);
    symbol.elements.reserve((values.size() + 2) * stop.size() + 1);
    for (const std::uint8_t value : values) {
        symbol.elements += patterns[value];
    }
    symbol.elements += patterns[checkValue(values)];
    (symbol.elements += stop) += finalBar;
    return symbol;
}

}  // namespace barcode
