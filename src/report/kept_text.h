// The text beside a kept job: for its user to read, and for the program to print the job again as it was.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace report {

// What a text says in labelled lines. Empty where the line is missing.
struct KeptText {
    std::string time;                    // of the last attempt, in the user's local form
    std::string printFile;               // as the host named it
    std::string folder;                  // from which it was printed: its graphics and settings file are found there
    std::string graphic;                 // the picture behind every page, as the host named it
    std::string switches;                // "/TWOPASS"
    std::string printer;                 // device name, or what the host asked for where no printer was chosen
    std::string reason;                  // why it was not printed; none while it is printed
    std::string pages;                   // that were printed: "die ersten 3"
    std::vector<std::string> documents;  // finished pages: paths

    bool operator==(const KeptText&) const = default;
};

// The labelled lines, each ended by CR and LF. Whatever the values hold, each is one line.
std::string writtenKeptText(const KeptText& text);

// What the labelled lines of a text say; of two with the same label the first counts. Other lines say nothing.
KeptText readKeptText(std::string_view text);

}  // namespace report
