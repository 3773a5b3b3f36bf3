// The graphic macros: "GZ" and "GY" print graphics of the first and the second set at the current position, "GR" and
// "GA" at their own.
#pragma once

#include <string_view>

#include "printer/Printer.h"
#include "printer/clsDrucker.h"
#include "report/job_state.h"
#include "session/session.h"

namespace report {

bool isGraphicMacro(std::string_view code);

// The number that the character behind the code gives, 1 to 9; 0, for all graphics of the set, where it is none.
int graphicNumber(std::string_view next);

class GraphicMacro {
public:
    // All are borrowed.
    GraphicMacro(session::Session& session, printer::Printer& printer, JobState& state,
                 const printer::clsDrucker& objPrinterUtil)
        : session_(session), printer_(printer), state_(state), objPrinterUtil_(objPrinterUtil) {}

    // Prints the graphic of that number or, for 0, all of the set; a number beyond the set is none. Nothing is printed
    // in a pass without graphics, but "GR" writes to the log what it is about all the same. Throws what
    // clsGrafik::PrintGrafik() throws.
    void print(std::string_view code, int number);

private:
    void announce();
    void printOne(const graphics::clsGrafik& grafik, std::string_view code, std::string_view which);

    session::Session& session_;
    printer::Printer& printer_;
    JobState& state_;
    const printer::clsDrucker& objPrinterUtil_;
};

}  // namespace report
