// Documents for queues, and the printers as a whole.
#include <gtest/gtest.h>

#include "platform/linux/spool/linux_spooler.h"
#include "spool_fakes.h"

namespace {

using namespace platform_linux;
using linux_support::errorOf;
using platform::PageOption;
using spool_test::printPage;
using Strings = std::vector<std::string>;

class QueueSpooler : public testing::Test {
protected:
    QueueSpooler()
        : spooler_([] { return CodePage{}; }, "Test",
                   {[this]() -> std::unique_ptr<PrintQueues> {
                        ++loaded_;
                        if (!installed_) {
                            throw runtime::Error(runtime::errFileNotFound);
                        }
                        auto queues = std::make_unique<spool_test::FakeQueues>();
                        queues->hardware = hardware_;
                        queues_ = queues.get();
                        return queues;
                    },
                    [this](const PdfSettings&, int descriptor) {
                        return std::make_unique<spool_test::FakePdf>(script_, descriptor);
                    }}) {
        hardware_.resolutionX = 600;
        hardware_.resolutionY = 300;
        hardware_.color = true;
        hardware_.defaultColorMode = 2;
        hardware_.a4 = {"a4", 595.2, 841.2, 12, 24, 36, 48};
        hardware_.own = {"letter", 612, 792, 0, 0, 0, 0};
    }
    std::unique_ptr<platform::PrintDocument> open() { return spooler_.openDocument("Links", "dir\\T.TXT"); }

    bool installed_ = true;
    QueueDevice hardware_;
    int loaded_ = 0;
    spool_test::FakeQueues* queues_ = nullptr;
    spool_test::PdfScript script_;
    LinuxSpooler spooler_;
};

TEST_F(QueueSpooler, PageThatChangesTheBinStartsAFurtherJob) {
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

TEST_F(QueueSpooler, PageIsTheQueuesOwn) {
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

TEST_F(QueueSpooler, NothingFollowsAJobThatWasAbortedOrRefused) {
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

TEST_F(QueueSpooler, WithoutCupsThereIsTheBuiltinPrinterAlone) {
    installed_ = false;
    EXPECT_TRUE(spooler_.hasPrinters());
    EXPECT_EQ(loaded_, 0) << "the host waits for this answer";
    EXPECT_EQ(spooler_.printerNames(), Strings{"Korvano PDF"});
    EXPECT_EQ(spooler_.defaultPrinter(), "Korvano PDF");
    EXPECT_FALSE(spooler_.serviceRunning());
    EXPECT_EQ(spooler_.printer("Korvano PDF").status, platform::printer_status::ready);
    EXPECT_THROW(spooler_.jobCount("Links"), platform::SpoolerError);
    EXPECT_THROW(open(), platform::SpoolerError);
    EXPECT_EQ(loaded_, 1) << "tried once";
}

}  // namespace
