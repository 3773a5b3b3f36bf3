// Sets an option of the printer to what a setting says.
#pragma once

#include "printer/Printer.h"
#include "runtime/error.h"

namespace report {

// Where the printer refuses the value, the error has the detail that the function gives.
template <typename Detail>
void setStoredOption(printer::Printer& printer, platform::PageOption option, int value, Detail detail) {
    try {
        printer.Option(option, value);
    } catch (const runtime::Error& error) {
        if (error.number() != runtime::errInvalidPropertyValue) {
            throw;
        }
        throw runtime::Error(error.number(), detail());
    }
}

}  // namespace report
