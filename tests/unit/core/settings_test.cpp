#include <gtest/gtest.h>

#include "settings/MRegistry.h"
#include "settings/printer_settings.h"
#include "settings/selection_file.h"
#include "unit/support/fake_platform.h"

namespace {

using platform::SettingsRoot;
using testing_support::FakePlatform;

constexpr const char* key30 = "Software\\Velmora\\KRVWinPr\\3.0";
constexpr const char* key20 = "Software\\Velmora\\KRVWinPr\\2.0";

class SettingsTest : public ::testing::Test {
protected:
    std::string stored(const std::string& key, std::string_view name) {
        const auto value = host.settings.value(SettingsRoot::currentUser, key, name);
        return value ? std::get<std::string>(*value) : "(fehlt)";
    }

    FakePlatform host;
    session::Session session{host.ports};
};

TEST_F(SettingsTest, PathsBeginWithARootName) {
    using settings::MRegistry::pGetPredefinedKey;
    EXPECT_EQ(pGetPredefinedKey("hkcu"), SettingsRoot::currentUser);
    EXPECT_EQ(pGetPredefinedKey("HKEY_LOCAL_MACHINE"), SettingsRoot::localMachine);
    EXPECT_EQ(pGetPredefinedKey("HKCR"), SettingsRoot::classesRoot);
    EXPECT_EQ(pGetPredefinedKey("HKU"), SettingsRoot::users);
    try {
        settings::MRegistry::GetRegistryValue(host.settings, "Hkxx\\a", "b", "");
        FAIL();
    } catch (const runtime::Error& error) {
        EXPECT_EQ(error.number(), static_cast<std::int32_t>(0x80046978U));
        EXPECT_EQ(error.source(), "pGetPredefinedKey");
        EXPECT_EQ(error.description(), "not defined yet!Hkxx");
    }
    EXPECT_EQ(settings::MRegistry::GetRegistryValue(host.settings, "HKCU", "b", "d"), "d");
    settings::MRegistry::SetRegistryValue(host.settings, "\\HKCU", "b", "c", "d");
    EXPECT_FALSE(settings::MRegistry::RegistryKeyExists(host.settings, "HKCU"));
    EXPECT_TRUE(host.settings.keys.empty());
    host.settings.put("a", "b", std::string("c"));
    EXPECT_EQ(settings::MRegistry::GetRegistryValue(host.settings, "\\HKCU\\a", "b", "d"), "c");
}

TEST_F(SettingsTest, DefaultsAreNotStoredButExistingValuesAreOverwritten) {
    const auto set = [this](const char* text, std::string_view byDefault) {
        settings::MRegistry::SetRegistryValue(host.settings, "HKCU\\a", "b", text, byDefault);
    };
    set("0", "0");
    EXPECT_EQ(stored("a", "b"), "(fehlt)");
    set("5", "0");
    set("0", "0");
    EXPECT_EQ(stored("a", "b"), "0");
    settings::MRegistry::SetRegistryValue(host.settings, "HKCU\\a", "c", "0", settings::MRegistry::noDefault);
    EXPECT_EQ(stored("a", "c"), "0");
}

TEST_F(SettingsTest, AFreshUserHasTheDefaults) {
    const auto settings = settings::loadPrinterSettings(session, "Laser 1", 2);
    EXPECT_EQ(settings.lngLinkerRand, 0);
    EXPECT_EQ(settings.lngKopfabstand, 500);
    EXPECT_EQ(settings.lngZeilenabstand, 222);
    EXPECT_EQ(settings.sngScaleFaktor, 5.5F);
    EXPECT_EQ(settings.lngColorMode, 2);
    EXPECT_EQ(stored(key30, "LastDriverUsed"), "Laser 1");
    EXPECT_EQ(host.settings.keys.size(), 1U);
}

TEST_F(SettingsTest, ValuesAreReadByTypeAndLocaleAndFallBackSilently) {
    const std::string key = std::string(key30) + "\\Drucker\\Laser 1";
    host.settings.put(key, "Zeilenabstand", std::uint32_t{240});
    host.settings.put(key, "LinkerRand", std::uint32_t{0xFFFFFFF6});
    host.settings.put(key, "ObererRand", std::string("viel"));
    host.settings.put(key, "ScaleFaktor", std::string("4,4"));
    auto settings = settings::loadPrinterSettings(session, "Laser 1", 0);
    EXPECT_EQ(settings.lngZeilenabstand, 240);
    EXPECT_EQ(settings.lngLinkerRand, -10);
    EXPECT_EQ(settings.lngKopfabstand, 500);
    EXPECT_EQ(settings.sngScaleFaktor, 4.4F);
    host.system.userLocale.decimalSeparator = ".";
    host.settings.put(key, "ObererRand", std::string("99999999999"));
    settings = settings::loadPrinterSettings(session, "Laser 1", 0);
    EXPECT_EQ(settings.sngScaleFaktor, 5.5F);
    EXPECT_EQ(settings.lngKopfabstand, 500);
}

TEST_F(SettingsTest, OldSettingsAreCarriedOverOnce) {
    const std::string oldKey = std::string(key20) + "\\Drucker\\srv\\Laser";
    const std::string newKey = std::string(key30) + "\\Drucker\\srv\\Laser";
    host.settings.put(oldKey, "LinkerRand", std::string("120"));
    host.settings.put(oldKey, "ScaleFaktor", std::string("4,4"));
    host.settings.put(oldKey, "Schacht2", std::string("258"));
    host.settings.put(oldKey, "Schacht3", std::string("-1"));
    host.settings.put(oldKey, "Schacht4", std::string("7"));
    session.log.debugging(true);

    const auto settings = settings::loadPrinterSettings(session, "\\\\srv\\Laser", 1);
    EXPECT_EQ(settings.lngLinkerRand, 120);
    EXPECT_EQ(settings.sngScaleFaktor, 4.4F);
    EXPECT_EQ(stored(key30, "LastDriverUsed"), "\\\\srv\\Laser");
    const std::vector<std::pair<const char*, const char*>> expected = {
        {"Zeilenabstand", "222"}, {"ScaleFaktor", "4,4"},  {"Schacht1", "(fehlt)"},
        {"Schacht2", "258"},      {"Schacht3", "(fehlt)"}, {"Schacht4", "(fehlt)"}};
    for (const auto& [name, value] : expected) {
        EXPECT_EQ(stored(newKey, name), value) << name;
    }
    EXPECT_EQ(host.logLines(),
              (std::vector<std::string>{">     UNC-Druckername erkannt, führende \\\\ gekürzt: srv\\Laser",
                                        ">     letzten Treiber speichern", ">     Versionupgradecheck",
                                        ">       alte Werte lesen", ">       neue schreiben",
                                        ">     bestehende Werte lesen srv\\Laser"}));

    host.settings.put(oldKey, "LinkerRand", std::string("999"));
    EXPECT_EQ(settings::loadPrinterSettings(session, "\\\\srv\\Laser", 1).lngLinkerRand, 120);
}

TEST_F(SettingsTest, TheSelectionFileRemembersThePrinterUpToAComma) {
    EXPECT_EQ(settings::readSelectionFile(host.system), "");
    settings::writeSelectionFile(host.system, "Laser 1");
    EXPECT_EQ(host.system.files.at("C:\\KORVANO\\KRVWIN.ASW"), "Laser 1\r\n");
    EXPECT_EQ(settings::readSelectionFile(host.system), "Laser 1");
    settings::writeSelectionFile(host.system, "Büro, links");
    EXPECT_EQ(settings::readSelectionFile(host.system), "Büro");
    host.system.files["C:\\KORVANO\\KRVWIN.ASW"] = "";
    EXPECT_EQ(settings::readSelectionFile(host.system), "");
}

}  // namespace
