// What stands in the cells of the job list's tables.
#pragma once

#include <string>

#include "printer/CPrinterJob.h"
#include "report/kept_jobs.h"
#include "runtime/locale.h"

namespace joblist {

// The columns in the order of the design; empty for one that there is not. Row from 0.
std::string jobCell(const printer::CPrinterJob& job, int row, int column, const runtime::Locale& locale);
std::string keptCell(const report::KeptEntry& job, int column);

// The print file as the host named it, or its copy's name where that is not known.
std::string keptName(const report::KeptEntry& job);

}  // namespace joblist
