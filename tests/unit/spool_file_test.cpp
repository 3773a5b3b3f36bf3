// The built-in printer: which file a document becomes, and what is left when it fails.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/documents/document_name.h"
#include "platform/linux/documents/pdf_print_document.h"
#include "platform/linux/spool/builtin_target.h"
#include "spool_fakes.h"

namespace {

using namespace platform_linux;
using linux_support::errorOf;
using linux_support::get;
using linux_support::put;
using platform::PageOption;
using spool_test::printPage;
using Names = std::set<std::string>;

TEST(DocumentName, IsTheTitleWithoutFolderAndLastEnding) {
    EXPECT_EQ(documents::documentName("dir\\RECHNUNG.TXT"), "RECHNUNG");
    EXPECT_EQ(documents::documentName("/a/b\\c/Müller.2026.prn"), "Müller.2026");
    EXPECT_EQ(documents::documentName("dir.alt\\OHNE"), "OHNE");
    EXPECT_EQ(documents::documentName("a\nb.txt"), "a_b");
    for (const char* nameless : {"", "dir\\", ".TXT", "...", "a/..", " ."}) {
        EXPECT_EQ(documents::documentName(nameless), "Druck") << nameless;
    }
    std::string name = "x";
    while (name.size() < 300) {
        name += "ä";
    }
    EXPECT_EQ(documents::documentName(name).size(), 219U) << "cut between characters";
}

class FileDocument : public testing::TestWithParam<spool::Concealment> {
protected:
    std::unique_ptr<documents::PdfPrintDocument> open(const std::string& title) {
        return std::make_unique<documents::PdfPrintDocument>(
            std::make_unique<spool::BuiltinTarget>(title, GetParam()), pdf::PdfSettings(),
            [this](const pdf::PdfSettings&, int descriptor) {
                return std::make_unique<spool_test::FakePdf>(script_, descriptor);
            });
    }

    spool_test::ScratchFolder folder_;
    spool_test::PdfScript script_;
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
    EXPECT_EQ(get(folder_ / "BRIEF (3).pdf"), "head [eins ] [zwei ] end");
    struct stat status {};
    ::stat((folder_ / "BRIEF (3).pdf").c_str(), &status);
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
    EXPECT_EQ(folder_.names(), (Names{"A.pdf", "A (2).pdf"}));
    EXPECT_EQ(get("A.pdf"), "head [zwei ] end");
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
    EXPECT_EQ(folder_.names(), Names());
}

TEST_P(FileDocument, FailureRemovesTheFileAndSaysSo) {
    for (const auto* step : {"endPage", "finish"}) {
        const bool full = step == std::string("finish");
        script_ = {step, full ? runtime::errDiskFull : runtime::errDeviceIo, 2, {}};
        const auto document = open("dir\\BRIEF.TXT");
        printPage(*document, "eins");
        std::string message;
        const int number = errorOf(
            [&] {
                printPage(*document, "zwei");
                document->end();
            },
            &message);
        EXPECT_EQ(number, full ? runtime::errDiskFull : runtime::errPrinter);
        const std::string where =
            "„BRIEF.pdf“ im Ordner „" + std::filesystem::current_path().string() + "“: Kein Platz.";
        EXPECT_NE(message.find(where), std::string::npos) << message;
        EXPECT_NE(message.find("entfernt"), std::string::npos) << message;
        EXPECT_NO_THROW(document->end());
        EXPECT_EQ(errorOf([&] { document->beginPage(); }), runtime::errPrinter);
        EXPECT_EQ(folder_.names(), Names()) << step;
    }
}

TEST_P(FileDocument, HasThePaperAndTheTurnThatAreSet) {
    const auto document = open("A.1");
    document->setOption(PageOption::orientation, 2);
    EXPECT_EQ(document->surface().capabilities(),
              (platform::DeviceCapabilities{6816, 4760, 600, 600, 7016, 4960, 100, 100}));
    document->setOption(PageOption::orientation, 1);
    document->setOption(PageOption::paperSize, 1);
    EXPECT_EQ(document->surface().capabilities(),
              (platform::DeviceCapabilities{4900, 6400, 600, 600, 5100, 6600, 100, 100}));
    EXPECT_EQ(errorOf([&] { document->setOption(PageOption::paperSize, 999); }), runtime::errInvalidPropertyValue);
    EXPECT_EQ(errorOf([&] { document->setOption(PageOption::paperBin, 70000); }), runtime::errInvalidPropertyValue);
}

INSTANTIATE_TEST_SUITE_P(Both, FileDocument, testing::Values(spool::Concealment::unnamed, spool::Concealment::hidden),
                         [](const auto& both) {
                             return std::string(both.param == spool::Concealment::unnamed ? "unnamed" : "hidden");
                         });

}  // namespace
