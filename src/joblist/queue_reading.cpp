#include "joblist/queue_reading.h"

#include <algorithm>

namespace joblist {

void QueueReading::choose(const std::string& printer) {
    printer_ = printer;
    jobs_.clear();
    info_.reset();
    watch_.reset();
    watchAsked_ = false;
    mayResume_ = false;
    trouble_.clear();
    if (!printer_.empty()) {
        read();
    }
}

bool QueueReading::look() {
    if (printer_.empty() || !isTime()) {
        return false;
    }
    if (silent_ && !session_.platform.spooler.answersAgain()) {
        readAt_ = session_.platform.system.elapsedMilliseconds();
        return false;
    }
    read();
    return true;
}

bool QueueReading::isTime() {
    constexpr std::int64_t withoutEvents = 1000;
    constexpr std::int64_t withEvents = 5000;
    constexpr std::int64_t inTrouble = 10000;
    constexpr std::int64_t shareOfTime = 20;
    changed_ = (watch_ && watch_->changed()) || changed_;
    const std::int64_t usual = changed_ ? lookMilliseconds : watch_ ? withEvents : withoutEvents;
    const std::int64_t pause = trouble_.empty() ? std::max(usual, took_ * shareOfTime) : inTrouble;
    return session_.platform.system.elapsedMilliseconds() - readAt_ >= pause;
}

void QueueReading::read() {
    platform::System& system = session_.platform.system;
    const std::int64_t start = system.elapsedMilliseconds();
    changed_ = false;
    try {
        readJobs();
        trouble_.clear();
        silent_ = false;
    } catch (const runtime::Error& error) {
        const auto* const ofSpooler = dynamic_cast<const platform::SpoolerError*>(&error);
        silent_ = ofSpooler != nullptr && ofSpooler->mayPass();
        trouble_ = error.message();
        // Its events may be over, too.
        watch_.reset();
        watchAsked_ = false;
    }
    readPrinter();
    readAt_ = system.elapsedMilliseconds();
    took_ = readAt_ - start;
}

// The events come first, so that none between the two is missed.
void QueueReading::readJobs() {
    platform::PrintJobs& port = session_.platform.printJobs;
    if (!watchAsked_) {
        watch_ = port.watch(printer_);
        watchAsked_ = true;
    }
    const printer::CPrinterJobs listing(port, printer_);
    jobs_.assign(listing.begin(), listing.end());
}

void QueueReading::readPrinter() {
    if (info_) {
        info_->Refresh();
    } else {
        info_.emplace(session_.platform.spooler, session_.platform.printJobs, printer_);
    }
    const bool stopped = (info_->Status() & platform::printer_status::paused) != 0;
    // Asked once for as long as it is stopped; a refusal to tell is not the printer's status.
    mayResume_ = stopped && (mayResume_ || printer::CPrinterInfo(*info_).CanAdminister());
}

}  // namespace joblist
