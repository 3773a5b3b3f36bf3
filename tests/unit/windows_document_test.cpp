// Documents on a printer whose driver fails: the calls of the system are a test's own, the pages lie in memory.
#include "platform/windows/print/gdi_document.h"
#include "platform/windows/print/listed_bins.h"
#include "platform/windows/print/port_questions.h"
#include "unit/windows_sheet.h"
#include "unit/windows_support.h"

namespace platform_windows::print {

namespace {

using platform::PageOption;

// A sheet of 100 x 100 pixels with a margin of 10 on the left. What is done is noted down: "S" the job begins, "(" a
// page,
// ")" it ends, "E" the job is handed over, "A" it is dropped.
struct FailingPrinter {
    FailingPrinter() {
        calls.openPrinter = [](const std::string&) { return PrinterHandle(); };
        calls.portsOf = [this](const std::string&) { return ports; };
        calls.hasVisibleDesktop = [this] { return visible; };
        calls.documentProperties = [](HWND, HANDLE, wchar_t*, DEVMODEW* out, const DEVMODEW* in, DWORD) {
            if (out == nullptr) {
                return static_cast<LONG>(sizeof(DEVMODEW));
            }
            out->dmFields = DM_PAPERSIZE;
            out->dmPaperSize = in != nullptr ? in->dmPaperSize : DMPAPER_A4;
            return static_cast<LONG>(IDOK);
        };
        calls.createContext = [this](auto, auto, auto, const DEVMODEW* mode) {
            done += 'C';
            size = mode->dmPaperSize;
            context = ::CreateCompatibleDC(nullptr);
            ::SelectObject(context, ::CreateBitmap(100, 100, 1, 32, nullptr));
            return context;
        };
        calls.capability = [](HDC, int index) {
            const bool resolution = index == LOGPIXELSX || index == LOGPIXELSY;
            return index == PHYSICALOFFSETX ? 10 : index == PHYSICALOFFSETY ? 0 : resolution ? 600 : 100;
        };
        calls.resetContext = [this](HDC device, const DEVMODEW* mode) {
            if (!resets) {
                return HDC{nullptr};
            }
            size = mode->dmPaperSize;
            return device;
        };
        calls.startDocument = [this](HDC, const DOCINFOW*) { return step('S'); };
        calls.startPage = [this](HDC) { return step('('); };
        calls.stretchPicture = [this](auto...) {
            ::SetLastError(pictureError);
            if (pictureThrows) {
                throw std::bad_alloc();
            }
            return std::exchange(refusedOnce, false) ? -1 : pictureRows;
        };
        calls.endPage = [this](HDC) {
            pixel = ::GetPixel(context, 1, 1);
            return step(')');
        };
        calls.endDocument = [this](HDC) { return step('E'); };
        calls.abortDocument = [this](HDC) { return step('A'); };
    }
    int step(char name) {
        done += name;
        if (done != failing) {
            return 1;
        }
        ::SetLastError(error);
        return SP_ERROR;
    }
    std::unique_ptr<GdiDocument> open() { return std::make_unique<GdiDocument>("Fax", "Titel", calls); }

