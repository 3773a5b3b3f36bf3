// The barcode macro: its fields, and the barcode that it prints.
#pragma once

#include <string>
#include <string_view>

#include "printer/Printer.h"
#include "session/session.h"

namespace report {

// Inches from the top left corner of the printable area, and the data without its commas.
struct BarcodeMacro {
    float y = 0;
    float x = 0;
    std::string data;
};

// Reads "y,x,data", the text between the macro's code and its backslash. Numbers count as far as they can be read, "."
// and "," both being the decimal separator. Throws errOverflow for a number beyond single precision.
BarcodeMacro readBarcodeMacro(std::string_view fields);

// Prints the data, which is not empty, as Code 39 with bars of the given height in inches, wherever the printer's
// position is, and leaves it there. What reaches beyond the printable area is drawn as far as the sheet goes and
// reported in the log; that bars have no height is told once. Throws what clsLinearBarCodes throws, errOverflow for a
// position or a height beyond 32 bits.
void printBarcode(session::Session& session, printer::Printer& printer, const BarcodeMacro& macro, double height);

}  // namespace report
