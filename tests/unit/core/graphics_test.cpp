#include <gtest/gtest.h>

#include "graphics/clsGrafiken.h"
#include "report/page_interpreter.h"
#include "unit/support/fake_platform.h"

namespace {

using testing_support::DrawnPicture;
using testing_support::FakePlatform;
using Lines = std::vector<std::string>;

constexpr const char* macroThree = "C:\\KORVANO\\LASER\\KRVWin.M3";

// A pixel of the page is a twip; the sheet's margins are 240 of them, a sixth of an inch.
class GraphicsTest : public ::testing::Test {
protected:
    GraphicsTest() { session.log.debugging(true); }

    graphics::clsGrafik& add(const graphics::GraphicDefinition& daten) { return set.Add(session, pictures, daten); }
    graphics::clsGrafik& addFile(const std::string& path, std::uint8_t makro = 1) {
        graphics::GraphicDefinition daten;
        daten.bytMakro = makro;
        daten.sngScaleFaktor = 1;
        daten.sBildname = path;
        return add(daten);
    }
    runtime::Error failureOf(const std::function<void()>& step) {
        try {
            step();
        } catch (const runtime::Error& error) {
            return error;
        }
        ADD_FAILURE() << "nothing failed";
        return runtime::Error(0);
    }

    FakePlatform host;
    session::Session session{host.ports};
    graphics::PictureCache pictures{host.system, host.imageFiles};
    graphics::clsGrafiken set;
};

TEST_F(GraphicsTest, AMacroLoadsItsNumberedFileAndInvertsItBesideAMarker) {
    host.addPicture(macroThree, 300, 150);
    host.imageFiles.pictures[macroThree].dpiX = 299.9994;
    host.imageFiles.pictures[macroThree].jpeg = "jpeg";
    host.system.files["C:\\KORVANO\\LASER\\KRVWinIn.M3"] = "";
    const graphics::clsGrafik& grafik =
        add({.bytMakro = 3, .sMasseinheit = "cm", .sngScaleFaktor = 5.5F, .sBildname = ""});
    EXPECT_EQ(grafik.Bildname(), macroThree);
    EXPECT_EQ(grafik.Masseinheit(), "CM");
    EXPECT_EQ(grafik.Width(), 300 * 2540 / 96.F);
    EXPECT_EQ(grafik.Height(), 150 * 2540 / 96.F);
    EXPECT_EQ(grafik.Bild()->pixels[0], 255);
    EXPECT_EQ(grafik.Bild()->jpeg, "");
    EXPECT_EQ(grafik.Bild()->dpiX, 299.9994) << "everything else stays";
}

TEST_F(GraphicsTest, OnlyMacroFilesAreInverted) {
    for (const char* marker : {"C:\\KORVANO\\LASER\\KRVWinIn.M1", "C:\\KORVANO\\LASER\\KRVWinIn.M255"}) {
        host.system.files[marker] = "";
    }
    struct Row {
        const char* path;
        std::uint8_t makro;
        bool inverted;
    };
    for (const Row& row : {Row{"logo.bmp", 1, false}, Row{"D:\\KRVWin.M9", 1, true}, Row{"D:\\KRVWin.M1", 9, false},
                           Row{"D:\\KRVWIN.M1", 1, false}, Row{"D:\\KRVWin.Maus.bmp", 255, true}}) {
        host.addPicture(row.path, 1, 1);
        EXPECT_EQ(addFile(row.path, row.makro).Bild()->pixels[0] == 255, row.inverted) << row.path;
    }
    EXPECT_EQ(set.Count(), 5U);
    EXPECT_EQ(set.Item(4).Bildname(), "D:\\KRVWIN.M1");
    EXPECT_EQ(failureOf([&] { set.Item(0); }).number(), runtime::errSubscript);
    EXPECT_EQ(failureOf([&] { set.Item(6); }).number(), runtime::errSubscript);
}

TEST_F(GraphicsTest, AFileLoadedTwiceIsOnePicture) {
    host.addPicture("logo.bmp", 10, 10);
    EXPECT_EQ(addFile("logo.bmp").Bild(), addFile("logo.bmp").Bild());
    EXPECT_EQ(set.Item(1).Bild(), pictures.load("logo.bmp"));
    EXPECT_NE(set.Item(1).Bild(), pictures.load("logo.bmp", graphics::Colors::inverted));
}

TEST_F(GraphicsTest, AMissingFileIsIgnoredUnlessDebugging) {
    for (const int number : {runtime::errFileNotFound, runtime::errPathNotFound}) {
        host.system.failures["fehlt.bmp"] = number;
        session.log.debugging(false);
        const graphics::clsGrafik& grafik = addFile("fehlt.bmp");
        EXPECT_EQ(grafik.Bild(), nullptr);
        EXPECT_EQ(grafik.Width(), 0);
        session.log.debugging(true);
        const runtime::Error error = failureOf([&] { addFile("fehlt.bmp"); });
        EXPECT_EQ(error.number(), -2147194503);
        EXPECT_EQ(error.source(), "KRVWINPR.CLSGRAFIK");
        EXPECT_EQ(error.description(), "Bilddatei fehlt.bmp nicht gefunden.");
        EXPECT_TRUE(host.logged(">         Makrohinweis, ignoriert: 20010 " + runtime::describe(number)));
    }
    EXPECT_EQ(set.Count(), 2U) << "a graphic that fails is none of the set";
}

TEST_F(GraphicsTest, AnyOtherFailureIsRaised) {
    host.system.files["text.bmp"] = "kein Bild";
    host.system.failures["geheim.bmp"] = runtime::errPermissionDenied;
    session.log.debugging(false);
    const runtime::Error damaged = failureOf([&] { addFile("text.bmp"); });
    EXPECT_EQ(damaged.number(), -2147194502);
    EXPECT_EQ(damaged.source(), "KRVWINPR.CLSGRAFIK");
    EXPECT_EQ(damaged.description(), "Ungültiges Bild\r\n(481)");
    EXPECT_NE(damaged.detail().find("text.bmp"), std::string::npos);
    EXPECT_EQ(failureOf([&] { addFile("geheim.bmp"); }).description(), "Zugriff verweigert\r\n(70)");
    EXPECT_EQ(set.Count(), 0U);
}

class PlacementTest : public GraphicsTest {
protected:
    PlacementTest() {
        host.addPicture("logo.bmp", 96, 48);
        geometry.NewPrinter(printer.Device());
    }
    // Paints and gives the page's only picture.
    DrawnPicture printed(const graphics::clsGrafik& grafik, std::string& message, float x = -1, float y = -1) {
        grafik.PrintGrafik(where, message, x, y);
        printer.NewPage();
        return host.spooler.device.pages().back().pictures.at(0);
    }