    PrintCalls calls;
    std::string ports = "LPT1:";
    bool visible = true;
    bool resets = true;
    int size = 0;
    HDC context = nullptr;
    int pictureRows = 5;
    bool refusedOnce = false;
    bool pictureThrows = false;
    DWORD pictureError = ERROR_SUCCESS;
    COLORREF pixel = 0;  // of the page ended last
    std::string done;
    std::string failing;  // behind this the last call fails
    DWORD error = ERROR_ACCESS_DENIED;
};

// A page with black in its corner, and behind that a picture.
void printPage(GdiDocument& document, int pictureAt = 0) {
    document.beginPage();
    document.surface().fillRectangle(0, 0, 50, 50, {});
    document.surface().drawPicture(pictureOf(8), pictureAt, 0, 5, 5);
    document.endPage();
}

TEST(FailingDriver, FinishedPagesAreHandedOverWhenThePageBehindThemFails) {
    struct Case {
        const char* failing;
        int rows;
        const char* done;
        int pages;
        bool perhaps;
        COLORREF pixel;
    };
    for (const Case& row :
         {Case{"", -1, "CS()()E", 1, false, RGB(255, 255, 255)},  // the drawing of the second page
          Case{"CS()(", 5, "CS()(E", 1, false, 0}, Case{"CS()(E", -1, "CS()()E", 1, false, RGB(255, 255, 255)},
          Case{"CS()()", 5, "CS()()A", 0, true, 0}, Case{"CS(", 5, "CS(A", 0, false, 0},
          Case{"CS", 5, "CS", 0, false, 0}}) {
        FailingPrinter printer;
        const auto document = printer.open();
        printer.failing = row.failing;
        const auto printAll = [&] {
            printPage(*document);
            printer.pictureRows = row.rows;
            printPage(*document);
        };
        EXPECT_THROW(printAll(), platform::SpoolerError) << row.done;
        EXPECT_EQ(printer.done, row.done);
        EXPECT_EQ(document->pagesHandedOver(), row.pages) << row.done;
        EXPECT_EQ(document->perhapsHandedOver(), row.perhaps) << row.done;
        EXPECT_EQ(printer.pixel, row.pixel) << row.done;
    }
}

TEST(FailingDriver, FinishedPagesAreHandedOverWhenThereIsNoMemoryForTheNext) {
    FailingPrinter printer;
    const auto document = printer.open();
    printPage(*document);
    printer.pictureThrows = true;
    EXPECT_THROW(printPage(*document), std::bad_alloc);
    EXPECT_EQ(printer.done, "CS()()E");
    EXPECT_EQ(document->pagesHandedOver(), 1);
    EXPECT_EQ(printer.pixel, RGB(255, 255, 255));
}

TEST(FailingDriver, ACancelledJobIsDroppedAndSaysSo) {
    for (const char* failing : {"CS", "CS()(", "CS()()", "CS()()E"}) {
        FailingPrinter printer;
        const auto document = printer.open();
        printer.failing = failing;
        printer.error = failing == std::string("CS") ? ERROR_CANCELLED : ERROR_PRINT_CANCELLED;
        try {
            printPage(*document);
            printPage(*document);
            document->end();
            FAIL() << failing;
        } catch (const platform::SpoolerError& error) {
            EXPECT_TRUE(error.cancelled()) << failing;
        }
        EXPECT_EQ(printer.done, failing + std::string(printer.failing == "CS" ? "" : "A"));
        EXPECT_EQ(document->pagesHandedOver(), 0);
    }
}

TEST(FailingDriver, WhatIsRefusedIsTriedOnceMore) {
    FailingPrinter printer;
    printer.refusedOnce = true;
    const auto document = printer.open();
    printPage(*document);
    EXPECT_EQ(printer.pixel, RGB(0, 0, 0));
    document->end();
    EXPECT_EQ(document->pagesHandedOver(), 1);
}

TEST(FailingDriver, OnlyWhatIsPrintableMustBeDrawn) {
    struct Case {
        int at;
        int rows;
        DWORD error;
        bool fails;
    };
    constexpr int inTheMargin = -8;
    for (const Case& row : {Case{0, 0, ERROR_INVALID_HANDLE, false}, Case{0, 0, ERROR_NOT_ENOUGH_MEMORY, true},
                            Case{0, -1, ERROR_SUCCESS, true}, Case{inTheMargin, -1, ERROR_INVALID_HANDLE, false},
                            Case{inTheMargin, 0, ERROR_NOT_ENOUGH_MEMORY, false}}) {
        FailingPrinter printer;
        printer.pictureRows = row.rows;
        printer.pictureError = row.error;
        const auto document = printer.open();
        if (row.fails) {
            EXPECT_THROW(printPage(*document, row.at), platform::SpoolerError);
        } else {
            EXPECT_NO_THROW(printPage(*document, row.at)) << row.rows << ", " << row.error;
        }
    }
}

TEST(FailingDriver, ThatChangesNoModeHasANewDeviceBeforeTheJobAndKeepsItsModeWithinIt) {
    FailingPrinter printer;
    printer.resets = false;
    const auto document = printer.open();
    document->setOption(PageOption::paperSize, DMPAPER_A5);
    EXPECT_EQ(document->option(PageOption::paperSize), DMPAPER_A5);
    printPage(*document);
    EXPECT_EQ(printer.pixel, RGB(0, 0, 0));
    EXPECT_EQ(printer.size, DMPAPER_A5);
    document->setOption(PageOption::paperSize, DMPAPER_A3);
    EXPECT_EQ(document->option(PageOption::paperSize), DMPAPER_A5);
    document->beginPage();
    document->setOption(PageOption::paperSize, DMPAPER_A3);
    document->endPage();
    EXPECT_EQ(document->option(PageOption::paperSize), DMPAPER_A5);
    printer.resets = true;
    document->setOption(PageOption::paperSize, DMPAPER_A3);
    EXPECT_EQ(document->option(PageOption::paperSize), DMPAPER_A3);
    document->end();
    EXPECT_EQ(printer.done, "CCS()()E");
    EXPECT_EQ(printer.size, DMPAPER_A3);
}

TEST(AskingPorts, AreRefusedWhereNobodySeesTheQuestion) {
    for (const auto& [ports, asking] : {std::pair("LPT1:, portprompt:", "portprompt:"),
                                        {"FILE:", "FILE:"},
                                        {"USB001,IP_10.0.0.1,XPSPort: ", "XPSPort:"},
                                        {"SHRFAX:,LPT1:", "SHRFAX:"},
                                        {"", ""},
                                        {" , ", ""},
                                        {R"(C:\FILE:,FILE)", ""}}) {
        EXPECT_EQ(askingPort(ports), asking);
    }
    FailingPrinter printer;
    printer.ports = "FILE:";
    EXPECT_NO_THROW(printer.open());
    printer.done.clear();
    printer.visible = false;
    std::string detail;
    EXPECT_EQ(windows_support::errorOf([&] { printer.open(); }, &detail), runtime::errPrinter);
    EXPECT_TRUE(detail.find("FILE:") != std::string::npos && detail.find("Bitte") != std::string::npos) << detail;
    EXPECT_EQ(printer.done, "");
}

// As a preview does, which prints nothing.
TEST(AskingPorts, DoNotAskWhenOnlyMeasuredFor) {
    FailingPrinter printer;
    printer.ports = "PORTPROMPT:";
    {
        const auto document = printer.open();
        document->setOption(platform::PageOption::paperSize, DMPAPER_A5);
        document->surface().setFont({"Courier New", platform::charsetOem, 83});
        EXPECT_EQ(document->surface().textWidth("x"), 50);
        EXPECT_EQ(printer.size, DMPAPER_A5);
    }
    EXPECT_EQ(printer.done, "C");
}

TEST(ListedBins, GrowAndShrinkBetweenTwoQuestions) {
    const auto list = [](int counted, int numbers, int names) {
        return listedBins([=](WORD what, wchar_t* into) {
            if (into == nullptr) {
                return counted;
            }
            const int count = what == DC_BINS ? numbers : names;
            for (int index = 0; index < std::min(count, 2 * counted + 64); ++index) {
                if (what == DC_BINS) {
                    into[index] = static_cast<wchar_t>(index - 1);
                } else {
                    std::fill_n(into + index * 24, 24, static_cast<wchar_t>(L'a' + index % 26));
                    into[index * 24 + 3] = index % 2 == 0 ? L'\0' : L'x';
                }
            }
            return count;
        });
    };
    const auto grown = list(2, 5, 4);
    ASSERT_EQ(grown.size(), 5U);
    EXPECT_EQ(grown[0].number, -1);
    EXPECT_EQ(grown[0].name, "aaa");
    EXPECT_EQ(grown[1].name, "bbbx" + std::string(20, 'b'));
    EXPECT_EQ(grown[4].name, "");
    EXPECT_EQ(list(9, 3, 9).size(), 3U);
    EXPECT_EQ(list(9, 3, -1)[2].name, "");
    for (const int none : {0, -1}) {
        EXPECT_TRUE(list(none, 3, 3).empty());
        EXPECT_TRUE(list(3, none, 3).empty());
    }
    EXPECT_TRUE(list(2, 0x10000, 3).empty()) << "more than any device has";
}

}  // namespace

}  // namespace platform_windows::print
