// The port XmlFiles, and files of printer settings read with it; the same tests for every system.
#include "settings/clsSettings.h"
#include "support/adapter_test.h"
#include "unit/support/fake_platform.h"

namespace {

using namespace support;

// "name(attribute=value)[child][child]"; of what is no element "name:value".
std::string treeOf(const platform::XmlNode& node) {
    std::string result = node.name + (node.value.empty() ? "" : ":" + node.value);
    for (const platform::XmlAttribute& attribute : node.attributes) {
        result += "(" + attribute.name + "=" + attribute.value + ")";
    }
    for (const platform::XmlNode& child : node.children) {
        result += "[" + treeOf(child) + "]";
    }
    return result;
}

std::string utf16(std::string_view text, std::size_t low) {
    std::string result = low == 0 ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : text) {
        std::string unit(2, '\0');
        unit[low] = c;
        result += unit;
    }
    return result;
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

TEST(XmlFiles, GiveTheSameTreeOnEverySystem) {
    const auto files = xmlFilesPort();
    const std::string declaration = "<?xml version='1.0' encoding='";
    using Table = std::vector<std::pair<std::string, std::string>>;
    for (const auto& [content, tree] : Table{
             {"<a b='1' c=\"&lt;&#228;&amp;\"> <b/> x &gt;y<![CDATA[ ]]><!-- c --><?p q ?></a>",
              "a(b=1)(c=<ä&)[#text: ][b][#text: x >y][#cdata-section: ][#comment: c ][p:q ]"},
             {"<!-- --><n:a xmlns:n='urn:x' xmlns='urn:y' n:b='1'><b/></n:a>", "n:a(n:b=1)[b]"},
             {"<!DOCTYPE a [<!ELEMENT a EMPTY><!ATTLIST a b CDATA 'x'>]><a/>", parsesByTheBook() ? "a(b=x)" : "a"},
             {"\xEF\xBB\xBF<a b='ä'/>", "a(b=ä)"},
             {declaration + "windows-1252'?><a>\xE4\x80</a>", "a[#text:ä€]"},
             {declaration + "ISO-8859-1'?><a>\xE4</a>", "a[#text:ä]"},
             {utf16(declaration + "UTF-16'?><a b='1'/>", 0), "a(b=1)"},
             {utf16("<a b='1'/>", 1), "a(b=1)"},
         }) {
        const platform::XmlDocument document = files->parse(content);
        EXPECT_EQ(treeOf(document.root) + document.error, tree);
    }
}

TEST(XmlFiles, SayWhatIsWrongInOneLine) {
    const auto files = xmlFilesPort();
    for (const char* content : {"<a", "<a/><b/>", "<a>\n<b></a></b>", "<a b='1' b='2'/>", "<a>&nbsp;</a>",
                                "<a>\xFF</a>", " <?xml version='1.0'?><a/>"}) {
        const platform::XmlDocument document = files->parse(content);
        EXPECT_EQ(treeOf(document.root), "") << content;
        EXPECT_FALSE(document.error.empty()) << content;
        EXPECT_EQ(document.error.find_first_of("\r\n"), std::string::npos) << document.error;
    }
    const char* invalid = "<!DOCTYPE a [<!ELEMENT a (b)><!ELEMENT b EMPTY>]>\n<a>\n<c/></a>";
    const std::string expected = parsesByTheBook() ? "(Zeile 3)" : "";
    EXPECT_TRUE(files->parse(invalid).error.ends_with(expected)) << files->parse(invalid).error;
    EXPECT_EQ(files->parse("<x:a/>").error.empty(), !parsesByTheBook());
}

class PrinterSettingsFile : public testing::Test {
protected:
    PrinterSettingsFile() {
        session.log.debugging(true);
        session.log.write("", session::DebugLog::ordinary, log);
    }

    // What comes of it: the nine values of each printer, and what the log says behind its first line.
    std::string read(const std::string& content) {
        put(path, content);
        return readAgain();
    }
    std::string readAgain() {
        put(log, "");
        settings::clsSettings file(session);
        file.Load(path);
        std::string result;
        for (const settings::clsPrnSetting& p : file.PrnSettings()) {
            for (const std::string& value :
                 {p.Computername(), p.Printername(), p.LinkerRand(), p.Zeilenabstand(), p.Kopfabstand(), p.ColorMode(),
                  p.Schacht1(), p.Schacht2(), p.Schacht3()}) {
                result += value + "|";
            }
        }
        std::istringstream lines(get(log));
        for (std::string line; std::getline(lines, line);) {
            line = line.substr(0, line.find('\r')).substr(std::string_view("01.01.2026 00:00:00").size());
            result += line == "> ParseValidationOn" ? "" : line;
        }
        return result;
    }

