#include <algorithm>

#include "pictures/file_bytes.h"
#include "pictures/foreign_kinds.h"

namespace pictures {

namespace {

enum Block : std::uint32_t { extension = 0x21, image = 0x2C, trailer = 0x3B };

constexpr std::uint64_t screenSizeAt = 6;
constexpr std::uint64_t globalTableAt = 13;  // behind signature and screen descriptor
constexpr std::uint64_t descriptor = 10;     // of an image
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

void addTable(ForeignPicture& file, std::uint64_t at, std::uint32_t entries) {
    if (entries > 0) {
        file.colorTables.push_back({static_cast<std::size_t>(at), std::size_t{3} * entries});
    }
}

bool hasWhite(std::string_view table) {
    for (std::size_t at = 0; at < table.size(); at += 3) {
        if (table.substr(at, 3) == "\xFF\xFF\xFF") {
            return true;
        }
    }
    return false;
}

// Of the picture that follows.
int transparentColor(const FileBytes& bytes, std::uint64_t control) {
    const bool used = bytes.number8(control) >= 4 && (bytes.number8(control + 1) & 1) != 0;
    return used ? static_cast<int>(bytes.number8(control + 4)) : -1;
}

// The first byte behind the picture whose descriptor begins there.
std::uint64_t readImage(const FileBytes& bytes, std::uint64_t at, std::uint32_t globalEntries, ForeignPicture& file) {
    constexpr std::uint64_t codeSize = 1;
    const std::uint32_t localEntries = entriesOf(bytes.number8(at + 9));
    const std::uint32_t entries = localEntries != 0 ? localEntries : globalEntries;
    if (entries == 0) {
        refuseForeign(file.kind, "enthält keine Farbtabelle");
    }
    file.stored = {bytes.number16(at + 1), bytes.number16(at + 3), bytes.number16(at + 5), bytes.number16(at + 7),
                   depthFor(entries)};
    // Some programs state a screen that is too small.
    file.width = std::max<std::int64_t>(bytes.number16(screenSizeAt), file.stored.left + file.stored.width);
    file.height = std::max<std::int64_t>(bytes.number16(screenSizeAt + 2), file.stored.top + file.stored.height);
    const bool whole = file.width == file.stored.width && file.height == file.stored.height;
    const std::uint64_t tableLength = std::uint64_t{3} * entries;
    const std::string_view table = bytes.text(localEntries != 0 ? at + descriptor : globalTableAt, tableLength);
    file.bitsPerPixel = whole || file.transparentColor >= 0 || hasWhite(table) ? file.stored.bitsPerPixel : 24;
    return behindSubBlocks(bytes, at + descriptor + std::uint64_t{3} * localEntries + codeSize);
}

}  // namespace

ForeignPicture inspectGif(std::string_view content) {
    const FileBytes bytes(content, ForeignKind::gif, ByteOrder::leastFirst);
    ForeignPicture file{.kind = ForeignKind::gif, .palette = true};
    const std::uint32_t globalEntries = entriesOf(bytes.number8(10));
    std::uint64_t at = globalTableAt + std::uint64_t{3} * globalEntries;
    addTable(file, globalTableAt, globalEntries);
    for (std::uint32_t block = bytes.number8(at); block != trailer; block = bytes.number8(at)) {
        if (block == extension) {
            if (file.end == 0 && bytes.number8(at + 1) == graphicControl) {
                file.transparentColor = transparentColor(bytes, at + 2);
            }
            at = behindSubBlocks(bytes, at + 2);
        } else if (block == image) {
            ForeignPicture later;
            const bool first = file.end == 0;
            addTable(file, at + descriptor, entriesOf(bytes.number8(at + 9)));
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
