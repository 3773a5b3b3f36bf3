// The pages of a print file as its printer would print them, made when they are asked for.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drawing/page_recording.h"
#include "preview/page_text.h"
#include "session/session.h"

namespace preview {

// What is previewed; the same as a report's order.
struct PreviewOrder {
    std::string sDateiname;
    std::string sGrafikname;      // background picture; empty or "KEINEGRAFIK" for none
    std::string sDruckerTreiber;  // empty, or a name that no printer has: the default printer
    bool blnTwoPass = false;
};

// One page, or why there is none.
struct PreviewPage {
    platform::drawing::PageRecording recording;  // in pixels of the device
    platform::DeviceCapabilities device;
    bool color = true;
    int paperSize = 0;  // platform::PageOption's numbers
    int paperBin = 0;
    std::string requestedTray;  // "1" to "3", or empty
    PageText text;              // what can be selected and found
    // German, with reason and macro, where the page cannot be printed; then nothing is recorded.
    std::string failure;
};

// Reads the print file, piece by piece so that its first pages are there at once, and opens the printer to measure by,
// but prints nothing and leaves the file alone. What a job would say in message boxes is collected.
//
// Page numbers count from 1. A page begins with the type state that the pages before it left, so these have to be
// passed first: that takes time, and is done in slices.
class PreviewPages {
public:
    using Milliseconds = std::chrono::milliseconds;

    static constexpr std::size_t usualPiece = std::size_t{1} << 18;

    // The session is borrowed. The file is read in pieces of so many bytes.
    PreviewPages(session::Session& session, PreviewOrder order, std::size_t piece = usualPiece);
    ~PreviewPages();

    // Reads the beginning of the file, the first page at least, again where it was read before; then the pages have to
    // be prepared again. Throws runtime::Error, and what was read before is still there.
    void read();
    // Whether all of it is read.
    bool complete() const;
    // Reads on for about so long. False where somebody wrote into the file meanwhile: then it was read anew, all of it,
    // and the pages have to be prepared again. Throws runtime::Error, and there are no pages any more.
    bool readOn(Milliseconds atMost);
    // Opens the printer and prepares the job on it: settings, HPLASER.INI, paper, colour, font. Where the printer does
    // not answer, on a sheet that nobody prints; trouble() says so. Throws runtime::Error where not even that is
    // possible, or where a job would end here. To be called after read().
    void prepare();

    const PreviewOrder& order() const;
    std::uint64_t fileSize() const;  // bytes
    // From cutting alone; of those read so far. None in an empty file, and what a job would not print at its end, line
    // ends behind the last form feed, is no page.
    std::size_t pageCount() const;
    const std::string& printer() const;  // device name; empty before prepare()
    const std::string& trouble() const;  // why the sheet is not the printer's own; empty where it is
    // What a job would have told in message boxes while it was prepared.
    const std::vector<std::string>& notices() const;

    // Whether page() can be asked for it without passing others.
    bool reached(std::size_t page) const;
    // Passes pages towards this one for about so long; true where it is reached.
    bool goTowards(std::size_t page, Milliseconds atMost);

    // The page, reached before. Kept with the pages around it; good until the next call.
    const PreviewPage& page(std::size_t number);

    // What a page would print, bytes of the DOS code page with a line feed between lines; needs no state. For finding
    // text.
    void plainText(std::size_t page, std::string& text) const;

    // What the file holds of a page: text and macros.
    std::string_view pageText(std::size_t page) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace preview
