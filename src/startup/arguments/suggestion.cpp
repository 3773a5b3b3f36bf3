#include "startup/arguments/suggestion.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/text.h"

namespace startup {

namespace {

enum class Kind { switchOfJob, mode, word };

struct Known {
    std::string_view name;  // what is compared
    std::string_view written;
    Kind kind;
};

constexpr std::array known = {
    Known{"WAIT", "/WAIT", Kind::switchOfJob},
    Known{"TWOPASS", "/TWOPASS", Kind::switchOfJob},
    Known{"DEBUG", "/DEBUG", Kind::switchOfJob},
    Known{"DEBUG2", "/DEBUG2", Kind::switchOfJob},
    Known{"DRUCKERAUSWAHL", "/DRUCKERAUSWAHL", Kind::mode},
    Known{"VORSCHAU", "/VORSCHAU", Kind::mode},
    Known{"AUFTRAEGE", "/AUFTRAEGE", Kind::mode},
    Known{"INVERT", "/INVERT", Kind::mode},
    Known{"PRINTGRAPHIC", "/PRINTGRAPHIC", Kind::mode},
    Known{"HELP", "--help", Kind::word},
    Known{"HILFE", "--help", Kind::word},
    Known{"H", "-h", Kind::word},
    Known{"?", "/?", Kind::word},
    Known{"VERSION", "--version", Kind::word},
    Known{"V", "--version", Kind::word},
};

// The capitals behind the sign of a switch, umlauts written out; empty for what looks like a path or an ordinary name.
std::string nameIn(const std::string& argument) {
    std::string name = runtime::upperCase(argument.substr(std::min(argument.find_first_not_of("/-"), argument.size())));
    for (const auto& [umlaut, written] : {std::pair("Ä", "AE"), std::pair("Ö", "OE"), std::pair("Ü", "UE")}) {
        for (std::size_t at = name.find(umlaut); at != std::string::npos; at = name.find(umlaut)) {
            name.replace(at, std::string_view(umlaut).size(), written);
        }
    }
    const bool isName =
        std::ranges::all_of(name, [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '?'; });
    return isName && (argument.starts_with('/') || argument.starts_with('-')) ? name : std::string();
}

// Characters to be changed, added, left out or exchanged with their neighbour to get from one text to the other.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> last(to.size() + 1);
    std::iota(last.begin(), last.end(), 0U);
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::vector<std::size_t> row(to.size() + 1, i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t changed = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, changed});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
        before = std::exchange(last, std::move(row));
    }
    return last.back();
}

// A short word may have no other letter, or it would be taken for every short name.
std::size_t mistakesIn(std::string_view name) { return name.size() <= 2 ? 0 : name.size() <= 5 ? 1 : 2; }

}  // namespace

std::string askWhatWasMeant(const std::string& argument, std::size_t position) {
    constexpr std::size_t longest = 20;
    const std::string name = nameIn(argument);
    if (name.empty() || name.size() > longest) {
        return {};
    }
    const auto mistakes = [&](const Known& one) { return distance(name, one.name); };
    const Known& nearest = *std::ranges::min_element(known, {}, mistakes);
    if (mistakes(nearest) > mistakesIn(nearest.name)) {
        return {};
    }
    std::string question = nearest.kind == Kind::switchOfJob ? "Ist der Schalter „" : "Ist „";
    question += std::string(nearest.written) + "“ gemeint?";
    if (nearest.kind == Kind::switchOfJob && name == nearest.name) {
        question += " Er gilt nur in Großbuchstaben.";
    } else if (nearest.kind == Kind::mode && position > 1) {
        question += " Das gilt nur als erstes Argument.";
    } else if (nearest.kind == Kind::word && runtime::upperCase(argument) == runtime::upperCase(nearest.written)) {
        question += " Das gilt nur allein.";
    }
    return question;
}

}  // namespace startup
