// Last stage of a PDF document: bytes into a file descriptor, through a buffer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform_linux::pdf {

// Does not own the descriptor. Throws runtime::Error, the system's text in the detail: errDiskFull where the disk or
// the quota is full, errDeviceIo otherwise. After an error the object is of no more use.
class FileOutput {
public:
    explicit FileOutput(int fileDescriptor);

    void write(std::string_view bytes);
    // Hands what the buffer holds to the system.
    void flush();
    // Bytes written so far, those in the buffer included.
    std::uint64_t position() const noexcept { return handedOver_ + buffer_.size(); }

private:
    void handOver(std::string_view bytes);

    int fileDescriptor_;
    std::string buffer_;
    std::uint64_t handedOver_ = 0;
};

}  // namespace platform_linux::pdf
