// Documents for queues, and the printers as a whole.
#include <gtest/gtest.h>

#include "platform/linux/code_page.h"
#include "platform/linux/cups/queue_target.h"
#include "platform/linux/spool/linux_printing.h"
#include "spool_fakes.h"

namespace {

using namespace platform_linux;
using linux_support::errorOf;
using platform::PageOption;
using spool_test::printPage;
using Strings = std::vector<std::string>;

class QueueDocument : public testing::Test {
protected:
    QueueDocument() {
        queues_->hardware.resolutionX = 600;
        queues_->hardware.resolutionY = 300;
        queues_->hardware.color = true;
        queues_->hardware.defaultColorMode = 2;
        queues_->hardware.a4 = {"a4", 595.2, 841.2, 12, 24, 36, 48};
        queues_->hardware.own = {"letter", 612, 792, 0, 0, 0, 0};
    }
    std::unique_ptr<platform::PrintDocument> open() {
        const std::string title = "dir\\T.TXT";
        const auto make = documents::pdfDocuments({[] { return CodePage{}; }, "Test"},
                                                  [this](const pdf::PdfSettings&, int descriptor) {
                                                      return std::make_unique<spool_test::FakePdf>(script_, descriptor);
                                                  });
        return make(std::make_unique<cups::QueueTarget>(queues_, "Links", title), title);
    }

    std::shared_ptr<spool_test::FakeQueues> queues_ = std::make_shared<spool_test::FakeQueues>();
    spool_test::PdfScript script_;
};

TEST_F(QueueDocument, PageThatChangesTheBinStartsAFurtherJob) {
    const auto document = open();
    printPage(*document, "a");
    document->setOption(PageOption::paperBin, 2);
    document->setOption(PageOption::paperBin, 0);
    printPage(*document, "b");
    document->setOption(PageOption::paperBin, 2);
    EXPECT_TRUE(queues_->jobs.empty()) << "only with the page that wants another bin";
    printPage(*document, "c");
    EXPECT_EQ(queues_->jobs, (Strings{"Links/dir\\T.TXT 0 letter 1 2: head [a ] [b ] end"}));
    document->setOption(PageOption::orientation, 2);
    printPage(*document, "d");
    document->setOption(PageOption::paperSize, 9);
    printPage(*document, "e");
    document->setOption(PageOption::paperBin, 1);
    document->end();
    EXPECT_EQ(queues_->jobs, (Strings{"Links/dir\\T.TXT 0 letter 1 2: head [a ] [b ] end",
                                      "Links/dir\\T.TXT 2 letter 1 2: head [c ] [d ] end",
                                      "Links/dir\\T.TXT 2 a4 2 2: head [e ] end"}));
}

TEST_F(QueueDocument, PageIsTheQueuesOwn) {
    const auto document = open();
    EXPECT_EQ(document->surface().capabilities(),
              (platform::DeviceCapabilities{5100, 3300, 600, 300, 5100, 3300, 0, 0}));
    EXPECT_EQ(document->option(PageOption::paperSize), 1);
    EXPECT_EQ(document->option(PageOption::colorMode), 2);
    document->setOption(PageOption::paperSize, 9);
    EXPECT_EQ(document->surface().capabilities(),
              (platform::DeviceCapabilities{4560, 3205, 600, 300, 4960, 3505, 100, 100}));
    // Turned, the sheet's left edge is the top of the page.
    document->setOption(PageOption::orientation, 2);
    EXPECT_EQ(document->surface().capabilities(),
              (platform::DeviceCapabilities{3205, 4560, 300, 600, 3505, 4960, 200, 100}));
    EXPECT_TRUE(script_.page.color);
    // What is set while a page is open counts for the next one.
    document->beginPage();
    document->setOption(PageOption::orientation, 1);
    document->setOption(PageOption::colorMode, 1);
    EXPECT_EQ(document->surface().capabilities().physicalWidth, 3505);
    document->endPage();
    EXPECT_EQ(document->surface().capabilities().physicalWidth, 4960);
    EXPECT_FALSE(script_.page.color);

    const std::vector<std::pair<PageOption, int>> wrong = {{PageOption::paperSize, 8},
                                                           {PageOption::paperBin, 3},
                                                           {PageOption::orientation, 3},
                                                           {PageOption::colorMode, 0}};
    for (const auto& [option, value] : wrong) {
        EXPECT_EQ(errorOf([&, &which = option, &to = value] { document->setOption(which, to); }),
                  runtime::errInvalidPropertyValue);
    }
    EXPECT_EQ(document->option(PageOption::paperBin), 0);
    document->setOption(PageOption::paperBin, 2);
    EXPECT_EQ(document->option(PageOption::paperBin), 2);
}

TEST_F(QueueDocument, NothingFollowsAJobThatWasAbortedOrRefused) {
    const auto aborted = open();
    printPage(*aborted, "x");
    aborted->abort();
    aborted->end();
    printPage(*open(), "x");
    EXPECT_EQ(queues_->submits, 0);

    const auto document = open();
    queues_->refused = 2;
    for (int bin = 0; bin < 2; ++bin) {
        document->setOption(PageOption::paperBin, bin);
        printPage(*document, "x");
    }
    document->setOption(PageOption::paperBin, 2);
    EXPECT_THROW(document->beginPage(), platform::SpoolerError);
    document->end();
    EXPECT_EQ(queues_->submits, 2);
    EXPECT_EQ(queues_->jobs.size(), 1U);

    script_.failAt = "finish";
    const auto full = open();
    printPage(*full, "x");
    EXPECT_EQ(errorOf([&] { full->end(); }), runtime::errDiskFull);
    EXPECT_EQ(queues_->submits, 2) << "an incomplete PDF is not sent";
}

TEST(LinuxPrinting, WithoutCupsThereIsTheBuiltinPrinterAlone) {
    int loaded = 0;
    spool::LinuxPrinting printing({[] { return CodePage{}; }, "Test"},
                                  {[&loaded](const documents::DocumentFactory&) -> std::unique_ptr<cups::PrintServer> {
                                       ++loaded;
                                       throw runtime::Error(runtime::errFileNotFound);
                                   },
                                   {}});
    platform::Spooler& spooler = printing.spooler();
    EXPECT_TRUE(spooler.hasPrinters());
    EXPECT_EQ(loaded, 0) << "the host waits for this answer";
    EXPECT_EQ(spooler.printerNames(), Strings{"Korvano PDF"});
    EXPECT_EQ(spooler.defaultPrinter(), "Korvano PDF");
    EXPECT_FALSE(spooler.serviceRunning());
    EXPECT_EQ(spooler.printer("Korvano PDF").status, platform::printer_status::ready);
    EXPECT_EQ(printing.jobs().count("Korvano PDF"), 0);
    EXPECT_THROW(printing.jobs().count("Links"), platform::SpoolerError);
    EXPECT_THROW(spooler.openDocument("Links", "x"), platform::SpoolerError);
    EXPECT_EQ(loaded, 1) << "tried once";
}

}  // namespace
