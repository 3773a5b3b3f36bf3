#include "linux_support.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/linux_system.h"
#include "platform/linux/profile_text.h"
#include "support/profile_table.h"

namespace {

using namespace linux_support;
using namespace platform_linux;

TEST(ProfileText, ReadsWhatWindowsReads) {
    for (const support::ProfileCase& row : support::profileCases()) {
        EXPECT_EQ(ProfileText(row.content).text(row.section, row.key, "Vorgabe"), row.value) << row.content;
    }
    EXPECT_EQ(ProfileText("[a]\nk=\x81\x8E\n").text("a", "k", ""), "\x81\x8E");
}

TEST(LinuxProfile, IsTheFileAsItWasOpened) {
    const TemporaryFolder folder;
    LinuxSettingsStore settings(folder / "settings.ini");
    LinuxSystem system(0, nullptr, settings);
    put(folder / "HPLaser.INI", "[a]\nk=1\n");
    const auto profile = system.openProfile(folder / "hplaser.ini");
    put(folder / "HPLaser.INI", "[a]\nk=2\n");
    EXPECT_EQ(profile->text("a", "k", "Vorgabe"), "1");
    put(folder / "big", "[a]\nk=1\n" + std::string(3'000'000, '\n') + "l=1");
    EXPECT_EQ(system.openProfile(folder / "big")->text("a", "k", "Vorgabe"), "1");
    EXPECT_EQ(system.openProfile(folder / "big")->text("a", "l", "Vorgabe"), "Vorgabe");
    for (const std::string& none : {folder / "missing", folder / "", std::string("/dev/zero"), std::string()}) {
        EXPECT_EQ(system.openProfile(none)->text("a", "k", "Vorgabe"), "Vorgabe") << none;
    }
}

}  // namespace
