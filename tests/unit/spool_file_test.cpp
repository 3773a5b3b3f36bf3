// The built-in printer: which file a document becomes, and what is left when it fails.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/spool/builtin_printer.h"
#include "platform/linux/spool/document_name.h"
#include "platform/linux/spool/pdf_print_document.h"
#include "platform/print_document.h"
#include "spool_fakes.h"

namespace {

using namespace platform_linux;
using platform::PageOption;
using spool_test::ScratchFolder;
using Names = std::set<std::string>;

TEST(DocumentName, IsTheTitleWithoutFolderAndLastEnding) {
    EXPECT_EQ(spool::documentName("dir\\RECHNUNG.TXT"), "RECHNUNG");
    EXPECT_EQ(spool::documentName("/a/b\\c/Müller.2026.prn"), "Müller.2026");
    EXPECT_EQ(spool::documentName("dir.alt\\OHNE"), "OHNE");
    EXPECT_EQ(spool::documentName("a\nb.txt"), "a_b");
    for (const char* nameless : {"", "dir\\", ".TXT", "...", "a/..", " ."}) {
        EXPECT_EQ(spool::documentName(nameless), "Druck") << nameless;
    }
    std::string umlauts;
    for (int i = 0; i < 150; ++i) {
        umlauts += "ä";
    }
    EXPECT_EQ(spool::documentName("x" + umlauts).size(), 219U) << "cut between characters";
}

class FileDocument : public testing::TestWithParam<spool::Concealment> {
protected:
    std::unique_ptr<spool::PdfPrintDocument> open(const std::string& title) {
        return std::make_unique<spool::PdfPrintDocument>(std::make_unique<spool::BuiltinPrinter>(title, GetParam()),
                                                         PdfSettings(), [this](const PdfSettings&, int descriptor) {
                                                             return std::make_unique<spool_test::FakePdf>(script_,
                                                                                                          descriptor);
                                                         });
    }
    static void printPage(platform::PrintDocument& document, const std::string& text) {
        document.beginPage();
        document.surface().drawText(0, 0, text, {}, platform::TextRole::content);
        document.endPage();
    }
    // The run-time error of a step.
    template <typename Step>
    static runtime::Error failureOf(Step step) {
        try {
            step();
        } catch (const runtime::Error& error) {
            return error;
        }
        return runtime::Error(0, "no error");
    }

