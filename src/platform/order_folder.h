// Port: a folder in which a host inside an emulator leaves orders (docs/MESSENGER.md).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A file of the folder under one of the names that orders and answers have, as the disk spells it.
struct OrderFile {
    std::string name;
    // Seconds since it was written, by the clock; negative where that lies ahead.
    std::int64_t age = 0;
};

// Names are of files in the folder, without a path. Failures are runtime::Error with the path in the detail.
class OrderFolder {
public:
    virtual ~OrderFolder() = default;

    // Absolute.
    virtual const std::string& path() const = 0;

    // Whether the system reports what happens in it; otherwise it has to be looked at from time to time.
    virtual bool reportsChanges() const = 0;

    // Makes this messenger the one that carries out the folder's orders, until the object goes or the process ends, in
    // whichever way (KRVWINPR.BOT). Asked again it answers at once.
    enum class Holder { ours, another };
    virtual Holder hold() = 0;
    // Who holds it now, as that messenger says it itself; empty for nobody, and where that is not known.
    virtual std::string holder() = 0;

    // The files "KRV", five digits, ".AUF", ".ERG" or ".TMP", in any case and order. errPathNotFound where the folder
    // is gone; it stays so then, and another object has to be opened.
    virtual std::vector<OrderFile> files() = 0;

    // The content, of which no more is read than any order or answer has. errFileNotFound where it is gone;
    // errPermissionDenied with the reason where it is no file of its own (a link, a folder), or belongs to somebody who
    // may not write into the folder.
    virtual std::string read(const std::string& name) = 0;

    // Makes a file that was not there; false where there is something of that name, in any case.
    virtual bool make(const std::string& name, std::string_view content) = 0;

    // Writes over an answer that is there, in place: what is behind the first byte, and then this byte. It survives a
    // power failure from the moment of return.
    virtual void change(const std::string& name, std::string_view content) = 0;

    // Gives a file another name; false where there is something of that name.
    virtual bool rename(const std::string& name, const std::string& newName) = 0;

    // Removes it if it is there; whether it is gone.
    virtual bool remove(const std::string& name) noexcept = 0;

    // Something that is another text after KRVWINPR.OK was written anew; empty where there is none.
    virtual std::string completionMark() = 0;

    // Whether a path of the system, in any case, leads to this folder, links followed.
    virtual bool isAt(const std::string& path) = 0;
};

}  // namespace platform
