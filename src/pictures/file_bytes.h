// Numbers in a picture file, read within its bounds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "pictures/foreign_picture.h"

namespace pictures {

enum class ByteOrder { leastFirst, mostFirst };

// Reading behind the end throws errInvalidPicture: the file is cut off.
class FileBytes {
public:
    FileBytes(std::string_view content, ForeignKind kind, ByteOrder order)
        : content_(content), kind_(kind), order_(order) {}

    std::size_t size() const { return content_.size(); }
    bool mostFirst() const { return order_ == ByteOrder::mostFirst; }

    void require(std::uint64_t position, std::uint64_t count) const {
        if (position > content_.size() || count > content_.size() - position) {
            refuseForeign(kind_, "ist abgeschnitten");
        }
    }
    std::uint32_t number8(std::uint64_t position) const {
        require(position, 1);
        return byteAt(position);
    }
    std::uint32_t number16(std::uint64_t position) const {
        require(position, 2);
        const std::uint32_t first = byteAt(position);
        const std::uint32_t second = byteAt(position + 1);
        return order_ == ByteOrder::mostFirst ? first << 8 | second : second << 8 | first;
    }
    std::uint32_t number32(std::uint64_t position) const {
        const std::uint32_t first = number16(position);
        const std::uint32_t second = number16(position + 2);
        return order_ == ByteOrder::mostFirst ? first << 16 | second : second << 16 | first;
    }
    std::string_view text(std::uint64_t position, std::uint64_t count) const {
        require(position, count);
        return content_.substr(static_cast<std::size_t>(position), static_cast<std::size_t>(count));
    }
    // Where the byte comes next, from that position on.
    std::uint64_t find(char byte, std::uint64_t position) const {
        require(position, 1);
        const std::size_t found = content_.find(byte, static_cast<std::size_t>(position));
        require(found == std::string_view::npos ? content_.size() : found, 1);
        return found;
    }

private:
    std::uint32_t byteAt(std::uint64_t position) const {
        return static_cast<std::uint8_t>(content_[static_cast<std::size_t>(position)]);
    }

    std::string_view content_;
    ForeignKind kind_;
    ByteOrder order_;
};

}  // namespace pictures
