#include "preview/preview_print.h"
#include "preview/text_search.h"
#include "report/DoReport.h"
#include "unit/support/core_test.h"

namespace {

using platform::PageOption;
using testing_support::Lines;
using testing_support::RecordedPage;

class PreviewTest : public testing_support::CoreTest {
protected:
    preview::PreviewPages& open(const std::string& content, const std::string& graphic = "", bool twoPass = false,
                                const std::string& printer = "") {
        host.system.files["A.OUT"] = content;
        host.spooler.device.options[PageOption::paperBin] = 0;
        pages_.emplace(session, preview::PreviewOrder{"A.OUT", graphic, printer, twoPass}, piece);
        pages_->read();
        while (wholly && !pages_->complete()) {
            pages_->readOn(preview::PreviewPages::Milliseconds(0));
        }
        pages_->prepare();
        return *pages_;
    }
    std::string shown(preview::PreviewPages& pages, std::size_t number) {
        const preview::PreviewPage& page = pages.page(number);
        return RecordedPage(page.recording).described() + "bin " + std::to_string(page.paperBin) + page.failure;
    }
    // The same of a job's pages.
    Lines printed(const std::string& content, const std::string& graphic, bool twoPass) {
        host.system.files["A.OUT"] = content;
        host.spooler.device.options[PageOption::paperBin] = 0;
        report::MPrint::DoReport(session, {"A.OUT", graphic, "", false, twoPass}, [] {});
        Lines all;
        for (const RecordedPage& page : host.spooler.device.pages()) {
            all.push_back(page.described() + "bin " + std::to_string(page.options.at(PageOption::paperBin)));
        }
        return all;
    }

