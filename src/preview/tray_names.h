// The names of a printer's paper bins.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace preview {

// Asks the printer once, when it is told to: its driver may take its time.
class TrayNames {
public:
    // The session is borrowed.
    explicit TrayNames(session::Session& session) : session_(session) {}

    bool known(const std::string& printer) const { return asked_ == printer; }
    void ask(const std::string& printer);

    // Empty where the bin is not known, or not yet.
    std::string nameOf(const std::string& printer, int bin) const;

private:
    session::Session& session_;
    std::optional<std::string> asked_;  // which printer
    std::vector<platform::PaperBin> bins_;
};

}  // namespace preview
