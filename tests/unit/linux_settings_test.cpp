#include "platform/linux/linux_settings_store.h"

#include <fcntl.h>
#include <sys/file.h>

#include <random>

#include "linux_support.h"

namespace {

using namespace linux_support;
using namespace platform_linux;
using platform::SettingsRoot;
using platform::SettingsValue;

constexpr SettingsRoot user = SettingsRoot::currentUser;
constexpr const char* laser = R"(Software\Velmora\KRVWinPr\3.0\Drucker\Laser 1)";

// The text of a value, "#" and the number, or "-" for none.
template <typename Store>
std::string read(Store& store, std::string_view key, std::string_view name, SettingsRoot root = user) {
    const std::optional<SettingsValue> value = store.value(root, key, name);
    if (!value) {
        return "-";
    }
    const auto* text = std::get_if<std::string>(&*value);
    return text != nullptr ? *text : "#" + std::to_string(std::get<std::uint32_t>(*value));
}

const std::string byHand =
    "\xEF\xBB\xBF[HKCU\\Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1]\r\n"
    "LinkerRand=120\r\n"
    "  ColorMode =\tREG_DWORD:2  \r\n"
    "; Kommentar=nein\n"
    "# [HKCU\\Nein]\n"
    "Hex=reg_dword:0xFFFFFFFF\n"
    "Zuviel=REG_DWORD:4294967296\n"
    "Hex=REG_DWORD:x\n"
    "Pfad=REG_EXPAND_SZ:%TEMP%\n"
    "Zitat=\"  a \\\"b\\\" C:\\Korvano \\n\"\n"
    "Offen=\"abc\n"
    "Art=REG_SZ:REG_x:\n"
    "Kein Gleichheitszeichen\n"
    "=ohne Namen\n"
    "Leer=\n"
    "\"a=b\"=c=d\n"
    "MÖGLICH=ja\n"
    "[HKCU\\Kaputt\n"
    "Verloren=1\n"
    "[Drucker]\n"
    "Verloren=2\n"
    " [hkey_current_user\\SOFTWARE\\velmora\\krvwinpr\\3.0\\drucker\\LASER 1] \n"
    "linkerrand = 125\n"
    "[HKEY_LOCAL_MACHINE\\A\\\\Raum [2]]\n"
    "x=1\n"
    "Letzte=ohne Ende";

TEST(SettingsFile, UnderstandsWhatPeopleWrite) {
    const SettingsFile file(byHand);
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"LinkerRand", "125"}, {"COLORMODE", "#2"}, {"Hex", "#4294967295"}, {"Zitat", "  a \"b\" C:\\Korvano \n"},
        {"Art", "REG_x:"},     {"Leer", ""},        {"a=b", "c=d"},         {"möglich", "ja"},
    };
    for (const auto& [name, value] : expected) {
        EXPECT_EQ(read(file, laser, name), value) << name;
    }
    for (const char* none : {"Zuviel", "Pfad", "Offen", "; Kommentar", "", "Verloren"}) {
        EXPECT_EQ(read(file, laser, none), "-") << none;
    }
    EXPECT_EQ(read(file, "a\\RAUM [2]", "letzte", SettingsRoot::localMachine), "ohne Ende");
    EXPECT_EQ(read(file, "A\\Raum [2]", "x", user), "-");

    EXPECT_TRUE(file.keyExists(user, "software\\VELMORA"));
    EXPECT_TRUE(file.keyExists(user, ""));
    for (const char* missing : {"Softwar", "Velmora", "Kaputt", "Drucker", "Nein", "A"}) {
        EXPECT_FALSE(file.keyExists(user, missing)) << missing;
    }
    EXPECT_FALSE(file.keyExists(SettingsRoot{}, "A"));
}

