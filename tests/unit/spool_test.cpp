// The spooler's documents and printers: PDFs that become files or go to queues, and what is left when they fail.
#include <vector>

#include "linux_support.h"
#include "platform/linux/code_page.h"
#include "platform/linux/cups/queue_target.h"
#include "platform/linux/documents/creation_time.h"
#include "platform/linux/documents/document_factory.h"
#include "platform/linux/documents/document_name.h"
#include "platform/linux/linux_settings_store.h"
#include "platform/linux/spool/builtin_target.h"
#include "platform/linux/spool/linux_printing.h"
#include "platform/linux/spool/named_pdf_file.h"
#include "unit/support/recording_printer.h"

namespace {

using namespace platform_linux;
using linux_support::errorOf;
using linux_support::get;
using linux_support::put;
using platform::DeviceCapabilities;
using platform::PageOption;
using Strings = std::vector<std::string>;
using Names = std::set<std::string>;

// Says how many pages it has.
class FakePdf : public pdf::PdfDocument {
public:
    FakePdf(testing_support::RecordingDevice& device, int descriptor)
        : device_(device), descriptor_(descriptor), surface_(device) {}
    void setPage(const pdf::PdfPage& page) override { device_.capabilities = page.device; }
    platform::Surface& surface() override { return surface_; }
    void beginPage() override {}
    void endPage() override { ++pages_; }
    int pageCount() const override { return pages_; }
    void finish() override {
        const std::string text = std::to_string(pages_) + " pages";
        EXPECT_EQ(::write(descriptor_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

private:
    testing_support::RecordingDevice& device_;
    int descriptor_;
    testing_support::RecordingSurface surface_;
    int pages_ = 0;
};

TEST(DocumentName, IsTheTitleWithoutFolderAndLastEnding) {
    EXPECT_EQ(documents::documentName("dir\\RECHNUNG.TXT"), "RECHNUNG");
    EXPECT_EQ(documents::documentName("/a/b\\c/Müller.2026.prn"), "Müller.2026");
    EXPECT_EQ(documents::documentName("dir.alt\\OHNE"), "OHNE");
    EXPECT_EQ(documents::documentName("a\nb.txt"), "a_b");
    EXPECT_EQ(documents::documentName("C:BRIEF.OUT"), "BRIEF");
    for (const char* nameless : {"", "dir\\", ".TXT", "...", "a/..", " ."}) {
        EXPECT_EQ(documents::documentName(nameless), "Druck") << nameless;
    }
    std::string umlauts;
    while (umlauts.size() < 300) {
        umlauts += "ä";
    }
    EXPECT_EQ(documents::documentName("x" + umlauts).size(), 219U) << "cut between characters";
}

TEST(CreationTime, IsNowUnlessTheEnvironmentHasOneWithAYearOfFourDigits) {
    const auto at = [](const char* moment) {
        const linux_support::Variable variable("SOURCE_DATE_EPOCH", moment);
        return documents::creationTime();
    };
    EXPECT_EQ(at("253402300799"), 253402300799);
    for (const char* moment : {"253402300800", "-1", "99999999999999999999", "1x"}) {
        EXPECT_NEAR(static_cast<double>(at(moment) - std::time(nullptr)), 0, 60) << moment;
    }
}

class PdfFileTest : public testing::TestWithParam<spool::Concealment> {
protected:
    PdfFileTest() { std::filesystem::current_path(folder_ / ""); }
    ~PdfFileTest() override { std::filesystem::current_path("/"); }

    std::unique_ptr<spool::PdfFile> open() const {
        return std::make_unique<spool::PdfFile>(std::make_shared<spool::Folder>(spool::Folder::current()), "BRIEF",
                                                GetParam());
    }

    linux_support::TemporaryFolder folder_;
};

TEST_P(PdfFileTest, AppearsWholeUnderTheFirstFreeName) {
    const mode_t mask = ::umask(027);
    put("BRIEF.pdf", "alt");
    const auto file = open();
    EXPECT_EQ(::write(file->descriptor(), "head ", 5), 5);
    EXPECT_EQ(folder_.names(), Names{"BRIEF.pdf"}) << "nothing before the first page";
    file->pageBegins();
    EXPECT_EQ(::write(file->descriptor(), "eins ", 5), 5);
    EXPECT_FALSE(folder_.names().contains("BRIEF (2).pdf"));
    std::filesystem::create_symlink("nirgends", "BRIEF (2).pdf");
    file->pageBegins();
    EXPECT_EQ(::write(file->descriptor(), "zwei", 4), 4);
    std::filesystem::current_path("/");
    file->deliver({});
    EXPECT_EQ(folder_.names(), (Names{"BRIEF.pdf", "BRIEF (2).pdf", "BRIEF (3).pdf"}));
    EXPECT_EQ(get(folder_ / "BRIEF.pdf"), "alt");
    EXPECT_EQ(get(folder_ / "BRIEF (3).pdf"), "head eins zwei");
    EXPECT_EQ(linux_support::modeOf(folder_ / "BRIEF (3).pdf"), 0640U);
    ::umask(mask);
}

TEST_P(PdfFileTest, LeavesNothingWhenItIsDroppedOrFails) {
    open()->pageBegins();
    for (const int number : {runtime::errDiskFull, runtime::errDeviceIo}) {
        const auto file = open();
        file->pageBegins();
        const runtime::Error error = file->failure(runtime::Error(number, "Kein Platz."));
        EXPECT_EQ(error.number(), number == runtime::errDiskFull ? number : int{runtime::errPrinter});
        EXPECT_EQ(error.detail(), "Die PDF-Datei „BRIEF.pdf“ im Ordner „" + std::filesystem::current_path().string() +
                                      "“: Kein Platz. Die unvollständige Datei wurde entfernt.");
        EXPECT_EQ(folder_.names(), Names());
    }
}

TEST_P(PdfFileTest, NeedsNeitherLinksNorRenamingThatRefuses) {
    for (const std::vector<long>& missing :
         {std::vector<long>{SYS_linkat, SYS_renameat2}, {SYS_linkat, SYS_renameat2, SYS_renameat, SYS_sendfile}}) {
        put("BRIEF.pdf", "alt");
        const pid_t job = linux_support::start([&] {
            linux_support::refuseCalls(EINVAL, missing);
            const auto file = open();
            file->pageBegins();
            const bool written = ::write(file->descriptor(), "neu", 3) == 3;
            file->deliver({});
            return written ? 0 : 1;
        });
        EXPECT_EQ(linux_support::ended(job), 0);
        EXPECT_EQ(folder_.names(), (Names{"BRIEF.pdf", "BRIEF (2).pdf"}));
        EXPECT_EQ(get("BRIEF.pdf") + get("BRIEF (2).pdf"), "altneu");
        std::filesystem::remove("BRIEF (2).pdf");
    }
}

TEST_P(PdfFileTest, LeavesNothingWhenTheProcessIsToldToEnd) {
    for (const int signal : {SIGTERM, SIGHUP}) {
        const pid_t job = linux_support::start([&] {
            removeUnfinishedOnSignals();
            const auto file = open();
            file->pageBegins();
            ::raise(signal);
            return 0;
        });
        EXPECT_EQ(linux_support::ended(job), -signal);
        EXPECT_EQ(folder_.names(), Names());
    }
}

TEST_P(PdfFileTest, OfRootInAUsersFolderIsTheUsers) {
    if (::chown(".", linux_support::nobody, linux_support::nobody) != 0) {
        GTEST_SKIP() << "only root can";
    }
    const auto file = open();
    file->pageBegins();
    file->deliver({});
    EXPECT_EQ(linux_support::ownerOf("BRIEF.pdf"), linux_support::nobody);
}

TEST_P(PdfFileTest, OfACertainNameReplacesWhatHasItInOneStep) {
    const std::string path = folder_ / "Brief an A.pdf";
    const auto write = [&](const char* text) {
        auto file = std::make_unique<spool::NamedPdfFile>(path, GetParam());
        file->pageBegins();
        EXPECT_EQ(::write(file->descriptor(), text, 3), 3);
        return file;
    };
    put(path, "alt");
    ::chmod(path.c_str(), 0664);
    write("weg");
    EXPECT_EQ(get(path), "alt") << "dropped before it was complete";
    write("neu")->deliver({});
    EXPECT_EQ(get(path), "neu");
    EXPECT_EQ(linux_support::modeOf(path), 0664U);
    std::filesystem::remove(path);
    std::filesystem::create_symlink("nirgends", path);
    write("neu")->deliver({});
    EXPECT_EQ(get(path), "neu");
    EXPECT_EQ(folder_.names(), Names{"Brief an A.pdf"});
}

TEST_P(PdfFileTest, OfACertainNameSaysWhatIsInTheWay) {
    const auto reason = [&](const std::string& path) {
        std::string message;
        EXPECT_EQ(errorOf([&] { spool::NamedPdfFile(path, GetParam()); }, &message), runtime::errPrinter);
        return message;
    };
    EXPECT_NE(reason(folder_ / "fehlt/A.pdf")
                  .find("Die PDF-Datei „A.pdf“ im Ordner „" + (folder_ / "fehlt") +
                        "“ konnte nicht angelegt werden: der Ordner fehlt;"),
              std::string::npos);
    std::filesystem::create_directory("A.pdf");
    EXPECT_NE(reason(folder_ / "A.pdf").find("das ist ein Ordner;"), std::string::npos);
    ::mkfifo("B.pdf", 0600);
    EXPECT_NE(reason(folder_ / "B.pdf").find("keine gewöhnliche Datei"), std::string::npos);

    std::filesystem::create_directory("bald weg");
    auto file = std::make_unique<spool::NamedPdfFile>(folder_ / "bald weg/A.pdf", GetParam());
    file->pageBegins();
    std::filesystem::remove_all("bald weg");
    EXPECT_EQ(errorOf([&] { file->deliver({}); }), runtime::errPrinter);

    put("C.pdf", "alt");
    ::chmod("C.pdf", 0444);
    ::chmod(".", 0777);
    const pid_t somebody = linux_support::start([&] {
        const bool dropped = ::geteuid() != 0 || ::setuid(linux_support::nobody) == 0;
        return dropped && reason(folder_ / "C.pdf").find("keine Berechtigung") != std::string::npos ? 0 : 1;
    });
    EXPECT_EQ(linux_support::ended(somebody), 0);
}

INSTANTIATE_TEST_SUITE_P(Both, PdfFileTest, testing::Values(spool::Concealment::unnamed, spool::Concealment::hidden),
                         [](const auto& both) {
                             return std::string(both.param == spool::Concealment::unnamed ? "unnamed" : "hidden");
                         });

TEST(BuiltinTarget, HasThePaperAndTheTurnThatAreSet) {
    spool::BuiltinTarget target("A.1", spool::Concealment::unnamed);
    EXPECT_EQ(target.page({9, 0, 2, 2}).device, (DeviceCapabilities{6816, 4760, 600, 600, 7016, 4960, 100, 100}));
    EXPECT_EQ(target.page({1, 0, 1, 2}).device, (DeviceCapabilities{4900, 6400, 600, 600, 5100, 6600, 100, 100}));
    EXPECT_FALSE(target.page({9, 0, 1, 1}).color);
    EXPECT_FALSE(target.accepts(PageOption::paperSize, 999));
    EXPECT_FALSE(target.accepts(PageOption::paperBin, 70000));
}

// Queues whose jobs are remembered as "paper bin orientation colour: content".
class FakeQueues : public cups::QueueAccess {
public:
    std::vector<platform::PaperBin> bins(const std::string&) override { return {{1, "Oben"}, {2, "Unten"}}; }
    cups::QueueDevice device(const std::string&) override {
        return {600, 300, true, 2, 1, {"a4", 595.2, 841.2, 12, 24, 36, 48}, {"letter", 612, 792, 0, 0, 0, 0}};
    }
    cups::Options options(const std::string&, const cups::QueueMedia& media, int bin, int orientation, int colorMode,
                          const cups::Options&) override {
        const auto text = [](int number) { return " " + std::to_string(number); };
        return {{"all", media.keyword + text(bin) + text(orientation) + text(colorMode)}};
    }
    int createJob(const cups::QueueJob& job) override {
        if (++made == refused) {
            throw platform::SpoolerError(0x506, "nimmt nichts an", platform::Recovery::possible);
        }
        next = job.queue + '/' + job.title + ' ' + job.options.at("all");
        return made;
    }
    void sendDocument(const std::string& /*queue*/, int /*job*/, int fileDescriptor) override {
        if (fateOfLost != cups::JobFate::withoutDocument || !answerLost) {
            jobs.push_back(next + ": " + get("/proc/self/fd/" + std::to_string(fileDescriptor)));
        }
        if (std::exchange(answerLost, false)) {
            throw platform::SpoolerError(110, "antwortet nicht", platform::Recovery::possible);
        }
    }
    cups::JobFate fate(const std::string& /*queue*/, int /*job*/) override { return fateOfLost; }
    void cancel(const std::string& /*queue*/, int job) noexcept override { cancelled = job; }

    Strings jobs;
    std::string next;
    int made = 0;
    int cancelled = 0;
    int refused = 0;          // the number of the job that is not made
    bool answerLost = false;  // that to the next document sent
    cups::JobFate fateOfLost = cups::JobFate::unknown;
};

TEST(QueueDocument, PageThatChangesTheBinStartsAFurtherJob) {
    const auto queues = std::make_shared<FakeQueues>();
    testing_support::RecordingDevice device;
    const auto make = documents::pdfDocuments(
        {[] { return CodePage{}; }, "Test"},
        [&device](const pdf::PdfSettings&, int file) { return std::make_unique<FakePdf>(device, file); });
    const auto open = [&] { return make(std::make_unique<cups::QueueTarget>(queues, "Links", "T.TXT"), "T.TXT"); };
    const auto document = open();
    const auto print = [&document] {
        document->beginPage();
        document->endPage();
    };
    print();
    document->setOption(PageOption::paperBin, 2);
    document->setOption(PageOption::paperBin, 0);
    print();
    document->setOption(PageOption::paperBin, 2);
    EXPECT_EQ(queues->made, 0) << "only with the page that wants another bin";
    // What is set while a page is open counts for the next one.
    document->beginPage();
    document->setOption(PageOption::orientation, 2);
    EXPECT_EQ(document->surface().capabilities().physicalWidth, 5100);
    document->endPage();
    EXPECT_EQ(document->surface().capabilities().physicalWidth, 3300);
    print();
    document->setOption(PageOption::paperSize, 9);
    print();
    EXPECT_EQ(errorOf([&] { document->setOption(PageOption::paperBin, 3); }), runtime::errInvalidPropertyValue);
    EXPECT_EQ(document->option(PageOption::paperBin), 2);
    document->setOption(PageOption::colorMode, 1);
    queues->refused = 3;
    document->beginPage();
    EXPECT_EQ(document->pagesHandedOver(), 4);
    document->endPage();
    document->end();
    EXPECT_EQ(queues->jobs, (Strings{"Links/T.TXT letter 0 1 2: 2 pages", "Links/T.TXT letter 2 1 2: 2 pages",
                                     "Links/T.TXT a4 2 2 2: 1 pages", "Links/T.TXT a4 2 2 1: 1 pages"}))
        << "none overtakes the one that was refused at first";
    EXPECT_EQ(document->pagesHandedOver(), 6);
    const int made = queues->made;

    const auto aborted = open();
    aborted->beginPage();
    aborted->endPage();
    aborted->abort();
    aborted->end();
    open()->end();
    EXPECT_EQ(queues->made, made);
}

TEST(QueueDocument, WhoseAnswerWasLostIsAskedForAndNeverPrintedTwice) {
    using cups::JobFate;
    for (const JobFate fate : {JobFate::withDocument, JobFate::withoutDocument, JobFate::unknown, JobFate::cancelled}) {
        linux_support::TemporaryFolder folder;
        const auto queues = std::make_shared<FakeQueues>();
        testing_support::RecordingDevice device;
        const auto document =
            documents::pdfDocuments({[] { return CodePage{}; }, "Test"}, [&device](const pdf::PdfSettings&, int file) {
                return std::make_unique<FakePdf>(device, file);
            })(std::make_unique<cups::QueueTarget>(queues, "Links", "T.TXT"), "T.TXT");
        document->beginPage();
        document->endPage();
        queues->answerLost = true;
        queues->fateOfLost = fate;
        EXPECT_THROW(document->end(), platform::SpoolerError);
        EXPECT_TRUE(document->perhapsHandedOver());
        if (fate == JobFate::unknown) {
            EXPECT_THROW(document->end(), platform::SpoolerError);
            EXPECT_EQ(document->saveRest(folder / "T"), Strings{folder / "T.pdf"});
            EXPECT_EQ(get(folder / "T.pdf"), "1 pages");
        } else if (fate == JobFate::cancelled) {
            try {
                document->end();
                ADD_FAILURE() << "printed all the same";
            } catch (const platform::SpoolerError& error) {
                EXPECT_TRUE(error.cancelled());
            }
            EXPECT_FALSE(document->perhapsHandedOver());
        } else {
            document->end();
            EXPECT_EQ(queues->cancelled, fate == JobFate::withoutDocument ? 1 : 0);
        }
        const bool told = fate == JobFate::withDocument || fate == JobFate::withoutDocument;
        EXPECT_EQ(document->pagesHandedOver(), told ? 1 : 0);
        EXPECT_EQ(queues->jobs, Strings{"Links/T.TXT letter 0 1 2: 1 pages"});
    }
}

TEST(QueueTarget, PageIsTheQueuesOwn) {
    cups::QueueTarget target(std::make_shared<FakeQueues>(), "Links", "T.TXT");
    EXPECT_EQ(target.defaults().paperSize, 1);
    EXPECT_EQ(target.page({1, 0, 1, 2}).device, (DeviceCapabilities{5100, 3300, 600, 300, 5100, 3300, 0, 0}));
    EXPECT_EQ(target.page({9, 0, 1, 2}).device, (DeviceCapabilities{4560, 3205, 600, 300, 4960, 3505, 100, 100}));
    // Turned, the sheet's left edge is the top of the page.
    EXPECT_EQ(target.page({9, 0, 2, 2}).device, (DeviceCapabilities{3205, 4560, 300, 600, 3505, 4960, 200, 100}));
    EXPECT_TRUE(target.page({9, 0, 1, 2}).color);
    EXPECT_FALSE(target.page({9, 0, 1, 1}).color);
    EXPECT_FALSE(target.accepts(PageOption::paperSize, 8));
    EXPECT_FALSE(target.accepts(PageOption::orientation, 3));
    EXPECT_FALSE(target.accepts(PageOption::colorMode, 0));
}

TEST(LinuxPrinting, WithoutCupsThereIsTheBuiltinPrinterAlone) {
    int loaded = 0;
    LinuxSettingsStore settings("");
    spool::LinuxPrinting printing({[] { return CodePage{}; }, "Test"}, settings,
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
    EXPECT_EQ(printing.jobs().count("Korvano PDF"), 0);
    EXPECT_THROW(spooler.openDocument("Links", "x"), platform::SpoolerError);
    EXPECT_EQ(loaded, 1) << "tried once";
}

TEST(LinuxPrinting, ShowsPagesOnASheetAndWritesFilesOfAnyName) {
    const linux_support::TemporaryFolder folder;
    std::filesystem::current_path(folder / "");
    testing_support::RecordingDevice device;
    LinuxSettingsStore settings("");
    spool::LinuxPrinting printing(
        {[] { return CodePage{}; }, "Test"}, settings,
        {{}, [&device](const pdf::PdfSettings&, int file) { return std::make_unique<FakePdf>(device, file); }});
    const auto print = [](platform::PrintDocument& document) {
        document.beginPage();
        document.endPage();
        document.end();
    };
    const auto sheet = printing.spooler().openSheet();
    EXPECT_EQ(sheet->surface().capabilities(), (DeviceCapabilities{4760, 6816, 600, 600, 4960, 7016, 100, 100}));
    print(*sheet);
    EXPECT_EQ(folder.names(), Names());
    print(*printing.spooler().openFile(folder / "A & B.pdf", "RECHNUNG.OUT"));
    EXPECT_EQ(get(folder / "A & B.pdf"), "1 pages");
    std::filesystem::current_path("/");
}

}  // namespace
