#include "preview/FVorschau.h"

#include "preview/page_facts.h"
#include "preview/sheet_layout.h"
#include "preview/zoom.h"
#include "runtime/numbers.h"
#include "unit/support/core_test.h"
#include "unit/support/recording_canvas.h"

namespace {

using platform::Key;
using preview::SheetLayout;
using preview::Zoom;

TEST(PreviewZoom, IsReadAsItIsShownAndHasSteps) {
    const runtime::Locale german;
    struct Row {
        const char* typed;
        const char* meant;  // empty where it is nonsense
    };
    for (const Row& row : {Row{"125 %", "125 %"}, Row{" 33,4", "33 %"}, Row{"9999%", "800 %"}, Row{"1", "10 %"},
                           Row{"ganze seite", "Ganze Seite"}, Row{"SEITENBREITE", "Seitenbreite"}, Row{"", ""},
                           Row{"%", ""}, Row{"-5", ""}, Row{"groß", ""}, Row{"1e999", ""}, Row{"12 34", ""}}) {
        const auto zoom = preview::zoomOf(row.typed, german);
        EXPECT_EQ(zoom ? zoomText(*zoom, german) : "", row.meant) << row.typed;
    }
    for (const auto& [percent, above, below] :
         {std::array{100.0, 125.0, 90.0}, std::array{57.3, 67.0, 50.0}, std::array{124.9, 150.0, 100.0},
          std::array{800.0, 800.0, 600.0}, std::array{3.0, 10.0, 10.0}}) {
        EXPECT_EQ(preview::larger(percent).percent, above) << percent;
        EXPECT_EQ(preview::smaller(percent).percent, below) << percent;
    }
}

// A4 at 96 pixels per inch is 793.6 x 1122.56 pixels, with the workspace around it 817.6 x 1146.56.
TEST(SheetLayout, PlacesTheSheetAtEveryZoom) {
    struct Row {
        platform::CanvasSize canvas;
        double taken;
        Zoom zoom;
        double percent;
        double left, top;
        int across, down;  // length of the scroll bars, 0 where there is none
    };
    const auto percent = [](double value) { return Zoom::of(value); };
    for (const Row& row : {Row{{1000, 1200, 96, 96, 1}, 0, percent(100), 100, 103, 38, 0, 0},
                           Row{{800, 600, 96, 96, 1}, 0, percent(100), 100, 12, 12, 818, 1147},
                           Row{{800, 600, 192, 96, 1}, 0, percent(50), 50, 12, 19, 818, 0},
                           Row{{2000, 600, 96, 96, 2}, 0, {Zoom::Mode::wholePage}, 49.17, 804, 24, 0, 0},
                           Row{{800, 600, 96, 96, 1}, 30, {Zoom::Mode::wholePage}, 48.64, 207, 42, 0, 0},
                           Row{{800, 600, 96, 96, 1}, 0, {Zoom::Mode::pageWidth}, 97.78, 12, 12, 0, 1122},
                           Row{{0, 0, 96, 96, 1}, 0, {Zoom::Mode::wholePage}, 1, -11, -11, 32, 36}}) {
        SheetLayout layout;
        layout.fit(row.canvas, row.taken, testing_support::oblongPixels, row.zoom);
        SCOPED_TRACE(std::to_string(row.percent) + " at " + std::to_string(row.canvas.width));
        EXPECT_NEAR(layout.percent(), row.percent, 0.01);
        EXPECT_EQ(layout.across().whole, row.across);
        EXPECT_EQ(layout.down().whole, row.down);
        if (row.canvas.width > 0) {
            EXPECT_EQ(layout.sheet().x, row.left);
            EXPECT_EQ(layout.sheet().y, row.top);
        }
        const auto seen = layout.view(true);
        EXPECT_NEAR(seen.left + 2420 * seen.scaleX, layout.sheet().x + layout.sheet().width, 0.001);
    }
}

TEST(SheetLayout, ScrollsWithinTheSheetAndKeepsThePointUnderThePointer) {
    const platform::CanvasSize canvas{400, 300, 96, 96, 1};
    SheetLayout layout;
    layout.fit(canvas, 0, testing_support::oblongPixels, Zoom::of(100));
    layout.scrollTo(1e9, -5);
    EXPECT_EQ(layout.across().position, 418);
    EXPECT_EQ(layout.down().position, 0);
    layout.scrollTo(200, 300);
    const auto before = layout.pagePointAt(250, 130);
    layout.fit(canvas, 0, testing_support::oblongPixels, Zoom::of(235));
    layout.bring(before, 250, 130);
    EXPECT_NEAR(layout.pagePointAt(250, 130).x, before.x, 1 / layout.view(true).scaleX);
    EXPECT_NEAR(layout.pagePointAt(250, 130).y, before.y, 1 / layout.view(true).scaleY);

    for (const auto& area :
         {platform::drawing::Area{{0, 100}, {0, 80}}, platform::drawing::Area{{2300, 2380}, {6700, 6816}},
          platform::drawing::Area{{-60, 2420}, {3000, 3080}}}) {
        layout.reveal(area);
        const platform::Box box = layout.boxOf(area);
        EXPECT_TRUE(box.x >= 0 && box.y >= 0 && box.x < 400 && box.y + box.height <= 300) << area.down.start;
    }
}

// The bar takes room, so the sheet becomes smaller, so the bar may go: that has to end.
TEST(SheetLayout, AtPageWidthTheScrollBarComesToRest) {
    constexpr int bar = 17;
    for (int height = 500; height < 800; ++height) {
        SheetLayout layout;
        int changes = 0;
        for (bool shown = false;; ++changes) {
            layout.fit({500 - (shown ? bar : 0), height, 96, 96, 1}, 0, testing_support::oblongPixels,
                       {Zoom::Mode::pageWidth});
            EXPECT_EQ(layout.across().whole, 0);
            if (shown == (layout.down().whole > 0)) {
                break;
            }
            shown = !shown;
            ASSERT_LT(changes, 3) << height;
        }
    }
}

TEST(PageFacts, NamePaperAndSize) {
    const platform::DeviceCapabilities a4{0, 0, 100, 200, 827, 2339, 0, 0};
    const platform::DeviceCapabilities across{0, 0, 100, 100, 1169, 827, 0, 0};
    EXPECT_EQ(preview::paperText(9, a4) + "/" + preview::paperText(9, across) + "/" + preview::paperText(256, a4),
              "A4/A4 quer/210 x 297 mm");
    const runtime::Locale german;
    EXPECT_EQ(runtime::sizeText(1023, german) + "/" + runtime::sizeText(1536, german) + "/" +
                  runtime::sizeText(7654321, german),
              "1023 Byte/1,5 KB/7,3 MB");
}

class VorschauTest : public testing_support::CoreTest {
protected:
    using Pages = std::vector<std::string>;

