// A number that differs where what went into it differs: the 64-bit FNV-1a hash, a number at a time.
#pragma once

#include <cstdint>
#include <string_view>

namespace platform_linux::pdf {

class Fingerprint {
public:
    void add(std::uint64_t number) { value_ = (value_ ^ number) * 0x100000001B3U; }
    void add(std::string_view bytes) {
        for (const char byte : bytes) {
            add(static_cast<unsigned char>(byte));
        }
    }
    std::uint64_t value() const noexcept { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325U;
};

}  // namespace platform_linux::pdf
