// The bytes of PCX files: as they are, or as run lengths. A byte whose two upper bits are set says how often, in the
// others, the next one is repeated; any other stands for itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pictures {

inline constexpr std::size_t longestPcxRun = 63;

// Reads on from a place. Runs may cross the end of what is asked for, as some programs write them: the rest comes first
// the next time.
class PcxReader {
public:
    PcxReader(std::string_view content, std::size_t position, bool runLengths)
        : content_(content), position_(position), runLengths_(runLengths) {}

    // Fills the place as far as the file goes and returns how many bytes those are.
    std::size_t read(std::uint8_t* to, std::size_t count);
    std::size_t position() const { return position_; }

private:
    std::size_t readRuns(std::uint8_t* to, std::size_t count);
    std::uint8_t* readQuickly(std::uint8_t* out, const std::uint8_t* end);

    std::string_view content_;
    std::size_t position_;
    bool runLengths_;
    std::size_t left_ = 0;  // of a run
    std::uint8_t repeated_ = 0;
};

// Appends bytes as run lengths, which end with them.
void appendPcxRuns(std::string& out, const std::uint8_t* bytes, std::size_t count);

}  // namespace pictures