    ScratchFolder folder_;
    spool_test::PdfScript script_;
};

TEST_P(FileDocument, AppearsWholeUnderTheFirstFreeName) {
    const mode_t mask = ::umask(027);
    folder_.write("BRIEF.pdf", "alt");
    const auto document = open("dir\\BRIEF.TXT");
    EXPECT_EQ(folder_.files(), Names{"BRIEF.pdf"}) << "nothing before the first page";
    printPage(*document, "eins");
    EXPECT_FALSE(folder_.files().contains("BRIEF (2).pdf"));
    std::filesystem::create_symlink("nirgends", "BRIEF (2).pdf");
    printPage(*document, "zwei");
    document->beginPage();  // never ended
    std::filesystem::current_path("/");
    document->end();
    EXPECT_EQ(folder_.files(), (Names{"BRIEF.pdf", "BRIEF (2).pdf", "BRIEF (3).pdf"}));
    EXPECT_EQ(folder_.content("BRIEF.pdf"), "alt");
    EXPECT_EQ(folder_.content("BRIEF (3).pdf"), "head [eins ] [zwei ] end");
    struct stat status {};
    ::stat((folder_.path() / "BRIEF (3).pdf").c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    ::umask(mask);
}

TEST_P(FileDocument, TwoAtTheSameTimeDoNotTakeEachOthersName) {
    const auto one = open("A.1");
    const auto two = open("A.2");
    printPage(*one, "eins");
    printPage(*two, "zwei");
    two->end();
    one->end();
    EXPECT_EQ(folder_.files(), (Names{"A.pdf", "A (2).pdf"}));
    EXPECT_EQ(folder_.content("A.pdf"), "head [zwei ] end");
}

TEST_P(FileDocument, LeavesNothingWithoutAPageOrWhenDropped) {
    open("A.1")->end();
    const auto opened = open("B.1");
    opened->beginPage();
    opened->end();
    const auto aborted = open("C.1");
    printPage(*aborted, "eins");
    aborted->abort();
    aborted->end();
    printPage(*open("D.1"), "eins");
    EXPECT_EQ(folder_.files(), Names());
}

TEST_P(FileDocument, FailureRemovesTheFileAndSaysSo) {
    for (const auto* step : {"endPage", "finish"}) {
        for (const int number : {runtime::errDiskFull, runtime::errDeviceIo}) {
            script_ = {};
            script_.failAt = step;
            script_.number = number;
            script_.atPage = 2;
            const auto document = open("dir\\BRIEF.TXT");
            printPage(*document, "eins");
            const runtime::Error error = failureOf([&] {
                printPage(*document, "zwei");
                document->end();
            });
            EXPECT_EQ(error.number(), number == runtime::errDiskFull ? runtime::errDiskFull : runtime::errPrinter);
            for (const std::string part : {"BRIEF.pdf", folder_.path().c_str(), "Kein Platz.", "entfernt"}) {
                EXPECT_NE(error.detail().find(part), std::string::npos) << error.detail();
            }
            EXPECT_EQ(folder_.files(), Names()) << step;
            EXPECT_NO_THROW(document->end());
            EXPECT_EQ(failureOf([&] { document->beginPage(); }).number(), runtime::errPrinter);
            EXPECT_EQ(folder_.files(), Names()) << step;
        }
    }
}

TEST_P(FileDocument, FolderThatTakesNoFileIsAPrinterErrorAtTheFirstPage) {
    const auto document = open("BRIEF.TXT");
    std::filesystem::remove(folder_.path());
    const runtime::Error error = failureOf([&] { document->beginPage(); });
    EXPECT_EQ(error.number(), runtime::errPrinter);
    EXPECT_NE(error.detail().find(folder_.path().string()), std::string::npos) << error.detail();
    std::filesystem::create_directory(folder_.path());
}

TEST_P(FileDocument, PaperTurnsAndChangesBetweenPagesOnly) {
    const auto document = open("A.1");
    const auto device = [&] { return document->surface().capabilities(); };
    EXPECT_EQ(device(), (platform::DeviceCapabilities{4760, 6816, 600, 600, 4960, 7016, 100, 100}));
    EXPECT_NEAR(script_.page.widthPoints, 595.276, 0.001);
    EXPECT_TRUE(script_.page.color);
    document->setOption(PageOption::orientation, 2);
    EXPECT_EQ(device(), (platform::DeviceCapabilities{6816, 4760, 600, 600, 7016, 4960, 100, 100}));
    document->beginPage();
    document->setOption(PageOption::orientation, 1);
    document->setOption(PageOption::paperSize, 1);
    document->setOption(PageOption::colorMode, 1);
    EXPECT_EQ(device().physicalWidth, 7016);
    document->endPage();
    EXPECT_EQ(device(), (platform::DeviceCapabilities{4900, 6400, 600, 600, 5100, 6600, 100, 100}));
    EXPECT_FALSE(script_.page.color);
    document->setOption(PageOption::paperBin, -7);
    EXPECT_EQ(document->option(PageOption::paperBin), -7);
    for (const std::pair<PageOption, int>& wrong :
         {std::pair(PageOption::paperSize, 0), std::pair(PageOption::paperSize, 999),
          std::pair(PageOption::orientation, 3), std::pair(PageOption::colorMode, 0),
          std::pair(PageOption::paperBin, 70000)}) {
        const auto set = [&] { document->setOption(wrong.first, wrong.second); };
        EXPECT_EQ(failureOf(set).number(), runtime::errInvalidPropertyValue);
    }
    EXPECT_EQ(document->option(PageOption::paperSize), 1);
}

INSTANTIATE_TEST_SUITE_P(Both, FileDocument, testing::Values(spool::Concealment::unnamed, spool::Concealment::hidden),
                         [](const auto& both) {
                             return std::string(both.param == spool::Concealment::unnamed ? "unnamed" : "hidden");
                         });

}  // namespace
