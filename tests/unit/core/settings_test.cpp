#include "settings/MRegistry.h"
#include "settings/selection_file.h"
#include "unit/support/core_test.h"

namespace {

using platform::SettingsRoot;
namespace registry = settings::MRegistry;

constexpr const char* key30 = "Software\\Velmora\\KRVWinPr\\3.0";
constexpr const char* printersOf30 = "Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\";
constexpr const char* printersOf20 = "Software\\Velmora\\KRVWinPr\\2.0\\Drucker\\";

class SettingsTest : public testing_support::CoreTest {
protected:
    std::string stored(const std::string& key, std::string_view name) {
        const auto value = host.settings.value(SettingsRoot::currentUser, key, name);
        return value ? std::get<std::string>(*value) : "(fehlt)";
    }
};

TEST_F(SettingsTest, PathsBeginWithARootName) {
    EXPECT_EQ(registry::pGetPredefinedKey("hkcu"), SettingsRoot::currentUser);
    EXPECT_EQ(registry::pGetPredefinedKey("HKEY_LOCAL_MACHINE"), SettingsRoot::localMachine);
    EXPECT_EQ(registry::pGetPredefinedKey("HKU"), SettingsRoot::users);
    EXPECT_EQ(testing_support::failureText([&] { registry::GetRegistryValue(host.settings, "Hkxx\\a", "b", ""); }),
              std::to_string(static_cast<std::int32_t>(0x80046978U)) + " pGetPredefinedKey: not defined yet!Hkxx");
    EXPECT_EQ(registry::GetRegistryValue(host.settings, "HKCU", "b", "d"), "d");
    registry::SetRegistryValue(host.settings, "\\HKCU", "b", "c", "d");
    EXPECT_FALSE(registry::RegistryKeyExists(host.settings, "HKCU"));
    EXPECT_TRUE(host.settings.keys.empty());
    host.settings.put("a", "b", std::string("c"));
    EXPECT_EQ(registry::GetRegistryValue(host.settings, "\\HKCU\\a", "b", "d"), "c");
}

TEST_F(SettingsTest, DefaultsAreNotStoredButExistingValuesAreOverwritten) {
    const auto set = [this](const char* text) { registry::SetRegistryValue(host.settings, "HKCU\\a", "b", text, "0"); };
    set("0");
    EXPECT_EQ(stored("a", "b"), "(fehlt)");
    set("5");
    set("0");
    EXPECT_EQ(stored("a", "b"), "0");
}

TEST_F(SettingsTest, ValuesAreReadByTypeAndLocaleAndFallBackWhichOneLineTells) {
    const auto loaded = [this] {
        const auto values = settings::loadPrinterSettings(session, "Laser 1", 2);
        return std::tuple(values.lngLinkerRand, values.lngKopfabstand, values.lngZeilenabstand, values.sngScaleFaktor,
                          values.lngColorMode);
    };
    EXPECT_EQ(loaded(), std::tuple(0, 500, 222, 5.5F, 2));
    EXPECT_EQ(stored(key30, "LastDriverUsed"), "Laser 1");
    EXPECT_EQ(host.settings.keys.size(), 1U);
    const std::string key = std::string(printersOf30) + "Laser 1";
    host.settings.put(key, "Zeilenabstand", std::uint32_t{240});
    host.settings.put(key, "LinkerRand", std::uint32_t{0xFFFFFFF6});
    host.settings.put(key, "ObererRand", std::string());
    host.settings.put(key, "IgnorePaperSize", std::string());
    host.settings.put(key, "ScaleFaktor", std::string("4,4"));
    EXPECT_EQ(loaded(), std::tuple(-10, 500, 240, 4.4F, 2));
    EXPECT_FALSE(settings::ignoresPaperSize(host.settings, "Laser 1"));
    EXPECT_TRUE(host.dialogs.diagnostics.empty()) << "what is empty is missing";
    host.system.userLocale.decimalSeparator = ".";
    host.settings.put(key, "ObererRand", std::string("99999999999"));
    EXPECT_EQ(loaded(), std::tuple(-10, 500, 240, 5.5F, 2));
    const std::string place = "“ unter HKCU\\" + key + " (settings) ist „";
    EXPECT_EQ(host.dialogs.diagnostics,
              (testing_support::Lines{"Die Einstellung „ObererRand" + place +
                                          "99999999999“; erwartet: eine ganze Zahl von -2147483648 bis 2147483647. "
                                          "Es gilt 500.",
                                      "Die Einstellung „ScaleFaktor" + place +
                                          "4,4“; erwartet: eine Zahl, geschrieben wie 5.5. Es gilt 5.5."}));
}

TEST_F(SettingsTest, OldSettingsAreCarriedOverOnce) {
    session.log.debugging(true);
    using Row = std::pair<const char*, const char*>;
    for (const auto& [name, value] : {Row{"LinkerRand", "120"}, Row{"ObererRand", "600"}, Row{"ScaleFaktor", "4,4"},
                                      Row{"Schacht2", "-1"}, Row{"Schacht3", "258"}, Row{"Schacht4", "7"}}) {
        host.settings.put(std::string(printersOf20) + "srv\\Laser", name, std::string(value));
    }
    EXPECT_EQ(settings::loadPrinterSettings(session, R"(\\srv\Laser)", 1).lngLinkerRand, 120);
    EXPECT_EQ(stored(key30, "LastDriverUsed"), R"(\\srv\Laser)");
    const std::map<std::string, platform::SettingsValue> carriedOver = {{"LINKERRAND", "120"},
                                                                        {"OBERERRAND", "600"},
                                                                        {"ZEILENABSTAND", "222"},
                                                                        {"SCALEFAKTOR", "4,4"},
                                                                        {"SCHACHT3", "258"}};
    EXPECT_EQ(host.settings.keys.at(runtime::upperCase(std::string(printersOf30) + "srv\\Laser")), carriedOver);
    EXPECT_TRUE(host.logged(R"(>     UNC-Druckername erkannt, führende \\ gekürzt: srv\Laser)"));
    EXPECT_TRUE(host.logged(">       alte Werte lesen") && host.logged(">       neue schreiben"));

    host.settings.put(std::string(printersOf20) + "srv\\Laser", "LinkerRand", std::string("999"));
    EXPECT_EQ(settings::loadPrinterSettings(session, R"(\\srv\Laser)", 1).lngLinkerRand, 120);
}

TEST_F(SettingsTest, TheSelectionFileRemembersThePrinterUpToAComma) {
    EXPECT_EQ(settings::readSelectionFile(host.system), "");
    settings::writeSelectionFile(host.system, "Laser 1");
    std::string& content = host.system.files.at("C:\\KORVANO\\KRVWIN.ASW");
    EXPECT_EQ(content, "Laser 1\r\n");
    using Row = std::pair<const char*, const char*>;
    for (const auto& [written, read] : {Row{"Laser 1\r\n", "Laser 1"}, Row{" Büro, links", "Büro"}, Row{"", ""},
                                        Row{"\"Büro, links\"\r\n", "Büro, links"}}) {
        content = written;
        EXPECT_EQ(settings::readSelectionFile(host.system), read);
    }
}

}  // namespace