    printer::Printer printer{host.spooler, "Laser 1", "TEST.OUT"};
    printer::clsDrucker geometry{host.dialogs};
    graphics::GraphicTarget where{printer, geometry, 100, 200};
};

// The picture is an inch wide and half an inch high: 2540 by 1270 hundredths of a millimetre.
TEST_F(PlacementTest, PositionsAreTwipsInEveryModeAndUnit) {
    struct Row {
        bool absolute;
        const char* unit;
        float x;
        float y;
        int left;
        int top;
        const char* message;
    };
    const std::vector<Row> rows = {
        {true, "cm", -1, -1, 1133, 567, " cm absolut, (x;y; width;height Twips): 1133,435;566,5058; 1270;635"},
        {true, "INCH", -1, -1, 2880, 1440, " Inch absolut, (x;y; width;height Twips): 2879,833;1439,833; 1270;635"},
        {false, "CM", -1, -1, 1234, 767, " cm relativ, (x;y; width;height Twips): 1233,858;766,9291; 1270;635"},
        {false, "mm", -1, -1, 2980, 1640, " Inch relativ, (x;y; width;height Twips): 2980;1640; 1270;635"},
        {false, "INCH", 0, -1, 100, 1640, " Inch relativ, (x;y; width;height Twips): 100;1640; 1270;635"},
        {false, "INCH", 254, -2, 354, 198, " Inch relativ, (x;y; width;height Twips): 354;198; 1270;635"},
        {true, "CM", 254, 0, 100, 0, " cm absolut, (x;y; width;height Twips): 99,57667;-0,4233333; 1270;635"},
    };
    for (const Row& row : rows) {
        const graphics::clsGrafik& grafik = add({1440, 2880, 1, row.unit, row.absolute, 2, "logo.bmp"});
        std::string message = "Text";
        const DrawnPicture picture = printed(grafik, message, row.x, row.y);
        EXPECT_EQ(message, std::string("Text") + row.message + "     Scalefaktor:2");
        EXPECT_EQ(picture.x, row.left) << message;
        EXPECT_EQ(picture.y, row.top) << message;
        EXPECT_NEAR(picture.width, 1270, 1) << message;
        EXPECT_NEAR(picture.height, 635, 1) << message;
    }
}

TEST_F(PlacementTest, WhatCannotBePrintedIsSaid) {
    std::string message;
    session.log.debugging(false);
    graphics::clsGrafik& missing = addFile("fehlt.bmp");
    missing.PrintGrafik(where, message);
    EXPECT_EQ(message, " keine gültige Bilddatei!");
    const runtime::Error none = failureOf([&] { missing.PrintGrafik2(where, message); });
    EXPECT_EQ(none.number(), 232943);
    EXPECT_EQ(none.source(), "clsGrafik_PrintGrafik");
    EXPECT_EQ(none.description(), "Fehler in clsGrafik_PrintGrafik 91 " + runtime::describe(91));

    graphics::clsGrafik& grafik = addFile("logo.bmp");
    grafik.ScaleFaktor(0);
    for (const char* unit : {"CM", "INCH"}) {
        grafik.Masseinheit(unit);
        EXPECT_EQ(failureOf([&] { grafik.PrintGrafik(where, message); }).description(),
                  "Fehler in clsGrafik_PrintGrafik 11 Division durch Null");
    }
    EXPECT_EQ(message, " keine gültige Bilddatei!");
    grafik.ScaleFaktor(1);
    grafik.PrintGrafik2(where, message);
    EXPECT_NE(message.find(" Inch relativ, (x;y; width;height Twips): 100;200;"), std::string::npos);
}

// Two graphics in the first set, one in the second; the text begins at (100, 500), a character is 144 wide.
class GraphicMacroTest : public GraphicsTest {
protected:
    GraphicMacroTest() {
        host.addPicture("a.bmp", 96, 96);
        host.addPicture("b.bmp", 96, 96);
        host.addPicture("c.bmp", 96, 96);
        session.log.debugging(false);
        const auto define = [&](graphics::clsGrafiken& grafiken, const char* file, float y, float x) {
            grafiken.Add(session, pictures, {y, x, 1, "INCH", false, 1, file});
        };
        define(state.colGrafik, "a.bmp", 1000, 10);
        define(state.colGrafik, "b.bmp", 2000, 20);
        define(state.colGrafikA, "c.bmp", 3000, 30);
        session.log.debugging(true);
        state.settings.lngLinkerRand = 100;
        state.curFontSize = runtime::Currency::fromUnits(120000);
        printer.Font(printer::FontStyle{});
    }
    struct Place {
        std::string file;
        int x;
        int y;
        bool operator==(const Place&) const = default;
    };
    std::vector<Place> print(std::string_view page) {
        state.blnZeileBegonnen = false;
        printer.CurrentX(state.settings.lngLinkerRand);
        printer.CurrentY(state.settings.lngKopfabstand);
        report::PageInterpreter(session, printer, state, [] {}).DoPage(page);
        printer.NewPage();
        std::vector<Place> places;
        for (const DrawnPicture& drawn : host.spooler.device.pages().back().pictures) {
            for (const char* file : {"a.bmp", "b.bmp", "c.bmp"}) {
                if (drawn.picture == pictures.load(file)) {
                    places.push_back({file, drawn.x, drawn.y});
                }
            }
        }
        return places;
    }

