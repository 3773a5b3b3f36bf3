// The settings on Windows, beside what ports_test.cpp asks of every system: values that others made.
#include "platform/windows/windows_settings_store.h"

#include "windows_support.h"

namespace {

using namespace windows_support;
using platform::SettingsValue;
using platform_windows::WindowsSettingsStore;

constexpr platform::SettingsRoot user = platform::SettingsRoot::currentUser;
const wchar_t* const testKey = LR"(Software\krv-test)";

struct TestKey {
    ~TestKey() { ::RegDeleteTreeW(HKEY_CURRENT_USER, testKey); }
};

TEST(WindowsSettings, TellTypesApart) {
    const TestKey key;
    WindowsSettingsStore store;
    const auto value = [&store] { return store.value(user, narrow(testKey), "x"); };
    const auto valueOf = [&value](DWORD type, const std::wstring& data, DWORD size) {
        ::RegSetKeyValueW(HKEY_CURRENT_USER, testKey, L"x", type, data.c_str(), size);
        return value();
    };
    EXPECT_EQ(valueOf(REG_SZ, L"5,5", 6), SettingsValue("5,5")) << "not terminated";
    EXPECT_EQ(valueOf(REG_SZ, std::wstring(L"5,5\0", 4), 10), SettingsValue("5,5")) << "terminated twice";
    EXPECT_EQ(valueOf(REG_SZ, L"5,5", 5), SettingsValue("5,")) << "half a character";
    EXPECT_EQ(valueOf(REG_SZ, L"", 0), SettingsValue(""));
    for (const DWORD other : {REG_DWORD_BIG_ENDIAN, REG_EXPAND_SZ, REG_MULTI_SZ, REG_BINARY}) {
        EXPECT_EQ(valueOf(other, L"x", 4), std::nullopt) << other;
    }
    EXPECT_EQ(valueOf(REG_DWORD, L"1", 2), std::nullopt);
    EXPECT_EQ(valueOf(REG_DWORD, L"\xFFFF\xFFFF", 4), SettingsValue(0xFFFFFFFFU));
    // A value that was of another type becomes text; others find it with its terminating NUL.
    EXPECT_TRUE(store.setText(user, narrow(testKey), "x", "240"));
    EXPECT_EQ(value(), SettingsValue("240"));
    DWORD type = 0;
    DWORD size = 0;
    ::RegGetValueW(HKEY_CURRENT_USER, testKey, L"x", RRF_RT_ANY, &type, nullptr, &size);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(size, 4 * sizeof(wchar_t));
    EXPECT_TRUE(store.commit());
    EXPECT_FALSE(store.setText(user, std::string(300, 'k'), "x", "y"));
    EXPECT_FALSE(store.commit()) << "told once";
    EXPECT_TRUE(store.commit());
}

}  // namespace

std::unique_ptr<platform::SettingsStore> support::openSettings(const TemporaryFolder&) {
    static const TestKey goneAtTheEnd;
    return std::make_unique<WindowsSettingsStore>();
}
