#include "platform/linux/crash/finish_file.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/completion_file.h"
#include "platform/linux/crash/report_file.h"

namespace platform_linux::crash {

namespace {

constexpr std::string_view fileName = platform::completionFileName;
constexpr std::string_view content = platform::completionFileText;

// An entry of a folder as the kernel hands it out (getdents64(2)): behind the name's beginning comes the name.
struct FolderEntry {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t length;
    std::uint8_t kind;
};
constexpr std::size_t nameOffset = 19;

char upper(char letter) noexcept {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// The name under which the current directory has the file; the exact one first.
void findName(std::array<char, fileName.size() + 1>& name) noexcept {
    std::copy(fileName.begin(), fileName.end(), name.begin());
    const int folder = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0 || ::faccessat(folder, fileName.data(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        ::close(folder);
        return;
    }
    alignas(FolderEntry) static std::array<char, 32768> entries;
    long size = 0;
    while ((size = ::syscall(SYS_getdents64, folder, entries.data(), entries.size())) > 0) {
        for (std::size_t place = 0; place < static_cast<std::size_t>(size);) {
            FolderEntry entry{};
            std::memcpy(&entry, entries.data() + place, sizeof(entry));
            const std::string_view found = entries.data() + place + nameOffset;
            if (std::ranges::equal(found, fileName, {}, upper)) {
                std::copy(found.begin(), found.end(), name.begin());
            }
            place += entry.length;
        }
    }
    ::close(folder);
}

}  // namespace

bool writeFinishFile() noexcept {
    static std::array<char, fileName.size() + 1> name;
    findName(name);
    constexpr mode_t forAll = 0666;
    if (replaceByParts(name.data(), content, {}, forAll) == 0) {
        return true;
    }
    // The folder may refuse any other name.
    const int file = ::open(name.data(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, forAll);
    const bool written =
        file >= 0 && writeParts(file, content, {}) == 0 && ::ftruncate(file, static_cast<off_t>(content.size())) == 0;
    ::close(file);
    return written;
}

}  // namespace platform_linux::crash
