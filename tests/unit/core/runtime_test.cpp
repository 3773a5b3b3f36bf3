#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "runtime/currency.h"
#include "runtime/datetime.h"
#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"

namespace {

using runtime::Error;
using runtime::Locale;

int errorNumber(const std::function<void()>& call) {
    try {
        call();
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

Locale english() {
    Locale locale;
    locale.decimalSeparator = ".";
    locale.shortDate = "M/d/yyyy";
    locale.longTime = "h:mm:ss tt";
    locale.morning = "AM";
    return locale;
}

TEST(Numbers, RoundsHalfToEvenAndOverflows) {
    const std::vector<std::pair<double, double>> rows = {{0.5, 0},
                                                         {1.5, 2},
                                                         {2.5, 2},
                                                         {-0.5, 0},
                                                         {-1.5, -2},
                                                         {-2.4999, -2},
                                                         {2147483647.25, 2147483647.0},
                                                         {-2147483648.5, -2147483648.0}};
    for (const auto& [number, rounded] : rows) {
        EXPECT_EQ(runtime::roundToLong(number), rounded);
    }
    EXPECT_EQ(errorNumber([] { runtime::roundToLong(2147483647.5); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::roundToLong(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::roundToInteger(32767.5); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::addInteger(32767, 1); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::addLong(2147483647, 1); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::subtractLong(-2147483647, 2); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::toSingle(1e39); }), 6);
    EXPECT_EQ(errorNumber([] { runtime::divide(1, 0); }), 11);
}

TEST(Numbers, CurrencyKeepsFourDecimalsExactly) {
    using namespace runtime::literals;
    EXPECT_EQ((20.04_cur).units(), 200400);
    EXPECT_EQ(runtime::Currency::fromDouble(20.04), 20.04_cur);
    EXPECT_EQ(runtime::Currency::fromDouble(0.03125), 0.0312_cur);
    EXPECT_EQ(runtime::Currency::fromDouble(0.09375), 0.0938_cur);
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
    EXPECT_EQ(runtime::numberPrefix("1e-999", ','), 0);
}

TEST(Numbers, StrictReadingTakesTheWholeTextInTheLocale) {
    const Locale german;
    EXPECT_EQ(runtime::parseNumber(" 5,5 ", german), 5.5);
    EXPECT_EQ(runtime::parseNumber("-1", german), -1);
    EXPECT_EQ(runtime::parseNumber("5.5", english()), 5.5);
    for (const char* text : {"", " ", "5.5", "1 2", "5,5x", "Fach 1"}) {
        EXPECT_EQ(errorNumber([&] { runtime::parseNumber(text, german); }), 13) << text;
    }
    EXPECT_EQ(errorNumber([] { runtime::parseNumber("5,5", english()); }), 13);
}

TEST(Numbers, TextHasSevenOrFifteenSignificantDigits) {
    const Locale german;
    const std::vector<std::pair<float, const char*>> rows = {
        {5.5F, "5,5"},        {2.4F, "2,4"},       {0.42333333F, "0,4233333"}, {20.997334F, "20,99733"},
        {600.0F, "600"},      {-0.25F, "-0,25"},   {1234567.0F, "1234567"},    {12345678.0F, "1,234568E+07"},
        {0.0F, "0"},          {0.0001F, "0,0001"}, {1.5e-10F, "1,5E-10"},      {1e30F, "1E+30"},
        {9999999.6F, "1E+07"}};
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(runtime::singleText(value, german), text);
    }
    EXPECT_EQ(runtime::singleText(5.5F, english()), "5.5");
    EXPECT_EQ(runtime::doubleText(0.15, german), "0,15");
    EXPECT_EQ(runtime::doubleText(1.0 / 3, german), "0,333333333333333");
    EXPECT_EQ(runtime::hexText(0xFFFF8000), "FFFF8000");
}

TEST(DateTime, IsWrittenInTheLocalesShortForm) {
    const runtime::DateTime when{2026, 1, 2, 0, 5, 7, 250};
    EXPECT_EQ(runtime::dateTimeText(when, Locale()), "02.01.2026 00:05:07");
    EXPECT_EQ(runtime::dateTimeText(when, english()), "1/2/2026 12:05:07 AM");
    EXPECT_FLOAT_EQ(runtime::secondsSinceMidnight(when), 307.25F);
}

TEST(Text, UpperCaseComparesNamesWithUmlauts) {
    EXPECT_EQ(runtime::upperCase("Büro größer ÿ ž ı"), "BÜRO GRÖßER Ÿ Ž ı");
    EXPECT_EQ(runtime::upperCase("Щётка λ"), "ЩЁТКА Λ");
    const std::string broken = "a\xC3";
    EXPECT_EQ(runtime::upperCase(broken), "A\xC3");
    EXPECT_EQ(runtime::upperCase("\xFF\x80z"), "\xFF\x80Z");
}

TEST(Text, AddBackslashJoinsFolderAndFile) {
    EXPECT_EQ(runtime::AddBackslash("C:\\KORVANO  "), "C:\\KORVANO\\");
    EXPECT_EQ(runtime::AddBackslash("C:\\"), "C:\\");
    EXPECT_EQ(runtime::AddBackslash(""), "\\");
    EXPECT_EQ(runtime::fileNameOf("C:\\A/B.OUT"), "B.OUT");
}

}  // namespace
