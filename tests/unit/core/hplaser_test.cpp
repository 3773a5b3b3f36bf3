#include <gtest/gtest.h>

#include "report/hplaser_ini.h"
#include "unit/support/fake_platform.h"

namespace {

using testing_support::FakePlatform;
using Lines = std::vector<std::string>;

class HplaserTest : public ::testing::Test {
protected:
    HplaserTest() {
        host.system.files["C:\\KORVANO\\hplaser.ini"] = "";
        host.addPicture("logo.bmp", 96, 96);
    }
    void put(const std::string& section, const std::string& key, const std::string& value) {
        host.system.profile.values[{section, key}] = value;
    }
    graphics::clsGrafiken read(const std::string& section = "Grafik", std::uint8_t offset = 0, bool autoScale = false) {
        report::HplaserIni settings(session, pictures);
        if (autoScale) {
            settings.AutoScaleDPI();
        }
        graphics::clsGrafiken set;
        settings.ReadGrafikPositionen(set, section, offset, 5.5F);
        return set;
    }
    // The graphic of one placement.
    graphics::clsGrafik graphicOf(const std::string& placement) {
        put("Grafik", "Grafik4", placement);
        return read().Item(1);
    }
    runtime::Error failureOf(const std::string& key, const std::string& value, std::uint8_t offset = 0) {
        put("Grafik", key, value);
        try {
            read("Grafik", offset);
        } catch (const runtime::Error& error) {
            host.system.profile.values.erase({"Grafik", key});
            return error;
        }
        ADD_FAILURE() << value;
        return runtime::Error(0);
    }

