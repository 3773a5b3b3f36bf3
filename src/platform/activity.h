// What the program is doing, in a few words of memory that a report of a crash may look at at any moment.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

// Text that is never without its end, whoever reads it while it is written.
template <std::size_t Size>
class NotedText {
public:
    NotedText& operator=(std::string_view text) noexcept {
        const std::size_t length = std::min(text.size(), Size - 1);
        length_.store(0, std::memory_order_relaxed);
        std::copy_n(text.data(), length, text_.data());
        length_.store(length, std::memory_order_release);
        return *this;
    }
    std::string_view view() const noexcept { return {text_.data(), length_.load(std::memory_order_acquire)}; }

private:
    std::array<char, Size> text_{};
    std::atomic<std::size_t> length_ = 0;
};

// Written by the routines that know, at the cost of a store each; nobody decides anything by it but the reports. One
// for the whole process: it lies where a handler finds it.
struct Activity {
    // Texts that live as long as the program: "Bericht", "Vorschau", …; the stretch of a job.
    std::atomic<const char*> mode = "Start";
    std::atomic<const char*> stretch = "";
    NotedText<512> printFile;
    NotedText<512> keptAs;  // path of the job's copy, while there is one
    NotedText<256> printer;
    NotedText<256> driver;                    // of that printer, and its status in words, as far as known
    std::atomic<std::uint32_t> page = 0;      // that is being printed, from 1; 0 before
    std::atomic<std::uint64_t> position = 0;  // in the print file, bytes: of the line that is being printed
    // A host waits for a completion file that is not written yet, and is to have it even if the program crashes.
    std::atomic<bool> hostWaits = false;
};

}  // namespace platform