    void write(const Pages& pages) {
        std::string text;
        for (const std::string& page : pages) {
            text += (text.empty() ? "" : "\f") + page;
        }
        host.system.files["A.OUT"] = text;
    }
    void open(const Pages& pages) {
        write(pages);
        open();
    }
    void open() { openFile("A.OUT"); }
    void openFile(const std::string& file) {
        vorschau.emplace(session, preview::PreviewOrder{file, "", "", false});
        vorschau->Show();
        vorschau->DoVorschau();
        form.rest();
    }
    static Pages numbered(int count) {
        Pages pages;
        for (int page = 1; page <= count; ++page) {
            pages.push_back("Seite " + std::to_string(page));
        }
        return pages;
    }
    void wheel(double steps, bool control = false) { form.events->wheeled("picSeite", {steps, false, control, 9, 9}); }
    std::string shown(const std::string& control) { return form.controls.at(control).text; }
    bool status(const std::string& part) { return shown("lblStatus").find(part) != std::string::npos; }
    testing_support::RecordingCanvas painted() {
        testing_support::RecordingCanvas canvas(form.canvasSize);
        form.events->paint("picSeite", canvas);
        return canvas;
    }
    // What is printed on the sheet, or said instead.
    std::string sheetText() {
        const testing_support::RecordingCanvas canvas = painted();
        std::string text;
        for (const auto& run : canvas.page().texts) {
            text += run.text;
        }
        for (const std::string& line : canvas.texts) {
            text += "|" + line;
        }
        return text;
    }

