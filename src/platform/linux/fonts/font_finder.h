// Finds font files by family name, through fontconfig.
#pragma once

#include <fontconfig/fontconfig.h>

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/fonts/font_answers.h"
#include "platform/linux/fonts/scoped.h"

namespace platform_linux::fonts {

// The first query loads the list of the installed fonts, about 9 ms, unless something else in the process has done so
// (another finder, or the toolkit of the windows): they share one. Answers are kept for the next program where the
// surroundings have a place for them, and hold as long as nothing has changed that they depend on.
class FontFinder {
public:
    struct Surroundings {
        // fontconfig takes the process with it where it gets no memory.
        std::function<bool()> memoryIsPlenty;
        // Calls the function in a process of its own; nothing where that fails or is not done in time.
        std::function<std::optional<std::string>(const std::function<std::string()>&, std::chrono::milliseconds)> apart;
        // The text that was kept; empty where there is none.
        std::function<std::string()> keptText;
        // Keeps another one, if that can be done; throws nothing.
        std::function<void(const std::string&)> keepText;
    };

    FontFinder() = default;
    // Where memory is not plenty, fontconfig is asked apart.
    explicit FontFinder(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}
    FontFinder(const FontFinder&) = delete;
    FontFinder& operator=(const FontFinder&) = delete;
    // Keeps what was asked for.
    ~FontFinder();

    // TrueType fonts by how well they suit the request, the best first; one, or with "all" every one. Empty where there
    // is none. Variable fonts are left out: of one outline they would give every weight. Throws runtime::Error
    // (errPrinter) where there is no answer.
    const std::vector<FontLocation>& find(const std::string& family, bool bold, bool italic, bool all);

private:
    void readKept();
    void keep();
    const FontAnswer& remember(FontAnswer answer) { return answers_.emplace_back(std::move(answer)); }
    void askApart(const std::string& family, bool bold, bool italic, bool all);
    const FontAnswer* known(const std::string& family, bool bold, bool italic, bool all) const;

    Surroundings surroundings_;
    Scoped<FcConfig, FcConfigDestroy> config_;
    std::deque<FontAnswer> answers_;
    bool keptRead_ = false;
    bool anyNew_ = false;
};

}  // namespace platform_linux::fonts
