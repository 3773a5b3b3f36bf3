#include "platform/linux/linux_locale.h"

#include <gtest/gtest.h>

#include <map>

#include "platform/linux/code_page.h"

namespace {

using namespace platform_linux;
using Environment = std::map<std::string, std::string>;

TEST(LinuxLocale, FollowsTheEnvironmentCategoryByCategory) {
    // Decimal separator, date, time, yes, code page.
    const std::string german = ", dd.MM.yyyy HH:mm:ss Wahr 850";
    const std::string american = ". M/d/yyyy h:mm:ss tt True 437";
    const std::vector<std::pair<Environment, std::string>> table = {
        {{}, german},
        {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", "POSIX"}}, german},
        {{{"LANG", "_.@"}}, german},
        {{{"LANG", "de_CH.UTF-8"}}, ". dd.MM.yyyy HH:mm:ss Wahr 850"},
        {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", ""}}, american},
        {{{"LANG", "de_DE"}, {"LC_ALL", "en_GB@euro"}}, ". dd/MM/yyyy HH:mm:ss True 850"},
        {{{"LANG", "en_US"}, {"LC_NUMERIC", "de_DE"}, {"LC_TIME", "de_DE"}, {"LC_ALL", "en_US"}}, american},
        {{{"LANG", "en_US"}, {"LC_NUMERIC", "de_DE"}}, ", M/d/yyyy h:mm:ss tt True 437"},
        {{{"LANG", "de_DE"}, {"LC_TIME", "en_US"}}, ", M/d/yyyy h:mm:ss tt Wahr 850"},
        {{{"LANG", "en_US"}, {"LC_MESSAGES", "de_DE"}}, ". M/d/yyyy h:mm:ss tt Wahr 437"},
        {{{"LANG", "en_US"}, {"LC_CTYPE", "cs_CZ"}}, ". M/d/yyyy h:mm:ss tt True 852"},
        // Not on the system, whatever it has: no such territory.
        {{{"LANG", "ru_QQ.UTF-8"}}, ", yyyy-MM-dd HH:mm:ss True 866"},
        {{{"LANG", "es_MX.nosuch"}}, ". yyyy-MM-dd HH:mm:ss True 850"},
        {{{"LANG", "sr_QQ@latin"}}, ", yyyy-MM-dd HH:mm:ss True 852"},
    };
    for (const auto& [environment, expected] : table) {
        const LocaleNames names = localeNames([&variables = environment](const char* name) {
            const auto found = variables.find(name);
            return found != variables.end() ? found->second.c_str() : nullptr;
        });
        const runtime::Locale locale = localeOf(names);
        SCOPED_TRACE(testing::PrintToString(environment));
        EXPECT_EQ(locale.decimalSeparator + " " + locale.shortDate + " " + locale.longTime + " " + locale.trueText +
                      " " + std::to_string(dosCodePageOf(names.characters)),
                  expected);
        EXPECT_EQ(locale.morning.empty(), locale.shortDate == "dd.MM.yyyy");
    }
}

// Formats as the C library has them for real locales, among them one with a letter that would mean something.
TEST(LinuxLocale, TranslatesTheFormatsOfTheSystem) {
    EXPECT_EQ(patternOfFormat("%d/%m/%y"), "dd/MM/yyyy");
    EXPECT_EQ(patternOfFormat("%-d.%-m.%Y"), "d.M.yyyy");
    EXPECT_EQ(patternOfFormat("%r"), "hh:mm:ss tt");
    EXPECT_EQ(patternOfFormat("%H時%M分%S秒"), "HH時mm分ss秒");
    for (const char* format : {"%Hh%M", "%a %d.%m.%Y", "%d.%m.%", "%Y-%"}) {
        EXPECT_EQ(patternOfFormat(format), "") << format;
    }
}

TEST(DosCodePage, KnowsOneByteCodePages) {
    EXPECT_EQ(textOf("\x80\x81\x01\xFF", dosCodePage(866)), "АБ☺\u00A0");
    EXPECT_EQ(textOf("\x9F", dosCodePage(852)), "č");
    // EBCDIC, two-byte, Unicode and nonsense are none; 850 stands in.
    for (const int number : {500, 932, 65001, 0, -850, 99999}) {
        EXPECT_FALSE(isDosCodePage(number)) << number;
        EXPECT_EQ(dosCodePage(number), dosCodePage(850)) << number;
    }
    EXPECT_EQ(textOf("\xD5\x9B", dosCodePage(858)), "€ø");
    EXPECT_EQ(textOf("\xD5\x80", dosCodePage(869)), "Ω\uFFFD");
}

}  // namespace
