// Port: the machine around the program: command line, files, clock, locale, code pages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/profile.h"
#include "runtime/datetime.h"
#include "runtime/locale.h"

namespace platform {

// A file being read from its start to its end, in as many pieces as one likes. Others may do with it meanwhile what
// they want.
class FileReader {
public:
    virtual ~FileReader() = default;

    // In bytes, when it was opened; 0 where that is unknown.
    virtual std::uint64_t size() const = 0;

    // Appends up to so many bytes; false where there are none any more. With the first piece the text has room for the
    // whole file. Throws what System::readFile() throws.
    virtual bool read(std::string& to, std::size_t atMost) = 0;

    // Whether size and time stamp are still those of the opening, so that the pieces belong together.
    virtual bool unchanged() const = 0;
};

// Paths are UTF-8 and may be written as the host writes them, with "\" between the parts; a name that is opened is
// found whatever the case of its letters on disk, the exact one first. A relative path is relative to the current
// directory at the time of the call. Failures are runtime::Error with the path in the detail.
class System {
public:
    virtual ~System() = default;

    // The command line behind the program's name, as the program was started with it.
    virtual std::string commandTail() = 0;

    // The folder of the program file, without a separator at its end (but for a root), and the file's name.
    virtual std::string programDirectory() = 0;
    virtual std::string programFileName() = 0;

    virtual std::string currentDirectory() = 0;
    // errPathNotFound where there is no such folder, errPermissionDenied; the current one stays then.
    virtual void changeDirectory(const std::string& folder) = 0;

    // The name that the system and its spooler know the user by; empty where there is none.
    virtual std::string userName() = 0;

    // The whole content of a file, byte for byte. errFileNotFound, errPermissionDenied, errPathFileAccess (a folder),
    // errDeviceIo, errOutOfMemory.
    virtual std::string readFile(const std::string& path) = 0;

    // The same file to be read piece by piece; the same errors.
    virtual std::unique_ptr<FileReader> openToRead(const std::string& path) = 0;

    // Size of a file in bytes; 0 where there is none or it is unknown, and readFile() says why. Never throws.
    virtual std::uint64_t fileSize(const std::string& path) = 0;

    // Creates or replaces the file of that name, whatever the case of its letters, in one step: it appears with its
    // whole content or not at all. Only where its folder allows that to nobody is a file that may be written itself
    // written over.
    virtual void writeFile(const std::string& path, std::string_view content) = 0;

    // Replaces the content of the file that readFile() reads under this name, in one step: the old content stays whole
    // until the new one is, whatever happens. The file keeps its name and who may read and write it; a link still leads
    // to it. errFileNotFound where there is none, errPermissionDenied where it may not be written.
    virtual void rewriteFile(const std::string& path, std::string_view content) = 0;

    // Opens or creates the file of exactly that name, appends and closes it.
    virtual void appendFile(const std::string& path, std::string_view content) = 0;

    virtual bool fileExists(const std::string& path) = 0;

    // Removes a file; that there is none is no failure.
    virtual void removeFile(const std::string& path) = 0;

    // Whether a path leads, over links too, to the file that writeFile() would replace under the other name.
    virtual bool wouldReplace(const std::string& written, const std::string& path) = 0;

    // A settings file for reading, as it is now; a missing or unreadable one has no keys.
    virtual std::unique_ptr<Profile> openProfile(const std::string& path) = 0;

    // The file that a name from a settings file means, whose bytes may be UTF-8 or of the system's or the host's code
    // page: the name under which there is one, otherwise the given one.
    virtual std::string fileNamed(const std::string& name) = 0;

    virtual runtime::DateTime localTime() = 0;
    virtual const runtime::Locale& locale() = 0;

    // Text in the system's own single- or multi-byte code page; characters outside it are replaced.
    virtual std::string toSystemCodePage(std::string_view text) = 0;

    // Bytes of the host's DOS code page as text, control codes as the glyphs that DOS showed for them.
    virtual std::string fromDosCodePage(std::string_view bytes) = 0;

    // Pixels per inch of the screen; 96 where there is none. Asked for only when needed: it may connect to a display.
    virtual int screenDpiX() = 0;
    virtual int screenDpiY() = 0;

    // Whether the screen tells its resolution at once, within a tenth of a second: to be asked by whoever must not
    // wait.
    virtual bool screenAnswers() = 0;

    virtual void sleep(int milliseconds) = 0;

    // Time since some moment in the past; whatever happens to the clock, it goes on evenly.
    virtual std::int64_t elapsedMilliseconds() = 0;

    // Tells whoever started the program and asked for it (the messenger of hosts in an emulator) that the completion
    // file is written.
    virtual void tellStarter() noexcept = 0;

    // What a user types into the system's shell to run this program in a folder with these arguments.
    virtual std::string shellCommand(const std::string& folder, const std::vector<std::string>& arguments) = 0;
};

}  // namespace platform
