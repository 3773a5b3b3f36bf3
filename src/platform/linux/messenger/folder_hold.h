// The file by which one messenger alone carries out a folder's orders: KRVWINPR.BOT.
#pragma once

#include <string>

#include "platform/linux/file_descriptor.h"

namespace platform_linux::messenger {

inline constexpr const char* holdName = "KRVWINPR.BOT";

// A lock on the file tells, which ends with the process however that ends; on a disk without locks everybody holds it,
// and who makes an answer decides. The file goes with the object; what a killed messenger left is replaced.
class FolderHold {
public:
    // Path of the file, and what it says.
    FolderHold(std::string path, std::string text);
    FolderHold(const FolderHold&) = delete;
    FolderHold& operator=(const FolderHold&) = delete;
    ~FolderHold();

    // Whether it is held here from now on. Somebody may have removed the file meanwhile: so it is to be asked again.
    // Throws runtime::Error where the file cannot be made.
    bool take();

    // What the file of whoever holds it says; empty where nobody does.
    std::string holder() const;

private:
    enum class Attempt { done, again, held };
    Attempt takeNew();
    Attempt takeLeft();

    std::string path_;
    std::string text_;
    FileDescriptor file_;
    bool locked_ = false;
};

}  // namespace platform_linux::messenger
