#include "printer/CPrinterJob.h"

#include <array>
#include <string_view>

#include "runtime/datetime.h"
#include "runtime/numbers.h"

namespace printer {

namespace {

namespace flag = platform::job_status;

struct FlagRow {
    std::uint32_t flag;
    std::string_view text;
};

constexpr std::array flagTexts = {
    FlagRow{flag::paused, "Angehalten"},
    FlagRow{flag::error, "Fehler"},
    FlagRow{flag::deleting, "Wird gelöscht"},
    FlagRow{flag::spooling, "Wird übertragen"},
    FlagRow{flag::printing, "Wird gedruckt"},
    FlagRow{flag::offline, "Drucker offline"},
    FlagRow{flag::paperOut, "Kein Papier"},
    FlagRow{flag::printed, "Gedruckt"},
    FlagRow{flag::deleted, "Gelöscht"},
    FlagRow{flag::blocked, "Blockiert"},
    FlagRow{flag::userIntervention, "Eingriff am Drucker nötig"},
    FlagRow{flag::restart, "Beginnt von vorn"},
    FlagRow{flag::complete, "An den Drucker gesendet"},
    FlagRow{flag::retained, "Aufbewahrt"},
    FlagRow{flag::renderingLocally, "Wird aufbereitet"},
};

}  // namespace

std::string jobStatusText(std::uint32_t status) {
    if (status == flag::waiting) {
        return "Wartet";
    }
    std::string text;
    const auto add = [&text](std::string_view part) { text.append(text.empty() ? "" : ", ").append(part); };
    for (const FlagRow& row : flagTexts) {
        if ((status & row.flag) != 0) {
            add(row.text);
            status &= ~row.flag;
        }
    }
    if (status != 0) {
        add(runtime::hexText(status));
    }
    return text;
}

std::string CPrinterJob::Submitted(const runtime::Locale& locale) const {
    return record_.submitted ? runtime::dateTimeText(*record_.submitted, locale) : std::string();
}

std::string CPrinterJob::WaitingTime() const {
    constexpr std::int64_t secondsOfMinute = 60;
    constexpr std::int64_t minutesOfHour = 60;
    constexpr std::int64_t hoursOfDay = 24;
    const std::int64_t minutes = record_.waitingSeconds / secondsOfMinute;
    const std::int64_t hours = minutes / minutesOfHour;
    if (hours == 0) {
        return std::to_string(minutes) + " min";
    }
    if (hours < hoursOfDay) {
        const std::string rest = std::to_string(minutes % minutesOfHour);
        return std::to_string(hours) + " h " + (rest.size() < 2 ? "0" : "") + rest + " min";
    }
    const std::int64_t days = hours / hoursOfDay;
    return std::to_string(days) + (days == 1 ? " Tag " : " Tage ") + std::to_string(hours % hoursOfDay) + " h";
}

std::string CPrinterJob::StatusText() const {
    const std::string text = jobStatusText(record_.status);
    return record_.statusText.empty() ? text : text + " (" + record_.statusText + ")";
}

void CPrinterJob::Priority(std::uint32_t value) const { jobs_->setPriority(printerName_, record_.number, value); }

void CPrinterJob::control(platform::JobOperation operation) const {
    jobs_->control(printerName_, record_.number, operation);
}

}  // namespace printer
