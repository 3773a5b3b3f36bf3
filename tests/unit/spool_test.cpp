// The spooler's documents and printers: PDFs that become files or go to queues, and what is left when they fail.
#include <sys/stat.h>

#include <vector>

#include "linux_support.h"
#include "platform/linux/code_page.h"
#include "platform/linux/cups/queue_target.h"
#include "platform/linux/documents/document_name.h"
#include "platform/linux/documents/pdf_print_document.h"
#include "platform/linux/spool/builtin_target.h"
#include "platform/linux/spool/linux_printing.h"
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

// What the fake PDFs of a test share: errors to throw, by the text to write, and what the last one was told.
struct PdfScript {
    std::map<std::string, int> failures;
    pdf::PdfPage page;
    testing_support::RecordingDevice device;
};

// A PDF that can be read: "head", the pages in brackets, "end"; all written at once, the head before there is any page.
class FakePdf : public pdf::PdfDocument {
public:
    FakePdf(PdfScript& script, int descriptor) : script_(script), descriptor_(descriptor), surface_(script.device) {
        write("head ");
    }
    void setPage(const pdf::PdfPage& page) override {
        script_.page = page;
        script_.device.capabilities = page.device;
    }
    platform::Surface& surface() override { return surface_; }
    void beginPage() override { surface_.page = {}; }
    void endPage() override {
        write("[" + surface_.page.texts.at(0).text + "] ");
        ++pages_;
    }
    int pageCount() const override { return pages_; }
    void finish() override { write("end"); }

private:
    void write(const std::string& text) const {
        if (const auto failure = script_.failures.find(text); failure != script_.failures.end()) {
            throw runtime::Error(failure->second, "Kein Platz.");
        }
        EXPECT_EQ(::write(descriptor_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    PdfScript& script_;
    int descriptor_;
    testing_support::RecordingSurface surface_;
    int pages_ = 0;
};

void printPage(platform::PrintDocument& document, const std::string& text) {
    document.beginPage();
    document.surface().drawText(0, 0, text, {}, platform::TextRole::content);
    document.endPage();
}

TEST(DocumentName, IsTheTitleWithoutFolderAndLastEnding) {
    EXPECT_EQ(documents::documentName("dir\\RECHNUNG.TXT"), "RECHNUNG");
    EXPECT_EQ(documents::documentName("/a/b\\c/Müller.2026.prn"), "Müller.2026");
    EXPECT_EQ(documents::documentName("dir.alt\\OHNE"), "OHNE");
    EXPECT_EQ(documents::documentName("a\nb.txt"), "a_b");
    for (const char* nameless : {"", "dir\\", ".TXT", "...", "a/..", " ."}) {
        EXPECT_EQ(documents::documentName(nameless), "Druck") << nameless;
    }
    std::string umlauts;
    while (umlauts.size() < 300) {
        umlauts += "ä";
    }
    EXPECT_EQ(documents::documentName("x" + umlauts).size(), 219U) << "cut between characters";
}

class FileDocument : public testing::TestWithParam<spool::Concealment> {
protected:
    FileDocument() { std::filesystem::current_path(folder_ / ""); }
    ~FileDocument() override { std::filesystem::current_path("/"); }

    std::unique_ptr<platform::PrintDocument> open(const std::string& title) {
        return std::make_unique<documents::PdfPrintDocument>(
            std::make_unique<spool::BuiltinTarget>(title, GetParam()), pdf::PdfSettings(),
            [this](const pdf::PdfSettings&, int file) { return std::make_unique<FakePdf>(script_, file); });
    }

    linux_support::TemporaryFolder folder_;
    PdfScript script_;
};

TEST_P(FileDocument, AppearsWholeUnderTheFirstFreeName) {
    const mode_t mask = ::umask(027);
    put("BRIEF.pdf", "alt");
    const auto document = open("dir\\BRIEF.TXT");
    EXPECT_EQ(folder_.names(), Names{"BRIEF.pdf"}) << "nothing before the first page";
    printPage(*document, "eins");
    EXPECT_FALSE(folder_.names().contains("BRIEF (2).pdf"));
    std::filesystem::create_symlink("nirgends", "BRIEF (2).pdf");
    printPage(*document, "zwei");
    document->beginPage();  // never ended
    std::filesystem::current_path("/");
    document->end();
    EXPECT_EQ(folder_.names(), (Names{"BRIEF.pdf", "BRIEF (2).pdf", "BRIEF (3).pdf"}));
    EXPECT_EQ(get(folder_ / "BRIEF.pdf"), "alt");
    EXPECT_EQ(get(folder_ / "BRIEF (3).pdf"), "head [eins] [zwei] end");
    EXPECT_EQ(linux_support::modeOf(folder_ / "BRIEF (3).pdf"), 0640U);
    ::umask(mask);
}

TEST_P(FileDocument, LeavesNothingWithoutAPageOrWhenDropped) {
    open("A.1")->end();
    open("B.1")->beginPage();
    const auto aborted = open("C.1");
    printPage(*aborted, "eins");
    aborted->abort();
    aborted->end();
    printPage(*open("D.1"), "eins");
    EXPECT_EQ(folder_.names(), Names());
}

TEST_P(FileDocument, FailureRemovesTheFileAndSaysSo) {
    for (const std::string text : {"[zwei] ", "end"}) {
        const bool full = text == "end";
        script_.failures = {{text, full ? runtime::errDiskFull : runtime::errDeviceIo}};
        const auto document = open("dir\\BRIEF.TXT");
        printPage(*document, "eins");
        std::string detail;
        const auto rest = [&] {
            printPage(*document, "zwei");
            document->end();
        };
        EXPECT_EQ(errorOf(rest, &detail), full ? runtime::errDiskFull : runtime::errPrinter);
        EXPECT_TRUE(detail.starts_with("Die PDF-Datei „BRIEF.pdf“ im Ordner „" +
                                       std::filesystem::current_path().string() + "“: "))
            << detail;
        EXPECT_TRUE(detail.ends_with("Kein Platz. Die unvollständige Datei wurde entfernt.")) << detail;
        EXPECT_NO_THROW(document->end());
        EXPECT_EQ(errorOf([&] { document->beginPage(); }), runtime::errPrinter);
        EXPECT_EQ(folder_.names(), Names());
    }
}

INSTANTIATE_TEST_SUITE_P(Both, FileDocument, testing::Values(spool::Concealment::unnamed, spool::Concealment::hidden));

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
    std::map<std::string, std::string> options(const std::string&, const cups::QueueMedia& media, int bin,
                                               int orientation, int colorMode) override {
        const auto text = [](int number) { return " " + std::to_string(number); };
        return {{"all", media.keyword + text(bin) + text(orientation) + text(colorMode)}};
    }
    int submit(const cups::QueueJob& job, int fileDescriptor) override {
        if (++submits == refused) {
            throw platform::SpoolerError(0x506, "nimmt nichts an");
        }
        const std::string content = get("/proc/self/fd/" + std::to_string(fileDescriptor));
        jobs.push_back(job.queue + '/' + job.title + ' ' + job.options.at("all") + ": " + content);
        return submits;
    }

    Strings jobs;
    int submits = 0;
    int refused = 0;  // the number of the submit that fails
};

class QueueDocument : public testing::Test {
protected:
    std::shared_ptr<FakeQueues> queues_ = std::make_shared<FakeQueues>();
    PdfScript script_;
};

TEST_F(QueueDocument, PageThatChangesTheBinStartsAFurtherJob) {
    const auto make = documents::pdfDocuments(
        {[] { return CodePage{}; }, "Test"},
        [this](const pdf::PdfSettings&, int file) { return std::make_unique<FakePdf>(script_, file); });
    const auto document = make(std::make_unique<cups::QueueTarget>(queues_, "Links", "T.TXT"), "T.TXT");
    printPage(*document, "a");
    document->setOption(PageOption::paperBin, 2);
    document->setOption(PageOption::paperBin, 0);
    printPage(*document, "b");
    document->setOption(PageOption::paperBin, 2);
    EXPECT_EQ(queues_->submits, 0) << "only with the page that wants another bin";
    // What is set while a page is open counts for the next one.
    document->beginPage();
    document->setOption(PageOption::orientation, 2);
    EXPECT_EQ(script_.page.device.physicalWidth, 5100);
    document->surface().drawText(0, 0, "c", {}, platform::TextRole::content);
    document->endPage();
    EXPECT_EQ(script_.page.device.physicalWidth, 3300);
    printPage(*document, "d");
    document->setOption(PageOption::paperSize, 9);
    printPage(*document, "e");
    EXPECT_EQ(errorOf([&] { document->setOption(PageOption::paperBin, 3); }), runtime::errInvalidPropertyValue);
    EXPECT_EQ(document->option(PageOption::paperBin), 2);
    document->setOption(PageOption::colorMode, 1);
    queues_->refused = 3;
    EXPECT_THROW(document->beginPage(), platform::SpoolerError);
    document->end();
    EXPECT_EQ(queues_->submits, 3) << "nothing follows a job that was refused";
    EXPECT_EQ(queues_->jobs,
              (Strings{"Links/T.TXT letter 0 1 2: head [a] [b] end", "Links/T.TXT letter 2 1 2: head [c] [d] end"}));
}

TEST_F(QueueDocument, PageIsTheQueuesOwn) {
    cups::QueueTarget target(queues_, "Links", "T.TXT");
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
    EXPECT_EQ(printing.jobs().count("Korvano PDF"), 0);
    EXPECT_THROW(spooler.openDocument("Links", "x"), platform::SpoolerError);
    EXPECT_EQ(loaded, 1) << "tried once";
}

}  // namespace
