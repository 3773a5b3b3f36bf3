// Symbols encoded per second, beside libzint's encoding alone: "name ours theirs" a line, in symbols per second.
#include <zint.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "barcode/symbol.h"

namespace {

constexpr std::size_t symbols = 20'000;
constexpr int rounds = 9;

std::vector<std::string> labels(std::string_view alphabet) {
    std::mt19937 random(1);
    std::vector<std::string> texts(symbols);
    for (std::string& text : texts) {
        for (std::size_t length = 8 + random() % 13; length > 0; --length) {
            text += alphabet[random() % alphabet.size()];
        }
    }
    return texts;
}

template <typename Encode>
double perSecond(const std::vector<std::string>& texts, Encode encode) {
    const auto begin = std::chrono::steady_clock::now();
    std::size_t modules = 0;
    for (const std::string& text : texts) {
        modules += encode(text);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    return modules > 0 ? static_cast<double>(texts.size()) / seconds.count() : 0;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measure(const char* name, int ours, int theirs, std::string_view alphabet) {
    const std::vector<std::string> texts = labels(alphabet);
    std::vector<double> own;
    std::vector<double> others;
    zint_symbol* const symbol = ZBarcode_Create();
    for (int round = 0; round < rounds; ++round) {
        own.push_back(perSecond(
            texts, [ours](const std::string& text) { return barcode::encode(ours, text, {}).elements.size(); }));
        others.push_back(perSecond(texts, [symbol, theirs](const std::string& text) {
            ZBarcode_Clear(symbol);
            symbol->symbology = theirs;
            ZBarcode_Encode(symbol, reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
            return static_cast<std::size_t>(symbol->width);
        }));
    }
    ZBarcode_Delete(symbol);
    std::printf("%s\t%.0f\t%.0f\n", name, median(own), median(others));
}

}  // namespace

int main() {
    measure("Code 128", barcode::code128, BARCODE_CODE128, "0123456789012345678901234567890ABCDEFGHabcdefgh-/");
    measure("Code 39", barcode::code39, BARCODE_CODE39, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%");
}
