#include "barcode/code128_path.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace barcode {

namespace {

constexpr std::size_t setCount = 3;
constexpr std::array sets = {CodeSet::a, CodeSet::b, CodeSet::c};
// Sets A and B before C where both ways are equally long, so that single digits stay among their letters.
constexpr std::array startOrder = {CodeSet::b, CodeSet::a, CodeSet::c};

constexpr std::size_t indexOf(CodeSet set) { return static_cast<std::size_t>(set); }

bool isDigit(char character) { return character >= '0' && character <= '9'; }

bool inSet(CodeSet set, char character) {
    const auto code = static_cast<unsigned char>(character);
    return set == CodeSet::a ? code < 96 : code >= 32;
}

// The other one of sets A and B.
CodeSet partner(CodeSet set) { return set == CodeSet::a ? CodeSet::b : CodeSet::a; }

// Symbol characters that are needed from a position of the data to its end, by the set in force there.
using Costs = std::array<std::uint32_t, setCount>;
constexpr std::uint32_t impossible = 0x7FFFFFFF;

class ShortestPath {
public:
    explicit ShortestPath(std::string_view data) : data_(data), costs_(data.size() + 1) {
        for (std::size_t position = data.size(); position-- > 0;) {
            Costs stay{};
            for (const CodeSet set : sets) {
                stay[indexOf(set)] = costWithoutChange(position, set);
            }
            const std::uint32_t afterChange = 1 + *std::min_element(stay.begin(), stay.end());
            for (std::size_t set = 0; set < setCount; ++set) {
                costs_[position][set] = std::min(stay[set], afterChange);
            }
        }
    }

    std::vector<std::uint8_t> values() const {
        std::vector<std::uint8_t> values;
        values.reserve(data_.size() + 2);
        CodeSet set = cheapest(0);
        values.push_back(startValue(set));
        for (std::size_t position = 0; position < data_.size();) {
            if (costWithoutChange(position, set) > costs_[position][indexOf(set)]) {
                set = cheapest(position);
                values.push_back(changeTo(set));
            }
            position = append(values, position, set);
        }
        return values;
    }

private:
    bool pairAt(std::size_t position) const {
        return position + 1 < data_.size() && isDigit(data_[position]) && isDigit(data_[position + 1]);
    }

    // From here to the end, where the next symbol character but a shift stands for data.
    std::uint32_t costWithoutChange(std::size_t position, CodeSet set) const {
        if (set == CodeSet::c) {
            return pairAt(position) ? 1 + costs_[position + 2][indexOf(set)] : impossible;
        }
        return (inSet(set, data_[position]) ? 1 : 2) + costs_[position + 1][indexOf(set)];
    }

    CodeSet cheapest(std::size_t position) const {
        if (data_.empty()) {
            return startOrder.front();
        }
        return *std::min_element(startOrder.begin(), startOrder.end(), [&](CodeSet one, CodeSet other) {
            return costWithoutChange(position, one) < costWithoutChange(position, other);
        });
    }

    static std::uint8_t changeTo(CodeSet set) {
        return static_cast<std::uint8_t>(code128_value::codeA - static_cast<int>(set));
    }

    std::size_t append(std::vector<std::uint8_t>& values, std::size_t position, CodeSet set) const {
        if (set == CodeSet::c) {
            values.push_back(static_cast<std::uint8_t>((data_[position] - '0') * 10 + data_[position + 1] - '0'));
            return position + 2;
        }
        const char character = data_[position];
        if (!inSet(set, character)) {
            values.push_back(code128_value::shift);
            set = partner(set);
        }
        values.push_back(valueOf(set, static_cast<unsigned char>(character)));
        return position + 1;
    }

    std::string_view data_;
    std::vector<Costs> costs_;
};

}  // namespace

std::uint8_t startValue(CodeSet set) {
    return static_cast<std::uint8_t>(code128_value::startA + static_cast<int>(set));
}

std::uint8_t valueOf(CodeSet set, unsigned char character) {
    return static_cast<std::uint8_t>(set == CodeSet::a && character < 32 ? character + 64 : character - 32);
}

std::vector<std::uint8_t> shortestValues(std::string_view data) { return ShortestPath(data).values(); }

}  // namespace barcode
