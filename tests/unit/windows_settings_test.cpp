// The settings on Windows, beside what ports_test.cpp asks of every system: values that others made.
#include "platform/windows/windows_settings_store.h"

#include "support/ports_test.h"
#include "windows_support.h"

namespace {

using namespace windows_support;
using platform::SettingsValue;
using platform_windows::WindowsSettingsStore;

const wchar_t* const testKey = LR"(Software\krv-test)";

class TestKey : public support::SettingsPlace {
public:
    TestKey() = default;
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, testKey); }

    std::unique_ptr<platform::SettingsStore> open() override { return std::make_unique<WindowsSettingsStore>(); }
};

TEST(WindowsSettings, TellTypesApart) {
    const TestKey key;
    struct Raw {
        const wchar_t* name;
        DWORD type;
        std::wstring data;
        DWORD size;
        std::optional<SettingsValue> value;
    };
    const std::vector<Raw> table = {
        {L"number", REG_DWORD, L"\xFFFF\xFFFF", 4, SettingsValue(0xFFFFFFFFU)},
        {L"short number", REG_DWORD, L"1", 2, std::nullopt},
        {L"big-endian number", REG_DWORD_BIG_ENDIAN, L"12", 4, std::nullopt},
        {L"expandable", REG_EXPAND_SZ, L"x", 4, std::nullopt},
        {L"list", REG_MULTI_SZ, L"x", 4, std::nullopt},
        {L"bytes", REG_BINARY, L"x", 4, std::nullopt},
        {L"not terminated", REG_SZ, L"5,5", 6, SettingsValue("5,5")},
        {L"terminated twice", REG_SZ, std::wstring(L"5,5\0", 4), 10, SettingsValue("5,5")},
        {L"half a character", REG_SZ, L"5,5", 5, SettingsValue("5,")},
        {L"nothing", REG_SZ, L"", 0, SettingsValue("")},
    };
    WindowsSettingsStore store;
    const auto valueOf = [&store](const wchar_t* name) {
        return store.value(platform::SettingsRoot::currentUser, narrow(testKey), narrow(name));
    };
    for (const Raw& row : table) {
        ::RegSetKeyValueW(HKEY_CURRENT_USER, testKey, row.name, row.type, row.data.c_str(), row.size);
        EXPECT_EQ(valueOf(row.name), row.value) << narrow(row.name);
    }
    // A value that was of another type becomes text; others find it with its terminating NUL.
    EXPECT_TRUE(store.setText(platform::SettingsRoot::currentUser, narrow(testKey), "number", "240"));
    EXPECT_EQ(valueOf(L"number"), SettingsValue("240"));
    DWORD type = 0;
    DWORD size = 0;
    ::RegGetValueW(HKEY_CURRENT_USER, testKey, L"number", RRF_RT_ANY, &type, nullptr, &size);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(size, 4 * sizeof(wchar_t));
    EXPECT_FALSE(store.setText(platform::SettingsRoot::currentUser, std::string(300, 'k'), "x", "y"));
}

}  // namespace

std::unique_ptr<support::SettingsPlace> support::makeSettingsPlace() { return std::make_unique<TestKey>(); }
