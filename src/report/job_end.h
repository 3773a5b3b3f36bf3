// How a job that failed ended.
#pragma once

#include <string>

namespace report {

struct JobEnd {
    // Refused before the host was told to go on; not printed, or not all of it; sent, without an answer; printed, and
    // something went wrong afterwards.
    enum class Fate { notAccepted, notPrinted, perhapsPrinted, printed };

    Fate fate = Fate::notAccepted;
    int pagesPrinted = 0;  // the first ones, of a job that was not printed
    std::string printer;   // device name; empty where none was chosen yet
    std::string reason;    // what happened and what to do
};

}  // namespace report
