#include "platform/linux/documents/pdf_print_document.h"

#include <algorithm>
#include <utility>

#include "platform/linux/files.h"
#include "platform/spooler_error.h"
#include "runtime/error.h"

namespace platform_linux::documents {

PdfPrintDocument::PdfPrintDocument(std::unique_ptr<DocumentTarget> target, pdf::PdfSettings settings,
                                   PdfFactory makePdf)
    : target_(std::move(target)),
      settings_(std::move(settings)),
      makePdf_(std::move(makePdf)),
      next_(target_->defaults()) {
    startPdf();
}

platform::Surface& PdfPrintDocument::surface() { return surface_; }

int PdfPrintDocument::option(platform::PageOption option) const {
    PageOptions options = next_;
    return valueOf(options, option);
}

void PdfPrintDocument::setOption(platform::PageOption option, int value) {
    int& current = valueOf(next_, option);
    if (current == value) {
        return;
    }
    if (!target_->accepts(option, value)) {
        throw runtime::Error(runtime::errInvalidPropertyValue);
    }
    current = value;
    if (state_.betweenPages()) {
        pdf_->setPage(target_->page(next_));
    }
}

void PdfPrintDocument::beginPage() {
    state_.mustBeBetweenPages();
    orGiveUp([this] {
        if (pdf_->pageCount() > 0 && target_->separates(page_, next_)) {
            finishPdf();
            try {
                deliver();
            } catch (const platform::SpoolerError& error) {
                if (error.cancelled()) {
                    throw;
                }
                // Told at the end, if it has not been taken by then.
            }
            startPdf();
        }
        page_ = next_;
        if (pdf_->pageCount() == 0) {
            first_ = page_;
        }
        output_->pageBegins();
        pdf_->beginPage();
    });
    state_.pageBegun();
}

void PdfPrintDocument::endPage() {
    state_.mustBeOnPage();
    orGiveUp([this] {
        try {
            pdf_->endPage();
        } catch (const runtime::Error& error) {
            throw output_->failure(error);
        }
        pdf_->setPage(target_->page(next_));
    });
    state_.pageEnded();
}

void PdfPrintDocument::end() {
    if (state_.over()) {
        return;
    }
    if (output_ && pdf_->pageCount() > 0) {
        orGiveUp([this] { finishPdf(); });
    }
    deliver();
    abort();
}

bool PdfPrintDocument::perhapsHandedOver() const {
    return std::any_of(finished_.begin(), finished_.end(),
                       [](const Finished& finished) { return finished.output->perhapsDelivered(); });
}

std::vector<std::string> PdfPrintDocument::saveRest(const std::string& path) {
    std::vector<std::string> files;
    for (const Finished& finished : finished_) {
        const std::string number = files.empty() ? "" : " (" + std::to_string(files.size() + 1) + ")";
        const std::string file = path + number + ".pdf";
        if (copyToNewFile(finished.output->descriptor(), file, privateFile) != 0) {
            break;
        }
        files.push_back(file);
    }
    return files;
}

void PdfPrintDocument::abort() noexcept {
    state_.ended();
    output_.reset();
    finished_.clear();
}

void PdfPrintDocument::startPdf() {
    std::unique_ptr<PdfOutput> output = target_->open();
    std::unique_ptr<pdf::PdfDocument> pdf = makePdf_(settings_, output->descriptor());
    pdf->setPage(target_->page(next_));
    surface_.forwardTo(pdf->surface());
    pdf_ = std::move(pdf);
    output_ = std::move(output);
}

void PdfPrintDocument::finishPdf() {
    try {
        pdf_->finish();
    } catch (const runtime::Error& error) {
        throw output_->failure(error);
    }
    for (const std::string& flaw : pdf_->flaws()) {
        remarks_.push_back("Die PDF-Datei ist kein PDF/A: " + flaw);
    }
    finished_.push_back({std::move(output_), first_, pdf_->pageCount()});
}

void PdfPrintDocument::deliver() {
    while (!finished_.empty()) {
        Finished& next = finished_.front();
        next.output->deliver(next.firstPage);
        pagesHandedOver_ += next.pages;
        finished_.erase(finished_.begin());
    }
}

template <typename Step>
void PdfPrintDocument::orGiveUp(Step step) {
    try {
        step();
    } catch (...) {
        abort();
        throw;
    }
}

}  // namespace platform_linux::documents
