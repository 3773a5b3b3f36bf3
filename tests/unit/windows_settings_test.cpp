#include "platform/windows/windows_settings_store.h"

#include "windows_support.h"

namespace {

using namespace windows_support;
using platform::SettingsRoot;
using platform::SettingsValue;

constexpr SettingsRoot user = SettingsRoot::currentUser;

// A key of the test's own, gone afterwards.
class WindowsSettingsTest : public testing::Test {
protected:
    ~WindowsSettingsTest() override {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, widen(base).c_str());
        ::RegDeleteKeyW(HKEY_CURRENT_USER, widen(base).c_str());
    }

    void setRaw(const wchar_t* name, DWORD type, const void* data, DWORD size) const {
        EXPECT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, widen(base).c_str(), name, type, data, size), ERROR_SUCCESS);
    }
    std::optional<SettingsValue> valueOf(std::string_view name) { return store.value(user, base, name); }

    std::string base = "Software\\krv-test-" + std::to_string(::GetCurrentProcessId());
    platform_windows::WindowsSettingsStore store;
};

TEST_F(WindowsSettingsTest, KeepsTextUnderKeysThatItCreates) {
    const std::string key = base + "\\Drucker\\srv\\Laser Büro";
    EXPECT_FALSE(store.keyExists(user, base));
    EXPECT_EQ(store.value(user, key, "ScaleFaktor"), std::nullopt);
    ASSERT_TRUE(store.setText(user, key, "ScaleFaktor", "5,5"));
    EXPECT_TRUE(store.keyExists(user, base + "\\DRUCKER"));
    EXPECT_EQ(store.value(user, key, "SCALEFAKTOR"), SettingsValue("5,5"));
    EXPECT_EQ(store.value(user, key, "Schacht1"), std::nullopt);

    const std::string longText(100'000, 'x');
    for (const std::string& text : {std::string(), std::string("Größe ☺"), longText, std::string("kurz")}) {
        EXPECT_TRUE(store.setText(user, key, "Name ä", text));
        EXPECT_EQ(platform_windows::WindowsSettingsStore().value(user, key, "name Ä"), SettingsValue(text));
    }
    EXPECT_TRUE(store.commit());

    // What others find there: text with its terminating NUL.
    platform_windows::RegistryKey raw;
    DWORD type = 0;
    DWORD size = 0;
    ASSERT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, widen(key).c_str(), 0, KEY_READ, raw.receive()), ERROR_SUCCESS);
    EXPECT_EQ(::RegQueryValueExW(raw.get(), L"ScaleFaktor", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(size, 4 * sizeof(wchar_t));

    EXPECT_FALSE(store.setText(user, base + "\\" + std::string(300, 'k'), "x", "y"));
    EXPECT_FALSE(store.keyExists(SettingsRoot::localMachine, base));
}

TEST_F(WindowsSettingsTest, TellsTypesApart) {
    const DWORD number = 4'294'967'295;
    setRaw(L"number", REG_DWORD, &number, sizeof(number));
    setRaw(L"short number", REG_DWORD, &number, 2);
    setRaw(L"big-endian number", REG_DWORD_BIG_ENDIAN, &number, sizeof(number));
    setRaw(L"expandable", REG_EXPAND_SZ, L"x", 4);
    setRaw(L"list", REG_MULTI_SZ, L"x\0", 6);
    setRaw(L"bytes", REG_BINARY, L"x", 4);
    setRaw(L"not terminated", REG_SZ, L"5,5", 6);
    setRaw(L"terminated twice", REG_SZ, L"5,5\0", 10);
    setRaw(L"half a character", REG_SZ, L"5,5", 5);
    setRaw(L"nothing", REG_SZ, L"", 0);

    EXPECT_EQ(valueOf("number"), SettingsValue(std::uint32_t{number}));
    EXPECT_EQ(valueOf("not terminated"), SettingsValue("5,5"));
    EXPECT_EQ(valueOf("terminated twice"), SettingsValue("5,5"));
    EXPECT_EQ(valueOf("half a character"), SettingsValue("5,"));
    EXPECT_EQ(valueOf("nothing"), SettingsValue(""));
    for (const char* name : {"short number", "big-endian number", "expandable", "list", "bytes", "missing"}) {
        EXPECT_EQ(valueOf(name), std::nullopt) << name;
    }
    // A value that was of another type becomes text.
    EXPECT_TRUE(store.setText(user, base, "number", "240"));
    EXPECT_EQ(valueOf("number"), SettingsValue("240"));
}

}  // namespace
