#include <gtest/gtest.h>

#include "printer/CPrinterInfo.h"
#include "printer/Printer.h"
#include "printer/clsDrucker.h"
#include "unit/support/fake_platform.h"

namespace {

using testing_support::FakePlatform;
using testing_support::RecordingSurface;

TEST(PrinterInfo, StatusTextsAreExact) {
    FakePlatform host;
    const auto text = [&host](std::uint32_t status) {
        host.spooler.record.status = status;
        return printer::CPrinterInfo(host.spooler, host.printJobs, "Laser 1").StatusText();
    };
    EXPECT_EQ(text(0), "Ready");
    EXPECT_EQ(text(0x88), "88");
    EXPECT_EQ(text(0x800), "Output Bill Full");
    EXPECT_EQ(text(0x8000), "8000");
    EXPECT_EQ(text(0xFFFF8000), "Initializing");
    EXPECT_EQ(text(0x1000000), "Power Save Mode");
    EXPECT_EQ(text(0xABCDEF), "ABCDEF");
}

TEST(PrinterInfo, AFailedCallIsTheStatusUntilOneSucceeds) {
    FakePlatform host;
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

TEST(PrinterInfo, AttributesAreReadFromTheRecord) {
    FakePlatform host;
    host.spooler.record.attributes = platform::printer_attribute::network | platform::printer_attribute::shared;
    host.spooler.record.portName = "FILE:";
    const printer::CPrinterInfo info(host.spooler, host.printJobs, R"(\\srv\Laser)");
    EXPECT_TRUE(info.IsNetwork() && info.IsShared() && info.IsToFile());
    EXPECT_FALSE(info.IsLocal() || info.IsOffline() || info.IsDefault());
    EXPECT_EQ(info.DisplayName(), "Laser auf srv");
    EXPECT_TRUE(printer::CPrinterInfo(host.spooler, host.printJobs, "Laser 1").IsDefault());
}

TEST(Geometry, MarginsAndSizeComeFromTheDevice) {
    FakePlatform host;
    host.spooler.device.capabilities = {4760, 6816, 600, 600, 4960, 7016, 100, 100};
    const RecordingSurface surface(host.spooler.device);
    printer::clsDrucker geometry(host.dialogs);
    EXPECT_EQ(geometry.LeftMarginCM(), 0);
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, "Bitte Klasse mit NewPrinter Methode initilialisieren!");

    geometry.NewPrinter(surface);
    EXPECT_FLOAT_EQ(geometry.TopMarginInch(), 0.16666667F);
    host.spooler.device.capabilities.horzRes = 4860;
    EXPECT_EQ(geometry.RightMarginCM(), 0);
    host.spooler.device.capabilities.logPixelsX = 0;
    EXPECT_THROW(geometry.LeftMarginCM(), runtime::Error);
}

// Right to the pixel at a resolution whose pixels are no whole twips.
TEST(Printer, TwipsBecomeTheNearestPixel) {
    FakePlatform host;
    host.spooler.device.capabilities = {4760, 6816, 600, 600, 4960, 7016, 100, 100};
    printer::Printer printer(host.spooler, "Laser 1", "A.OUT");
    EXPECT_FLOAT_EQ(printer.TwipsPerPixelX(), 2.4F);
    EXPECT_FLOAT_EQ(printer.ScaleWidth(), 11424);
    printer.FontSize(runtime::Currency::fromUnits(93600));
    printer.CurrentX(100);
    printer.CurrentY(722);
    printer.Print("ab");
    EXPECT_DOUBLE_EQ(printer.CurrentX(), 100 + 2 * 47 * 2.4);
    printer.CurrentX(1e30);
    printer.Print("weit weg");
    printer.EndDoc();
    const auto& texts = host.spooler.device.pages()[0].texts;
    EXPECT_EQ(texts[0].x, 42);
    EXPECT_EQ(texts[0].y, 301);
    EXPECT_EQ(texts[0].font.emHeight, 78);
}

}  // namespace
