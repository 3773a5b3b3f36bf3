// Run-time errors as users of the product know them: a number, a source and a German description.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace runtime {

// Numbers of the run-time errors that the program raises itself. Their descriptions: describe().
enum ErrorNumber : std::int32_t {
    errInvalidCall = 5,
    errOverflow = 6,
    errOutOfMemory = 7,
    errSubscript = 9,
    errDivisionByZero = 11,
    errTypeMismatch = 13,
    errInternal = 51,
    errBadFileName = 52,
    errFileNotFound = 53,
    errDeviceIo = 57,
    errFileExists = 58,
    errDiskFull = 61,
    errInputPastEnd = 62,
    errTooManyFiles = 67,
    errPermissionDenied = 70,
    errPathFileAccess = 75,
    errPathNotFound = 76,
    errObjectNotSet = 91,
    errInvalidPropertyValue = 380,
    errInvalidPicture = 481,
    errPrinter = 482,
};

// The German description of a run-time error; for a number that has none, the text of object-defined errors.
std::string describe(std::int32_t number);

// The one exception type of the program. The description is the text that logs and message boxes quote; the detail
// (a path, what the system said, what to do) is for messages that have room for it and may be empty. All UTF-8.
class Error : public std::exception {
public:
    explicit Error(std::int32_t number, std::string detail = {});
    Error(std::int32_t number, std::string source, std::string description, std::string detail = {});

    std::int32_t number() const noexcept { return number_; }
    const std::string& source() const noexcept { return source_; }
    const std::string& description() const noexcept { return description_; }
    const std::string& detail() const noexcept { return detail_; }
    // Description, and the detail where there is one, behind ": " unless the description is a sentence.
    const std::string& message() const noexcept { return message_; }
    // The same error; its detail also says where it happened: "(Grafik1 in [Grafik])".
    Error at(const std::string& place) const;
    const char* what() const noexcept override { return message_.c_str(); }

private:
    std::int32_t number_;
    std::string source_;
    std::string description_;
    std::string detail_;
    std::string message_;
};

}  // namespace runtime
