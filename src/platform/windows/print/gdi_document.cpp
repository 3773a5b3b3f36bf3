#include "platform/windows/print/gdi_document.h"

#include <exception>
#include <utility>

#include "platform/windows/print/port_questions.h"
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

// Negative results of the functions that print pages; others leave their reason as the system's last error.
DWORD reasonOf(int result) noexcept {
    switch (result) {
        case SP_APPABORT:
        case SP_USERABORT:
            return ERROR_PRINT_CANCELLED;
        case SP_OUTOFDISK:
            return ERROR_DISK_FULL;
        case SP_OUTOFMEMORY:
            return ERROR_NOT_ENOUGH_MEMORY;
        default:
            return lastError();
    }
}

bool isColor(const PageMode& mode) { return mode.value(platform::PageOption::colorMode) != DMCOLOR_MONOCHROME; }

// The printer's name, if its port puts no question that would wait for ever.
const std::string& askingNobodyUnseen(const std::string& printer, const PrintCalls& calls) {
    const std::string port = calls.hasVisibleDesktop() ? std::string() : askingPort(calls.portsOf(printer));
    if (!port.empty()) {
        throw runtime::Error(runtime::errPrinter,
                             "Drucker „" + printer + "“: Der Anschluss " + port +
                                 " fragt vor jedem Druck nach einem Ziel, aber in einem Dienst oder einer Aufgabe "
                                 "ohne Bildschirm sieht niemand die Frage. Bitte einen anderen Drucker nehmen oder "
                                 "dem Drucker unter „Druckereigenschaften“ einen anderen Anschluss geben.");
    }
    return printer;
}

}  // namespace

GdiDocument::GdiDocument(const std::string& printer, const std::string& title, const PrintCalls& calls)
    : calls_(calls),
      driver_(askingNobodyUnseen(printer, calls), calls),
      title_(widen(title)),
      mode_(driver_.own()),
      applied_(mode_),
      device_(driver_.open(mode_)),
      surface_(device_.get(), calls),
      recorder_(surface_) {
    surface_.takePage(isColor(mode_));
}

void GdiDocument::setOption(platform::PageOption option, int value) {
    if (mode_.value(option) == value) {
        return;
    }
    mode_ = driver_.changed(mode_, option, value);
    if (state_.betweenPages()) {
        apply(mode_);
    } else {
        modeChanged_ = true;
    }
}

void GdiDocument::apply(const PageMode& mode) {
    if (calls_.resetContext(device_.get(), mode.record()) != nullptr) {
        applied_ = mode;
    } else if (jobStarted_) {
        mode_ = applied_;
        return;
    } else {
        // Drivers of faxes and the like do not change a device, but make one in any mode.
        gdi::DeviceContext fresh = driver_.open(mode);
        surface_.useDevice(fresh.get());
        device_ = std::move(fresh);
        applied_ = mode;
    }
    surface_.takePage(isColor(applied_));
}

void GdiDocument::beginPage() {
    state_.mustBeBetweenPages();
    recorder_.clear();
    state_.pageBegun();
}

void GdiDocument::endPage() {
    state_.mustBeOnPage();
    startJob();
    ::SetLastError(ERROR_SUCCESS);
    if (const int result = calls_.startPage(device_.get()); result <= 0) {
        failBehindFinishedPages(reasonOf(result));
    }
    surface_.beginPage();
    const std::exception_ptr thrown = play();
    const DWORD undrawn = surface_.endPage();
    ::SetLastError(ERROR_SUCCESS);
    if (const int result = calls_.endPage(device_.get()); result <= 0) {
        const DWORD code = reasonOf(result);
        fail(undrawn != ERROR_SUCCESS && !isCancel(code) ? undrawn : code);
    }
    if (thrown) {
        finishJob();
        std::rethrow_exception(thrown);
    }
    if (undrawn != ERROR_SUCCESS) {
        failBehindFinishedPages(undrawn);
    }
    state_.pageEnded();
    ++pagesEnded_;
    if (std::exchange(modeChanged_, false)) {
        apply(mode_);
    }
}

// What was thrown meanwhile must not get past the end of a page that has begun.
std::exception_ptr GdiDocument::play() noexcept {
    try {
        recorder_.playOnDevice();
        return nullptr;
    } catch (...) {
        surface_.giveUp(ERROR_NOT_ENOUGH_MEMORY);
        return std::current_exception();
    }
}

void GdiDocument::startJob() {
    if (jobStarted_) {
        return;
    }
    DOCINFOW info{};
    info.cbSize = sizeof info;
    info.lpszDocName = title_.c_str();
    ::SetLastError(ERROR_SUCCESS);
    if (const int result = calls_.startDocument(device_.get(), &info); result <= 0) {
        fail(reasonOf(result));
    }
    jobStarted_ = true;
}

DWORD GdiDocument::finishJob() {
    state_.ended();
    if (pagesEnded_ == 0) {
        abort();
    }
    if (!std::exchange(jobStarted_, false)) {
        return ERROR_SUCCESS;
    }
    ::SetLastError(ERROR_SUCCESS);
    if (const int result = calls_.endDocument(device_.get()); result <= 0) {
        const DWORD code = reasonOf(result);
        calls_.abortDocument(device_.get());
        brokenOff_ = true;
        return code;
    }
    pagesHandedOver_ = pagesEnded_;
    return ERROR_SUCCESS;
}

void GdiDocument::end() {
    if (state_.over()) {
        return;
    }
    if (const DWORD code = finishJob(); code != ERROR_SUCCESS) {
        throwDocumentFailure(code, driver_.printer());
    }
}

void GdiDocument::abort() noexcept {
    state_.ended();
    if (std::exchange(jobStarted_, false)) {
        calls_.abortDocument(device_.get());
        brokenOff_ = pagesEnded_ > 0;
    }
}

void GdiDocument::fail(DWORD code) {
    abort();
    throwDocumentFailure(code, driver_.printer());
}

void GdiDocument::failBehindFinishedPages(DWORD code) {
    if (!isCancel(code)) {
        finishJob();
    }
    fail(code);
}

}  // namespace platform_windows::print
