// The encoders beside an independent one (libzint), and Code 128 beside an exhaustive search.
#include <gtest/gtest.h>
#include <zint.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "barcode/code128_path.h"
#include "barcode/symbol.h"

namespace {

using namespace barcode;

struct ZintDelete {
    void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

// Widths in modules of libzint's bars and spaces, without a space at the end.
std::string zintElements(int symbology, const std::string& data, int checkOption) {
    const std::unique_ptr<zint_symbol, ZintDelete> symbol(ZBarcode_Create());
    symbol->symbology = symbology;
    symbol->option_2 = checkOption;
    const int result = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(data.data()),
                                       static_cast<int>(data.size()));
    EXPECT_LT(result, ZINT_ERROR) << symbol->errtxt;
    const auto isBar = [&](int module) { return (symbol->encoded_data[0][module / 8] >> (module % 8) & 1) != 0; };
    std::string elements;
    for (int module = 0; module < symbol->width; ++module) {
        if (module > 0 && isBar(module) == isBar(module - 1)) {
            ++elements.back();
        } else {
            elements += '1';
        }
    }
    return isBar(symbol->width - 1) ? elements : elements.substr(0, elements.size() - 1);
}

// Two-width symbologies: all wide elements as one digit.
std::string twoWidths(std::string elements, char wide) {
    std::replace_if(
        elements.begin(), elements.end(), [](char digit) { return digit > '1'; }, wide);
    return elements;
}

std::string codes(int first, int last) {
    std::string characters;
    for (int code = first; code <= last; ++code) {
        characters += static_cast<char>(code);
    }
    return characters;
}

class RandomText {
public:
    std::string operator()(const std::string& alphabet, std::size_t length) {
        std::string text;
        for (std::size_t index = 0; index < length; ++index) {
            text += alphabet[random_() % alphabet.size()];
        }
        return text;
    }
    std::size_t length() { return 1 + random_() % 24; }

private:
    std::mt19937 random_{2611};
};

TEST(BarcodeSymbols, HaveTheElementsOfAnIndependentEncoder) {
    struct Case {
        int symbology;
        bool check;
        std::string alphabet;
        int zint;
        int zintCheck;
        char wide;  // 0 where digits count modules
    };
    const std::string code39Set = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
    const std::string digitSet = "0123456789";
    const std::vector<Case> cases = {
        {code39, false, code39Set, BARCODE_CODE39, 0, '2'},
        {code39, true, code39Set, BARCODE_CODE39, 1, '2'},
        {code39FullAscii, false, codes(0, 127), BARCODE_EXCODE39, 0, '2'},
        {code39FullAscii, true, codes(0, 127), BARCODE_EXCODE39, 1, '2'},
        {code128B, false, codes(32, 126), BARCODE_CODE128B, 0, 0},
        {standard2of5, false, digitSet, BARCODE_C25IND, 0, '3'},
        {interleaved2of5, false, digitSet, BARCODE_C25INTER, 0, '2'},
        {interleaved2of5, true, digitSet, BARCODE_C25INTER, 1, '2'},
        {code93, false, code39Set, BARCODE_CODE93, 0, 0},
        {codabar, false, "0123456789-$:/.+", BARCODE_CODABAR, 0, '2'},
        {msi, false, digitSet, BARCODE_MSI_PLESSEY, 0, 0},
        {msi, true, digitSet, BARCODE_MSI_PLESSEY, 1, 0},
        {code11, false, "0123456789-", BARCODE_CODE11, 2, '3'},
        {code11, true, "0123456789-", BARCODE_CODE11, 0, '3'},
    };
    RandomText random;
    for (const Case& entry : cases) {
        for (int round = 0; round < 200; ++round) {
            const std::string data = random(entry.alphabet, random.length());
            const std::string framed = entry.symbology == codabar ? "A" + data + "A" : data;
            const std::string ours = encode(entry.symbology, data, {entry.check, false, false}).elements;
            const std::string theirs = zintElements(entry.zint, framed, entry.zintCheck);
            const std::string widths = entry.wide == 0 ? theirs : twoWidths(theirs, entry.wide);
            ASSERT_EQ(ours, widths) << entry.symbology << ' ' << testing::PrintToString(data);
        }
    }
}

int modules(const std::string& elements) {
    int sum = 0;
    for (const char digit : elements) {
        sum += digit - '0';
    }
    return sum;
}

// Symbol characters between start and check character; the stop character has 13 modules, all others 11.
int codewords(const std::string& elements) { return (modules(elements) - 13) / 11 - 2; }

// Reads the data back by patterns that libzint made: of each value of code set C, and of each character in A and B.
class Code128Reader {
public:
    Code128Reader() {
        for (int value = 0; value < 100; ++value) {
            const std::string pair{static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
            values_[zintElements(BARCODE_CODE128, pair + pair, 0).substr(6, 6)] = value;
        }
        values_["114131"] = 100;  // these stand for no data, so no data makes them appear
        values_["311141"] = 101;
        values_["211412"] = 103;
        values_["211214"] = 104;
        values_["211232"] = 105;
        values_["411131"] = 102;
    }

    std::string read(const std::string& elements) const {
        EXPECT_EQ(elements.substr(elements.size() - 7), "2331112");
        std::vector<int> values;
        for (std::size_t at = 0; at + 7 < elements.size(); at += 6) {
            values.push_back(values_.at(elements.substr(at, 6)));
        }
        int sum = values.at(0);
        for (std::size_t index = 1; index + 1 < values.size(); ++index) {
            sum += static_cast<int>(index) * values[index];
        }
        EXPECT_EQ(values.back(), sum % 103);
        return decode(values);
    }

private:
    static std::string decode(const std::vector<int>& values) {
        std::string data;
        int set = values.at(0) - 103;
        for (std::size_t index = 1; index + 1 < values.size(); ++index) {
            const bool shifted = set != 2 && values[index] == 98;
            const int value = shifted ? values[++index] : values[index];
            const int inSet = shifted ? 1 - set : set;
            if (inSet == 2 && value < 100) {
                data += {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
            } else if (value == 99 && inSet != 2) {
                set = 2;
            } else if (value == 100 || value == 101) {
                set = 101 - value;
            } else {
                data += static_cast<char>(inSet == 0 && value >= 64 ? value - 64 : value + 32);
            }
        }
        return data;
    }

    std::map<std::string, int> values_;
};

TEST(BarcodeSymbols, OfCode128CarryTheirDataInWhateverCodeSets) {
    const Code128Reader reader;
    RandomText random;
    for (int round = 0; round < 300; ++round) {
        const std::string any = random(codes(0, 127), random.length());
        const std::string symbol = encode(code128, any, {}).elements;
        ASSERT_EQ(reader.read(symbol), any);
        ASSERT_LE(modules(symbol), modules(zintElements(BARCODE_CODE128, any, 0)));
        const std::string capitals = random(codes(0, 95), random.length());
        ASSERT_EQ(reader.read(encode(code128A, capitals, {}).elements), capitals);
        const std::string numbers = random("0123456789", 2 * random.length());
        ASSERT_EQ(encode(code128C, numbers, {}).elements, zintElements(BARCODE_CODE128, numbers, 0));
    }
    EXPECT_EQ(encode(code128C, "123", {}).elements, encode(code128C, "0123", {}).elements);
}

// Fewest symbol characters behind the start character, found by trying everything.
class Exhaustive {
public:
    int shortest(const std::string& data) {
        best_ = static_cast<int>(3 * data.size() + 1);
        for (int set = 0; set < 3; ++set) {
            search(data, 0, set, 0);
        }
        return best_;
    }

private:
    static bool inSet(char character, int set) { return set == 0 ? character < 96 : character >= 32; }
    static bool isDigit(char character) { return character >= '0' && character <= '9'; }

    void search(const std::string& data, std::size_t at, int set, int used, bool changed = false) {
        if (used >= best_) {
            return;
        }
        if (at == data.size()) {
            best_ = used;
            return;
        }
        if (set == 2) {
            if (at + 1 < data.size() && isDigit(data[at]) && isDigit(data[at + 1])) {
                search(data, at + 2, set, used + 1);
            }
        } else {
            search(data, at + 1, set, used + (inSet(data[at], set) ? 1 : 2));
        }
        for (int other = 0; other < 3 && !changed; ++other) {
            if (other != set) {
                search(data, at, other, used + 1, true);
            }
        }
    }

    int best_ = 0;
};

TEST(BarcodeSymbols, OfCode128AreTheShortestThereAre) {
    const std::string alphabet =
        "1a\x01"
        "A";
    Exhaustive exhaustive;
    for (std::size_t length = 1; length <= 7; ++length) {
        std::string data(length, alphabet[0]);
        for (std::size_t number = 0; number < std::size_t{1} << (2 * length); ++number) {
            for (std::size_t index = 0; index < length; ++index) {
                data[index] = alphabet[number >> (2 * index) & 3];
            }
            ASSERT_EQ(shortestValues(data).size() - 1, static_cast<std::size_t>(exhaustive.shortest(data)))
                << testing::PrintToString(data);
        }
    }
    for (const char* const before : {"", "a", "\x01", "a\x01"}) {
        for (const char* const behind : {"", "a", "\x01", "\x01z"}) {
            for (std::size_t count = 1; count <= 12; ++count) {
                const std::string data = before + std::string(count, '5') + behind;
                ASSERT_EQ(codewords(encode(code128, data, {}).elements), exhaustive.shortest(data)) << data;
            }
        }
    }
}

TEST(BarcodeSymbols, AcceptTheirOwnCharactersOnly) {
    std::map<int, std::string> accepted;
    for (int symbology = code39; symbology <= code11; ++symbology) {
        for (int code = 0; code < 256; ++code) {
            if (accepts(symbology, static_cast<unsigned char>(code))) {
                accepted[symbology] += static_cast<char>(code);
            }
        }
    }
    const std::string numbers = "0123456789";
    const std::string capitals = " $%+-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::map<int, std::string> expected = {
        {code39, capitals},
        {code39FullAscii, codes(0, 127)},
        {code128, codes(0, 127)},
        {code128A, codes(0, 95)},
        {code128B, codes(32, 126)},
        {code128C, numbers},
        {standard2of5, numbers},
        {interleaved2of5, numbers},
        {code93, capitals},
        {codabar, "$+-./0123456789:"},
        {msi, numbers},
        {code11, "-0123456789"},
    };
    EXPECT_EQ(accepted, expected);
}

TEST(BarcodeSymbols, ShowWhatPeopleAreToRead) {
    struct Case {
        int symbology;
        std::string data;
        SymbolOptions options;
        std::string text;
    };
    const SymbolOptions all{true, true, true};
    const SymbolOptions hiddenCheck{true, false, false};
    const std::vector<Case> cases = {
        {code39, "CODE39", all, "*CODE39W*"},
        {code39, "CODE39", hiddenCheck, "CODE39"},
        {code39FullAscii, "a", {}, "a"},
        {code93, "TEST93", all, "*TEST93+6*"},
        {code93, "K3", all, "*K3$F*"},  // the check character "($)"
        {code93, "A B", {}, "A B"},
        {interleaved2of5, "123", {}, "0123"},
        {interleaved2of5, "123", all, "1236"},
        {interleaved2of5, "1234", hiddenCheck, "01234"},
        {msi, "1234567", all, "12345674"},
        {code11, "123-45", all, "123-4552"},
        {codabar, "37.1", all, "A37.1A"},
        {code128C, "123", {}, "0123"},
    };
    for (const Case& entry : cases) {
        EXPECT_EQ(encode(entry.symbology, entry.data, entry.options).text, entry.text) << entry.symbology;
    }
    EXPECT_EQ(encode(interleaved2of5, "123", {}).elements, encode(interleaved2of5, "0123", {}).elements);
}

TEST(BarcodeSymbols, OfGreatLengthTakeTimeInProportion) {
    const std::string data(100'000, '7');
    EXPECT_EQ(codewords(encode(code128, data, {}).elements), 50'000);
    EXPECT_EQ(encode(code39, data, {}).elements.size(), (data.size() + 2) * 10 - 1);
}

}  // namespace
