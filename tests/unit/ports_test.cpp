// The ports System, SettingsStore and Dialogs, and links to mails; the same tests for every system.

#include <chrono>
#include <vector>

#include "platform/messages/mail_link.h"
#include "support/adapter_test.h"

namespace {

using namespace support;
using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::SettingsValue;

class SystemPort : public testing::Test {
protected:
    TemporaryFolder folder;
    platform::System& system = systemPort();
};

TEST_F(SystemPort, KeepsEveryByteOfAFileInWhateverCaseItIsNamed) {
    std::string content(3'000'000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i) {
        content[i] = static_cast<char>(i * 7);
    }
    const std::filesystem::path where = pathOf(folder / "Übergabe");
    std::filesystem::create_directory(where);
    system.writeFile(folder / "ÜBERGABE\\Liste.OUT", content + "longer");
    system.writeFile(folder / "übergabe/Liste.OUT", content);
    EXPECT_TRUE(system.readFile(folder / "./Übergabe\\LISTE.out") == content);
    auto pieces = system.openToRead(folder / "ÜBERGABE/liste.OUT");
    std::string read;
    while (pieces->read(read, 700'000)) {
    }
    EXPECT_TRUE(read == content && pieces->size() == content.size() && pieces->unchanged());
    system.appendFile(folder / "Übergabe/Liste.OUT", "zwei");
    EXPECT_FALSE(pieces->unchanged());
    EXPECT_TRUE(pieces->read(read, 3) && pieces->read(read, 3) && !pieces->read(read, 3) && read == content + "zwei");
    pieces.reset();
    system.rewriteFile(folder / "übergabe\\LISTE.out", "eins");
    system.appendFile(folder / "ÜBERGABE/Liste.OUT", "zwei");
    EXPECT_EQ(get(folder / "Übergabe/Liste.OUT"), "einszwei");
    for (const std::string& none : {folder / "x", folder / "x\\y", folder / "Übergabe", folder / "", std::string()}) {
        EXPECT_FALSE(system.fileExists(none)) << none;
    }
    const std::filesystem::path before = std::filesystem::current_path();
    system.changeDirectory(folder / "Übergabe");
    EXPECT_EQ(errorOf([&] { system.changeDirectory(folder / "missing"); }), runtime::errPathNotFound);
    EXPECT_FALSE(system.userName().empty());
    EXPECT_TRUE(system.fileExists("liste.OUT"));
    system.appendFile("KRVWinPr.LOG", "drei");
    EXPECT_EQ(system.currentDirectory(), folder / "Übergabe");
    std::filesystem::current_path(before);
    EXPECT_EQ(system.readFile(folder / "Übergabe/krvwinpr.log"), "drei");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(where), {}), 2);
    for (const std::string& gone : {folder / "übergabe\\LISTE.out", folder / "übergabe\\LISTE.out", folder / "x\\y"}) {
        system.removeFile(gone);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(where), {}), 1);
}

