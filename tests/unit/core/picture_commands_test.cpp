#include <gtest/gtest.h>

#include "graphics/MGrafikdruck.h"
#include "startup/MMain.h"
#include "unit/support/fake_platform.h"

namespace {

using graphics::MGrafikdruck::PixelSize;
using testing_support::FakePlatform;

class PictureCommandsTest : public ::testing::Test {
protected:
    void start(const std::string& tail) {
        host.system.tail = tail;
        startup::MMain::Main(host.ports);
    }
    std::string lastBox() const { return host.dialogs.boxes.empty() ? "" : host.dialogs.boxes.back().text; }

    FakePlatform host;
};

TEST_F(PictureCommandsTest, InvertWritesTheFileInItsOwnKind) {
    host.addPicture("bild.tif", 2, 1);
    host.system.files["bild.tif"] = "bild.tif";
    start("/invert bild.tif /DEBUG");
    EXPECT_EQ(host.system.files["bild.tif"], "bild.tif'") << "encoded as the original";
    EXPECT_EQ(host.imageFiles.pictures["bild.tif'"].pixels, std::vector<std::uint8_t>(6, 255));
    EXPECT_TRUE(host.dialogs.boxes.empty());
    const auto lines = host.logLines();
    EXPECT_EQ(
        std::vector<std::string>(lines.end() - 4, lines.end()),
        (std::vector<std::string>{"> Invertierungbeginn", "> Invertierungende", "> Programm regulär beendet!", ""}));
}

TEST_F(PictureCommandsTest, FailuresReachTheUserAndTheSettingsAreKept) {
    start("/INVERT fehlt.bmp");
    EXPECT_EQ(lastBox(), "Laufzeitfehler '53':\r\n\r\nDatei nicht gefunden: fehlt.bmp");
    EXPECT_EQ(host.settings.commits, 1);
    host.addPicture("voll.bmp", 1, 1);
    host.system.unwritable.insert("voll.bmp");
    start("/INVERT voll.bmp");
    EXPECT_NE(lastBox().find("Laufzeitfehler '61'"), std::string::npos);
    start("/PRINTGRAPHIC");
    EXPECT_EQ(lastBox(), "Laufzeitfehler '53':\r\n\r\nDatei nicht gefunden: GRAFIK.PCX");
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
}

TEST_F(PictureCommandsTest, PrintGraphicFillsThePageOfTheNamedPrinter) {
    host.spooler.names = {"Fax", "Laser 1"};
    host.spooler.byDefault = "Fax";
    host.addPicture("GRAFIK.PCX", 200, 100);
    start("/PRINTGRAPHIC \"LASER 1\" /DEBUG");
    const auto& document = *host.spooler.device.documents.back();
    EXPECT_EQ(document.printer, "Laser 1");
    EXPECT_EQ(document.title, "GRAFIK.PCX");
    EXPECT_TRUE(document.delivered);
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.pages[0].texts.at(0).text, " ");
    const auto& picture = document.pages[0].pictures.at(0);
    EXPECT_EQ((std::vector<int>{picture.x, picture.y, picture.width, picture.height}),
              (std::vector<int>{0, 0, 11424, 5712}));
    EXPECT_TRUE(host.logged(">   PrintGraphic (GRAFIK.PCX, LASER 1)"));
    EXPECT_TRUE(host.logged(">   verwendeter Druckertreiber: Laser 1"));

    start("/PRINTGRAPHIC Tinte");
    EXPECT_EQ(host.spooler.device.documents.back()->printer, "Fax");
    host.spooler.names.clear();
    start("/PRINTGRAPHIC");
    EXPECT_EQ(lastBox(),
              "Es sind keine Windowsdruckertreiber auf diesem Rechner installiert. Deshalb kann KRVWinPr nicht "
              "drucken.\r\rDruckauftrag wurde abgebrochen.");
    EXPECT_EQ(host.spooler.device.documents.size(), 2U);
}

TEST(Fit, KeepsProportionsAndAtLeastOnePixel) {
    struct Row {
        PixelSize picture;
        PixelSize page;
        PixelSize expected;
    };
    for (const Row& row : {Row{{200, 100}, {1000, 2000}, {1000, 500}}, Row{{100, 200}, {1000, 1500}, {750, 1500}},
                           Row{{10, 20}, {1000, 2000}, {1000, 2000}}, Row{{3, 2}, {101, 500}, {101, 67}},
                           Row{{100000, 1}, {1000, 2000}, {1000, 1}}, Row{{1, 100000}, {1000, 2000}, {1, 2000}},
                           Row{{300000000, 1}, {30000, 40000}, {30000, 1}}}) {
        const PixelSize size = graphics::MGrafikdruck::fit(row.picture, row.page);
        EXPECT_EQ(size, row.expected) << size.width << " x " << size.height;
    }
}

}  // namespace
