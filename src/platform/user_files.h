// Port: files that the program keeps for its user.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Paths are UTF-8. What is made is for the user alone: nobody else reads it or looks into its folder, but for who may
// do so everywhere. Failures are runtime::Error with the path in the detail.
class UserFiles {
public:
    virtual ~UserFiles() = default;

    // Where files of a kind can be kept, the best place first: the program's folder of that name in the user's own
    // data, where he has such a place, and a folder of that name in the current directory. Absolute, with a separator
    // at the end; they need not be there.
    virtual std::vector<std::string> folders(const std::string& name) = 0;

    // Makes a file of exactly that name, and the folders before it that are missing. errFileExists where there is
    // something of that name; where it fails otherwise, nothing is left, and no empty folder of the file.
    virtual void create(const std::string& path, std::string_view content) = 0;

    // Creates or replaces a file in one step; it survives a power failure from the moment of return.
    virtual void replace(const std::string& path, std::string_view content) = 0;

    // The names of the user's own files in one of folders(), the one that was changed last first: neither somebody
    // else's nor folders nor links. None where there is no such folder, or it tells nothing.
    virtual std::vector<std::string> names(const std::string& folder) = 0;

    // The whole content of a file of exactly that name; the errors of System::readFile().
    virtual std::string read(const std::string& path) = 0;

    // Removes a file, if it is there and can be removed.
    virtual void remove(const std::string& path) noexcept = 0;
};

}  // namespace platform