TEST_F(SystemPort, KeepsFilesForItsUserAndNeverOverAnother) {
    const auto files = userFilesPort();
    const std::vector<std::string> places = files->folders("Nicht gedruckt");
    ASSERT_EQ(places.size(), 2U);
    EXPECT_NE(places[0].find("KRVWinPr"), std::string::npos);
    const std::filesystem::path here = std::filesystem::current_path() / "Nicht gedruckt" / "";
    EXPECT_EQ(pathOf(places[1]), here);
    const std::string path = folder / "a/b/Müller (1).OUT";
    files->create(path, "eins");
    EXPECT_EQ(errorOf([&] { files->create(path, "zwei"); }), runtime::errFileExists);
    EXPECT_EQ(errorOf([&] { files->create(folder / "a/b", "zwei"); }), runtime::errFileExists);
    EXPECT_EQ(get(path), "eins");
    files->replace(path, "drei");
    files->replace(folder / "a/c/neu", "vier");
    EXPECT_EQ(get(path) + files->read(folder / "a/c/neu"), "dreivier");
    EXPECT_EQ(errorOf([&] { files->read(folder / "a/c/fehlt"); }), runtime::errFileNotFound);
    files->create(folder / "a/b/A", "älter");
    std::filesystem::last_write_time(pathOf(folder / "a/b/A"),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    std::filesystem::create_directory(pathOf(folder / "a/b/unten"));
    EXPECT_EQ(files->names(folder / "a/b/"), (std::vector<std::string>{"Müller (1).OUT", "A"}));
    EXPECT_TRUE(files->names(folder / "a/d/").empty());
    std::filesystem::remove(pathOf(folder / "a/b/unten"));
    files->remove(folder / "a/b/A");
    files->remove(path);
    files->remove(path);
    EXPECT_TRUE(std::filesystem::is_empty(pathOf(folder / "a/b")));
    EXPECT_NE(errorOf([&] { files->create(folder / (std::string("a/b/") + std::string(300, 'x')), "x"); }), 0);
    EXPECT_FALSE(std::filesystem::exists(pathOf(folder / "a/b"))) << "nothing that is empty is left";
}

TEST_F(SystemPort, SaysWhatIsWrongAndLeavesEverythingAsItWas) {
    put(folder / "file", "old");
    std::filesystem::create_directory(folder / "taken");
    const std::vector<std::pair<std::string, int>> faults = {
        {folder / "nowhere\\x", runtime::errPathNotFound},
        {folder / "taken", runtime::errPathFileAccess},
        {folder / "", runtime::errPathFileAccess},
        {deviceIn(folder), runtime::errPathFileAccess},
        {"", runtime::errBadFileName},
        {std::string("a\0b", 3), runtime::errBadFileName},
    };
    const std::set<std::string> names = folder.names();
    for (const auto& [path, number] : faults) {
        const std::string& file = path;
        const std::vector<std::function<void()>> actions = {
            [&] { system.readFile(file); }, [&] { system.openToRead(file); }, [&] { system.writeFile(file, "x"); },
            [&] { system.rewriteFile(file, "x"); }, [&] { system.appendFile(file, "x"); }};
        for (const auto& action : actions) {
            EXPECT_EQ(errorOf(action), number) << path;
        }
        EXPECT_EQ(system.openProfile(path)->text("a", "k", "Vorgabe"), "Vorgabe");
    }
    EXPECT_TRUE(system.openProfile(folder / "taken")->failure().starts_with(folder / "taken"));
    EXPECT_EQ(system.openProfile(folder / "missing")->failure() + system.openProfile(folder / "file")->failure(), "");
    EXPECT_EQ(errorOf([&] { system.writeFile(folder / "file\\x", "x"); }), runtime::errPathNotFound);
    EXPECT_EQ(errorOf([&] { system.readFile(folder / "missing"); }), runtime::errFileNotFound);
    EXPECT_EQ(errorOf([&] { system.rewriteFile(folder / "missing", "x"); }), runtime::errFileNotFound);
    EXPECT_EQ(folder.names(), names);
    EXPECT_EQ(get(folder / "file"), "old");
}

TEST_F(SystemPort, KnowsWhichPathsLeadToTheFileThatItWouldReplace) {
    std::filesystem::create_directory(folder / "unten");
    put(folder / "unten/krvwinpr.ok", "x");
    EXPECT_FALSE(system.wouldReplace(folder / "KRVWINPR.OK", folder / "krvwinpr.ok"));
    put(folder / "krvwinpr.OK", "x");
    put(folder / "a", "x");
    for (const char* path : {"krvwinpr.OK", "KRVWINPR.ok", "unten\\..\\Krvwinpr.Ok"}) {
        EXPECT_TRUE(system.wouldReplace(folder / "KRVWINPR.OK", folder / path)) << path;
    }
    for (const char* path : {"a", "unten/krvwinpr.ok", "unten", "missing", ""}) {
        EXPECT_FALSE(system.wouldReplace(folder / "KRVWINPR.OK", folder / path)) << path;
    }
}

TEST_F(SystemPort, FindsTheFilesThatASettingsFileNamesInWhateverEncodingItIs) {
    put(folder / "Füße.bmp", "x");
    for (const char* name : {"Füße.bmp", "F\xFC\xDF\x65.bmp", "F\x81\xE1\x65.bmp"}) {
        put(folder / "a.ini", std::string("[a]\nk=") + name + "\n");
        const std::string value = system.openProfile(folder / "a.ini")->text("a", "k", "");
        EXPECT_EQ(system.fileNamed(folder / value), folder / "Füße.bmp") << value;
        EXPECT_EQ(system.fileNamed("fehlt " + value), "fehlt " + value);
    }
}

TEST_F(SystemPort, ReadsProfiles) {
    using namespace std::string_literals;
    using Table = std::vector<std::pair<std::string, std::string>>;
    const auto valueIn = [this](const std::string& content, std::string_view section, std::string_view key) {
        put(folder / "Füße.INI", content);
        return system.openProfile(folder / "füße.ini")->text(section, key, "Vorgabe");
    };
    const std::string content =
        "k=0\n[Font]\r\nBarcodeHeight=0,3\r\n \t[a] \t\n \tk \t= \t1 2\t \nK=2\n;c=1\n ; c=2\nsemi=3 ;4\n"
        "bare\nbare=1\nnil=\ntwice==1=\n=5\ndq=\" 1 \"\nsq='1'\nboth=\"'1'\"\nmix=\"1'\none=\"\nnone=\"\"\n"
        "rest=\"1\" 2\n[x=1\nlast=6\n[b]c]\nk=7\n[ d ] x\nk=8\n";
    const Table table = {
        {"k", "1 2"},     {"c", "Vorgabe"}, {"semi", "3 ;4"}, {"bare", "Vorgabe"}, {"nil", ""},
        {"twice", "=1="}, {"", "5"},        {"DQ", " 1 "},    {"sq", "1"},         {"both", "'1'"},
        {"mix", "\"1'"},  {"one", "\""},    {"none", ""},     {"rest", "\"1\" 2"}, {"last", "6"},
    };
    for (const auto& [key, value] : table) {
        EXPECT_EQ(valueIn(content, "a", key), value) << key;
    }
    EXPECT_EQ(valueIn(content, "FONT", "barcodeHEIGHT"), "0,3");
    EXPECT_EQ(valueIn(content, "b]c", "k") + valueIn(content, "d", "k"), "78");
    const std::string longValue(300, 'x');
    const Table contents = {
        {"", "Vorgabe"},
        {"k=1\n[a\nk=1", "Vorgabe"},
        {"[b]\rk=1\r[a]\rk=2", "2"},
        {"[a]\nk=" + longValue + "\n", longValue.substr(0, 254)},
        {"[a]\nk=\"" + longValue + "\"\n", longValue.substr(0, 254)},
        {"[a]\nk=1\0 2\n"s, "1"},
        {"[a]\nl=1\0 2\nk=3\n"s, "3"},
        {"[a]\nk=1\x1A\nl=2\n", "1"},
        {"[b]\n\x1Ak=1\n[a]\nk=2\n\x1A", "2"},
        {"\xEF\xBB\xBF[a]\nk=1\n", "1"},
        {"\xFF\xFE[\0a\0]\0\n\0k\0=\0\xFC\0\x3D\xD8\0\xDE\n\0"s, "ü😀"},
    };
    for (const auto& [text, value] : contents) {
        EXPECT_EQ(valueIn(text, "a", "k"), value) << text;
    }
    EXPECT_EQ(system.openProfile(folder / "missing")->text("a", "k", "Vorgabe"), "Vorgabe");
}

TEST_F(SystemPort, KnowsItsProgramItsUserAndTheCodePageOfTheHost) {
    EXPECT_TRUE(system.fileExists(system.programDirectory() + "/" + system.programFileName()));
    EXPECT_EQ(system.fromDosCodePage(std::string_view("\x81\x8E\xE1 \xC9\xCD\xBB\x01\x0D\x1A\x7F\xD5\0~", 14)),
              "üÄß ╔═╗☺♪→⌂ı ~");
    const runtime::Locale& locale = system.locale();
    EXPECT_EQ(locale.language + locale.decimalSeparator + locale.trueText, "de,Wahr");
    EXPECT_EQ(runtime::dateTimeText({2026, 1, 2, 3, 4, 5, 6}, locale), "02.01.2026 03:04:05");
}

TEST(SettingsPort, KeepsTextUnderKeysThatItCreates) {
    constexpr auto user = platform::SettingsRoot::currentUser;
    const std::string base = "Software\\krv-test";
    const std::string key = base + "\\Drucker\\srv\\Laser Büro";
    const TemporaryFolder folder;
    const auto store = openSettings(folder);
    EXPECT_FALSE(store->keyExists(user, base));
    EXPECT_EQ(store->value(user, key, "ScaleFaktor"), std::nullopt);
    ASSERT_TRUE(store->setText(user, key, "ScaleFaktor", "5,5"));
    EXPECT_TRUE(store->keyExists(user, base + "\\DRUCKER"));
    EXPECT_TRUE(store->keyExists(user, ""));
    EXPECT_EQ(store->value(user, key, "SCALEFAKTOR"), SettingsValue("5,5"));
    const std::string longText(100'000, 'x');
    for (const std::string& text : {std::string(), std::string("Größe ☺"), longText, std::string(" \"kurz\" ")}) {
        EXPECT_TRUE(store->setText(user, key, "Name ä", text));
        EXPECT_TRUE(store->commit());
        EXPECT_EQ(openSettings(folder)->value(user, key, "name Ä"), SettingsValue(text));
    }
    for (const char* name : {"Software\\krv", "krv-test", "Software\\krv-test\\Laser Büro"}) {
        EXPECT_FALSE(store->keyExists(user, name)) << name;
    }
    EXPECT_FALSE(store->keyExists(platform::SettingsRoot::localMachine, base));
}

TEST(DialogsPort, WhereNobodySeesThemTextGoesToStandardErrorAndTheFirstButtonIsTaken) {
    const TemporaryFolder folder;
    put(folder / "x.log", "x");
    const std::string written = writtenBy([&](platform::Dialogs& dialogs) {
        EXPECT_EQ(dialogs.messageBox("Fehler\r\n\r\nDatei\x1B[2J\n über\r", Buttons::ok, Icon::critical, "Druck"),
                  Answer::ok);
        dialogs.messageBox("Drei\x07\r\n\r\nZeilen\r", Buttons::ok, Icon::none, "");
        EXPECT_EQ(dialogs.messageBox("Anzeigen?", Buttons::yesNo, Icon::none, "KrvWinPr"), Answer::yes);
        EXPECT_EQ(dialogs.messageBox("Weiter?", Buttons::okCancel, Icon::information, ""), Answer::ok);
        dialogs.processEvents();
        dialogs.showTextFile(folder / "x.log");
        dialogs.showTextFile(folder / "fehlt.log");
    });
    EXPECT_EQ(written,
              "KRVWinPr: Druck: Fehler Datei\\x1B[2J über\n"
              "KRVWinPr: Drei\\x07\n\nZeilen\n"
              "KRVWinPr: Anzeigen? [Antwort: Ja]\n"
              "KRVWinPr: Weiter? [Antwort: OK]\n"
              "KRVWinPr: Bitte lesen Sie die Datei " +
                  (folder / "x.log") + "\nKRVWinPr: Die Datei " + (folder / "fehlt.log") + " ist nicht vorhanden.\n");
}

TEST(MailLink, IsAsciiAndEndsBehindALineWhereItIsTooLong) {
    using platform::messages::mailLink;
    EXPECT_EQ(mailLink("KRVWinPr: Fehler & mehr", "Grüße\n100 %", 200),
              "mailto:?subject=KRVWinPr%3A%20Fehler%20%26%20mehr&body=Gr%C3%BC%C3%9Fe%0D%0A100%20%25");
    std::string text;
    for (int line = 1; line <= 100; ++line) {
        text += "Zeile " + std::to_string(line) + "\n";
    }
    const std::string link = mailLink("S", text, 500);
    EXPECT_TRUE(link.size() <= 500 && link.size() > 460) << link.size();
    EXPECT_NE(link.find("%0D%0A%5BHier%20gek%C3%BCrzt"), std::string::npos) << link;
}

}  // namespace
