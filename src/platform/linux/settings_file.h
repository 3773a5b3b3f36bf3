// The settings as text that people edit: keys as sections, a value on each line.
//
//   # a comment; so is a line that begins with ";"
//   [HKCU\Software\Velmora\KRVWinPr\3.0\Drucker\Laser 1]
//   LinkerRand=120
//   Name="  with blanks at its ends and a \" "
//   ColorMode=REG_DWORD:2
//   Other=REG_BINARY:00 01
//   Text=REG_SZ:REG_x:
//
// Roots are HKCU, HKLM, HKCR and HKU or their long names. Bare text ends with the line, blanks around it do not count;
// in double quotes it is exact, with \\ \" \n \r \t. A REG_DWORD is decimal, or hexadecimal behind "0x". REG_SZ is for
// text that begins like a type. Values of other types are there, but have no value for the program. Names may stand in
// double quotes, too. Of two lines for one value the later one counts. Lines that cannot be understood are kept and
// hide nothing; below a header that cannot be understood nothing counts up to the next one.
#pragma once

#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "platform/settings_store.h"

namespace platform_linux {

class SettingsFile {
public:
    explicit SettingsFile(std::string_view text = {});

    bool keyExists(platform::SettingsRoot root, std::string_view key) const;
    std::optional<platform::SettingsValue> value(platform::SettingsRoot root, std::string_view key,
                                                 std::string_view name) const;

    // Whether anything had to be changed for it, or could not be: a key with control characters has no place in a file
    // of lines. All other lines stay as they are, byte for byte. The text ends at its first NUL.
    enum class Change { none, made, impossible };
    Change setText(platform::SettingsRoot root, std::string_view key, std::string_view name, std::string_view text);

    std::string text() const;

private:
    using Lines = std::list<std::string>;  // with their ends

    struct Value {
        Lines::iterator line;
        std::size_t valueAt = 0;                       // in the line
        std::optional<platform::SettingsValue> value;  // nothing for a type that the program does not read
    };
    struct Section {
        Lines::iterator last;  // header or last value: new values go behind it
        std::unordered_map<std::string, Value> values;
    };

    // Nothing where the header cannot be understood.
    Section* addSection(Lines::iterator line, std::string_view header);
    void addValue(Section& section, Lines::iterator line);
    Section& appendSection(const std::string& path);
    const Section* find(platform::SettingsRoot root, std::string_view key) const;

    Lines lines_;
    std::string lineEnd_ = "\n";
    std::unordered_map<std::string, Section> sections_;  // by the key's identity
    std::unordered_set<std::string> keys_;               // identities of the sections and of all keys above them
};

}  // namespace platform_linux
