#include "joblist/druckauftraege_cells.h"

#include "runtime/numbers.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace joblist {

namespace {

std::string numberText(std::uint32_t number) { return number != 0 ? std::to_string(number) : std::string(); }

// "3/12", of which the spooler may know nothing.
std::string pagesText(const printer::CPrinterJob& job) {
    return job.TotalPages() != 0 && job.PagesPrinted() != 0
               ? std::to_string(job.PagesPrinted()) + "/" + std::to_string(job.TotalPages())
               : numberText(job.TotalPages() + job.PagesPrinted());
}

}  // namespace

std::string jobCell(const printer::CPrinterJob& job, int row, int column, const runtime::Locale& locale) {
    switch (column) {
        case 0:
            return std::to_string(job.Position() != 0 ? job.Position() : static_cast<std::uint32_t>(row) + 1);
        case 1:
            return runtime::shown(job.Document());
        case 2:
            return runtime::shown(job.User());
        case 3:
            return runtime::shown(job.StatusText());
        case 4:
            return pagesText(job);
        case 5:
            return job.Size() != 0 ? runtime::sizeText(job.Size(), locale) : std::string();
        case 6:
            return job.Submitted(locale);
        case 7:
            return job.WaitingTime();
        case 8:
            return numberText(job.JobNumber());
        case 9:
            return numberText(job.Priority());
        case 10:
            return runtime::shown(job.Computer());
        default:
            return {};
    }
}

std::string keptCell(const report::KeptEntry& job, int column) {
    switch (column) {
        case 0:
            return keptName(job);
        case 1:
            return job.text.time;
        case 2:
            return job.text.printer;
        case 3:
            return job.text.reason.empty() && !job.text.time.empty()
                       ? "Wird gerade gedruckt, oder das Programm wurde vorher beendet."
                       : job.text.reason;
        case 4:
            return job.text.pages;
        default:
            return {};
    }
}

std::string keptName(const report::KeptEntry& job) {
    return job.text.printFile.empty() ? runtime::shown(job.name) : std::string(runtime::fileNameOf(job.text.printFile));
}

}  // namespace joblist