    std::size_t piece = 3;
    bool wholly = true;
    std::optional<preview::PreviewPages> pages_;
};

TEST_F(PreviewTest, EveryPageIsAJobsPageWhicheverWayOneCameToIt) {
    host.addPicture("B.BMP", 40, 20);
    host.settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", "Schacht2", "7");
    const std::string content =
        "^BEbreit^FE\f^TR2^LR\x05^HEhoch\n^KA^OE^CRx^LR\f\nzwei\fdrei^BA^SA\r\nmehr^BC1,2,AB\\\f"
        "^LS^TA^CS^FA^12x\n^LR5^BEy\f\fz\n^TR1\f\r\n";
    for (const bool twoPass : {false, true}) {
        for (const char* graphic : {"", "B.BMP"}) {
            const Lines job = printed(content, graphic, twoPass);
            ASSERT_EQ(open(content, graphic, twoPass).pageCount(), job.size())
                << "line ends at the end are a page with a background only";
            for (std::size_t number = 1; number <= job.size(); ++number) {
                EXPECT_EQ(shown(*pages_, number), job[number - 1]) << number;
            }
            for (std::size_t number = 1; number <= job.size(); ++number) {
                EXPECT_EQ(shown(open(content, graphic, twoPass), number), job[number - 1]) << "reached by a jump";
            }
        }
    }
}

TEST_F(PreviewTest, WhatEndsAJobIsSaidInItsPagesPlaceAndTheOthersAreThere) {
    host.settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", "Schacht3", "9");
    host.spooler.device.onSetOption = [](PageOption option, int value) {
        if (option == PageOption::paperBin && value == 9) {
            throw runtime::Error(runtime::errInvalidPropertyValue);
        }
    };
    open("a^FE\fb\n^BC1,1e99,A\\^FA\fc^TR3\fd^TR2", "");
    EXPECT_EQ(pages_->page(2).failure, "Fehler 6: Überlauf: (Makro ^BC auf Seite 2, Zeile 2)");
    EXPECT_TRUE(pages_->page(2).recording.steps().empty() && pages_->page(2).text.empty());
    EXPECT_TRUE(pages_->page(3).failure.starts_with("Fehler 380: Ungültiger Eigenschaftswert: Die Einstellung"));
    EXPECT_EQ(shown(*pages_, 4), "0,500 d 24000000\nbin 0");

    EXPECT_EQ(open("a\fb", "FEHLT.BMP").page(2).failure,
              "Es trat ein Fehler beim Laden der Grafikdatei FEHLT.BMP auf.\r\nNummer: 53, Datei nicht gefunden");
    EXPECT_EQ(open(std::string(32767, '\f') + "x").page(32768).failure,
              "Fehler 6: Überlauf: ein Druckauftrag endet hinter Seite 32767");
    EXPECT_EQ(pages_->page(32767).failure, "");
    EXPECT_EQ(open("").pageCount(), 0U);
    EXPECT_EQ(testing_support::failureText([this] { pages_->page(1); }).substr(0, 2), "9 ");
    // More than any page has is not kept.
    std::string dense;
    for (int i = 0; i < 400'001; ++i) {
        dense += "x\r";
    }
    EXPECT_TRUE(open(dense).page(1).failure.starts_with("Fehler 7: "));
    EXPECT_EQ(open(std::string(1'000'000, 'x')).page(1).text.lines.at(0).size(), 81U) << "as far as the sheet goes";
}

TEST_F(PreviewTest, AFileThatIsWrittenMeanwhileIsReadAnewAndOneThatGoesIsReadOn) {
    using preview::PreviewPages;
    wholly = false;
    const auto readOn = [this](int pieces) {
        bool isSame = true;
        while (pieces-- > 0) {
            isSame = pages_->readOn(PreviewPages::Milliseconds(0)) && isSame;
        }
        return isSame;
    };
    EXPECT_EQ(open("a^FE\fb\fc\f\n").pageCount(), 1U) << "until the first page is whole";
    EXPECT_EQ(shown(*pages_, 1), "0,500 a 24000000\nbin 0");
    EXPECT_TRUE(readOn(1));
    EXPECT_FALSE(pages_->complete());
    host.system.files.erase("A.OUT");
    EXPECT_TRUE(readOn(9) && pages_->complete());
    EXPECT_EQ(pages_->pageCount(), 3U);
    for (const std::string content : {"x\fb", "A^FE\fb\fc\f\n", "a^FE\fb\fc\f\n\fd\fe"}) {
        open("a^FE\fb\fc\f\n");
        host.system.files["A.OUT"] = content;
        EXPECT_FALSE(readOn(9));
        pages_->prepare();
        const std::string first = shown(*pages_, 1);
        wholly = true;
        EXPECT_EQ(std::pair(pages_->pageCount(), first), std::pair(open(content).pageCount(), shown(*pages_, 1)));
        wholly = false;
    }
    open("a\fb\fc");
    host.system.failures["A.OUT"] = runtime::errDeviceIo;
    EXPECT_EQ(testing_support::failureText([&] { readOn(1); }).substr(0, 2), "57");
    EXPECT_TRUE(pages_->pageCount() == 0 && pages_->complete());
}

TEST_F(PreviewTest, MessagesAreCollectedAndASilentPrinterIsReplacedByASheet) {
    host.spooler.device.fontName = "Anders";
    host.system.files["C:\\KORVANO\\hplaser.ini"] = "";
    host.system.profile.values[{"Grafik", "Grafik1"}] = "0,0,1";
    open("a");
    ASSERT_EQ(pages_->notices().size(), 2U);
    EXPECT_TRUE(pages_->notices()[0].ends_with("gedruckt wird ohne diese Grafik."));
    EXPECT_TRUE(pages_->notices()[1].starts_with("Hinweis: Der Zeichensatz"));
    EXPECT_TRUE(host.dialogs.boxes.empty() && host.dialogs.diagnostics.empty());
    EXPECT_EQ(pages_->printer() + pages_->trouble(), "Laser 1");
    EXPECT_EQ(open("a", "", false, "unbekannt").printer(), "Laser 1");

    host.settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\laser 1", "Schacht1", "4");
    host.spooler.silentFor = 1000;
    open("^TR1a", "", false, "laser 1");
    EXPECT_EQ(pages_->trouble(), "Druckerfehler: Drucker „laser 1“: antwortet nicht");
    EXPECT_EQ(shown(*pages_, 1), "0,500 a 24000000\nbin 4") << "its own settings, on a sheet that takes any bin";
    EXPECT_EQ(host.spooler.device.documents.back()->printer, "Blatt");
    EXPECT_EQ(host.system.sleptMilliseconds, 0) << "nobody waits";
    host.spooler.hasSheet = false;
    EXPECT_THROW(pages_->prepare(), runtime::Error);

    // The host may do with its file what it likes; what was read stays until there is something else.
    host.system.files.erase("A.OUT");
    EXPECT_EQ(testing_support::failureText([this] { pages_->read(); }).substr(0, 2), "53");
    EXPECT_EQ(pages_->pageCount(), 1U);
}

TEST_F(PreviewTest, TextIsSelectedCopiedAndFound) {
    host.system.dosCharacters = {{'\0', " "}, {'\x81', "ü"}, {'\x9A', "Ü"}, {'\xE1', "ß"}};
    const std::string first = "^LR\x03M\x81^FEller^FA  GmbH  \r\n^BEbreit^BA\rbreit\r____\n   \n^HE1^HA Str.\n";
    open(first + "\f" + first + "\fnichts\f" + std::string(72, '\n') + "M\x9ALLER");
    const preview::PageText& text = pages_->page(1).text;
    EXPECT_EQ(text.textBetween(text.end(), text.begin()), "M\x81ller GmbH\nbreit\nbreit\n____\n1 Str.");
    // A character is 144 wide, the indentation 432; a line is 222 below the other.
    const preview::TextPosition inName = text.positionAt({432 + 144 * 2 + 10, 600});
    EXPECT_EQ(inName, (preview::TextPosition{0, 2}));
    const auto [begin, end] = text.wordAt(inName);
    EXPECT_EQ(text.textBetween(begin, end), "M\x81ller");
    EXPECT_EQ(text.areasBetween(begin, end).at(0).across.start, 432);
    EXPECT_EQ(text.areasBetween(begin, end).at(0).across.end, 432 + 6 * 144);
    EXPECT_TRUE(text.hasTextAt({432, 500}));
    EXPECT_FALSE(text.hasTextAt({431, 500}));

    std::string plain;
    pages_->plainText(1, plain);
    EXPECT_EQ(plain, "M\x81ller  GmbH  \nbreit\nbreit\n____\n   \n1 Str.\n");
    preview::TextSearch search(*pages_, session, "müLLER  gmbh breit", 2);
    EXPECT_TRUE(search.searchOn(preview::PreviewPages::Milliseconds(1)));
    EXPECT_EQ(search.hits(), (std::vector<preview::TextHit>{{1, 0, 20}, {2, 0, 20}})) << "line 73 is not printed";
    EXPECT_EQ(search.next(2, 1), &search.hits()[0]) << "round the end";
    EXPECT_EQ(search.previous(1, 0), &search.hits()[1]);
    EXPECT_EQ(text.areasOfPlainText(0, 20).size(), 2U) << "it goes on on the next line";
    EXPECT_EQ(preview::TextSearch(*pages_, session, "€", 1).hits().size(), 0U);

    // While it goes on, a hit may not be the next one yet.
    host.system.now = {};
    open(std::string(200'000, 'x') + "\fA\f" + std::string(200'000, 'x') + "\fA");
    preview::TextSearch slow(*pages_, session, "a", 3);
    EXPECT_FALSE(slow.searchOn(preview::PreviewPages::Milliseconds(0)));
    EXPECT_EQ(slow.next(1, 0), nullptr);
    EXPECT_FALSE(slow.searchOn(preview::PreviewPages::Milliseconds(0)));
    EXPECT_EQ(slow.next(1, 0)->page, 4U);
    EXPECT_FALSE(slow.nextIsSure(1, 0));
    EXPECT_TRUE(slow.nextIsSure(3, 0));
    EXPECT_TRUE(slow.searchOn(preview::PreviewPages::Milliseconds(0)));
    EXPECT_EQ(slow.next(1, 0)->page, 2U);
}

TEST_F(PreviewTest, PrintsARangeAsAJobDoes) {
    host.settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", "Schacht2", "7");
    const std::string content = "^TR2^FEa\f^LR\x02^FA^CRb\f\f^BEc\f^BC1,1,A\\^FAd\f^BC1,1e99,A\\\fe";
    const Lines printedPages = printed("^TR2^FEa\f^LR\x02^FA^CRb\f\f^BEc\f^BC1,1,A\\^FAd\f", "", false);
    host.system.files.erase("KRVWINPR.OK");
    const auto print = [&](preview::PrintRequest request, int steps) {
        open(content);
        host.spooler.device.options[PageOption::paperBin] = 0;
        preview::PreviewPrint job(session, *pages_, std::move(request), [] {});
        while (steps-- > 0 && !job.step()) {
        }
        return job.pagesPrinted();
    };
    const auto came = [&] {
        Lines all;
        for (const RecordedPage& page : host.spooler.device.pages()) {
            all.push_back(page.described() + "bin " + std::to_string(page.options.at(PageOption::paperBin)));
        }
        return all;
    };
    constexpr int all = 100;
    EXPECT_EQ(print({"Laser 1", "", 2, 4}, all), 3U);
    EXPECT_EQ(came(), Lines(printedPages.begin() + 1, printedPages.begin() + 4)) << "an empty page too";
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    EXPECT_EQ(print({"", "C:\\neu.pdf", 3, 3}, all), 1U);
    EXPECT_EQ(host.spooler.device.documents.back()->printer, "C:\\neu.pdf");
    EXPECT_EQ(came().size(), 1U);

    // Cancelled in the middle nothing is handed over; after a failure the finished pages are.
    EXPECT_EQ(print({"Laser 1", "", 1, 4}, 4), 2U);
    EXPECT_TRUE(host.spooler.device.documents.back()->aborted);
    EXPECT_TRUE(testing_support::failureText([&] { print({"Laser 1", "", 4, 7}, all); }).starts_with("6 "));
    EXPECT_EQ(came(), Lines(printedPages.begin() + 3, printedPages.end()));
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    // A printer that is silent for a while is waited for.
    host.spooler.device.onEnd = [this] {
        if (host.spooler.silentFor == 0) {
            host.spooler.device.onEnd = {};
            host.spooler.silentFor = 3;
        }
        host.spooler.answer();
    };
    EXPECT_EQ(print({"Laser 1", "", 1, 1}, all), 1U);
    EXPECT_TRUE(host.spooler.device.documents.back()->delivered);
    EXPECT_GT(host.system.sleptMilliseconds, 0);
    EXPECT_FALSE(host.system.files.contains("KRVWINPR.OK"));
}

}  // namespace