    printer::Printer printer{host.spooler, "Laser 1", "TEST.OUT"};
    report::JobState state;
};

TEST_F(GraphicMacroTest, DrawsAtTheCurrentOrItsOwnPosition) {
    using Places = std::vector<Place>;
    struct Row {
        const char* page;
        Places places;
    };
    const std::vector<Row> rows = {
        {"ab^GZ2c", {{"b.bmp", 488, 1000}}},
        {"a\n^GZ", {{"a.bmp", 200, 1222}, {"b.bmp", 200, 1222}}},
        {"^GY1", {{"c.bmp", 200, 1000}}},
        {"abc^GR1", {{"a.bmp", 110, 1500}}},
        {"^GR0", {{"a.bmp", 110, 1500}, {"b.bmp", 120, 2500}}},
        {"^GAx", {{"c.bmp", 130, 3500}}},
        {"^GA1^GA2^GR9^GZ3", {{"c.bmp", 130, 3500}}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(print(row.page), row.places) << row.page;
    }
    // Without text the position stays where the line began; without graphics there are none.
    state.blnTextAusgeben = false;
    EXPECT_EQ(print("ab^GZ2"), (Places{{"b.bmp", 200, 1000}}));
    state.blnTextAusgeben = true;
    state.blnGrafikAusgeben = false;
    EXPECT_EQ(print("ab^GZ^GY^GR^GA1"), Places{});
}

TEST_F(GraphicMacroTest, TheLogSaysWhatWasDrawnWhere) {
    const std::string size = "; 2540;2540     Scalefaktor:1";
    const Lines announced = {">         Teilgrafik ausdrucken", ">           objPrinterUtil clsDrucker",
                             ">           lngLinkerRand 100", ">           lngKopfabstand 500",
                             ">           sngScaleFactor 5,5"};
    print("^GZ1");
    print("^GA");
    print("^GR2");
    print("^GR7");
    Lines expected = {">       GZ Grafikmakro 1 Inch relativ, (x;y; width;height Twips): 200;1000" + size,
                      ">       GA Grafikmakro 1-9 Inch relativ, (x;y; width;height Twips): 130;3500" + size,
                      ">       Grafik 2 ausgeben",
                      ">       GR Grafikmakro 2 Inch relativ, (x;y; width;height Twips): 120;2500" + size,
                      ">       Grafik 7 ausgeben"};
    EXPECT_EQ(host.logLines(), expected);

    host.system.files.erase("KRVWinPr.LOG");
    state.blnGrafikAusgeben = false;
    print("^GR");
    expected = {">       alle Grafiken ausgeben"};
    expected.insert(expected.end(), announced.begin(), announced.end());
    expected.insert(expected.end(), announced.begin(), announced.end());
    EXPECT_EQ(host.logLines(), expected);
}

}  // namespace
