// Finds font files by family name, through fontconfig.
#pragma once

#include <fontconfig/fontconfig.h>

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/fonts/scoped.h"

namespace platform_linux::fonts {

struct FontLocation {
    std::string path;
    int index = 0;            // of the face in its file
    std::string family;       // as the font itself names it
    bool sameFamily = false;  // the family asked for is one of the font's own names
    bool operator==(const FontLocation&) const = default;
};

// The first query loads the list of the installed fonts, about 9 ms, unless something else in the process has done so
// (another finder, or the toolkit of the windows): they share one.
class FontFinder {
public:
    // fontconfig takes the process with it where it gets no memory.
    struct Caution {
        std::function<bool()> memoryIsPlenty;
        // Calls the function in a process of its own; nothing where that fails or is not done in time.
        std::function<std::optional<std::string>(const std::function<std::string()>&, std::chrono::milliseconds)> apart;
    };

    FontFinder() = default;
    // Where memory is not plenty, fontconfig is asked apart.
    explicit FontFinder(Caution caution) : caution_(std::move(caution)) {}

    // TrueType fonts by how well they suit the request, the best first; one, or with "all" every one. Empty where there
    // is none. Variable fonts are left out: of one outline they would give every weight. Throws runtime::Error
    // (errPrinter) where there is no answer.
    const std::vector<FontLocation>& find(const std::string& family, bool bold, bool italic, bool all);

private:
    struct Answer {
        std::string family;
        bool bold = false;
        bool italic = false;
        bool all = false;
        std::vector<FontLocation> fonts;
    };

    const Answer& remember(const std::string& family, bool bold, bool italic, bool all,
                           std::vector<FontLocation> fonts);
    void askApart(const std::string& family, bool bold, bool italic, bool all);
    const Answer* known(const std::string& family, bool bold, bool italic, bool all) const;

    Caution caution_;
    Scoped<FcConfig, FcConfigDestroy> config_;
    std::deque<Answer> answers_;
};

}  // namespace platform_linux::fonts
