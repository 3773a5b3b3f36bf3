#include "graphics/clsGrafiken.h"
#include "unit/support/core_test.h"

namespace {

using testing_support::failureOf;
using testing_support::failureText;

constexpr const char* macroThree = "C:\\KORVANO\\LASER\\KRVWin.M3";

class GraphicsTest : public testing_support::CoreTest {
protected:
    graphics::clsGrafik& add(const graphics::GraphicDefinition& daten) { return set.Add(session, pictures, daten); }
    graphics::clsGrafik& addFile(const std::string& path, std::uint8_t makro = 1) {
        return add({0, 0, makro, "INCH", false, 1, path});
    }

    graphics::clsGrafiken set;
};

TEST_F(GraphicsTest, AMacroLoadsItsNumberedFileAndInvertsItBesideAMarker) {
    host.addPicture(macroThree, 300, 150);
    host.imageFiles.pictures[macroThree].dpiX = 299.9994;
    host.imageFiles.pictures[macroThree].jpeg = "jpeg";
    host.system.files["C:\\KORVANO\\LASER\\KRVWinIn.M3"] = "";
    session.log.debugging(true);
    host.system.screenDpiDown = 120;
    const graphics::clsGrafik& grafik = add({0, 0, 3, "cm", false, 5.5F, ""});
    EXPECT_EQ(grafik.Bildname(), macroThree);
    EXPECT_EQ(grafik.Masseinheit(), "CM");
    EXPECT_EQ(std::tuple(grafik.Width(), grafik.Height()), std::tuple(300 * 2540 / 96.F, 150 * 2540 / 120.F));
    EXPECT_EQ(grafik.Bild()->pixels[0], 255);
    EXPECT_EQ(grafik.Bild()->jpeg, "");
    EXPECT_EQ(grafik.Bild()->dpiX, 299.9994) << "everything else stays";
    EXPECT_TRUE(host.logged(">         Auflösung (X, Y, Depth): 300, 0, 24"));
}

TEST_F(GraphicsTest, OnlyMacroFilesAreInvertedAndAFileLoadedTwiceIsOnePicture) {
    host.system.files["C:\\KORVANO\\LASER\\KRVWinIn.M1"] = "";
    host.system.files["C:\\KORVANO\\LASER\\KRVWinIn.M255"] = "";
    using Row = std::tuple<const char*, std::uint8_t, bool>;
    for (const auto& [path, makro, inverted] :
         {Row{"logo.bmp", 1, false}, Row{"D:\\KRVWin.M9", 1, true}, Row{"D:\\KRVWin.M1", 9, false},
          Row{"D:\\KRVWIN.M1", 1, false}, Row{"D:\\KRVWin.Maus.bmp", 255, true}}) {
        host.addPicture(path, 1, 1);
        const auto picture = addFile(path, makro).Bild();
        EXPECT_EQ(picture->pixels[0] == 255, inverted) << path;
        EXPECT_EQ(picture, addFile(path, makro).Bild());
        EXPECT_EQ(picture == pictures.load(path)->picture(), !inverted);
    }
    EXPECT_EQ(set.Count(), 10U);
    EXPECT_EQ(set.Item(10).Bildname(), "D:\\KRVWin.Maus.bmp");
    EXPECT_EQ(failureOf([&] { set.Item(0); }).number(), runtime::errSubscript);
    EXPECT_EQ(failureOf([&] { set.Item(11); }).number(), runtime::errSubscript);
}

TEST_F(GraphicsTest, AMissingFileIsIgnoredUnlessDebugging) {
    for (const int number : {runtime::errFileNotFound, runtime::errPathNotFound}) {
        host.system.failures["fehlt.bmp"] = number;
        session.log.debugging(false);
        const graphics::clsGrafik& grafik = addFile("fehlt.bmp");
        EXPECT_EQ(grafik.Bild(), nullptr);
        EXPECT_EQ(grafik.Width(), 0);
        session.log.debugging(true);
        EXPECT_EQ(failureText([&] { addFile("fehlt.bmp"); }),
                  "-2147194503 KRVWINPR.CLSGRAFIK: Bilddatei fehlt.bmp nicht gefunden.");
        EXPECT_TRUE(host.logged(">         Makrohinweis, ignoriert: 20010 " + runtime::describe(number)));
    }
    EXPECT_EQ(set.Count(), 2U) << "a graphic that fails is none of the set";
    // Any other failure is raised.
    host.system.files["text.bmp"] = "kein Bild";
    host.system.failures["geheim.bmp"] = runtime::errPermissionDenied;
    EXPECT_EQ(failureText([&] { addFile("text.bmp"); }), "-2147194502 KRVWINPR.CLSGRAFIK: Ungültiges Bild\r\n(481)");
    EXPECT_EQ(failureText([&] { addFile("geheim.bmp"); }),
              "-2147194502 KRVWINPR.CLSGRAFIK: Zugriff verweigert\r\n(70)");
    EXPECT_TRUE(failureOf([&] { addFile("text.bmp"); }).detail().starts_with("'text.bmp'"));
}

// The picture is an inch wide and half an inch high: 2540 by 1270 hundredths of a millimetre.
class PlacementTest : public GraphicsTest {
protected:
    PlacementTest() {
        host.addPicture("logo.bmp", 96, 48);
        host.spooler.device.capabilities = testing_support::oblongPixels;
        geometry.NewPrinter(printer.Device());
    }

