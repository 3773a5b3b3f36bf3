// The form that offers a report of an error which nobody has trapped.
#pragma once

#include <memory>
#include <string>

#include "errorreport/error_report.h"
#include "platform/forms.h"
#include "session/session.h"

namespace errorreport {

class FFehlerbericht final : public platform::FormEvents {
public:
    // The session must outlive it.
    FFehlerbericht(session::Session& session, ErrorReport report);

    // Shows the form and does not wait; the report counts as seen from then on. runtime::Error where there is no
    // desktop.
    void Show();

    void clicked(const std::string& control) override;

private:
    void save();
    void showFolder();
    void send();
    void tell(const std::string& text);

    session::Session& session_;
    const ErrorReport report_;
    std::unique_ptr<platform::Form> form_;
};

// Shows the newest report that nobody has seen, where there is one and a desktop; null otherwise. Never throws but for
// std::bad_alloc.
std::unique_ptr<FFehlerbericht> offerReport(session::Session& session);

}  // namespace errorreport
