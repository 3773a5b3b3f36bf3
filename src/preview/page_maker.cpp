#include "preview/page_maker.h"

#include <new>

#include "report/job_failure.h"
#include "report/page_cutter.h"
#include "report/tray_selection.h"
#include "runtime/error.h"

namespace preview {

using runtime::Error;

PageMaker::PageMaker(session::Session& session, const PreviewOrder& order, const Device& device)
    : session_(session),
      order_(order),
      printer_(device.name, [this, device] { return open(device); }),
      run_(
          session, printer_, progress_, [] {}, &text_),
      pages_(run_, order.sGrafikname, order.blnTwoPass),
      passing_(session, printer_, order.blnTwoPass) {
    preparePrinter(run_);
    first_ = passing_.firstPage(run_.state.type);
}

std::unique_ptr<platform::PrintDocument> PageMaker::open(const Device& device) {
    auto document = std::make_unique<PreviewDocument>(device.open(), device.sheetOnly);
    document_ = document.get();
    return document;
}

PreviewPage PageMaker::make(std::size_t number, std::string_view page, const report::PageStart& start) {
    PreviewPage made;
    const std::string failure = failureOf(number, [&] {
        print(number, page, start);
        made = document_->page();
        made.text = text_.take();
    });
    if (!failure.empty()) {
        made = document_->emptyPage();
        made.failure = failure;
    }
    made.requestedTray = start.tray;
    report::requestTray(page, made.requestedTray);
    printer_.NewPage();
    return made;
}

template <typename Step>
std::string PageMaker::failureOf(std::size_t number, Step step) {
    progress_.reset();
    const auto told = [&](const Error& error) {
        session_.log.line(">     Seite ", std::to_string(number),
                          " lässt sich nicht drucken: ", std::to_string(error.number()), " ", error.description());
        return report::failureText(progress_.stretch(), error, order_.sGrafikname);
    };
    try {
        step();
        return {};
    } catch (const Error& error) {
        return told(error);
    } catch (const std::bad_alloc&) {
        return told(Error(runtime::errOutOfMemory));
    }
}

void PageMaker::print(std::size_t number, std::string_view page, report::PageStart start) {
    session_.log.line(">     zeige Seite: ", std::to_string(number));
    session_.activity().page.store(static_cast<std::uint32_t>(number), std::memory_order_relaxed);
    text_.begin(*document_);
    run_.state.intSeite = report::pageNumber(number);
    pages_.continueFrom(start);
    report::requestTray(page, start.tray);
    report::selectTraySilently(session_, printer_, start.tray);
    pages_.begin();
    pages_.print(page);
}

}  // namespace preview
