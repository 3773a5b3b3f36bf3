// The text of a print file and its pages, read piece by piece.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/system.h"
#include "report/page_cutter.h"

namespace preview {

class PrintText {
public:
    // None.
    PrintText() = default;
    // Reads a piece of about so many bytes, but the first page to its end. The system is borrowed. runtime::Error where
    // the file cannot be read.
    PrintText(platform::System& system, std::string path, std::size_t piece);
    PrintText(const PrintText&) = delete;
    PrintText& operator=(const PrintText&) = delete;

    bool complete() const { return reader_ == nullptr; }

    // Reads another piece where it is not complete. False where the pieces do not belong together, because somebody
    // wrote into the file meanwhile, or where it cannot be read on: then all of it was read anew, as a job reads it.
    // runtime::Error where that fails; what there was is gone.
    bool readOn();

    std::uint64_t fileSize() const;
    // Those that are known.
    const report::PageCuts& pages() const { return pages_; }

private:
    bool readPiece();
    void readAnew();

    platform::System* system_ = nullptr;
    std::string path_;
    std::size_t piece_ = 0;
    std::unique_ptr<platform::FileReader> reader_;  // while there is more
    std::string text_;
    report::PageCuts pages_;
};

}  // namespace preview
