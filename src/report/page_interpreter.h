// Prints the pages of a print file: runs of text with the current type state, and the caret macros that change it.
#pragma once

#include <cstdint>
#include <string_view>

#include "printer/Printer.h"
#include "printer/clsDrucker.h"
#include "report/job_state.h"
#include "report/let_events_run.h"
#include "report/page_reader.h"
#include "session/session.h"

namespace report {

// A run-time error of the printer or of a macro ends the page and is the caller's; the detail names macro, page and
// line.
class PageInterpreter {
public:
    // All are borrowed for the job.
    PageInterpreter(session::Session& session, printer::Printer& printer, JobState& state,
                    const LetEventsRun& letEventsRun)
        : session_(session),
          printer_(printer),
          state_(state),
          letEventsRun_(letEventsRun),
          objPrinterUtil_(session.platform.dialogs) {}

    // Prints one page, bytes in the host's DOS code page. The printer stands at the left margin and top offset with
    // "Courier New" in the OEM character set. The page ends with its text, with a form feed, or with the line feed that
    // would begin a line too many.
    void DoPage(std::string_view page);

    // Prints one run of text at the current position and leaves the position behind it.
    void PrintTextRun(std::string_view text);

    // Indentation in blanks (0 to 255) of the lines to come, as wide as blanks are in the font size now in effect.
    void SetIndent(std::int16_t count);

    // Hears what text is printed from now on; borrowed.
    void listener(TextListener* listener) { listener_ = listener; }

private:
    template <typename Step>
    void tell(Step step);
    void tellPosition(const PageReader& reader);
    void newLine(bool pageIsFull);
    void logMacro(std::string_view code);
    void execute(const PageToken& macro, std::int16_t line);
    void execute(const PageToken& macro);
    void showType();
    void barcode(std::string_view fields);

    void printIndent();
    void printShifted(std::string_view text, double twipsDown);
    void printWithCopy(std::string_view text, double offset);
    void print(std::string_view text, platform::TextRole role = platform::TextRole::content);

    session::Session& session_;
    printer::Printer& printer_;
    JobState& state_;
    const LetEventsRun& letEventsRun_;
    printer::clsDrucker objPrinterUtil_;
    TextListener* listener_ = nullptr;
};

// The macro "LS" takes the value of its own second letter, which is none: always portrait.
inline constexpr int orientationOfMacro = 1;

}  // namespace report