    TemporaryFolder folder;
    const std::string path = folder / "KRVWinPr.CFG";
    const std::string log = folder / "log";
    testing_support::FakePlatform fake;
    const std::unique_ptr<platform::XmlFiles> xml = xmlFilesPort();
    platform::Platform ports{systemPort(),    fake.settings,  fake.spooler, fake.printJobs, fake.dialogs,
                             fake.imageFiles, fake.userFiles, fake.forms,   *xml,           fake.errorReports};
    session::Session session{ports};
};

TEST_F(PrinterSettingsFile, IsReadAndWhatIsUnknownIsLogged) {
    using Table = std::vector<std::pair<std::string, std::string>>;
    const std::string unknown = "> InitExportJobs, Unbekannter Node: ";
    for (const auto& [children, outcome] : Table{
             {" \n <Printer Computername='PC 1' Printername='Laser' LinkerRand='1' Zeilenabstand='2' Kopfabstand='3' "
              "ColorMode='4' Schacht1='5' Schacht2='6' Schacht3='7' Schacht4='8'/>\n",
              "PC 1|Laser|1|2|3|4|5|6|7|"},
             {"<Printer ObererRand='1' kopfabstand='2' x='3' Printername='&lt;ä&#13;'/><Printer/>",
              "|<ä\r|||||||||||||||||"},
             {"<!-- x --> <printer/>\nx<?Ziel x?><![CDATA[ ]]><Printer><Printer/></Printer>",
              "|||||||||" + unknown + "#comment" + unknown + "printer" + unknown + "#text" + unknown + "Ziel" +
                  unknown + "#cdata-section"},
             {"", ""},
         }) {
        EXPECT_EQ(read("<Korvano-Printer-Settings>" + children + "</Korvano-Printer-Settings>"), outcome);
    }
    for (const char* content : {"", "\r\n", "<korvano-printer-settings><Printer/></korvano-printer-settings>"}) {
        EXPECT_EQ(read(content), "") << content;
        EXPECT_NE(get(log), "");
    }
    std::filesystem::remove(pathOf(path));
    EXPECT_EQ(readAgain(), "") << "no file";
    EXPECT_EQ(get(log), "");
}

TEST_F(PrinterSettingsFile, ThatCouldDoHarmIsRefusedBeforeItIsParsed) {
    using namespace std::string_literals;
    const std::string laughs = "<!DOCTYPE a [<!ENTITY b 'haha'><!ENTITY c '&b;&b;&b;&b;'>]><a>&c;</a>";
    using Table = std::vector<std::pair<std::string, std::string>>;
    for (const auto& [content, reason] : Table{
             {laughs, "kein ENTITY"},
             {utf16(laughs, 0), "kein ENTITY"},
             {utf16(laughs, 1), "kein ENTITY"},
             {"<!DOCTYPE a [<!-- ' --><!ELEMENT a ANY><?p ]?><!ATTLIST a b CDATA ']>'><!ENTITY b SYSTEM "
              "'/etc/passwd'>]><a/>",
              "kein ENTITY"},
             {"<!DOCTYPE a [%b;]><a/>", "kein ENTITY"},
             {"<!DOCTYPE a SYSTEM 'http://localhost/a.dtd'><a/>", "verweist auf eine DTD"},
             {"<!DOCTYPE a\nPUBLIC 'a' 'a.dtd' [<!ELEMENT a ANY>]><a/>", "verweist auf eine DTD"},
             {"<!DOCTYPE a [<!--" + std::string(4100, ' ') + "-->]><a/>", "Die DTD in der Datei ist zu lang"},
             {"<!DOCTYPE a [<!ELEMENT a (b" + repeated(",b?", 90) + ")>]><a/>", "Klammern in Klammern"},
             {"<!DOCTYPE a [<!ELEMENT a (b,(c))>]><a/>", "Klammern in Klammern"},
             {"<!DOCTYPE a [<!ATTLIST b c CDATA '" + std::string(2000, 'x') + "'>]><a>" + repeated("<b/>", 2200) +
                  "</a>",
              "zu viele Elemente"},
             {repeated("<a b='/>'>", 17), "verschachtelt"},
             {"<a>" + repeated("<a><!-- </a> --><?p </a>?><![CDATA[</a>]]>", 16), "verschachtelt"},
             {"<a" + repeated(" b=''", 65) + "/>", "mehr als 64 Attribute"},
             {std::string((1 << 20) + 1, ' '), "als 1 MiB"},
             {"<?xml version='1.0' encoding='UTF-7'?>+ADw-a/+AD4-", "'UTF-7'"},
             {"<?xml version='1.0' encoding='UTF-16'?><a/>", "'UTF-16'"},
             {"\xEF\xBB\xBF<?xml version='1.0' encoding='windows-1252'?><a/>", "'WINDOWS-1252'"},
             {utf16("<?xml version='1.0' encoding='UTF-8'?><a/>", 0), "'UTF-8'"},
             {"<?xml version='1.1'?><a/>", "XML-Deklaration"},
             {"<?xml version='1.0' encoding=UTF-7?><a/>", "XML-Deklaration"},
             {utf16("<a/>", 0).substr(2), "weder UTF-8 noch UTF-16"},
             {"\xFF\xFE\0\0<\0\0\0"s, "weder UTF-8 noch UTF-16"},
             {"\x4C\x6F\xA7\x94"s, "kein XML"},
         }) {
        const std::string outcome = read(content);
        EXPECT_TRUE(outcome.starts_with("> ValidationError: ")) << outcome;
        EXPECT_NE(outcome.find(reason), std::string::npos) << outcome;
    }
    put(path, "");
    std::filesystem::resize_file(pathOf(path), std::uintmax_t{1} << 30);
    EXPECT_NE(readAgain().find("als 1 MiB"), std::string::npos);
}

TEST_F(PrinterSettingsFile, MayReachTheLimits) {
    const std::string begin = "<Korvano-Printer-Settings>";
    const std::string end = "</Korvano-Printer-Settings>";
    std::string attributes;
    for (int i = 0; i < 64; ++i) {
        attributes += " a" + std::to_string(i) + "='&lt;'";
    }
    const std::string allEmpty = "|||||||||";
    EXPECT_EQ(read(begin + repeated("<Printer>", 15) + repeated("</Printer>", 15) + end), allEmpty);
    EXPECT_EQ(read(begin + "<Printer" + attributes + "/>" + end), allEmpty);
    const std::string padding((1 << 20) - begin.size() - end.size(), ' ');
    EXPECT_EQ(read(begin + padding + end), "");
    EXPECT_NE(get(log), "");
}

}  // namespace