TEST(SettingsFile, ChangesOnlyTheLinesThatItMust) {
    SettingsFile file(byHand);
    EXPECT_EQ(file.text(), byHand);
    EXPECT_EQ(file.setText(user, laser, "LINKERRAND", "125"), SettingsFile::Change::none);
    EXPECT_EQ(file.text(), byHand);

    EXPECT_EQ(file.setText(user, laser, "ColorMode", "2"), SettingsFile::Change::made);
    EXPECT_EQ(file.setText(user, laser, "LinkerRand", "130"), SettingsFile::Change::made);
    EXPECT_EQ(file.setText(user, laser, "Neu", "1"), SettingsFile::Change::made);
    EXPECT_EQ(file.setText(SettingsRoot::localMachine, "A\\Raum [2]", "Neu", ""), SettingsFile::Change::made);
    EXPECT_EQ(file.setText(user, "B\\C", "x", "y"), SettingsFile::Change::made);
    EXPECT_EQ(file.setText(user, "B\nC", "x", "y"), SettingsFile::Change::impossible);
    std::string expected = byHand;
    const auto replace = [&expected](const std::string& from, const std::string& to) {
        expected.replace(expected.find(from), from.size(), to);
    };
    replace("\tREG_DWORD:2  ", "\t2  ");
    replace("linkerrand = 125\n", "linkerrand = 130\nNeu=1\r\n");
    expected += "\r\nNeu=\r\n\r\n[HKCU\\B\\C]\r\nx=y\r\n";
    EXPECT_EQ(file.text(), expected);

    SettingsFile cut("[HKCU\\A");
    cut.setText(user, "A", "x", "y");
    EXPECT_EQ(cut.text(), "[HKCU\\A\n\n[HKCU\\A]\nx=y\n");
}

TEST(SettingsFile, AnyTextSurvivesBeingWritten) {
    const std::vector<std::string> awkward = {
        "",        " ",       "\t",    "\"",    "\\",        "a\\",      "\"a\"",   "#x",     "[x]",      "a=b", ";",
        "REG_x:y", "reg_SZ:", "REG_:", "REG_x", "a\r\nb\tc", "\x01\x7F", "Größe €", " a\\n ", "\xFF\xFE", "\r",  "a \\",
    };
    SettingsFile file;
    for (const std::string& text : awkward) {
        file.setText(user, "K " + text.substr(0, text.find_first_of("\t\r\n\x01")), "N" + text, text);
        file.setText(user, "Namen", text, text);
    }
    const SettingsFile again(file.text());
    for (const std::string& text : awkward) {
        EXPECT_EQ(read(again, "Namen", text), text);
        EXPECT_EQ(read(again, "K " + text.substr(0, text.find_first_of("\t\r\n\x01")), "N" + text), text);
    }
}

TEST(SettingsFile, LosesNothingOfACutFileOrOfGarbage) {
    std::vector<std::string> inputs;
    for (std::size_t length = 0; length <= byHand.size(); ++length) {
        inputs.push_back(byHand.substr(0, length));
    }
    std::mt19937 random(1);
    const std::string letters = "[]=\\\"#;\n\r \t:xREG_SZHKCU0" + std::string(1, '\0') + "\xC3\xBC\xFF";
    for (int i = 0; i < 2000; ++i) {
        std::string text = i % 2 == 0 ? "[HKCU\\x]\n" : "";
        for (auto left = random() % 60; left > 0; --left) {
            text += letters[random() % letters.size()];
        }
        inputs.push_back(text);
    }
    for (const std::string& input : inputs) {
        SettingsFile file(input);
        ASSERT_EQ(file.text(), input);
        const std::string existing = read(file, laser, "Hex");
        file.setText(user, laser, "Neu und einzig", "1");
        const std::string written = file.text();
        const SettingsFile again(written);
        ASSERT_EQ(read(again, laser, "Neu und einzig"), "1") << input;
        ASSERT_EQ(read(again, laser, "Hex"), existing) << input;
        // Everything is still there, in its order: the new text is the old one with something put in.
        std::size_t at = 0;
        for (const char c : written) {
            at += at < input.size() && c == input[at] ? 1 : 0;
        }
        ASSERT_EQ(at, input.size()) << input;
    }
}

class LinuxSettingsStoreTest : public testing::Test {
protected:
    static bool setAndCommit(LinuxSettingsStore& store, std::string_view name, std::string_view text) {
        return store.setText(user, laser, name, text) && store.commit();
    }

    TemporaryFolder folder;
    const std::string path = folder / "config/KRVWinPr/settings.ini";
};

