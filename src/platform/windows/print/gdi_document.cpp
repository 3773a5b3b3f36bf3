#include "platform/windows/print/gdi_document.h"

#include <utility>

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

}  // namespace

GdiDocument::GdiDocument(const std::string& printer, const std::string& title)
    : driver_(printer),
      title_(widen(title)),
      mode_(driver_.own()),
      device_(driver_.open(mode_)),
      surface_(device_.get()),
      recorder_(surface_) {
    surface_.setPage(capabilitiesOf(device_.get()), isColor(mode_));
}

void GdiDocument::setOption(platform::PageOption option, int value) {
    if (mode_.value(option) == value) {
        return;
    }
    PageMode changed = driver_.changed(mode_, option, value);
    if (state_.betweenPages()) {
        apply(changed);
    } else {
        modeChanged_ = true;
    }
    mode_ = std::move(changed);
}

void GdiDocument::apply(const PageMode& mode) {
    ::SetLastError(ERROR_SUCCESS);
    if (::ResetDCW(device_.get(), mode.record()) == nullptr) {
        throwDocumentFailure(lastError(), driver_.printer());
    }
    surface_.setPage(capabilitiesOf(device_.get()), isColor(mode));
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
    if (const int result = ::StartPage(device_.get()); result <= 0) {
        fail(reasonOf(result));
    }
    surface_.beginPage();
    recorder_.playOnDevice();
    if (const DWORD code = surface_.endPage(); code != ERROR_SUCCESS) {
        fail(code);
    }
    ::SetLastError(ERROR_SUCCESS);
    if (const int result = ::EndPage(device_.get()); result <= 0) {
        fail(reasonOf(result));
    }
    state_.pageEnded();
    ++pagesEnded_;
    if (std::exchange(modeChanged_, false)) {
        apply(mode_);
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
    if (const int result = ::StartDocW(device_.get(), &info); result <= 0) {
        fail(reasonOf(result));
    }
    jobStarted_ = true;
}

void GdiDocument::end() {
    if (state_.over()) {
        return;
    }
    state_.ended();
    ::SetLastError(ERROR_SUCCESS);
    if (std::exchange(jobStarted_, false)) {
        if (const int result = ::EndDoc(device_.get()); result <= 0) {
            const DWORD code = reasonOf(result);
            ::AbortDoc(device_.get());
            brokenOff_ = pagesEnded_ > 0;
            throwDocumentFailure(code, driver_.printer());
        }
        pagesHandedOver_ = pagesEnded_;
    }
}

void GdiDocument::abort() noexcept {
    state_.ended();
    if (std::exchange(jobStarted_, false)) {
        ::AbortDoc(device_.get());
        brokenOff_ = pagesEnded_ > 0;
    }
}

void GdiDocument::fail(DWORD code) {
    abort();
    throwDocumentFailure(code, driver_.printer());
}

}  // namespace platform_windows::print
