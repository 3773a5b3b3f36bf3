#include <limits>

#include "runtime/currency.h"
#include "runtime/numbers.h"
#include "runtime/utf8.h"
#include "unit/support/core_test.h"

namespace {

using runtime::Locale;

int errorNumber(const std::function<void()>& step) { return testing_support::failureOf(step).number(); }

const Locale german;
const Locale english{"en", ".", "M/d/yyyy", "h:mm:ss tt", "AM", "PM", "True", "False"};

TEST(Numbers, RoundsHalfToEvenAndOverflows) {
    const std::vector<double> numbers = {0.5, 1.5, 2.5, -0.5, -1.5, -2.4999, 2147483647.25, -2147483648.5};
    const std::vector<double> rounded = {0, 2, 2, 0, -2, -2, 2147483647.0, -2147483648.0};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        EXPECT_EQ(runtime::roundToLong(numbers[i]), rounded[i]);
    }
    EXPECT_EQ(errorNumber([] { runtime::roundToLong(2147483647.5); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::roundToLong(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::roundToInteger(32767.5); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::addInteger(32767, 1); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::addLong(2147483647, 1); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::subtractLong(-2147483647, 2); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::toSingle(1e39); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::divide(1, 0); }), 11);
    EXPECT_EQ(errorNumber([] { runtime::divide(0, 0); }), 6);
    // Currency keeps four decimals exactly.
    EXPECT_EQ(runtime::Currency::fromDouble(20.04).units(), 200400);
    EXPECT_EQ(runtime::Currency::fromDouble(0.03125).units(), 312);
    EXPECT_EQ(runtime::Currency::fromDouble(0.09375).units(), 938);
    EXPECT_EQ(errorNumber([] { runtime::Currency::fromDouble(1e15); }), 6);
}

TEST(Numbers, PrefixReadsAsFarAsItIsANumber) {
    const std::vector<std::pair<const char*, double>> rows = {
        {"1,5", 1.5}, {" 2,25 cm", 2.25}, {",5", 0.5},   {"3,", 3}, {"-1,5e2x", -150},
        {"1d2", 100}, {"1e", 1},          {"1.5", 1},    {"", 0},   {"abc", 0},
        {"-", 0},     {",", 0},           {"1,2,3", 1.2}};
    for (const auto& [text, value] : rows) {
        EXPECT_DOUBLE_EQ(runtime::numberPrefix(text, ','), value) << text;
    }
    EXPECT_EQ(errorNumber([] { runtime::numberPrefix("1e999", ','); }), 6);
    // What does not fit is 0 or an overflow, however it is written.
    const std::string zeros(400, '0');
    const std::string nines(400, '9');
    for (const std::string& tiny : {std::string("-1e-999"), "0," + zeros + "1", nines + "e-99999999999999999999"}) {
        EXPECT_EQ(runtime::numberPrefix(tiny, ','), 0) << tiny;
    }
    for (const std::string& huge : {nines + "e-50", "0," + zeros + "1e999", std::string("1e99999999999999999999")}) {
        EXPECT_EQ(errorNumber([&] { runtime::numberPrefix(huge, ','); }), 6) << huge;
    }
}

TEST(Numbers, StrictReadingTakesTheWholeTextInTheLocale) {
    EXPECT_EQ(runtime::parseNumber(" 5,5 ", german), 5.5);
    EXPECT_EQ(runtime::parseNumber("-1", german), -1);
    EXPECT_EQ(runtime::parseNumber("5.5", english), 5.5);
    for (const char* text : {"", " ", "5.5", "1 2", "5,5x", "Fach 1"}) {
        EXPECT_EQ(errorNumber([&] { runtime::parseNumber(text, german); }), 13) << text;
    }
    EXPECT_EQ(errorNumber([] { runtime::parseNumber("5,5", english); }), 13);
}

TEST(Numbers, TextHasSevenOrFifteenSignificantDigits) {
    const std::vector<std::pair<float, const char*>> rows = {
        {5.5F, "5,5"},    {2.4F, "2,4"},        {0.42333333F, "0,4233333"}, {20.997334F, "20,99733"},
        {600.0F, "600"},  {-0.25F, "-0,25"},    {1234567.0F, "1234567"},    {12345678.0F, "1,234568E+07"},
        {0.0F, "0"},      {0.0001F, "0,0001"},  {1.5e-9F, "1,5E-09"},       {1.2345e-4F, "1,2345E-04"},
        {1e30F, "1E+30"}, {9999999.6F, "1E+07"}};
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(runtime::singleText(value, german), text);
    }
    EXPECT_EQ(runtime::singleText(5.5F, english), "5.5");
    EXPECT_EQ(runtime::doubleText(0.15, german), "0,15");
    EXPECT_EQ(runtime::doubleText(1.0 / 3, german), "0,333333333333333");
    EXPECT_EQ(runtime::hexText(0xFFFF8000), "FFFF8000");
}

TEST(DateTime, IsWrittenInTheLocalesShortForm) {
    const runtime::DateTime when{2026, 1, 2, 0, 5, 7, 250};
    EXPECT_EQ(runtime::dateTimeText(when, german), "02.01.2026 00:05:07");
    EXPECT_EQ(runtime::dateTimeText(when, english), "1/2/2026 12:05:07 AM");
    EXPECT_EQ(runtime::timeText({2026, 1, 2, 13, 5, 7, 0}, english), "1:05:07 PM");
    EXPECT_FLOAT_EQ(runtime::secondsSinceMidnight(when), 307.25F);
}

TEST(Text, IsComparedInUpperCaseAndPathsAreJoined) {
    EXPECT_EQ(runtime::upperCase("Büro größer ÿ ž ı ą ŋ Щётка λ"), "BÜRO GRÖßER Ÿ Ž ı Ą Ŋ ЩЁТКА Λ");
    EXPECT_EQ(runtime::upperCase("\xFF\x80z a\xC3"), "\xFF\x80Z A\xC3");
    EXPECT_EQ(runtime::AddBackslash("C:\\KORVANO  "), "C:\\KORVANO\\");
    EXPECT_EQ(runtime::AddBackslash("C:\\"), "C:\\");
    EXPECT_EQ(runtime::AddBackslash(""), "\\");
    EXPECT_EQ(runtime::fileNameOf("C:\\A/B.OUT"), "B.OUT");
}

TEST(Text, FromOutsideIsMendedOrShownAsItIs) {
    const std::string name = "A\n\x1B ü\xC2\x85\x7F☺\xFF\xC3";
    EXPECT_EQ(runtime::shown(name), R"(A\x0A\x1B ü\x85\x7F☺\xFF\xC3)");
    EXPECT_EQ(runtime::mended("B\xFCro ☺\xE2\x98"), "B\uFFFDro ☺\uFFFD\uFFFD");
    EXPECT_FALSE(runtime::isUtf8(name));
}

}  // namespace
