#include "platform/linux/pdf/file_output.h"

#include <unistd.h>

#include <cerrno>

#include "platform/linux/linux_error.h"

namespace platform_linux::pdf {

namespace {

constexpr std::size_t bufferSize = std::size_t{64} * 1024;

[[noreturn]] void fail(int systemError) {
    throw runtime::Error(errorNumber(systemError),
                         "Die PDF-Datei konnte nicht geschrieben werden: " + errorReason(systemError) + ".");
}

}  // namespace

FileOutput::FileOutput(int fileDescriptor) : fileDescriptor_(fileDescriptor) { buffer_.reserve(bufferSize); }

void FileOutput::write(std::string_view bytes) {
    if (buffer_.size() + bytes.size() > bufferSize) {
        flush();
    }
    if (bytes.size() >= bufferSize) {
        handOver(bytes);
    } else {
        buffer_.append(bytes);
    }
}

void FileOutput::flush() {
    handOver(buffer_);
    buffer_.clear();
}

void FileOutput::handOver(std::string_view bytes) {
    handedOver_ += bytes.size();
    while (!bytes.empty()) {
        const ssize_t count = ::write(fileDescriptor_, bytes.data(), bytes.size());
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            fail(count == 0 ? EIO : errno);
        }
    }
}

}  // namespace platform_linux::pdf
