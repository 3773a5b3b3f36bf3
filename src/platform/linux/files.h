// Whole files, read and written without surprises. Paths are native ones. The functions return 0 or an errno value and
// throw nothing but std::bad_alloc; ENODEV stands for something that is no regular file (a pipe, a device), EISDIR for
// a folder. None of them waits for the other end of a pipe.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/linux/file_descriptor.h"

namespace platform_linux {

// A regular file, read from its start to its end.
class ReadableFile {
public:
    int open(const std::string& path);

    // In bytes, as the file said when it was opened.
    std::size_t size() const { return static_cast<std::size_t>(opened_.st_size); }

    // Room for the rest of the text, and for the look behind its end.
    void makeRoom(std::string& text) const;

    // Appends up to so many bytes, none only at the end.
    int read(std::string& to, std::size_t atMost);

    // Whether size and time stamp are still those of the opening.
    bool unchanged() const;

private:
    FileDescriptor file_;
    struct stat opened_ {};
    std::size_t done_ = 0;
};

int readWholeFile(const std::string& path, std::string& content);

// No more than so many bytes from the beginning.
int readStartOfFile(const std::string& path, std::size_t most, std::string& content);

inline constexpr mode_t privateFile = 0600;

struct Replacement {
    mode_t mode = 0666;       // of the new file
    bool exactMode = false;   // false: the process's mask takes its bits away
    uid_t owner = uid_t(-1);  // kept where the process may do so; -1: whoever writes
    gid_t group = gid_t(-1);
    // Survives a power failure from the moment of return, and leaves nothing behind where the process is killed while
    // it writes, as far as the file system knows files without a name; costs milliseconds.
    bool durable = false;
    bool orInPlace = false;  // where the folder refuses a new file or its renaming, but the file itself may be written
};

// The file of that name has the whole content afterwards or, where that fails, is as it was before. A link is replaced,
// not followed. A new file that root makes belongs to whom the folder belongs to. Removes what killed processes left
// in the folder.
int replaceFile(const std::string& path, std::string_view content, const Replacement& how);

// The file of that name, which exists, has another content afterwards, durably, or is as it was before. A link is
// followed. Mode, access control list and, where the process may do so, owner and group stay. A file that the process
// may not write is refused, even where its folder would allow to replace it.
int rewriteFile(const std::string& path, std::string_view content);

// Makes a new file with the whole content and that mode; EEXIST where there is something of that name already.
int createFile(const std::string& path, std::string_view content, mode_t mode);

// The same with what an open file holds, from its start.
int copyToNewFile(int from, const std::string& path, mode_t mode);

// Appends, creating the file first where there is none. Where not everything could be written, nothing is (unless
// somebody else appended meanwhile). A link is followed where it is this user's own or root's: EMLINK for anybody
// else's, which may lead to a file that its maker could not write himself.
int appendToFile(const std::string& path, std::string_view content);

}  // namespace platform_linux
