// A print file in the preview and as a job: its pages are the same, whichever way one comes to them, and every hit of a
// search is on its page. Inputs of odd size are printed in two passes, over a picture.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "preview/text_search.h"
#include "report/DoReport.h"
#include "unit/support/fake_platform.h"

namespace {

void require(bool right, const char* what) {
    if (!right) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

class Preview {
public:
    Preview(testing_support::FakePlatform& host, const preview::PreviewOrder& order, std::size_t piece)
        : session_(host.ports), pages(session_, order, piece) {
        host.spooler.device.options[platform::PageOption::paperBin] = 0;
        pages.read();
        pages.readOn(preview::PreviewPages::Milliseconds(1));  // all of it, since no time passes
        pages.prepare();
    }
    std::string shown(std::size_t number) {
        return testing_support::RecordedPage(pages.page(number).recording).described();
    }

private:
    session::Session session_;

public:
    preview::PreviewPages pages;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    testing_support::FakePlatform host;
    host.addPicture("B.BMP", 40, 20);
    host.settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", "Schacht2", "7");
    const std::string content(reinterpret_cast<const char*>(data), size);
    host.system.files["A.OUT"] = content;
    const bool twoPass = size % 2 == 1;
    const preview::PreviewOrder order{"A.OUT", twoPass ? "B.BMP" : "", "", twoPass};
    session::Session session(host.ports);
    report::MPrint::DoReport(session, {order.sDateiname, order.sGrafikname, "", false, twoPass}, [] {});
    const auto job = host.spooler.device.documents.back();

    Preview paging(host, order, 1 + size % 5);
    const std::size_t count = paging.pages.pageCount();
    require(!job->delivered || job->pages.size() <= count, "the job has more pages");
    std::string text;
    for (std::size_t number = 1; number <= count; ++number) {
        const std::string shown = paging.shown(number);
        require(number > job->pages.size() || shown == job->pages[number - 1].described(), "not the job's page");
        const preview::PageText& cells = paging.pages.page(number).text;
        require(cells.areasBetween(cells.begin(), cells.end()).size() == cells.lines.size(), "not all lines");
    }
    if (count > 0) {
        Preview jumping(host, order, size);
        require(jumping.shown(count) == paging.shown(count), "a jump makes another page");
    }
    preview::TextSearch search(paging.pages, session, content.substr(size / 2, 1 + size % 3), 1 + size / 4);
    while (!search.searchOn(preview::PreviewPages::Milliseconds(0))) {
    }
    for (const preview::TextHit& hit : search.hits()) {
        paging.pages.plainText(hit.page, text);
        require(hit.length > 0 && hit.position + hit.length <= text.size(), "a hit beyond the text");
    }
    return 0;
}