TEST_F(LinuxSettingsStoreTest, WritesWhenSomethingChangedAndOnlyThen) {
    {
        LinuxSettingsStore store(path);
        EXPECT_FALSE(store.keyExists(user, laser));
        EXPECT_TRUE(store.commit());
        EXPECT_FALSE(std::filesystem::exists(folder / "config"));
        EXPECT_TRUE(store.setText(user, laser, "Schacht1", "15"));
        EXPECT_EQ(read(store, laser, "SCHACHT1"), "15");
        EXPECT_FALSE(std::filesystem::exists(folder / "config"));
    }
    EXPECT_TRUE(get(path).starts_with("# ")) << get(path);
    struct stat first {};
    ASSERT_EQ(::stat(path.c_str(), &first), 0);
    EXPECT_EQ(first.st_mode & 07777, 0600U);
    {
        LinuxSettingsStore store(path);
        EXPECT_TRUE(setAndCommit(store, "schacht1", "15"));
        store.setText(user, laser, "Schacht1", "99");
        EXPECT_TRUE(setAndCommit(store, "Schacht1", "15"));
    }
    struct stat second {};
    ASSERT_EQ(::stat(path.c_str(), &second), 0);
    EXPECT_EQ(first.st_ino, second.st_ino);

    // A link stays one, and the rights of the file are kept.
    std::filesystem::rename(path, folder / "real.ini");
    ::chmod((folder / "real.ini").c_str(), 0664);
    std::filesystem::create_symlink("../../real.ini", path);
    LinuxSettingsStore store(path);
    EXPECT_TRUE(setAndCommit(store, "Schacht1", "16"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_NE(get(folder / "real.ini").find("Schacht1=16"), std::string::npos);
    ASSERT_EQ(::stat(path.c_str(), &second), 0);
    EXPECT_EQ(second.st_mode & 07777, 0664U);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"config", "real.ini", "real.ini.lock"}));
}

TEST_F(LinuxSettingsStoreTest, ProcessesWritingAtOnceLoseNothing) {
    std::filesystem::create_directories(folder / "config/KRVWinPr");
    put(path, "[HKCU\\Hand]\nx=1\n");
    std::vector<pid_t> writers;
    for (const char writer : {'a', 'b', 'c'}) {
        writers.push_back(start([&, writer] {
            LinuxSettingsStore store(path, std::chrono::minutes{1});
            for (int i = 0; i < 40; ++i) {
                if (!setAndCommit(store, writer + std::to_string(i), std::to_string(i))) {
                    return 1;
                }
            }
            return 0;
        }));
    }
    for (const pid_t writer : writers) {
        EXPECT_EQ(ended(writer), 0);
    }
    LinuxSettingsStore store(path);
    EXPECT_EQ(read(store, "Hand", "x"), "1");
    for (const char writer : {'a', 'b', 'c'}) {
        for (int i = 0; i < 40; ++i) {
            EXPECT_EQ(read(store, laser, writer + std::to_string(i)), std::to_string(i)) << writer << i;
        }
    }
}

TEST_F(LinuxSettingsStoreTest, DoesNotWaitForEverForAnotherWriter) {
    std::filesystem::create_directories(folder / "config/KRVWinPr");
    const int lock = ::open((path + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    LinuxSettingsStore store(path, std::chrono::milliseconds{50});
    EXPECT_FALSE(setAndCommit(store, "x", "3"));
    EXPECT_FALSE(std::filesystem::exists(path));
    ::close(lock);
    EXPECT_TRUE(store.commit());
    EXPECT_NE(get(path).find("x=3\n"), std::string::npos);
}

TEST_F(LinuxSettingsStoreTest, LiesInTheConfigurationFolder) {
    const Variable home("HOME", "/home/x");
    const Variable wrong("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(LinuxSettingsStore::usualPath(), "/home/x/.config/KRVWinPr/settings.ini");
    const Variable right("XDG_CONFIG_HOME", "/etc/x");
    EXPECT_EQ(LinuxSettingsStore::usualPath(), "/etc/x/KRVWinPr/settings.ini");
    LinuxSettingsStore homeless("");
    EXPECT_FALSE(setAndCommit(homeless, "x", "1"));
}

}  // namespace
