// The handshake with the host, which waits until the completion file is there, and what has to do with the end of a
// job.
#pragma once

#include <string>

#include "report/let_events_run.h"
#include "session/session.h"

namespace report::MPrint {

// Whether a path leads to the file that WriteOKFile() would write over.
bool isOKFile(platform::System& system, const std::string& path);

// Writes "KRVWINPR.OK" into the current directory. A failure is logged and is no error: the host then gets no file.
void WriteOKFile(session::Session& session);

// Waits until the printer's queue is empty, whoever's jobs are in it, or the time-out in seconds has passed, which a
// message box reports. Without a printer, errObjectNotSet; what the spooler refuses is the caller's too.
void WaitForSpoolerFinished(session::Session& session, const std::string* deviceName, int timeOutSeconds,
                            const LetEventsRun& letEventsRun);

}  // namespace report::MPrint
