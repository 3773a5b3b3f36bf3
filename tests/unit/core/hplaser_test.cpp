#include "report/hplaser_ini.h"

#include "unit/support/core_test.h"

namespace {

class HplaserTest : public testing_support::CoreTest {
protected:
    HplaserTest() {
        host.system.files["C:\\KORVANO\\hplaser.ini"] = "";
        host.addPicture("logo.bmp", 96, 96);
    }
    void put(const std::string& section, const std::string& key, const std::string& value) {
        host.system.profile.values[{section, key}] = value;
    }
    report::HplaserIni ini() { return {session, pictures}; }
    graphics::clsGrafiken read(const std::string& section = "Grafik", std::uint8_t offset = 0) {
        report::HplaserIni settings = ini();
        settings.AutoScaleDPI();
        graphics::clsGrafiken set;
        settings.ReadGrafikPositionen(set, section, offset, 5.5F);
        return set;
    }
    graphics::clsGrafik graphicOf(const std::string& placement) {
        put("Grafik", "Grafik4", placement);
        return read().Item(1);
    }
    // The number of what a value fails with; it has to say where the value stands.
    int failureOf(const std::string& key, const std::string& value) {
        put("Grafik", key, value);
        const runtime::Error error = testing_support::failureOf([this] { read("Grafik", 10); });
        EXPECT_NE(error.detail().find(key + " in [Grafik]"), std::string::npos) << error.detail();
        put("Grafik", key, "");
        return error.number();
    }
};

TEST_F(HplaserTest, BarcodeHeightIsTheNumberAsFarAsItGoes) {
    for (const auto& [value, height] :
         {std::pair{"0.3", 0.3}, {"0,3", 0.3}, {"", 0.15}, {"Vorgabe", 0.15}, {"vorgabe", 0}, {"  .5 Zoll", 0.5}}) {
        put("Font", "BarcodeHeight", value);
        EXPECT_EQ(ini().GetBarcodeHeight(), height) << value;
    }
    host.system.files.erase("C:\\KORVANO\\hplaser.ini");
    EXPECT_EQ(ini().GetBarcodeHeight(), 0.15);
}

TEST_F(HplaserTest, ScaleFactorsFollowTheScreenWhereTrueIsSet) {
    for (const auto& [value, on] : {std::pair{"1", false}, {"Wahr", false}, {"", false}, {"tRUE", true}}) {
        put("Modus", "AutoScaleDPI", value);
        EXPECT_EQ(ini().AutoScaleDPI(), on) << value;
    }
    session.log.debugging(true);
    EXPECT_EQ(ini().ScaleDPIfactor(5.5F), 5.5F);
    EXPECT_EQ(host.logLines().back(), ">       ScaleDPIfactor (0=unverändert): 0");
    host.system.screenDpi = 120;
    EXPECT_EQ(ini().ScaleDPIfactor(5.5F), 4.4F);
    EXPECT_EQ(host.logLines().back(), ">       ScaleDPIfactor (0=unverändert): 1,25");
    put("Grafik", "Grafik1", "0,0,logo.bmp");
    put("Grafik", "Grafik2", "0,0,logo.bmp,INCH,False,2.5");
    EXPECT_EQ(read().Item(1).ScaleFaktor(), 4.4F);
    EXPECT_EQ(read().Item(2).ScaleFaktor(), 2);
    put("Modus", "AutoScaleDPI", "FALSE");
    EXPECT_EQ(read().Item(2).ScaleFaktor(), 2.5F);
}

TEST_F(HplaserTest, PlacementsHaveSixFieldsOrTheDefaultsOfThree) {
    using Row = std::tuple<const char*, float, float, int, const char*, bool, float>;
    for (const auto& [placement, y, x, makro, unit, absolute, scale] :
         {Row{"1.5,2,logo.bmp,cm,True,4.25", 2160, 2880, 4, "CM", true, 4.25F},
          Row{"1,2,logo.bmp,CM,True", 1440, 2880, 4, "INCH", false, 5.5F},
          Row{"-.5, 2 ,7", -720, 2880, 7, "INCH", false, 5.5F}, Row{"0,0,2.5,Zoll,wahr,1", 0, 0, 2, "INCH", true, 1},
          Row{"0,0,0007,CM,FALSCH,1,5", 0, 0, 7, "CM", false, 1.5F}, Row{"0,0,255,CM,-1,1", 0, 0, 255, "CM", true, 1},
          Row{"0,0,0,CM,0,1", 0, 0, 0, "CM", false, 1}}) {
        const graphics::clsGrafik grafik = graphicOf(placement);
        EXPECT_EQ(std::tuple(grafik.YPos(), grafik.XPos(), grafik.Makro(), grafik.Masseinheit(), grafik.AbsolutPos(),
                             grafik.ScaleFaktor()),
                  std::tuple(y, x, makro, unit, absolute, scale))
            << placement;
    }
}

TEST_F(HplaserTest, AFileNameIsLongAndBeginsWithNoNumber) {
    for (const char* file : {"0-.bmp", "A.bmp", "äöü.b", "C:\\L\\a"}) {
        EXPECT_EQ(graphicOf(std::string("0,0,") + file).Bildname(), file);
    }
    EXPECT_EQ(graphicOf("0,0,00012").Makro(), 12);
    for (const char* field : {"a.bm", "äb.b", "12345.bmp", "1logo.bmp", ""}) {
        EXPECT_EQ(failureOf("Grafik4", std::string("0,0,") + field), runtime::errTypeMismatch) << field;
    }
}

TEST_F(HplaserTest, WhatIsNoNumberOrNoMacroEndsTheReading) {
    using Row = std::tuple<const char*, const char*, int>;
    for (const auto& [key, value, number] :
         {Row{"Grafik1", "eins,2,3", 13}, Row{"Grafik1", "1", 13}, Row{"Grafik1", "1,2x,3", 13},
          Row{"Grafik1", "1,2,3,CM,ja,1", 13}, Row{"Grafik1", "1,2,3,CM,True,", 13}, Row{"Grafik1", "1,2,246", 6},
          Row{"Grafik1", "1,2,-1", 6}, Row{"Grafik1", "1e300,2,3", 6}, Row{"GrafikSize1", "1,2", 13},
          Row{"GrafikSize1", "1,2,x", 13}}) {
        EXPECT_EQ(failureOf(key, value), number) << value;
    }
    put("Grafik", "Grafik1", "0,0,3");
    EXPECT_EQ(failureOf("GrafikSize1", "hoch,2,3"), runtime::errTypeMismatch);
    EXPECT_EQ(failureOf("GrafikSize2", "1,,3"), runtime::errTypeMismatch);
}

TEST_F(HplaserTest, SizesApplyToWhatIsDefinedSoFar) {
    host.addPicture("C:\\KORVANO\\LASER\\KRVWin.M12", 1, 1);
    using Row = std::pair<const char*, const char*>;
    for (const auto& [key, value] :
         {Row{"GrafikSize1", "1,1,2"}, Row{"Grafik2", "0,0,logo.bmp"}, Row{"Grafik3", "0,0,2"},
          Row{"GrafikSize3", "100,200.5,2"}, Row{"Grafik9", "0,0,2"}}) {
        put("Grafik_A", key, value);
    }
    graphics::clsGrafiken set = read("Grafik_A", 10);
    ASSERT_EQ(set.Count(), 3U);
    for (const std::size_t position : {1U, 2U}) {
        const graphics::clsGrafik& grafik = set.Item(position);
        EXPECT_EQ(std::tuple(grafik.Makro(), grafik.Height(), grafik.Width()), std::tuple(12, 100, 200.5F));
    }
    EXPECT_EQ(set.Item(3).Height(), 2540 / 96.F);
}

}  // namespace
