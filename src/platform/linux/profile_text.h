// The port Profile on Linux, and the only place here that knows how Windows reads such a file.
#pragma once

#include <string>
#include <string_view>

#include "platform/profile.h"

namespace platform_linux {

// The content of a settings file. Lines end with CR, LF or both. "[Name]" begins a section: its name is what stands up
// to the last "]" of the line. "key=value" is a key; one without "=" is there, but has no value. ";" makes a comment at
// the beginning of a line only. Around names and values spaces, tabs, form feeds and the end-of-file mark of DOS (1A)
// do not count; one pair of quotes, of either kind, round a value is taken off, and what it holds stays as it is. A NUL
// ends the value. Of sections of one name the first counts, and so it is with keys; a case of letters counts nowhere
// (ASCII).
//
// A byte-order mark is skipped; UTF-16 with the mark FF FE becomes UTF-8. A value that is no UTF-8 is read as
// Windows-1252.
class ProfileText : public platform::Profile {
public:
    explicit ProfileText(std::string content, std::string failure = {});

    std::string text(std::string_view section, std::string_view key, std::string_view fallback) override;
    std::string failure() override { return failure_; }

private:
    std::string content_;
    std::string failure_;
};

}  // namespace platform_linux
