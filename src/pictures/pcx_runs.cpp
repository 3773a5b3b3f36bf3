#include "pictures/pcx_runs.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "pictures/little_endian.h"

namespace pictures {

namespace {

constexpr std::uint8_t runMark = 0xC0;
// The quick way looks at eight bytes at once and writes runs with 64: what is too much is written over by what follows.
constexpr std::size_t chunk = 8;
constexpr std::size_t shortRun = 16;
constexpr std::size_t roomOfRun = 64;

// How many of eight bytes come before the first one that is a run's.
std::size_t bytesBeforeRun(const std::uint8_t* bytes) {
    std::uint64_t all = 0;
    for (std::size_t i = 0; i < chunk; ++i) {
        all |= std::uint64_t{bytes[i]} << 8 * i;
    }
    const std::uint64_t marks = all & all << 1 & 0x8080808080808080U;
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

void fillRoom(std::uint8_t* to, std::uint8_t value, std::size_t count) {
    std::memset(to, value, shortRun);
    if (count > shortRun) {
        std::memset(to + shortRun, value, roomOfRun - shortRun);
    }
}

}  // namespace

std::size_t PcxReader::read(std::uint8_t* to, std::size_t count) {
    if (runLengths_) {
        return readRuns(to, count);
    }
    const std::size_t bytes = std::min(count, content_.size() - position_);
    std::memcpy(to, pixelsAt(content_, position_), bytes);
    position_ += bytes;
    return bytes;
}

std::size_t PcxReader::readRuns(std::uint8_t* to, std::size_t count) {
    std::uint8_t* out = to;
    std::uint8_t* const end = to + count;
    while (true) {
        const std::size_t now = std::min(left_, static_cast<std::size_t>(end - out));
        std::memset(out, repeated_, now);
        out += now;
        left_ -= now;
        out = readQuickly(out, end);
        if (out == end || position_ == content_.size()) {
            return static_cast<std::size_t>(out - to);
        }
        const std::uint8_t byte = byteAt(content_, position_++);
        if (byte < runMark) {
            *out++ = byte;
        } else if (position_ < content_.size()) {
            left_ = byte & ~runMark;
            repeated_ = byteAt(content_, position_++);
        }
    }
}

// As long as there is room for whatever comes, in the file and where it goes.
std::uint8_t* PcxReader::readQuickly(std::uint8_t* out, const std::uint8_t* end) {
    const std::uint8_t* from = pixelsAt(content_, position_);
    const std::uint8_t* const fromEnd = pixelsAt(content_, content_.size());
    constexpr std::ptrdiff_t room = chunk + roomOfRun;
    while (fromEnd - from >= std::ptrdiff_t{chunk + 2} && end - out >= room) {
        const std::size_t single = bytesBeforeRun(from);
        std::memcpy(out, from, chunk);
        out += single;
        from += single;
        if (single < chunk) {
            const std::size_t run = from[0] & ~runMark;
            fillRoom(out, from[1], run);
            out += run;
            from += 2;
        }
    }
    position_ = static_cast<std::size_t>(from - pixelsAt(content_, 0));
    return out;
}

void appendPcxRuns(std::string& out, const std::uint8_t* bytes, std::size_t count) {
    const std::size_t begin = out.size();
    out.resize(begin + 2 * count);
    std::uint8_t* const first = pixelsAt(out, begin);
    std::uint8_t* to = first;
    for (std::size_t i = 0; i < count;) {
        const std::size_t most = std::min(count - i, longestPcxRun);
        std::size_t run = 1;
        while (run < most && bytes[i + run] == bytes[i]) {
            ++run;
        }
        if (run > 1 || bytes[i] >= runMark) {
            *to++ = static_cast<std::uint8_t>(runMark | run);
        }
        *to++ = bytes[i];
        i += run;
    }
    out.resize(begin + static_cast<std::size_t>(to - first));
}

}  // namespace pictures
