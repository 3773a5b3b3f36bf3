// Files that are not finished yet, and what a killed process leaves of them.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/file_calls.h"
#include "platform/windows/files.h"

namespace platform_windows {

// A new file beside the one that it will replace, under a name that nobody can guess: "krvwinpr-" and letters at
// random, ".tmp". It is removed with the object unless it took the other one's place. Whoever opens it meanwhile, as
// scanners do with every new file, can only do so in a way that lets it be moved and removed. The functions return
// system error codes.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const std::wstring& target);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    // Why there is none, or none that may be moved: a folder can allow new files and forbid that they go.
    DWORD error() const { return writing_.error != 0 ? writing_.error : moving_.error; }

    // The whole content, once.
    DWORD write(std::string_view content, Durability durability);

    // Takes the target's place in one step. Can be tried again.
    DWORD moveTo(const std::wstring& target);

    // The same with the attributes and rights of the target, which exists, where the file system can do that. There is
    // a moment without a file of that name; should the system go down in it, the old one lies beside with the ending
    // ".krvwinpr-alt".
    DWORD replace(const std::wstring& target);

private:
    std::wstring path_;
    OpenedFile writing_;
    OpenedFile moving_;  // all the time, for the way to open it that leaves others
};

// Has those of the process go with it. Allocates nothing, for a process that has crashed.
void dropUnfinishedFiles() noexcept;

// Removes such files from a folder (with its separator) that nobody has written to for hours or has open.
void removeLeftovers(const std::wstring& folder);

}  // namespace platform_windows
