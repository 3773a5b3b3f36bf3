// The fields of the barcode macro.
#pragma once

#include <string>
#include <string_view>

namespace MPrint {

// Inches from the top left corner of the printable area, and the data without its commas.
struct BarcodeMacro {
    float y = 0;
    float x = 0;
    std::string data;
};

// Reads "y,x,data", the text between the macro's code and its backslash. Numbers count as far as they can be read, "."
// and "," both being the decimal separator. Throws errOverflow for a number beyond single precision.
BarcodeMacro readBarcodeMacro(std::string_view fields);

}  // namespace MPrint