    FakePlatform host;
    session::Session session{host.ports};
    graphics::PictureCache pictures{host.system, host.imageFiles};
};

TEST_F(HplaserTest, BarcodeHeightIsTheNumberAsFarAsItGoes) {
    session.log.debugging(true);
    struct Row {
        const char* value;
        double height;
        const char* logged;
    };
    for (const Row& row :
         {Row{"0.3", 0.3, "0,3, gelesener Wert:  0.3"}, Row{"0,3", 0.3, "0,3, gelesener Wert:  0,3"},
          Row{"", 0.15, "0,15, gelesener Wert:  "}, Row{"Vorgabe", 0.15, "0,15, gelesener Wert:  Vorgabe"},
          Row{"vorgabe", 0, "0, gelesener Wert:  vorgabe"}, Row{"  .5 Zoll", 0.5, "0,5, gelesener Wert:  .5 Zoll"}}) {
        put("Font", "BarcodeHeight", row.value);
        EXPECT_EQ(report::HplaserIni(session, pictures).GetBarcodeHeight(), row.height) << row.value;
        EXPECT_EQ(host.logLines().back(), std::string(">     GetBarcodeHeight: ") + row.logged);
    }
    host.system.files.erase("C:\\KORVANO\\hplaser.ini");
    EXPECT_EQ(report::HplaserIni(session, pictures).GetBarcodeHeight(), 0.15);
}

TEST_F(HplaserTest, AutoScaleDPIIsOnForTrueOnly) {
    session.log.debugging(true);
    for (const auto& [value, on] : {std::pair{"tRUE", true}, {"1", false}, {"Wahr", false}, {"", false}}) {
        put("Modus", "AutoScaleDPI", value);
        EXPECT_EQ(report::HplaserIni(session, pictures).AutoScaleDPI(), on) << value;
        EXPECT_EQ(host.logLines().back(),
                  std::string(">     AutoScaleDPI: ") + (on ? "Wahr" : "Falsch") + ", gelesener Wert:  " + value);
    }
}

TEST_F(HplaserTest, ScaleFactorsFollowTheScreen) {
    session.log.debugging(true);
    report::HplaserIni settings(session, pictures);
    EXPECT_EQ(settings.ScaleDPIfactor(5.5F), 5.5F);
    host.system.screenDpi = 120;
    EXPECT_EQ(settings.ScaleDPIfactor(5.5F), 4.4F);
    EXPECT_EQ(host.logLines(),
              (Lines{">       ScaleDPIfactor (0=unverändert): 0", ">       ScaleDPIfactor (0=unverändert): 1,25"}));
    put("Modus", "AutoScaleDPI", "TRUE");
    put("Grafik", "Grafik1", "0,0,logo.bmp");
    put("Grafik", "Grafik2", "0,0,logo.bmp,INCH,False,2.5");
    graphics::clsGrafiken set = read("Grafik", 0, true);
    EXPECT_EQ(set.Item(1).ScaleFaktor(), 4.4F);
    EXPECT_EQ(set.Item(2).ScaleFaktor(), 2);
    EXPECT_EQ(read().Item(2).ScaleFaktor(), 2.5F);
}

TEST_F(HplaserTest, PlacementsHaveSixFieldsOrTheDefaultsOfThree) {
    struct Row {
        const char* placement;
        float y;
        float x;
        int makro;
        const char* unit;
        bool absolute;
        float scale;
    };
    for (const Row& row : {
             Row{"1.5,2,logo.bmp,cm,True,4.25", 2160, 2880, 4, "CM", true, 4.25F},
             Row{"1,2,logo.bmp,CM,True", 1440, 2880, 4, "INCH", false, 5.5F},
             Row{"-.5, 2 ,7", -720, 2880, 7, "INCH", false, 5.5F},
             Row{"0,0,2.5,Zoll,wahr,1", 0, 0, 2, "INCH", true, 1},
             Row{"0,0,0007,CM,FALSCH,1,5", 0, 0, 7, "CM", false, 1.5F},
             Row{"0,0,255,CM,-1,1", 0, 0, 255, "CM", true, 1},
             Row{"0,0,0,CM,0,1", 0, 0, 0, "CM", false, 1},
         }) {
        const graphics::clsGrafik grafik = graphicOf(row.placement);
        EXPECT_EQ(grafik.YPos(), row.y) << row.placement;
        EXPECT_EQ(grafik.XPos(), row.x) << row.placement;
        EXPECT_EQ(grafik.Makro(), row.makro) << row.placement;
        EXPECT_EQ(grafik.Masseinheit(), row.unit) << row.placement;
        EXPECT_EQ(grafik.AbsolutPos(), row.absolute) << row.placement;
        EXPECT_EQ(grafik.ScaleFaktor(), row.scale) << row.placement;
    }
}

TEST_F(HplaserTest, AFileNameIsLongAndBeginsWithNoNumber) {
    for (const auto& [field, file] : {std::pair{"0-.bmp", true},
                                      {"A.bmp", true},
                                      {"äöü.b", true},
                                      {"C:\\L\\a", true},
                                      {"123", false},
                                      {"00012", false}}) {
        EXPECT_EQ(graphicOf(std::string("0,0,") + field).Bildname() == field, file) << field;
    }
    for (const char* field : {"a.bm", "äb.b", "12345.bmp", "1logo.bmp", ""}) {
        EXPECT_EQ(failureOf("Grafik4", std::string("0,0,") + field).number(), runtime::errTypeMismatch) << field;
    }
}

TEST_F(HplaserTest, WhatIsNoNumberOrNoMacroEndsTheReading) {
    struct Row {
        const char* key;
        const char* value;
        int number;
    };
    for (const Row& row : {Row{"Grafik1", "eins,2,3", 13}, Row{"Grafik1", "1", 13}, Row{"Grafik1", "1,2x,3", 13},
                           Row{"Grafik1", "1,2,3,CM,ja,1", 13}, Row{"Grafik1", "1,2,3,CM,True,", 13},
                           Row{"Grafik1", "1,2,246", 6}, Row{"Grafik1", "1,2,-1", 6}, Row{"Grafik1", "1e300,2,3", 6},
                           Row{"GrafikSize1", "1,2", 13}, Row{"GrafikSize1", "1,2,x", 13}}) {
        const runtime::Error error = failureOf(row.key, row.value, 10);
        EXPECT_EQ(error.number(), row.number) << row.value;
        EXPECT_NE(error.detail().find(row.key), std::string::npos) << error.detail();
    }
    put("Grafik", "Grafik1", "0,0,3");
    EXPECT_EQ(failureOf("GrafikSize1", "hoch,2,3").number(), runtime::errTypeMismatch);
    EXPECT_EQ(failureOf("GrafikSize2", "1,,3").number(), runtime::errTypeMismatch);
    host.system.files["text.bmp"] = "kein Bild";
    EXPECT_EQ(failureOf("Grafik1", "0,0,text.bmp").number(), graphics::clsGrafik::errUnreadable);
}

TEST_F(HplaserTest, SizesApplyToWhatIsDefinedSoFar) {
    host.addPicture("C:\\KORVANO\\LASER\\KRVWin.M12", 1, 1);
    put("Grafik_A", "GrafikSize1", "1,1,2");
    put("Grafik_A", "Grafik2", "0,0,logo.bmp");
    put("Grafik_A", "Grafik3", "0,0,2");
    put("Grafik_A", "GrafikSize3", "100,200.5,2");
    put("Grafik_A", "Grafik9", "0,0,2");
    graphics::clsGrafiken set = read("Grafik_A", 10);
    ASSERT_EQ(set.Count(), 3U);
    for (const std::size_t position : {1U, 2U}) {
        EXPECT_EQ(set.Item(position).Makro(), 12);
        EXPECT_EQ(set.Item(position).Height(), 100);
        EXPECT_EQ(set.Item(position).Width(), 200.5F);
    }
    EXPECT_EQ(set.Item(3).Height(), 2540 / 96.F);
}

}  // namespace
