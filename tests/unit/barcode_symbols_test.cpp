// The encoders beside an independent one, libzint.
#include <gtest/gtest.h>
#include <zint.h>

#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "barcode/code128_path.h"
#include "barcode/families.h"
#include "barcode/symbol.h"

namespace {

using namespace barcode;

// Widths in modules of libzint's bars and spaces, without a space at the end.
std::string zintElements(int symbology, const std::string& data, int checkOption = 0) {
    const std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)> symbol(ZBarcode_Create(), ZBarcode_Delete);
    symbol->symbology = symbology;
    symbol->option_2 = checkOption;
    const int result = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(data.data()),
                                       static_cast<int>(data.size()));
    EXPECT_LT(result, ZINT_ERROR) << symbol->errtxt;
    std::string elements;  // bars have odd places
    for (int module = 0; module < symbol->width; ++module) {
        const bool isBar = (symbol->encoded_data[0][module / 8] >> (module % 8) & 1) != 0;
        if (isBar != (elements.size() % 2 != 0)) {
            elements += '0';
        }
        ++elements.back();
    }
    return elements.substr(0, (elements.size() - 1) | 1U);
}

std::string codes(int first, int last) {
    std::string characters(static_cast<std::size_t>(last - first + 1), '\0');
    std::iota(characters.begin(), characters.end(), static_cast<char>(first));
    return characters;
}

std::string randomText(const std::string& alphabet, std::size_t length) {
    static std::mt19937 random{2611};
    std::string text;
    while (text.size() < length) {
        text += alphabet[random() % alphabet.size()];
    }
    return text;
}

const std::string numbers = "0123456789";

TEST(BarcodeSymbols, HaveTheCharactersAndElementsOfAnIndependentEncoder) {
    // Alphabet; libzint's number, and its option without and with a check character, none where it chooses other code
    // sets; the digit that all wide elements are, 0 where digits count modules.
    using Row = std::tuple<int, std::string, int, std::vector<int>, char>;
    const std::string capitals = numbers + "ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
    for (const auto& [symbology, alphabet, zint, checks, wide] :
         {Row{code39, capitals, BARCODE_CODE39, {0, 1}, '2'},
          Row{code39FullAscii, codes(0, 127), BARCODE_EXCODE39, {0, 1}, '2'}, Row{code128, codes(0, 127), 0, {}, 0},
          Row{code128A, codes(0, 95), 0, {}, 0}, Row{code128B, codes(32, 126), BARCODE_CODE128B, {0}, 0},
          Row{code128C, numbers, 0, {}, 0}, Row{standard2of5, numbers, BARCODE_C25IND, {0}, '3'},
          Row{interleaved2of5, numbers, BARCODE_C25INTER, {0, 1}, '2'}, Row{code93, capitals, BARCODE_CODE93, {0}, 0},
          Row{codabar, "0123456789-$:/.+", BARCODE_CODABAR, {0}, '2'},
          Row{msi, numbers, BARCODE_MSI_PLESSEY, {0, 1}, 0}, Row{code11, numbers + "-", BARCODE_CODE11, {2, 0}, '3'}}) {
        for (int code = 0; code < 256; ++code) {
            EXPECT_EQ(accepts(symbology, static_cast<unsigned char>(code)),
                      alphabet.find(static_cast<char>(code)) != std::string::npos)
                << symbology << ' ' << code;
        }
        for (std::size_t round = 0; round < 200 * checks.size(); ++round) {
            const bool check = round >= 200;
            const std::string data = randomText(alphabet, 1 + round % 24);
            const std::string framed = symbology == codabar ? "A" + data + "A" : data;
            std::string theirs = zintElements(zint, framed, checks[check ? 1 : 0]);
            for (char& digit : theirs) {
                digit = wide != 0 && digit > '1' ? wide : digit;
            }
            ASSERT_EQ(encode(symbology, data, {check, false, false}).elements, theirs)
                << symbology << ' ' << testing::PrintToString(data);
        }
    }
}

TEST(BarcodeSymbols, OfCodabarKnowEveryStartAndStopCharacter) {
    for (const char letter : {'A', 'B', 'C', 'D'}) {
        const std::string framed = std::string(1, letter) + "1" + letter;
        const std::string theirs = zintElements(BARCODE_CODABAR, framed, 0);
        const std::string_view ours = codabarStartStop(letter);
        EXPECT_TRUE(theirs.starts_with(ours) && theirs.ends_with(ours)) << letter;
    }
}

// Digits go by pairs, and characters of the other set by a change or a shift, only where that is shorter.
TEST(BarcodeSymbols, OfCode128AreTheShortestThereAre) {
    for (const std::string data : {"12", "123", "a12", "a1234", "1234a", "12345a", "a123456a", "1234\x01\x1F", "a\x01z",
                                   "a\x01\x02", "a\x01\x02\x03zz", "\x01z\x02", "\x01\x02zz", "\x01-123456-"}) {
        EXPECT_EQ(encode(code128, data, {}).elements, zintElements(BARCODE_CODE128, data))
            << testing::PrintToString(data);
    }
    for (std::size_t length = 1; length < 200; ++length) {
        const std::string any = randomText(codes(0, 127), 1 + length % 24);
        ASSERT_LE(encode(code128, any, {}).elements.size(), zintElements(BARCODE_CODE128, any).size());
        // Control characters among capitals, and pairs of digits, are in sets A and C there too.
        const std::string forA = "\x01" + randomText(codes(0, 47) + codes(58, 95), 1 + length % 24);
        ASSERT_EQ(encode(code128A, forA, {}).elements, zintElements(BARCODE_CODE128, forA));
        const std::string pairs = randomText(numbers, 2 * (1 + length % 24));
        ASSERT_EQ(encode(code128C, pairs, {}).elements, zintElements(BARCODE_CODE128, pairs));
    }
    EXPECT_EQ(encode(code128C, "123", {}).elements, encode(code128C, "0123", {}).elements);
}

TEST(BarcodeSymbols, ShowWhatPeopleAreToRead) {
    const SymbolOptions none;
    const SymbolOptions all{true, true, true};
    const SymbolOptions hidden{true, false, false};
    using Row = std::tuple<int, const char*, SymbolOptions, const char*>;
    for (const auto& [symbology, data, options, text] :
         {Row{code39, "CODE39", all, "*CODE39W*"}, Row{code39, "CODE39", hidden, "CODE39"},
          Row{code39FullAscii, "a", none, "a"}, Row{code93, "TEST93", all, "*TEST93+6*"},
          Row{code93, "K3", all, "*K3$F*"},  // the check character "($)"
          Row{code93, "A B", none, "A B"}, Row{interleaved2of5, "123", none, "0123"},
          Row{interleaved2of5, "123", all, "1236"}, Row{interleaved2of5, "1234", hidden, "01234"},
          Row{msi, "1234567", all, "12345674"}, Row{code11, "123-45", all, "123-4552"},
          Row{code11, "123-45", hidden, "123-45"}, Row{codabar, "37.1", all, "A37.1A"},
          Row{codabar, "37.1", none, "37.1"}, Row{code128C, "123", none, "0123"}}) {
        EXPECT_EQ(encode(symbology, data, options).text, text) << symbology;
    }
}

TEST(BarcodeSymbols, OfGreatLengthTakeTimeInProportion) {
    const std::string data(100'000, '7');
    EXPECT_EQ(shortestValues(data).size(), 1 + data.size() / 2);
    EXPECT_EQ(encode(code39, data, {}).elements.size(), (data.size() + 2) * 10 - 1);
}

}  // namespace
