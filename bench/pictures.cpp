// Picture files by the program's own codecs, for measuring them and for comparing them with other programs.
//
//     krv-picture pnm FILE             the picture on standard output, as PBM, PGM or PPM
//     krv-picture rewrite FILE OUT     decoded and encoded again
//     krv-picture invert FILE OUT      the same with its colours inverted

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "pictures/bmp_file.h"
#include "pictures/pcx_file.h"
#include "pictures/picture_file.h"
#include "runtime/error.h"

namespace {

class NoOthers : public platform::ImageFiles {
public:
    platform::PictureInfo inspect(std::string_view) override { throw runtime::Error(runtime::errInvalidPicture); }
    platform::Picture decode(std::string_view) override { throw runtime::Error(runtime::errInvalidPicture); }
    std::string inverted(std::string_view) override { throw runtime::Error(runtime::errInvalidPicture); }
};

// A file in memory.
class MappedFile {
public:
    explicit MappedFile(const char* name) {
        const int file = open(name, O_RDONLY | O_CLOEXEC);
        struct stat state {};
        if (file < 0 || fstat(file, &state) != 0) {
            throw runtime::Error(runtime::errFileNotFound, name);
        }
        size_ = static_cast<std::size_t>(state.st_size);
        bytes_ = size_ == 0 ? nullptr : mmap(nullptr, size_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
        close(file);
        if (bytes_ == MAP_FAILED) {
            throw runtime::Error(runtime::errDeviceIo, name);
        }
    }
    ~MappedFile() { munmap(bytes_, size_); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view content() const { return {static_cast<const char*>(bytes_), size_}; }

private:
    void* bytes_ = nullptr;
    std::size_t size_ = 0;
};

void write(const std::uint8_t* bytes, std::size_t count) { std::fwrite(bytes, 1, count, stdout); }

bool isGrey(const platform::Color& color) { return color.red == color.green && color.red == color.blue; }

// Rows of numbers as the bytes of their colours, all pixels of a byte at once.
class Expander {
public:
    explicit Expander(const platform::Picture& picture)
        : grey_(std::all_of(picture.palette.begin(), picture.palette.end(), isGrey)),
          rowBytes_(static_cast<std::size_t>(picture.width) * (grey_ ? 1 : 3)),
          row_((picture.stride() + 1) * 8 * 3) {
        for (unsigned byte = 0; byte < table_.size(); ++byte) {
            std::uint8_t* to = table_[byte].data();
            for (int shift = 8 - picture.bitsPerPixel; shift >= 0; shift -= picture.bitsPerPixel) {
                const platform::Color color = picture.palette[byte >> shift & ((1U << picture.bitsPerPixel) - 1)];
                *to++ = color.red;
                if (!grey_) {
                    *to++ = color.green;
                    *to++ = color.blue;
                }
            }
            step_ = static_cast<std::size_t>(to - table_[byte].data());
        }
    }

    bool grey() const { return grey_; }

    void writeRow(const std::uint8_t* row) {
        std::uint8_t* to = row_.data();
        for (std::size_t done = 0; done < rowBytes_; done += step_, to += step_) {
            std::memcpy(to, table_[*row++].data(), 24);
        }
        write(row_.data(), rowBytes_);
    }

private:
    bool grey_;
    std::size_t rowBytes_;
    std::vector<std::uint8_t> row_;
    std::array<std::array<std::uint8_t, 24>, 256> table_{};
    std::size_t step_ = 0;  // bytes of the colours of a byte
};

void writeHeader(const platform::Picture& picture, char kind) {
    std::printf("P%c\n%d %d\n%s", kind, picture.width, picture.height, kind == '4' ? "" : "255\n");
}

bool isBlackAndWhite(const platform::Picture& picture) {
    constexpr platform::Color white{255, 255, 255};
    return picture.bitsPerPixel == 1 && ((picture.palette[0] == platform::Color{} && picture.palette[1] == white) ||
                                         (picture.palette[0] == white && picture.palette[1] == platform::Color{}));
}

void writeBits(platform::Picture& picture) {
    const std::uint8_t flip = picture.palette[0] == platform::Color{} ? 0xFF : 0;
    for (std::uint8_t& byte : picture.pixels) {
        byte ^= flip;
    }
    writeHeader(picture, '4');
    write(picture.pixels.data(), picture.pixels.size());
}

void writePnm(platform::Picture& picture) {
    if (isBlackAndWhite(picture)) {
        writeBits(picture);
    } else if (picture.bitsPerPixel == 24) {
        writeHeader(picture, '6');
        write(picture.pixels.data(), picture.pixels.size());
    } else {
        Expander expander(picture);
        writeHeader(picture, expander.grey() ? '5' : '6');
        for (std::size_t at = 0; at < picture.pixels.size(); at += picture.stride()) {
            expander.writeRow(picture.pixels.data() + at);
        }
    }
}

int run(const std::vector<std::string>& arguments) {
    NoOthers others;
    const MappedFile file(arguments[1].c_str());
    const std::string_view original = file.content();
    if (arguments[0] == "invert") {
        std::ofstream(arguments.at(2), std::ios::binary) << pictures::invertedFile(original, others);
        return 0;
    }
    platform::Picture picture = pictures::decodePicture(original, others);
    if (arguments[0] == "pnm") {
        writePnm(picture);
        return 0;
    }
    std::ofstream(arguments.at(2), std::ios::binary)
        << (pictures::isBmp(original) ? pictures::encodeBmp(picture, original)
                                      : pictures::encodePcx(picture, original));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s pnm FILE | rewrite FILE OUT | invert FILE OUT\n", argv[0]);
        return 2;
    }
    try {
        return run({argv + 1, argv + argc});
    } catch (const runtime::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
