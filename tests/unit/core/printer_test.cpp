#include "printer/CPrinterInfo.h"
#include "printer/clsDrucker.h"
#include "report/printer_geometry.h"
#include "unit/support/core_test.h"

namespace {

using testing_support::CoreTest;
using PrinterTest = CoreTest;

TEST_F(PrinterTest, StatusTextsAreThoseThatSupportSearchesFor) {
    using Row = std::pair<std::uint32_t, const char*>;
    for (const auto& [status, text] : {Row{0, "Ready"}, Row{0x88, "88"}, Row{0x800, "Output Bill Full"},
                                       Row{0x8000, "8000"}, Row{0xFFFF8000, "Initializing"}, Row{0xABCDEF, "ABCDEF"}}) {
        EXPECT_EQ(printer::statusText(status), text);
    }
}

TEST_F(PrinterTest, AFailedCallIsTheStatusUntilOneSucceeds) {
    host.spooler.failWith = 5;
    printer::CPrinterInfo info(host.spooler, host.printJobs, "Laser 1");
    EXPECT_EQ(info.StatusText(), "Zugriff verweigert");
    host.spooler.failWith = 123456;
    info.ControlPurge();
    EXPECT_EQ(info.StatusText(), "Error (123456) not defined.");
    EXPECT_THROW(info.Jobs().Count(), platform::SpoolerError);
    host.spooler.failWith = 0;
    info.Refresh();
    EXPECT_EQ(info.StatusText(), "Ready");
}

TEST_F(PrinterTest, AttributesAreReadFromTheRecord) {
    host.spooler.record.attributes = platform::printer_attribute::network | platform::printer_attribute::shared;
    host.spooler.record.portName = "FILE:";
    const printer::CPrinterInfo info(host.spooler, host.printJobs, R"(\\srv\Laser)");
    EXPECT_TRUE(info.IsNetwork() && info.IsShared() && info.IsToFile());
    EXPECT_FALSE(info.IsLocal() || info.IsOffline() || info.IsDefault());
    EXPECT_EQ(info.DisplayName(), "Laser auf srv");
}

TEST_F(PrinterTest, JobsAreOneListingWithTheTextsThatUsersSee) {
    auto& queue = host.printJobs;
    queue.add(12, "RECHNUNG.OUT", "meier", 0x2 | 0x40 | 0x18000);
    queue.add(7, "LISTE.OUT", "schulz");
    queue.queue[0].statusText = "Klappe offen";
    queue.queue[0].submitted = runtime::DateTime{2026, 11, 21, 9, 5, 0, 0};
    queue.queue[0].waitingSeconds = 2 * 3600 + 5 * 60 + 59;
    printer::CPrinterJobs jobs = printer::CPrinterInfo(host.spooler, queue, "Laser 1").Jobs();
    const printer::CPrinterJob& first = jobs.Item(1);
    EXPECT_EQ(first.StatusText(), "Fehler, Kein Papier, 18000 (Klappe offen)");
    EXPECT_EQ(first.Submitted(session.locale()) + " " + first.WaitingTime(), "21.11.2026 09:05:00 2 h 05 min");
    EXPECT_EQ(jobs.ItemByNumber(7).StatusText() + jobs.Item(2).WaitingTime(), "Wartet0 min");
    EXPECT_EQ(std::distance(jobs.begin(), jobs.end()), 2);
    EXPECT_EQ(queue.lists, 1);
    for (const auto& none :
         {+[](const printer::CPrinterJobs& of) { of.Item(0); }, +[](const printer::CPrinterJobs& of) { of.Item(3); },
          +[](const printer::CPrinterJobs& of) { of.ItemByNumber(1); }}) {
        EXPECT_EQ(testing_support::failureOf([&] { none(jobs); }).number(), runtime::errSubscript);
    }
    jobs.ItemByNumber(7).MoveToFront();
    jobs.Item(1).Priority(99);
    EXPECT_EQ(jobs.Item(1).JobNumber(), 12U);
    jobs.Refresh();
    EXPECT_EQ(jobs.Item(1).JobNumber(), 7U);
    queue.refuses[7] = "darf nicht";
    EXPECT_THROW(jobs.Item(1).Cancel(), platform::SpoolerError);
    EXPECT_EQ(queue.done, (testing_support::Lines{"front 7", "priority 99 12"}));
}

TEST_F(PrinterTest, MarginsAndSizeComeFromTheDevice) {
    auto& capabilities = host.spooler.device.capabilities = testing_support::oblongPixels;
    session.log.debugging(true);
    printer::Printer device(host.spooler, "Laser 1", "A.OUT");
    report::logPrinterGeometry(session, device);
    EXPECT_EQ(host.logLines(),
              (testing_support::Lines{">   Ränder (links;oben; rechts;unten) cm: 0,508;0,381;0,3386667;0,4656667",
                                      ">   TwipsPerPixel (X,Y): 4,8, 2,4", ">   Pixel pro mm (X,Y): 300, 600",
                                      ">   Bedruckbarer Bereich (Breite x Höhe): 11424 x 16358",
                                      ">   Bedruckbarer Bereich (Breite x Höhe) in cm: 38,08, 27,26333",
                                      ">   Physische Größe in cm (X,Y): 20,99733, 29,70107"}));
    printer::clsDrucker geometry(host.dialogs);
    EXPECT_EQ(geometry.LeftMarginCM(), 0);
    EXPECT_EQ(lastBox(), "Bitte Klasse mit NewPrinter Methode initilialisieren!");
    geometry.NewPrinter(device.Device());
    capabilities.logPixelsX = 0;
    EXPECT_THROW(geometry.LeftMarginCM(), runtime::Error);
}

TEST_F(PrinterTest, TwipsBecomeTheNearestPixel) {
    host.spooler.device.capabilities = testing_support::oblongPixels;
    printer::Printer printer(host.spooler, "Laser 1", "A.OUT");
    printer.FontSize(runtime::Currency::fromUnits(93600));
    printer.CurrentX(100);
    printer.CurrentY(722);
    printer.Print("ab");
    EXPECT_DOUBLE_EQ(printer.CurrentX(), 100 + 2 * 47 * 4.8);
    printer.Canvas().setFont({"Tahoma", 0, 10});
    printer.CurrentX(1e30);
    printer.Print("weit weg");
    printer.PaintPicture(nullptr, 100, 722, 480, 479);
    printer.NewPage();
    EXPECT_EQ(printer.CurrentX(), 0);
    const auto& page = host.spooler.device.pages()[0];
    const auto& text = page.texts[0];
    EXPECT_EQ(std::tuple(text.x, text.y, text.font.emHeight), std::tuple(21, 301, 78));
    EXPECT_EQ(std::tuple(page.texts[1].x, page.texts[1].font.emHeight), std::tuple(100'000'000, 78));
    const auto& picture = page.pictures[0];
    EXPECT_EQ(std::tuple(picture.x, picture.y, picture.width, picture.height), std::tuple(21, 301, 100, 199));
}

}  // namespace
