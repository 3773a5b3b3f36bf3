#include "printer/CPrinterInfo.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "runtime/numbers.h"

namespace printer {

namespace {

namespace attribute = platform::printer_attribute;

struct StatusRow {
    std::uint32_t value;
    std::string_view text;
};

// "Output Bill Full" is spelled so, and "Initializing" has its flag widened with the sign of 16 bits, so that the
// spooler's own flag 0x8000 is shown as a number: support staff search for these texts.
constexpr std::array statusTexts = {
    StatusRow{0, "Ready"},
    StatusRow{0x1, "Paused"},
    StatusRow{0x2, "Error"},
    StatusRow{0x4, "Deleting..."},
    StatusRow{0x8, "Paper Jam"},
    StatusRow{0x10, "Paper Out"},
    StatusRow{0x20, "Manual Feed Required"},
    StatusRow{0x40, "Paper Problem"},
    StatusRow{0x80, "Offline"},
    StatusRow{0x100, "Downloading Job"},
    StatusRow{0x200, "Busy"},
    StatusRow{0x400, "Printing"},
    StatusRow{0x800, "Output Bill Full"},
    StatusRow{0x1000, "Not Available"},
    StatusRow{0x2000, "Waiting"},
    StatusRow{0x4000, "Processing Job"},
    StatusRow{0xFFFF8000, "Initializing"},
    StatusRow{0x10000, "Warming Up"},
    StatusRow{0x20000, "Toner Low"},
    StatusRow{0x40000, "Toner Out"},
    StatusRow{0x80000, "Page too Complex"},
    StatusRow{0x100000, "User Intervention Required"},
    StatusRow{0x200000, "Out of Memory"},
    StatusRow{0x400000, "Door Open"},
    StatusRow{0x800000, "Unable to connect"},
    StatusRow{0x1000000, "Power Save Mode"},
};

}  // namespace

std::string statusText(std::uint32_t status) {
    const auto* row = std::find_if(statusTexts.begin(), statusTexts.end(),
                                   [status](const StatusRow& candidate) { return candidate.value == status; });
    return row != statusTexts.end() ? std::string(row->text) : runtime::hexText(status);
}

std::string errorText(platform::Spooler& spooler, std::uint32_t code) {
    const std::string text = spooler.errorText(code);
    return text.empty() ? "Error (" + std::to_string(code) + ") not defined." : text;
}

CPrinterInfo::CPrinterInfo(platform::Spooler& spooler, platform::PrintJobs& jobs, std::string printerName)
    : spooler_(&spooler), jobs_(&jobs), name_(std::move(printerName)) {
    Refresh();
}

template <typename Call>
void CPrinterInfo::attempt(Call call) {
    try {
        call();
        lastError_ = 0;
    } catch (const platform::SpoolerError& failure) {
        lastError_ = failure.code();
    }
}

void CPrinterInfo::Refresh() {
    attempt([this] { record_ = spooler_->printer(name_); });
}

std::string CPrinterInfo::DisplayName() const {
    if (!name_.starts_with(R"(\\)")) {
        return name_;
    }
    const std::size_t separator = name_.find('\\', 2);
    return separator == std::string::npos ? name_.substr(2)
                                          : name_.substr(separator + 1) + " auf " + name_.substr(2, separator - 2);
}

std::string CPrinterInfo::StatusText() const {
    return lastError_ != 0 ? errorText(*spooler_, lastError_) : statusText(record_.status);
}

void CPrinterInfo::tell(platform::Activity& activity) const {
    activity.driver = record_.driverName + ", " + StatusText();
}

bool CPrinterInfo::IsDefault() const { return spooler_->defaultPrinter() == name_; }

bool CPrinterInfo::CanAdminister() {
    bool allowed = false;
    attempt([&] { allowed = spooler_->canAdminister(name_); });
    return allowed;
}

bool CPrinterInfo::IsOffline() const {
    return (record_.status & platform::printer_status::offline) != 0 || has(attribute::workOffline);
}

bool CPrinterInfo::IsShared() const { return has(attribute::shared); }

bool CPrinterInfo::IsToFile() const { return record_.portName == "FILE:"; }

bool CPrinterInfo::IsLocal() const { return has(attribute::local); }

bool CPrinterInfo::IsNetwork() const { return has(attribute::network); }

void CPrinterInfo::ControlPurge() {
    attempt([this] { jobs_->purge(name_); });
}

void CPrinterInfo::ShowPropertiesDialog() {
    attempt([this] { spooler_->showProperties(name_); });
}

void CPrinterInfo::SetAsDefault() {
    attempt([this] { spooler_->setDefaultPrinter(name_); });
}

}  // namespace printer
