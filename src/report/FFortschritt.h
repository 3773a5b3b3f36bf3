// The form of a job that takes its time: how far it is, and a button that ends it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/forms.h"
#include "report/job_progress.h"
#include "report/look_pace.h"
#include "session/session.h"

namespace report {

// Its labels are "lblAuftrag", what is printed, and "lblFortschritt"; its button is "cmdAbbrechen", with Esc.
platform::FormDesign designOfFortschritt(const std::string& title);

// Appears in front of its owner, which takes no input then, when it has taken half a second; one form for jobs that
// follow each other.
class FFortschritt final : public platform::FormEvents {
public:
    // Session and owner are borrowed.
    FFortschritt(session::Session& session, platform::Form& owner);

    // What is printed now.
    void begin(const std::string& name) { name_ = name; }

    // To be told of the job's progress.
    JobProgress& progress() { return progress_; }

    // To be called often while the job goes on. Where the user does not want it any more, throws the SpoolerError of a
    // job that was cancelled.
    void look();

    void clicked(const std::string& control) override;

private:
    void show(std::int64_t at);

    session::Session& session_;
    platform::Form& owner_;
    JobProgress progress_;
    std::string name_;
    const std::int64_t begun_;
    std::int64_t servedAt_;
    LookPace pace_;
    std::unique_ptr<platform::Form> form_;
    bool cancelled_ = false;
};

}  // namespace report
