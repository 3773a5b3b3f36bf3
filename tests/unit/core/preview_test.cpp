#include "preview/preview_pages.h"
#include "report/DoReport.h"
#include "unit/support/core_test.h"

namespace {

using platform::PageOption;
using testing_support::DrawnText;
using testing_support::Lines;
using testing_support::RecordedPage;

class PreviewTest : public testing_support::CoreTest {
protected:
    preview::PreviewPages& open(const std::string& content, const std::string& graphic = "", bool twoPass = false,
                                const std::string& printer = "") {
        host.system.files["A.OUT"] = content;
        host.spooler.device.options[PageOption::paperBin] = 0;
        pages_.emplace(session, preview::PreviewOrder{"A.OUT", graphic, printer, twoPass});
        pages_->read();
        pages_->prepare();
        return *pages_;
    }
    // What is drawn, and on which paper, as a text that can be compared.
    static std::string described(const RecordedPage& page) {
        std::ostringstream text;
        for (const DrawnText& drawn : page.texts) {
            text << drawn.x << ',' << drawn.y << ' ' << drawn.text << ' ' << drawn.font.emHeight << drawn.font.bold
                 << drawn.font.italic << drawn.font.underline << static_cast<int>(drawn.role)
                 << static_cast<int>(drawn.color.red) << '\n';
        }
        for (const auto& drawn : page.rectangles) {
            text << drawn.x << ',' << drawn.y << ' ' << drawn.width << 'x' << drawn.height << '\n';
        }
        for (const auto& drawn : page.pictures) {
            text << drawn.x << ',' << drawn.y << ' ' << drawn.width << 'x' << drawn.height << ' '
                 << drawn.picture->width << '\n';
        }
        return text.str();
    }
    std::string shown(preview::PreviewPages& pages, std::size_t number) {
        const preview::PreviewPage& page = pages.page(number);
        return described(RecordedPage(page.recording)) + "bin " + std::to_string(page.paperBin) + page.failure;
    }
    // The same of a job's pages.
    Lines printed(const std::string& content, const std::string& graphic, bool twoPass) {
        host.system.files["A.OUT"] = content;
        host.spooler.device.options[PageOption::paperBin] = 0;
        report::MPrint::DoReport(session, {"A.OUT", graphic, "", false, twoPass}, [] {});
        Lines all;
        for (const RecordedPage& page : host.spooler.device.pages()) {
            all.push_back(described(page) + "bin " + std::to_string(page.options.at(PageOption::paperBin)));
        }
        return all;
    }

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

}  // namespace
