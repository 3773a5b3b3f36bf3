// What the tests and measurements of the PDF module share.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/pdf/document.h"

namespace pdf_support {

// Code page 850, control codes as the glyphs that DOS showed.
inline std::array<char32_t, 256> codePage850() {
    constexpr std::u32string_view control = U"☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼";
    constexpr std::u32string_view upper =
        U"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒáíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥┐"
        U"└┴┬├─┼ãÃ╚╔╩╦╠═╬¤ðÐÊËÈıÍÎÏ┘┌█▄¦Ì▀ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00AD±‗¾¶§÷¸°¨·¹³²■\u00A0";
    static_assert(control.size() == 31 && upper.size() == 128);
    std::array<char32_t, 256> page{};
    for (std::size_t byte = 1; byte < 32; ++byte) {
        page[byte] = control[byte - 1];
    }
    for (char32_t byte = 32; byte < 127; ++byte) {
        page[byte] = byte;
    }
    page[127] = U'⌂';
    for (std::size_t byte = 128; byte < 256; ++byte) {
        page[byte] = upper[byte - 128];
    }
    return page;
}

// A4 at 600 pixels per inch with margins of 100 pixels.
inline platform_linux::PdfPage a4Page() {
    platform_linux::PdfPage page;
    page.widthPoints = 595.276;
    page.heightPoints = 841.89;
    page.device = {4761, 6816, 600, 600, 4961, 7016, 100, 100};
    return page;
}

inline platform_linux::PdfSettings settings() {
    platform_linux::PdfSettings settings;
    settings.title = "Bericht";
    settings.producer = "KRVWinPr";
    settings.created = 1795268707;  // 2026-11-21 13:45:07 UTC
    settings.codePage = codePage850();
    return settings;
}

// A file that is removed with the object.
class TemporaryFile {
public:
    TemporaryFile() : path_(std::filesystem::temp_directory_path() / "krv-pdf-XXXXXX") {
        std::string name = path_.string();
        descriptor_ = mkstemp(name.data());
        path_ = name;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        close(descriptor_);
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    int descriptor() const { return descriptor_; }
    std::string path() const { return path_.string(); }
    std::string content() const {
        std::ifstream stream(path_, std::ios::binary);
        std::ostringstream bytes;
        bytes << stream.rdbuf();
        return std::move(bytes).str();
    }

private:
    std::filesystem::path path_;
    int descriptor_ = -1;
};

}  // namespace pdf_support
