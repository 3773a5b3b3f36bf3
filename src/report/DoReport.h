// The job driver: prints one print file of the host on one printer.
#pragma once

#include <string>

#include "session/Session.h"

namespace MPrint {

// sDateiname: the print file. sGrafikname: a picture behind every page, "KEINEGRAFIK" or empty. sDruckerTreiber: the
// printer's device name in any case, or empty for the default printer, which an unknown name means too. blnWait: write
// the completion file only when the printer's queue is empty. blnTwoPass: on each page all graphics first, then the
// text. Failures are reported to the log and the user as they belong and end the job; only a failing debug log before
// the job's own error handling is an error for the caller.
void DoReport(session::Session& session, const std::string& sDateiname, const std::string& sGrafikname,
              const std::string& sDruckerTreiber, bool blnWait, bool blnTwoPass);

}  // namespace MPrint
