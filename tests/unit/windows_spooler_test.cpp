// A printer's settings for a page, and the spooler where there is no such printer.
#include "platform/windows/print/windows_spooler.h"
#include "platform/windows/print/page_mode.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/print/spooler_service.h"
#include "platform/windows/print/windows_print_jobs.h"
#include "unit/windows_support.h"

#include <array>

namespace platform_windows::print {

namespace {

using platform::PageOption;

TEST(PageMode, RequestedSizeReplacesMeasuresAndFormName) {
    PageMode own(10);
    own.record()->dmFields = DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME | DM_ORIENTATION;
    own.record()->dmPaperSize = 256;
    own.record()->dmPaperLength = 1234;
    PageMode mode = own;
    mode.request(PageOption::paperSize, 9);
    EXPECT_EQ(mode.record()->dmFields, DWORD{DM_PAPERSIZE | DM_ORIENTATION});
    EXPECT_EQ(mode.value(PageOption::paperSize), 9);
    mode.takePaperSize(own);
    EXPECT_EQ(mode.record()->dmFields, own.record()->dmFields);
    EXPECT_EQ(mode.record()->dmPaperLength, 1234);

    EXPECT_EQ(mode.value(PageOption::paperBin), 0);
    EXPECT_EQ(mode.value(PageOption::colorMode), DMCOLOR_COLOR);
    mode.request(PageOption::paperBin, -32768);
    EXPECT_EQ(mode.value(PageOption::paperBin), -32768);
}

TEST(Spooler, UnknownPrinterIsAnErrorThatNamesItAndSaysWhatToDo) {
    WindowsSpooler spooler;
    WindowsPrintJobs jobs;
    const std::string unknown = "Diesen Drücker gibt es nicht";
    for (const std::string& name : {unknown, std::string(), std::string(3000, 'x'), std::string("\\\\.\\nichts")}) {
        EXPECT_THROW(spooler.printer(name), platform::SpoolerError);
        EXPECT_THROW(jobs.count(name), platform::SpoolerError);
        EXPECT_THROW(spooler.paperBins(name), platform::SpoolerError);
        EXPECT_THROW(spooler.canAdminister(name), platform::SpoolerError);
        EXPECT_THROW(jobs.purge(name), platform::SpoolerError);
        EXPECT_THROW(jobs.list(name), platform::SpoolerError);
        EXPECT_THROW(jobs.setPriority(name, 1, 50), platform::SpoolerError);
        EXPECT_THROW(jobs.resumePrinter(name), platform::SpoolerError);
        EXPECT_THROW(jobs.watch(name), platform::SpoolerError);
        EXPECT_THROW(spooler.setDefaultPrinter(name), platform::SpoolerError);
    }
    std::string detail;
    EXPECT_EQ(windows_support::errorOf([&] { spooler.openDocument(unknown, "Titel"); }, &detail), runtime::errPrinter);
    EXPECT_NE(detail.find(unknown), std::string::npos);
    EXPECT_NE(detail.find("Bitte"), std::string::npos);
    EXPECT_EQ(spooler.hasPrinters(), !spooler.printerNames().empty());
    EXPECT_FALSE(spooler.errorText(ERROR_ACCESS_DENIED).empty());
    EXPECT_TRUE(spooler.errorText(0).empty());
}

TEST(Spooler, SheetThatNobodyPrintsTakesAnyPaperAndMeasures) {
    const auto sheet = WindowsSpooler().openSheet();
    platform::Surface& surface = sheet->surface();
    EXPECT_EQ(surface.capabilities(), (platform::DeviceCapabilities{4960, 7016, 600, 600, 4960, 7016, 0, 0}));
    EXPECT_EQ(sheet->option(PageOption::paperSize), platform::paperA4);
    EXPECT_EQ(sheet->option(PageOption::colorMode), DMCOLOR_COLOR);
    sheet->setOption(PageOption::paperSize, DMPAPER_A5);
    sheet->setOption(PageOption::orientation, DMORIENT_LANDSCAPE);
    sheet->setOption(PageOption::paperBin, 263);
    EXPECT_EQ(std::pair(surface.capabilities().horzRes, surface.capabilities().vertRes), std::pair(4960, 3496));
    EXPECT_EQ(windows_support::errorOf([&] { sheet->setOption(PageOption::paperSize, 12345); }),
              runtime::errInvalidPropertyValue);
    surface.setFont({"Courier New", platform::charsetOem, 83});
    EXPECT_EQ(surface.textWidth("x"), 50);
}

TEST(Spooler, PdfPrinterIsTheOneWithTheSystemsDriverWhateverItsName) {
    std::array printers = {PRINTER_INFO_2W{}, PRINTER_INFO_2W{}, PRINTER_INFO_2W{}};
    EXPECT_EQ(pdfPrinterAmong(printers), "");
    std::array<std::wstring, 4> texts = {L"Microsoft Print to PDF", L"PCL", L"Aktenablage", L"MICROSOFT print to PDF"};
    printers[1].pPrinterName = texts[0].data();
    printers[1].pDriverName = texts[1].data();
    printers[2].pPrinterName = texts[2].data();
    printers[2].pDriverName = texts[3].data();
    EXPECT_EQ(pdfPrinterAmong(printers), "Aktenablage");
    EXPECT_EQ(WindowsSpooler().pdfPrinter(), "") << "not on Wine, and no error either";
}

TEST(SpoolerErrors, FullDiskIsAnErrorOfItsOwn) {
    EXPECT_NE(failure(ERROR_ACCESS_DENIED, "Laser").detail().find("Windows-Fehler 5"), std::string::npos);
    EXPECT_EQ(windows_support::errorOf([] { throwDocumentFailure(ERROR_DISK_FULL, "Laser"); }), runtime::errDiskFull);
    EXPECT_THROW(throwDocumentFailure(ERROR_PRINT_CANCELLED, "Laser"), platform::SpoolerError);
}

TEST(SpoolerService, IsAskedForALimitedTime) {
    using platform::ServiceState;
    // Wine's management service finds the spooler and does not say whether it is started.
    EXPECT_EQ(WindowsSpooler().serviceState(),
              windows_support::onWine() ? ServiceState::stopped : ServiceState::running);
    EXPECT_EQ(answerWithin(10'000, [] { return ServiceState::running; }), ServiceState::running);

    // A question that hangs finds what it has taken along when it goes on.
    const auto event = std::make_shared<KernelHandle>(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const std::weak_ptr<KernelHandle> heldByTheQuestion = event;
    const auto hangs = [event] { return ::WaitForSingleObject(event->get(), INFINITE), ServiceState::running; };
    const ULONGLONG before = ::GetTickCount64();
    EXPECT_EQ(answerWithin(50, hangs), ServiceState::silent);
    EXPECT_LT(::GetTickCount64() - before, 5'000U);
    ::SetEvent(event->get());
    for (int i = 0; i < 500 && heldByTheQuestion.use_count() > 2; ++i) {
        ::Sleep(10);
    }
    EXPECT_EQ(heldByTheQuestion.use_count(), 2) << "the test's own two, and none of the thread that was left behind";
}

}  // namespace

}  // namespace platform_windows::print
