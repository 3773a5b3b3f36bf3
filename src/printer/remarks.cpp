#include "printer/remarks.h"

namespace printer {

void logRemarks(session::Session& session, const Printer& printer) {
    for (const std::string& remark : printer.Remarks()) {
        session.log.line(">   ", remark);
    }
}

}  // namespace printer
