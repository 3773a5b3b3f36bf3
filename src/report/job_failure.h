// How a job that fails is reported to the log and to the user.
#pragma once

#include <string>

#include "report/job_end.h"
#include "report/job_progress.h"
#include "runtime/error.h"
#include "runtime/utf8.h"
#include "session/session.h"

namespace report {

// What the user is told of a failure in a stretch of a job, the background picture named as the order has it.
std::string failureText(Stretch stretch, const runtime::Error& error, const std::string& sGrafikname);

class JobFailure {
public:
    // The session is borrowed. sDateiname is the print file, sGrafikname the background picture. Of a job that is
    // attended whoever started it tells the user: here only log and standard error are told.
    JobFailure(session::Session& session, const std::string& sDateiname, const std::string& sGrafikname, bool attended)
        : session_(session),
          sDateiname_(runtime::shown(sDateiname)),
          sGrafikname_(runtime::shown(sGrafikname)),
          attended_(attended) {}

    // Tells log and user as it belongs to the stretch; whereabouts says where the job is kept. The printer is asked for
    // its status where a page failed. Throws what the log throws.
    void report(Stretch stretch, const runtime::Error& error, const JobEnd& end, const std::string& whereabouts);

    // The user has cancelled the job: that is no news for anybody but the log and standard error.
    void reportCancel();

    void reportNoPrinters(const std::string& whereabouts);

    // Where the log is written, asks whether to show it.
    void offerLog();

private:
    void logGeneral(const runtime::Error& error);
    void logService();
    void reportDriver(const runtime::Error& error);
    void reportBackground(const runtime::Error& error);
    void logPage(const runtime::Error& error, const std::string& deviceName);
    void tellUser(const runtime::Error& error, const JobEnd& end, const std::string& whereabouts);
    void showBox(const std::string& text);
    void notify(const std::string& text);

    session::Session& session_;
    const std::string sDateiname_;  // as they are shown
    const std::string sGrafikname_;
    const bool attended_;
};

}  // namespace report
