#include "pictures/file_bytes.h"
#include "pictures/foreign_kinds.h"

namespace pictures {

namespace {

enum Block : std::uint32_t { extension = 0x21, image = 0x2C, trailer = 0x3B };

constexpr std::uint32_t graphicControl = 0xF9;
constexpr std::uint32_t hasTable = 0x80;

std::uint32_t entriesOf(std::uint32_t flags) { return (flags & hasTable) != 0 ? 2U << (flags & 7) : 0; }

// The least depth that a Picture can have for so many colours.
int depthFor(std::uint32_t entries) { return entries <= 2 ? 1 : entries <= 4 ? 2 : entries <= 16 ? 4 : 8; }

std::uint64_t behindSubBlocks(const FileBytes& bytes, std::uint64_t at) {
    while (const std::uint32_t length = bytes.number8(at)) {
        at += 1 + length;
    }
    return at + 1;
}

// Of the picture that follows.
int transparentColor(const FileBytes& bytes, std::uint64_t control) {
    const bool used = bytes.number8(control) >= 4 && (bytes.number8(control + 1) & 1) != 0;
    return used ? static_cast<int>(bytes.number8(control + 4)) : -1;
}

// The first byte behind the picture whose descriptor begins there.
std::uint64_t readImage(const FileBytes& bytes, std::uint64_t at, std::uint32_t globalEntries, ForeignPicture& file) {
    const std::uint32_t localEntries = entriesOf(bytes.number8(at + 9));
    file.width = bytes.number16(at + 5);
    file.height = bytes.number16(at + 7);
    file.bitsPerPixel = depthFor(localEntries != 0 ? localEntries : globalEntries);
    if (localEntries == 0 && globalEntries == 0) {
        refuseForeign(file.kind, "enthält keine Farbtabelle");
    }
    constexpr std::uint64_t descriptor = 10;
    constexpr std::uint64_t codeSize = 1;
    return behindSubBlocks(bytes, at + descriptor + std::uint64_t{3} * localEntries + codeSize);
}

}  // namespace

ForeignPicture inspectGif(std::string_view content) {
    const FileBytes bytes(content, ForeignKind::gif, ByteOrder::leastFirst);
    ForeignPicture file{.kind = ForeignKind::gif, .palette = true};
    constexpr std::uint64_t screen = 13;  // signature and screen descriptor
    const std::uint32_t globalEntries = entriesOf(bytes.number8(10));
    std::uint64_t at = screen + std::uint64_t{3} * globalEntries;
    for (std::uint32_t block = bytes.number8(at); block != trailer; block = bytes.number8(at)) {
        if (block == extension) {
            if (file.end == 0 && bytes.number8(at + 1) == graphicControl) {
                file.transparentColor = transparentColor(bytes, at + 2);
            }
            at = behindSubBlocks(bytes, at + 2);
        } else if (block == image) {
            ForeignPicture later;
            const bool first = file.end == 0;
            at = readImage(bytes, at, globalEntries, first ? file : later);
            file.end = first ? static_cast<std::size_t>(at) : file.end;
        } else {
            refuseDamaged(file.kind);
        }
    }
    if (file.end == 0) {
        refuseForeign(file.kind, "enthält kein Bild");
    }
    file.transparency = file.transparentColor >= 0;
    return file;
}

}  // namespace pictures
