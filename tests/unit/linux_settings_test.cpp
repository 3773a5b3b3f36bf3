// The settings on Linux, beside what ports_test.cpp asks of every system: the file and its writers.
#include "platform/linux/linux_settings_store.h"

#include <sys/file.h>

#include "linux_support.h"

namespace {

using namespace linux_support;
using namespace platform_linux;
using platform::SettingsRoot;

constexpr SettingsRoot user = SettingsRoot::currentUser;
constexpr const char* laser = R"(Software\Velmora\KRVWinPr\3.0\Drucker\Laser 1)";

// The text of a value, "#" and the number, or "-" for none.
std::string read(const SettingsFile& file, std::string_view name, std::string_view key = laser,
                 SettingsRoot root = user) {
    const std::optional<platform::SettingsValue> value = file.value(root, key, name);
    const auto* number = value ? std::get_if<std::uint32_t>(&*value) : nullptr;
    return number != nullptr ? "#" + std::to_string(*number) : value ? std::get<std::string>(*value) : "-";
}

const std::string byHand =
    "\xEF\xBB\xBF[HKCU\\Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1]\r\nLinkerRand=120\r\n"
    "  ColorMode =\tREG_DWORD:2  \r\n; Kommentar=nein\n# [HKCU\\Nein]\nHex=reg_dword:0xFFFFFFFF\n"
    "Zuviel=REG_DWORD:4294967296\nHex=REG_DWORD:x\nPfad=REG_EXPAND_SZ:%TEMP%\nOffen=\"abc\nArt=REG_SZ:REG_x:\n"
    "Zitat=\"  a \\\"b\\\" C:\\Korvano \\n\"\nKein Gleichheitszeichen\n=ohne Namen\nLeer=\n\"a=b\"=c=d\nMÖGLICH=ja\n"
    "[HKCU\\Kaputt\nVerloren=1\n[Drucker]\nVerloren=2\n"
    " [hkey_current_user\\SOFTWARE\\velmora\\krvwinpr\\3.0\\drucker\\LASER 1] \nlinkerrand = 125\n"
    "[HKEY_LOCAL_MACHINE\\A\\\\Raum [2]]\nx=1\nLetzte=ohne Ende";

TEST(SettingsFile, UnderstandsWhatPeopleWrite) {
    const SettingsFile file(byHand);
    const auto values = [&file](std::initializer_list<const char*> names) {
        std::string all;
        for (const char* name : names) {
            all += read(file, name) + "|";
        }
        return all;
    };
    EXPECT_EQ(values({"LinkerRand", "COLORMODE", "Hex", "Leer", "a=b", "möglich"}), "125|#2|#4294967295||c=d|ja|");
    EXPECT_EQ(values({"Zitat", "Art"}), "  a \"b\" C:\\Korvano \n|REG_x:|");
    EXPECT_EQ(values({"Zuviel", "Pfad", "Offen", "; Kommentar", "", "Verloren"}), "-|-|-|-|-|-|");
    EXPECT_EQ(read(file, "letzte", "a\\RAUM [2]", SettingsRoot::localMachine), "ohne Ende");
    EXPECT_EQ(read(file, "x", "A\\Raum [2]"), "-");
    EXPECT_TRUE(file.keyExists(user, "software\\VELMORA"));
    for (const char* missing : {"Kaputt", "Drucker", "Nein", "A"}) {
        EXPECT_FALSE(file.keyExists(user, missing)) << missing;
    }
    EXPECT_FALSE(file.keyExists(SettingsRoot{}, "A"));
}

TEST(SettingsFile, ChangesOnlyTheLinesThatItMust) {
    SettingsFile file(byHand);
    EXPECT_EQ(file.setText(user, laser, "LINKERRAND", "125"), SettingsFile::Change::none);
    EXPECT_EQ(file.setText(user, "B\nC", "x", "y"), SettingsFile::Change::impossible);
    EXPECT_EQ(file.text(), byHand);
    EXPECT_EQ(file.setText(user, laser, "ColorMode", "2"), SettingsFile::Change::made);
    file.setText(user, laser, "LinkerRand", "130");
    file.setText(user, laser, "Neu", "1");
    file.setText(SettingsRoot::localMachine, "A\\Raum [2]", "Neu", "");
    file.setText(user, "B\\C", "x", "y");
    std::string expected = byHand + "\r\nNeu=\r\n\r\n[HKCU\\B\\C]\r\nx=y\r\n";
    expected.replace(expected.find("\tREG_DWORD:2  "), 14, "\t2  ");
    expected.replace(expected.find("linkerrand = 125\n"), 17, "linkerrand = 130\nNeu=1\r\n");
    EXPECT_EQ(file.text(), expected);
}

TEST(SettingsFile, AnyTextSurvivesBehindWhateverIsLeftOfTheFile) {
    const std::vector<std::string> awkward = {
        "",        " ",       "\t",    "\"",    "\\",        "a\\",      "\"a\"",   "#x",     "[x]",      "x=y", ";",
        "REG_x:y", "reg_SZ:", "REG_:", "REG_x", "a\r\nb\tc", "\x01\x7F", "Größe €", " a\\n ", "\xFF\xFE", "\r",  "a \\",
    };
    for (std::size_t length = 0; length <= byHand.size(); ++length) {
        const std::string cut = byHand.substr(0, length) + (length % 2 == 0 ? "" : std::string("\0\xFF", 2));
        const std::string& name = awkward[length % awkward.size()];
        const std::string& text = awkward[length / awkward.size() % awkward.size()];
        SettingsFile file(cut);
        const std::string before = read(file, "Hex");
        file.setText(user, laser, name, text);
        const std::string written = file.text();
        const SettingsFile again(written);
        ASSERT_EQ(read(again, name), text) << cut;
        ASSERT_EQ(read(again, "Hex"), before) << cut;
        // Everything is still there, in its order: the new text is the old one with something put in.
        std::size_t at = 0;
        for (const char c : written) {
            at += at < cut.size() && c == cut[at] ? 1 : 0;
        }
        ASSERT_EQ(at, cut.size()) << cut;
    }
}

struct TestFile {
    TemporaryFolder folder;
    const std::string path = folder / "config/KRVWinPr/settings.ini";
};

bool setAndCommit(LinuxSettingsStore& store, std::string_view name, std::string_view text) {
    return store.setText(user, laser, name, text) && store.commit();
}

TEST(LinuxSettings, WriteWhenSomethingChangedAndOnlyThen) {
    const TestFile file;
    {
        LinuxSettingsStore store(file.path);
        EXPECT_TRUE(store.commit());
        EXPECT_TRUE(store.setText(user, laser, "Schacht1", "15"));
        EXPECT_EQ(file.folder.names(), std::set<std::string>());
    }
    EXPECT_TRUE(get(file.path).starts_with("# ")) << get(file.path);
    EXPECT_EQ(modeOf(file.path), 0600U);

    // A link stays one, and the rights of the file are kept.
    const std::string real = file.folder / "real.ini";
    std::filesystem::rename(file.path, real);
    ::chmod(real.c_str(), 0664);
    std::filesystem::create_symlink("../../real.ini", file.path);
    std::filesystem::create_hard_link(real, file.folder / "old.ini");
    LinuxSettingsStore store(file.path);
    store.setText(user, laser, "Schacht1", "99");
    EXPECT_TRUE(setAndCommit(store, "schacht1", "15"));
    EXPECT_EQ(std::filesystem::hard_link_count(real), 2U) << "nothing changed";
    EXPECT_TRUE(setAndCommit(store, "Schacht1", "16"));
    EXPECT_EQ(std::filesystem::hard_link_count(real), 1U) << "another file took its place";
    EXPECT_TRUE(std::filesystem::is_symlink(file.path));
    EXPECT_EQ(modeOf(real), 0664U);
    EXPECT_EQ(file.folder.names(), (std::set<std::string>{"config", "old.ini", "real.ini", "real.ini.lock"}));
}

TEST(LinuxSettings, ProcessesWritingAtOnceLoseNothing) {
    const TestFile file;
    constexpr int values = 40;
    std::vector<pid_t> writers;
    for (const char writer : {'a', 'b', 'c'}) {
        writers.push_back(start([&, writer] {
            LinuxSettingsStore store(file.path, std::chrono::minutes{1});
            for (int i = 0; i < values; ++i) {
                EXPECT_TRUE(setAndCommit(store, writer + std::to_string(i), "x"));
            }
            return 0;
        }));
    }
    for (const pid_t writer : writers) {
        EXPECT_EQ(ended(writer), 0);
    }
    const SettingsFile written(get(file.path));
    for (const char writer : {'a', 'b', 'c'}) {
        for (int i = 0; i < values; ++i) {
            EXPECT_EQ(read(written, writer + std::to_string(i)), "x") << writer << i;
        }
    }
}

TEST(LinuxSettings, DoNotWaitForEverForAnotherWriter) {
    const TestFile file;
    std::filesystem::create_directories(file.folder / "config/KRVWinPr");
    const int lock = ::open((file.path + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    LinuxSettingsStore store(file.path, std::chrono::milliseconds{50});
    EXPECT_FALSE(setAndCommit(store, "x", "3"));
    EXPECT_FALSE(std::filesystem::exists(file.path));
    // It has waited once; where the file system knows no locks it need not wait at all.
    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(store.commit());
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds{25});
    const auto withoutLocks = start([&] {
        linux_support::refuseCalls(ENOLCK, {SYS_flock});
        return store.commit() ? 0 : 1;
    });
    EXPECT_EQ(ended(withoutLocks), 0);
    EXPECT_NE(get(file.path).find("x=3\n"), std::string::npos);
    ::close(lock);
    EXPECT_TRUE(store.commit());
}

TEST(LinuxSettings, LieInTheConfigurationFolder) {
    const Variable home("HOME", "/home/x");
    const Variable wrong("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(LinuxSettingsStore::usualPath(), "/home/x/.config/KRVWinPr/settings.ini");
    const Variable right("XDG_CONFIG_HOME", "/etc/x");
    EXPECT_EQ(LinuxSettingsStore::usualPath(), "/etc/x/KRVWinPr/settings.ini");
    LinuxSettingsStore homeless("");
    EXPECT_FALSE(setAndCommit(homeless, "x", "1"));
}

}  // namespace

std::unique_ptr<platform::SettingsStore> support::openSettings(const TemporaryFolder& folder) {
    return std::make_unique<LinuxSettingsStore>(folder / "config/settings.ini");
}
