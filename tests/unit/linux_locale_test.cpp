#include "platform/linux/linux_locale.h"

#include <gtest/gtest.h>

#include <map>

#include "platform/linux/code_page.h"

namespace {

using namespace platform_linux;

using Environment = std::map<std::string, std::string>;

LocaleNames namesIn(const Environment& environment) {
    return localeNames([&environment](const char* name) -> const char* {
        const auto found = environment.find(name);
        return found != environment.end() ? found->second.c_str() : nullptr;
    });
}

struct Expected {
    Environment environment;
    std::string decimal;
    std::string date;
    std::string time;
    std::string yes;
    int codePage;
};

TEST(LinuxLocale, FollowsTheEnvironmentCategoryByCategory) {
    const std::string german = "dd.MM.yyyy";
    const std::string day = "HH:mm:ss";
    const std::string iso = "yyyy-MM-dd";
    const std::vector<Expected> table = {
        {{}, ",", german, day, "Wahr", 850},
        {{{"LANG", "C.UTF-8"}}, ",", german, day, "Wahr", 850},
        {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", "POSIX"}}, ",", german, day, "Wahr", 850},
        {{{"LANG", "de_AT.UTF-8"}}, ",", german, day, "Wahr", 850},
        {{{"LANG", "de_CH.UTF-8"}}, ".", german, day, "Wahr", 850},
        {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", ""}}, ".", "M/d/yyyy", "h:mm:ss tt", "True", 437},
        {{{"LANG", "de_DE"}, {"LC_ALL", "en_GB@euro"}}, ".", "dd/MM/yyyy", day, "True", 850},
        {{{"LANG", "en_US"}, {"LC_NUMERIC", "de_DE"}}, ",", "M/d/yyyy", "h:mm:ss tt", "True", 437},
        {{{"LANG", "de_DE"}, {"LC_TIME", "en_US"}}, ",", "M/d/yyyy", "h:mm:ss tt", "Wahr", 850},
        {{{"LANG", "en_US"}, {"LC_MESSAGES", "de_DE"}}, ".", "M/d/yyyy", "h:mm:ss tt", "Wahr", 437},
        {{{"LANG", "en_US"}, {"LC_CTYPE", "cs_CZ"}}, ".", "M/d/yyyy", "h:mm:ss tt", "True", 852},
        // Not on the system, whatever it has: no such territory.
        {{{"LANG", "ru_QQ.UTF-8"}}, ",", iso, day, "True", 866},
        {{{"LANG", "es_MX.nosuch"}}, ".", iso, day, "True", 850},
        {{{"LANG", "sr_QQ@latin"}}, ",", iso, day, "True", 852},
        {{{"LANG", "_.@"}}, ",", german, day, "Wahr", 850},
    };
    for (const Expected& expected : table) {
        const LocaleNames names = namesIn(expected.environment);
        const runtime::Locale locale = localeOf(names);
        SCOPED_TRACE(testing::PrintToString(expected.environment));
        EXPECT_EQ(locale.decimalSeparator, expected.decimal);
        EXPECT_EQ(locale.shortDate, expected.date);
        EXPECT_EQ(locale.longTime, expected.time);
        EXPECT_EQ(locale.trueText, expected.yes);
        EXPECT_EQ(dosCodePageOf(names.characters), expected.codePage);
        EXPECT_EQ(locale.morning.empty(), expected.date == german);
    }
}

// Formats as the C library has them for real locales, among them one with a letter that would mean something.
TEST(LinuxLocale, TranslatesTheFormatsOfTheSystem) {
    EXPECT_EQ(patternOfFormat("%d/%m/%y"), "dd/MM/yyyy");
    EXPECT_EQ(patternOfFormat("%-d.%-m.%Y"), "d.M.yyyy");
    EXPECT_EQ(patternOfFormat("%Y年%m月%d日"), "yyyy年MM月dd日");
    EXPECT_EQ(patternOfFormat("%r"), "hh:mm:ss tt");
    EXPECT_EQ(patternOfFormat("%H時%M分%S秒"), "HH時mm分ss秒");
    EXPECT_EQ(patternOfFormat("%Hh%M"), "");
    EXPECT_EQ(patternOfFormat("%a %d.%m.%Y"), "");
    EXPECT_EQ(patternOfFormat("%d.%m.%"), "");
    EXPECT_EQ(patternOfFormat("%Y-%"), "");
}

TEST(DosCodePage, KnowsOneByteCodePages) {
    EXPECT_EQ(textOf("\x80\x81\x01\xFF", dosCodePage(866)), "АБ☺\u00A0");
    EXPECT_EQ(textOf("\x9F", dosCodePage(852)), "č");
    // EBCDIC, two-byte, Unicode and nonsense are none; 850 stands in.
    for (const int number : {500, 932, 65001, 0, -850, 99999}) {
        EXPECT_FALSE(isDosCodePage(number)) << number;
        EXPECT_EQ(dosCodePage(number), dosCodePage(850)) << number;
    }
    EXPECT_EQ(textOf(std::string_view("A\0~", 3), dosCodePage(850)), "A ~");
    EXPECT_EQ(textOf("\xD5\x9B", dosCodePage(858)), "€ø");
    EXPECT_EQ(textOf("\xD5\x80", dosCodePage(869)), "Ω\uFFFD");
}

}  // namespace