    printer::Printer printer{host.spooler, "Laser 1", "TEST.OUT"};
    printer::clsDrucker geometry{host.dialogs};
    graphics::GraphicTarget where{printer, geometry, 100, 200};
    std::string message;
};

TEST_F(PlacementTest, PositionsAreTwipsInEveryModeAndUnit) {
    // Mode, position, and what becomes of it: in the message, and in pixels.
    using Row = std::tuple<bool, const char*, float, float, const char*, int, int>;
    for (const auto& [absolute, unit, x, y, place, left, top] :
         {Row{true, "cm", -1, -1, " cm absolut, %: 1133,35;566,5482;", 236, 236},
          Row{true, "INCH", -1, -1, " Inch absolut, %: 2879,8;1439,85;", 600, 600},
          Row{false, "CM", -1, -1, " cm relativ, %: 1233,858;766,9291;", 257, 320},
          Row{false, "mm", 0, -1, " Inch relativ, %: 100;1640;", 21, 683},
          Row{false, "INCH", -2, -2, " Inch relativ, %: 98;198;", 20, 83},
          Row{true, "CM", 254, 0, " cm absolut, %: 99,492;-0,381;", 21, 0}}) {
        message = "Text";
        add({1440, 2880, 1, unit, absolute, 2, "logo.bmp"}).PrintGrafik(where, message, x, y);
        std::string expected = std::string("Text") + place + " 1270;635     Scalefaktor:2";
        expected.replace(expected.find('%'), 1, "(x;y; width;height Twips)");
        EXPECT_EQ(message, expected);
        printer.NewPage();
        const auto& picture = host.spooler.device.pages().back().pictures.at(0);
        EXPECT_EQ(std::tuple(picture.x, picture.y), std::tuple(left, top)) << message;
        EXPECT_NEAR(picture.width, 265, 1) << message;
        EXPECT_NEAR(picture.height, 265, 1) << message;
    }
}

TEST_F(PlacementTest, WhatCannotBePrintedIsSaid) {
    graphics::clsGrafik& missing = addFile("fehlt.bmp");
    missing.PrintGrafik(where, message);
    EXPECT_EQ(message, " keine gültige Bilddatei!");
    const std::string error = "232943 clsGrafik_PrintGrafik: Fehler in clsGrafik_PrintGrafik ";
    EXPECT_EQ(failureText([&] { missing.PrintGrafik2(where, message); }), error + "91 " + runtime::describe(91));

    graphics::clsGrafik& grafik = addFile("logo.bmp");
    grafik.ScaleFaktor(0);
    for (const char* unit : {"CM", "INCH"}) {
        grafik.Masseinheit(unit);
        EXPECT_EQ(failureText([&] { grafik.PrintGrafik(where, message); }), error + "11 Division durch Null");
    }
    EXPECT_TRUE(testing_support::failureOf([&] { grafik.PrintGrafik(where, message); })
                    .detail()
                    .ends_with("logo.bmp: Der Skalierungsfaktor ist 0; erwartet: eine Zahl über 0. Er steht in "
                               "HPLASER.INI bei der Grafik, "
                               "sonst in der Einstellung „ScaleFaktor“ des Druckers."));
    grafik.ScaleFaktor(1);
    grafik.PrintGrafik2(where, message);
    EXPECT_TRUE(message.starts_with(" keine gültige Bilddatei! Inch relativ, (x;y; width;height Twips): 100;200;"));
}

TEST_F(PlacementTest, PicturesAreDecodedWhenShownAndMayTakeOnlySoMuch) {
    constexpr std::uint64_t mebibyte = 1024 * 1024;
    host.system.sizes["riese.bmp"] = 3000 * mebibyte;
    host.system.files["riese.bmp"] = "logo.bmp";
    EXPECT_EQ(failureText([&] { addFile("riese.bmp"); }), "-2147194502 KRVWINPR.CLSGRAFIK: Ungültiges Bild\r\n(481)");
    // Two of 480 million bytes fit, a third does not.
    for (const char* file : {"a.bmp", "b.bmp", "c.bmp"}) {
        host.addPicture(file, 1, 1);
        static_cast<platform::PictureInfo&>(host.imageFiles.pictures[file]) = {16000, 10000, 24, 0, 0};
        addFile(file);
    }
    EXPECT_EQ(set.Item(1).Width(), 16000 * 2540 / 96.F);
    EXPECT_EQ(host.imageFiles.decoded, 0);
    for (const std::size_t shown : {1U, 2U, 1U}) {
        set.Item(shown).PrintGrafik(where, message);
    }
    EXPECT_EQ(host.imageFiles.decoded, 2);
    const runtime::Error error = failureOf([&] { set.Item(3).PrintGrafik(where, message); });
    EXPECT_EQ(error.description(), "Fehler in clsGrafik_PrintGrafik 7 Nicht genügend Speicher");
    EXPECT_TRUE(error.detail().starts_with("'c.bmp'; "));
}

TEST_F(PlacementTest, AFileThatGoesAwayIsPrintedFromMemoryOrMissed) {
    for (const std::size_t size :
         {graphics::CheckedPicture::mostKeptBytes, graphics::CheckedPicture::mostKeptBytes + 1}) {
        const std::string content(size, 'x');
        host.imageFiles.pictures[content] = ::pictures::makePicture(1, 1, 24);
        for (const bool same : {true, false}) {
            host.system.files["a.bmp"] = content;
            graphics::clsGrafik& grafik = addFile("a.bmp");
            host.system.files["a.bmp"].back() = same ? 'x' : 'y';
            const runtime::Error error = failureOf([&] { grafik.PrintGrafik(where, message); });
            EXPECT_EQ(error.number() == 0, same || size == graphics::CheckedPicture::mostKeptBytes);
            EXPECT_EQ(error.detail().empty(), error.number() == 0);
            set = {};
        }
    }
}

// Two graphics in the first set, one in the second, told from each other by their width.
class GraphicMacroTest : public testing_support::PageTest {
protected:
    GraphicMacroTest() {
        const auto define = [&](graphics::clsGrafiken& set, const char* file, int width, float y, float x) {
            host.addPicture(file, width, 96);
            set.Add(session, pictures, {y, x, 1, "INCH", false, 1, file});
        };
        define(state.colGrafik, "a.bmp", 48, 1000, 10);
        define(state.colGrafik, "b.bmp", 96, 2000, 20);
        define(state.colGrafikA, "c.bmp", 192, 3000, 30);
    }
    std::string places(std::string_view page) {
        std::string text;
        for (const auto& drawn : print(page).pictures) {
            text += std::to_string(drawn.width) + ": " + std::to_string(drawn.x) + "," + std::to_string(drawn.y) + " ";
        }
        return text;
    }
};

TEST_F(GraphicMacroTest, DrawsAtTheCurrentOrItsOwnPosition) {
    using Row = std::pair<const char*, const char*>;
    for (const auto& [page, expected] :
         {Row{"ab^GZ2c", "2540: 488,1000 "}, Row{"a\n^GZ", "1270: 200,1222 2540: 200,1222 "},
          Row{"^GY1", "5080: 200,1000 "}, Row{"abc^GR1", "1270: 110,1500 "},
          Row{"^GR0", "1270: 110,1500 2540: 120,2500 "}, Row{"^GAx", "5080: 130,3500 "},
          Row{"^GA1^GA2^GR9^GZ3", "5080: 130,3500 "}}) {
        EXPECT_EQ(places(page), expected) << page;
    }
    session.log.debugging(true);
    places("^GA1^GR9");
    EXPECT_EQ(host.logLines(), (testing_support::Lines{">       GA Grafikmakro 1 Inch relativ, (x;y; width;height "
                                                       "Twips): 130;3500; 5080;2540     Scalefaktor:1",
                                                       ">       Grafik 9 ausgeben"}));
    // Without text the position stays where the line began; without graphics there are none.
    state.blnTextAusgeben = false;
    EXPECT_EQ(places("ab^GZ2"), "2540: 200,1000 ");
    state.blnTextAusgeben = true;
    state.blnGrafikAusgeben = false;
    EXPECT_EQ(places("ab^GZ^GY^GR^GA1"), "");
}

}  // namespace
