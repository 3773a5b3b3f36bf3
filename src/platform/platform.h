// The ports in one bundle, made by main and handed down.
#pragma once

#include "platform/dialogs.h"
#include "platform/error_reports.h"
#include "platform/forms.h"
#include "platform/image_files.h"
#include "platform/print_jobs.h"
#include "platform/settings_store.h"
#include "platform/spooler.h"
#include "platform/system.h"
#include "platform/user_files.h"
#include "platform/xml_files.h"

namespace platform {

struct Platform {
    System& system;
    SettingsStore& settings;
    Spooler& spooler;
    PrintJobs& printJobs;
    Dialogs& dialogs;
    ImageFiles& imageFiles;
    UserFiles& userFiles;
    Forms& forms;
    XmlFiles& xmlFiles;
    ErrorReports& errorReports;
};

}  // namespace platform