    testing_support::FormState& form = host.forms.form;
    testing_support::FormState& dialog = host.forms.dialog;
    std::optional<preview::FVorschau> vorschau;
};

TEST_F(VorschauTest, IsStartedInTheOrderOfTheLog) {
    write(numbered(3));
    bool served = false;
    host.forms.atRun = [&] {
        served = true;
        EXPECT_EQ(form.title, "Korvano - Vorschau: A.OUT");
        EXPECT_EQ(sheetText(), "Seite 1");
        EXPECT_EQ(shown("txtSeite") + shown("lblSeiten"), "1von 3");
        EXPECT_TRUE(status("Laser 1   |   A4   |   23 Byte")) << shown("lblStatus");
    };
    start("/VORSCHAU A.OUT KEINEGRAFIK /DEBUG /WAIT");
    EXPECT_TRUE(served);
    testing_support::Lines steps = host.logLines();
    std::erase_if(steps, [](const std::string& line) {
        return line != "> Vorschaubeginn" && line != "> Form angezeigt" && line != "> Vorschauende";
    });
    EXPECT_EQ(steps, (testing_support::Lines{"> Vorschaubeginn", "> Form angezeigt", "> Vorschauende"}));
    EXPECT_FALSE(host.system.files.contains("KRVWINPR.OK"));

    host.forms.hasDesktop = false;
    start("/VORSCHAU A.OUT");
    EXPECT_NE(lastBox().find("Laufzeitfehler '70'"), std::string::npos);
}

TEST_F(VorschauTest, TurnsPagesAndStopsAtTheEnds) {
    open(numbered(4));
    form.focus = "picSeite";
    struct Row {
        const char* what;
        std::function<void()> user;
        const char* page;
    };
    for (const Row& row :
         {Row{"before the first", [&] { form.pressKey(Key::pageUp); }, "1"},
          Row{"next", [&] { form.pressKey(Key::pageDown); }, "2"}, Row{"wheel", [&] { wheel(-1); }, "3"},
          Row{"half a notch", [&] { wheel(-0.5); }, "3"}, Row{"the other half", [&] { wheel(-0.5); }, "4"},
          Row{"behind the last", [&] { wheel(-1); }, "4"}, Row{"arrow", [&] { form.pressKey(Key::up); }, "3"},
          Row{"first", [&] { form.pressKey(Key::home); }, "1"}, Row{"last", [&] { form.press("cmdLetzte"); }, "4"},
          Row{"typed", [&] { form.enter("txtSeite", " 2 "); }, "2"},
          Row{"too much", [&] { form.enter("txtSeite", "99"); }, "4"},
          Row{"nonsense", [&] { form.enter("txtSeite", "zwei"); }, "4"},
          Row{"no number", [&] { form.enter("txtSeite", "99999999999999999999999"); }, "4"},
          Row{"zero", [&] { form.enter("txtSeite", "0"); }, "1"}}) {
        row.user();
        form.rest();
        EXPECT_EQ(shown("txtSeite"), row.page) << row.what;
        EXPECT_EQ(sheetText(), std::string("Seite ") + row.page) << row.what;
        EXPECT_EQ(form.controls["cmdVorherige"].enabled, row.page != std::string("1")) << row.what;
        EXPECT_EQ(form.controls["cmdNaechste"].enabled, row.page != std::string("4")) << row.what;
    }
}

TEST_F(VorschauTest, ZoomsAndScrollsBeforeItTurns) {
    open(numbered(2));
    form.focus = "picSeite";
    EXPECT_EQ(shown("cboZoom"), "Ganze Seite");
    form.enter("cboZoom", "100");
    EXPECT_EQ(shown("cboZoom"), "100 %");
    EXPECT_NEAR(painted().sheets.back().scaleX, 96.0 / painted().sheets.back().device.logPixelsX, 1e-9);
    form.enter("cboZoom", "riesig");
    EXPECT_EQ(shown("cboZoom"), "100 %");
    form.pressKey(Key::plus, true);
    EXPECT_EQ(shown("cboZoom"), "125 %");
    wheel(-1, true);
    EXPECT_EQ(shown("cboZoom"), "104 %");

    const auto& bar = form.controls["picSeite"].down;
    for (int notches = 0; bar.position < bar.whole - bar.page; ++notches) {
        wheel(-1);
        ASSERT_LT(notches, 100);
    }
    EXPECT_EQ(shown("txtSeite"), "1");
    wheel(-1);
    EXPECT_EQ(shown("txtSeite") + "/" + std::to_string(bar.position), "2/0");
    wheel(1);
    EXPECT_EQ(shown("txtSeite"), "1");
    EXPECT_EQ(bar.position, bar.whole - bar.page);
    form.pressKey(Key::digit0, true);
    EXPECT_EQ(shown("cboZoom") + "/" + std::to_string(bar.whole), "Ganze Seite/0");
}

TEST_F(VorschauTest, KeepsTheOldPageOnTheWayToAFarOneAndLetsANewCommandWin) {
    host.system.looksTake = 20;
    open(numbered(20000));
    form.press("cmdLetzte");
    ASSERT_TRUE(form.wantsIdle);
    EXPECT_TRUE(status("Seite 20000 wird vorbereitet …")) << shown("lblStatus");
    EXPECT_EQ(sheetText(), "Seite 1");
    form.press("cmdErste");
    EXPECT_FALSE(form.wantsIdle);
    form.press("cmdLetzte");
    EXPECT_GT(form.rest(), 1);
    EXPECT_EQ(sheetText(), "Seite 20000");
    form.enter("txtSeite", "1");
    form.press("cmdLetzte");
    form.press("cmdSchliessen");
    EXPECT_TRUE(form.closed);
}

TEST_F(VorschauTest, ShowsTheFirstPageBeforeALongFileIsRead) {
    host.system.looksTake = 20;
    write(numbered(30000));
    const auto openQuickly = [this] {
        vorschau.emplace(session, preview::PreviewOrder{"A.OUT", "", "", false});
        vorschau->Show();
        vorschau->DoVorschau();
        EXPECT_EQ(sheetText(), "Seite 1");
        EXPECT_TRUE(form.wantsIdle && shown("lblSeiten").ends_with(" …") && shown("lblSeiten") < "von 3");
    };
    openQuickly();
    EXPECT_TRUE(status("340,7 KB")) << shown("lblStatus");
    form.replace("txtSeite", "7");
    form.events->idle();
    EXPECT_EQ(shown("txtSeite"), "7") << "what is being typed";
    form.rest();
    EXPECT_EQ(shown("lblSeiten") + sheetText(), "von 30000Seite 1");
    // What needs all of it reads all of it.
    using Row = std::pair<std::function<void()>, const char*>;
    for (const auto& [user, page] :
         {Row{[&] { form.press("cmdLetzte"); }, "30000"}, Row{[&] { form.enter("txtSeite", "29999"); }, "29999"},
          Row{[&] { form.enter("txtSuchen", "seite 29998"); }, "29998"},
          Row{[&] { form.pressKey(Key::letterP, true); }, "1"}}) {
        openQuickly();
        user();
        EXPECT_EQ(shown("lblSeiten"), "von 30000");
        form.rest();
        EXPECT_EQ(sheetText(), std::string("Seite ") + page);
    }
    EXPECT_EQ(dialog.controls["txtBis"].text, "30000");
    // Read again where one is, and anew where the host writes meanwhile.
    form.press("cmdLetzte");
    form.pressKey(Key::f5);
    form.rest();
    EXPECT_EQ(sheetText(), "Seite 30000");
    openQuickly();
    write(numbered(2));
    form.rest();
    EXPECT_EQ(sheetText() + shown("lblSeiten"), "Seite 1von 2");
    write(numbered(30000));
    openQuickly();
    host.system.failures["A.OUT"] = runtime::errDeviceIo;
    form.rest();
    EXPECT_NE(sheetText().find("„A.OUT“ kann nicht gelesen werden.|Geräte-E/A-Fehler"), std::string::npos);
    EXPECT_FALSE(form.controls["cmdNaechste"].enabled);
}

TEST_F(VorschauTest, FindsAsOneTypesAndGoesFromHitToHit) {
    open({"Anna 1", "Berta", "Anna 2 Anna", "Anna 3"});
    form.replace("txtSuchen", "An");
    EXPECT_EQ(shown("lblTreffer"), "");
    form.replace("txtSuchen", "Anna");
    form.rest();
    using Row = std::pair<std::function<void()>, const char*>;
    for (const auto& [user, expected] :
         {Row{[] {}, "1 von 4, Seite 1"}, Row{[&] { form.pressKey(Key::f3); }, "2 von 4, Seite 3"},
          Row{[&] { form.events->clicked("txtSuchen"); }, "3 von 4, Seite 3"},
          Row{[&] { form.pressKey(Key::f3); }, "4 von 4, Seite 4"},
          Row{[&] { form.pressKey(Key::f3); }, "1 von 4, Seite 1"},
          Row{[&] { form.pressKey(Key::f3, false, true); }, "4 von 4, Seite 4"},
          Row{[&] {
                  form.enter("txtSeite", "2");
                  form.press("cmdZurueck");
              },
              "1 von 4, Seite 1"},
          Row{[&] { form.enter("txtSuchen", "Zoe"); }, "nicht gefunden, Seite 1"},
          Row{[&] { form.enter("txtSuchen", "Anna 2"); }, "1 von 1, Seite 3"}}) {
        user();
        form.rest();
        EXPECT_EQ(shown("lblTreffer") + ", Seite " + shown("txtSeite"), expected);
    }
    form.enter("txtSuchen", "Anna");
    form.rest();
    constexpr platform::Color hit{255, 214, 0};
    constexpr platform::Color current{255, 120, 0};
    EXPECT_EQ(painted().count(hit), 1U);
    EXPECT_EQ(painted().count(current), 1U);
    form.replace("txtSuchen", "");
    EXPECT_EQ(painted().count(hit) + painted().count(current), 0U);
}

TEST_F(VorschauTest, SelectsAndCopiesText) {
    open({"Ort und Zeit\nzweite"});
    form.focus = "picSeite";
    form.pressKey(Key::letterC, true);
    EXPECT_EQ(host.forms.copied, "");
    form.pressKey(Key::letterA, true);
    form.pressKey(Key::letterC, true);
    EXPECT_EQ(host.forms.copied, "Ort und Zeit\nzweite");

    // Where the first character is on the screen.
    const auto canvas = painted();
    const testing_support::DrawnText first = canvas.page().texts.at(0);
    const double x = canvas.sheets[0].left + (first.x + 1) * canvas.sheets[0].scaleX;
    const double y = canvas.sheets[0].top + (first.y + first.font.emHeight / 2.0) * canvas.sheets[0].scaleY;
    const auto point = [&](platform::PointerAction action, double px, double py) {
        form.events->pointed("picSeite", {action, platform::PointerButton::left, px, py, false});
    };
    point(platform::PointerAction::doubleClicked, x, y);
    EXPECT_EQ(form.controls["picSeite"].cursor, platform::Cursor::text);
    form.pressKey(Key::letterC, true);
    EXPECT_EQ(host.forms.copied, "Ort");
    point(platform::PointerAction::pressed, x, y);
    point(platform::PointerAction::moved, 5000, y);
    EXPECT_TRUE(form.wantsIdle);
    point(platform::PointerAction::released, 5000, y);
    form.rest();
    form.pressKey(Key::letterC, true);
    EXPECT_EQ(host.forms.copied, "Ort und Zeit");
    point(platform::PointerAction::pressed, 1, 1);
    host.forms.copied.clear();
    form.pressKey(Key::letterC, true);
    EXPECT_EQ(host.forms.copied, "");
}

TEST_F(VorschauTest, DragsTheSheet) {
    open(numbered(1));
    form.enter("cboZoom", "400 %");
    const auto& bars = form.controls["picSeite"];
    const int across = bars.across.position;
    const int down = bars.down.position;
    using enum platform::PointerAction;
    form.events->pointed("picSeite", {pressed, platform::PointerButton::middle, 300, 300, false});
    EXPECT_EQ(bars.cursor, platform::Cursor::grabbing);
    form.events->pointed("picSeite", {moved, platform::PointerButton::middle, 280, 260, false});
    form.events->pointed("picSeite", {released, platform::PointerButton::none, 280, 260, false});
    form.events->pointed("picSeite", {moved, platform::PointerButton::none, 10, 10, false});
    EXPECT_EQ(std::pair(bars.across.position, bars.down.position), std::pair(across + 20, down + 40));
}

TEST_F(VorschauTest, SaysWhatIsMissingInThePlaceOfThePageAndReadsAgain) {
    open();
    EXPECT_TRUE(form.shown);
    EXPECT_NE(sheetText().find("„A.OUT“ kann nicht gelesen werden.|Datei nicht gefunden"), std::string::npos);
    EXPECT_FALSE(form.controls["cmdDrucken"].enabled);
    form.pressKey(Key::pageDown);
    form.pressKey(Key::f3);
    form.pressKey(Key::letterA, true);
    wheel(-1);
    write(numbered(3));
    form.pressKey(Key::f5);
    EXPECT_EQ(sheetText(), "Seite 1");
    form.press("cmdLetzte");
    write(numbered(2));
    form.pressKey(Key::f5);
    EXPECT_EQ(sheetText() + shown("lblSeiten"), "Seite 2von 2");
    host.system.files.clear();
    form.pressKey(Key::f5);
    EXPECT_TRUE(sheetText().starts_with("Seite 2|")) << sheetText();
    EXPECT_NE(sheetText().find("Datei nicht gefunden"), std::string::npos);
    EXPECT_TRUE(host.dialogs.boxes.empty());
}

TEST_F(VorschauTest, SaysWhyAPageFailsAndWhatThePrinterDoesNotSay) {
    host.spooler.silentFor = 1000;
    host.spooler.device.fontName = "Anders";
    open({"^BC1,99999999999,1\\", "Seite 2", "^BC1,99999999999,1\\"});
    EXPECT_NE(sheetText().find("Druckerfehler: antwortet nicht\nHinweis: Der Zeichensatz"), std::string::npos)
        << sheetText();
    EXPECT_NE(sheetText().find("Überlauf: (Makro ^BC auf Seite 1, Zeile 1)|Der Druck endet auf dieser Seite. Die"),
              std::string::npos);
    EXPECT_TRUE(status("Kein Drucker antwortet, Ersatzblatt   |   A4") && !status("%")) << shown("lblStatus");
    form.enter("cboZoom", "400");
    EXPECT_EQ(form.controls["picSeite"].down.whole, 0) << "there is no sheet to be scrolled";
    wheel(-1);
    EXPECT_TRUE(sheetText().starts_with("Seite 2|Druckerfehler")) << sheetText();
    EXPECT_TRUE(status("400 %"));
    form.press("cmdLetzte");
    EXPECT_NE(sheetText().find("Der Druck endet spätestens auf dieser Seite."), std::string::npos);
}

TEST_F(VorschauTest, AsksForTheNamesOfTraysOnce) {
    host.spooler.bins = {{4, "Kassette"}};
    session.platform.settings.setText(platform::SettingsRoot::currentUser,
                                      "Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", "Schacht2", "4");
    open({"^TR2Rechnung", "Seite 2"});
    EXPECT_TRUE(status("Schacht 2 (Kassette)")) << shown("lblStatus");
}

TEST_F(VorschauTest, PrintsWhatIsChosen) {
    open(numbered(5));
    host.spooler.names = {"Fax", "Laser 1"};
    form.enter("txtSeite", "4");
    struct Row {
        const char* what;
        std::function<void()> user;
        std::size_t pages;  // 0 where nothing is printed
    };
    for (const Row& row : {Row{"all", [] {}, 5}, Row{"this", [&] { dialog.choose("optSeite", 0); }, 1},
                           Row{"a range",
                               [&] {
                                   dialog.replace("txtVon", "2");
                                   dialog.replace("txtBis", "4");
                               },
                               3},
                           Row{"the wrong way",
                               [&] {
                                   dialog.replace("txtVon", "4");
                                   dialog.replace("txtBis", "2");
                               },
                               0},
                           Row{"too many", [&] { dialog.replace("txtBis", "6"); }, 0},
                           Row{"none", [&] { dialog.replace("txtVon", ""); }, 0}}) {
        form.pressKey(Key::letterP, true);
        EXPECT_EQ(dialog.controls["cboDrucker"].selected, 1);
        EXPECT_EQ(dialog.controls["optSeite"].text, "&Diese Seite (4)");
        row.user();
        const std::size_t documents = host.spooler.device.documents.size();
        dialog.press("cmdDrucken");
        EXPECT_EQ(dialog.wantsIdle, row.pages > 0) << row.what;
        if (row.pages == 0) {
            EXPECT_EQ(dialog.controls["lblFortschritt"].text, "Bitte Seiten von 1 bis 5 angeben, die kleinere zuerst.");
            continue;
        }
        EXPECT_EQ(dialog.controls["lblFortschritt"].text,
                  "Seite 1 von " + std::to_string(row.pages) + " wird gedruckt …");
        EXPECT_FALSE(dialog.controls["txtVon"].enabled);
        dialog.rest();
        EXPECT_TRUE(dialog.closed) << row.what;
        ASSERT_EQ(host.spooler.device.documents.size(), documents + 1) << row.what;
        EXPECT_EQ(host.spooler.device.documents.back()->printer, "Laser 1");
        EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
        EXPECT_EQ(host.spooler.device.pages().size(), row.pages) << row.what;
    }
    EXPECT_FALSE(host.system.files.contains("KRVWINPR.OK"));
}

TEST_F(VorschauTest, PrintingFailsInOneBoxAndIsCancelledBetweenPages) {
    open(numbered(3));
    form.press("cmdDrucken");
    host.spooler.device.onBeginPage = [](std::size_t) { throw runtime::Error(runtime::errPrinter, "Papierstau"); };
    dialog.press("cmdDrucken");
    dialog.rest();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_NE(lastBox().find("Papierstau"), std::string::npos);
    EXPECT_TRUE(!dialog.closed && dialog.controls["cmdDrucken"].enabled);
    host.spooler.device.onBeginPage = [this](std::size_t) { dialog.press("cmdAbbrechen"); };
    dialog.press("cmdDrucken");
    dialog.rest();
    EXPECT_FALSE(host.spooler.device.documents.back()->delivered);
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(dialog.controls["lblFortschritt"].text, "Der Druck wurde abgebrochen.");
    EXPECT_TRUE(!dialog.closed && dialog.controls["cmdDrucken"].enabled);
    dialog.press("cmdAbbrechen");
    EXPECT_TRUE(dialog.closed);
}

TEST_F(VorschauTest, SavingThatTakesItsTimeCanBeCancelled) {
    open(numbered(3));
    host.forms.fileToWrite = "D:\\B.pdf";
    host.system.looksTake = 200;
    form.pressKey(Key::letterS, true);
    EXPECT_TRUE(dialog.shown && dialog.wantsIdle && dialog.title == "Als PDF speichern");
    form.press("cmdDrucken");
    dialog.press("cmdAbbrechen");
    EXPECT_EQ(dialog.controls["lblAuftrag"].text + ": " + dialog.controls["lblFortschritt"].text,
              "B.pdf: Abgebrochen. Es wurde keine Datei geschrieben.");
    EXPECT_FALSE(host.spooler.device.documents.back()->delivered || dialog.closed || dialog.wantsIdle);
    dialog.press("cmdAbbrechen");
    EXPECT_TRUE(dialog.closed && !form.closed);
}

TEST_F(VorschauTest, SavesAPdfOrSaysHowToGetAPrinterForIt) {
    open(numbered(2));
    const std::size_t documents = host.spooler.device.documents.size();
    form.pressKey(Key::letterS, true);
    EXPECT_EQ(host.forms.suggested, "C:\\KORVANO\\A.pdf");
    EXPECT_EQ(host.spooler.device.documents.size(), documents);
    host.forms.fileToWrite = "D:\\B.pdf";
    form.pressKey(Key::letterS, true);
    dialog.rest();
    EXPECT_TRUE(dialog.closed);
    EXPECT_EQ(host.spooler.device.documents.back()->printer, "D:\\B.pdf");
    EXPECT_EQ(host.spooler.device.pages().size(), 2U);

    host.spooler.writesPdf = false;
    host.spooler.pdfPrinterName = "Laser 1";
    form.pressKey(Key::letterS, true);
    EXPECT_TRUE(!dialog.closed && dialog.controls["cboDrucker"].selected == 0 && host.dialogs.boxes.empty());
    host.spooler.pdfPrinterName.clear();
    dialog.press("cmdAbbrechen");
    form.pressKey(Key::letterS, true);
    EXPECT_NE(lastBox().find("PDF"), std::string::npos);
}

// As from the desktop's menu; graphics are looked for beside the file that is chosen.
TEST_F(VorschauTest, AsksForAFileAndGoesIntoItsFolder) {
    host.system.files["D:\\FIRMA\\B.OUT"] = "eins";
    openFile("");
    EXPECT_TRUE(form.title == "Korvano - Vorschau: " && form.controls["cmdOeffnen"].enabled && !form.closed);
    EXPECT_EQ(host.forms.suggested + shown("lblStatus"), "C:\\KORVANO");
    form.pressKey(Key::f5);
    host.forms.fileToRead = "D:\\FIRMA\\B.OUT";
    form.pressKey(Key::letterO, true);
    EXPECT_EQ(form.title, "Korvano - Vorschau: B.OUT");
    EXPECT_EQ(shown("txtSeite") + shown("lblSeiten") + host.system.directory, "1von 1D:\\FIRMA\\");

    host.forms.fileToRead = "C:\\FEHLT.OUT";
    form.press("cmdOeffnen");
    EXPECT_EQ(host.forms.suggested + shown("txtSeite"), "D:\\FIRMA\\");
    EXPECT_FALSE(form.controls["cmdDrucken"].enabled);
    host.forms.fileToRead.reset();
    openFile("");
    EXPECT_EQ(host.forms.suggested, "C:\\") << "where the last one was";
}

TEST_F(VorschauTest, KeepsZoomAndPlaceFromCallToCall) {
    open(numbered(1));
    form.enter("cboZoom", "150");
    form.place = {-1200, 30, 900, 700, true};
    form.press("cmdSchliessen");
    EXPECT_TRUE(form.closed);
    EXPECT_EQ(host.settings.commits, 1);
    open();
    EXPECT_EQ(shown("cboZoom"), "150 %");
    EXPECT_EQ(form.place, (platform::WindowPlace{-1200, 30, 900, 700, true}));
    for (const auto& [name, nonsense] : {std::pair{"Zoom", "sehr groß"}, std::pair{"Breite", "-7"},
                                         std::pair{"Hoehe", "999999999999"}, std::pair{"Links", "1,5"}}) {
        host.settings.setText(platform::SettingsRoot::currentUser, "Software\\Velmora\\KRVWinPr\\3.0\\Vorschau", name,
                              nonsense);
        open();
        EXPECT_EQ(shown("cboZoom"), "Ganze Seite") << name;
        EXPECT_EQ(form.place == platform::WindowPlace(), std::string(name) != "Zoom") << name;
    }
}

}  // namespace
