// What nobody can avoid: compressing the page contents of a document at the PDF module's level, one behind the other on
// one core. Prints the seconds.
//
//     deflate-bench CONTENTS        each content behind its length, 32 bits in the machine's order

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/files.h"
#include "platform/linux/pdf/deflater.h"

int main(int count, char** arguments) {
    std::string all;
    if (count != 2 || platform_linux::readWholeFile(arguments[1], all) != 0) {
        std::fprintf(stderr, "usage: %s CONTENTS\n", arguments[0]);
        return 1;
    }
    std::vector<std::string_view> contents;
    for (std::string_view left = all; left.size() > sizeof(std::uint32_t);) {
        std::uint32_t length = 0;
        std::memcpy(&length, left.data(), sizeof length);
        contents.push_back(left.substr(sizeof length, length));
        left.remove_prefix(sizeof length + contents.back().size());
    }
    platform_linux::pdf::Deflater deflater;
    std::size_t bytes = 0;
    const auto start = std::chrono::steady_clock::now();
    for (const std::string_view content : contents) {
        bytes += deflater.compress(content).size();
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%.6f\n", bytes > 0 ? seconds.count() : 0);
    return 0;
}
