// What fontconfig has answered, kept for the next program, with all that the answers depend on.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform_linux::fonts {

struct FontLocation {
    std::string path;
    int index = 0;            // of the face in its file
    std::string family;       // as the font itself names it
    bool sameFamily = false;  // the family asked for is one of the font's own names
    bool operator==(const FontLocation&) const = default;
};

struct FontAnswer {
    std::string family;
    bool bold = false;
    bool italic = false;
    bool all = false;
    std::vector<FontLocation> fonts;
};

// A file or folder, and what it was like: size, time of its change and its number, or that there was none.
struct FileStamp {
    std::string path;
    std::string state;
};
FileStamp stampOf(std::string path);

struct KeptAnswers {
    std::string environment;  // what of it fontconfig looks at
    std::vector<FileStamp> stamps;
    std::vector<FontAnswer> answers;
};

// Whether nothing that the answers depend on is another now.
bool stillHold(const KeptAnswers& kept, std::string_view environmentNow);

std::string textOf(const KeptAnswers& kept);
// Nothing for any other text.
std::optional<KeptAnswers> keptAnswers(std::string_view text);

}  // namespace platform_linux::fonts
