// Measures the PDF module: writes plain pages of 60 full lines to a file (by default 1,000 of them, into memory that
// looks like a file) and says how long it took against compressing the same page contents alone at the same level.
//
//     pdf_pages [pages [file]]
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "platform/linux/pdf/document.h"
#include "unit/pdf_support.h"

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// Lines of about 80 characters as a stock report has them: numbers, names from a list, amounts.
std::vector<std::string> reportLines(std::size_t count) {
    constexpr std::array names = {"Schraube M8 x 40 verzinkt",
                                  "Unterlegscheibe 8,4 DIN 125",
                                  "Sechskantmutter M8",
                                  "Gewindestange 1 m",
                                  "D\x81"
                                  "bel 10 mm Nylon",
                                  "Winkel 90 x 90 x 65",
                                  "Spanplattenschraube 5 x 60",
                                  "Lochblech 200 x 1000"};
    std::mt19937 random(1);
    std::vector<std::string> lines;
    for (std::size_t number = 0; number < count; ++number) {
        std::array<char, 128> line{};
        std::snprintf(line.data(), line.size(), "%06zu  %-30s %7u St. %9u,%02u EUR %9u,%02u", 100000 + number,
                      names[random() % names.size()], static_cast<unsigned>(random() % 5000),
                      static_cast<unsigned>(random() % 900), static_cast<unsigned>(random() % 100),
                      static_cast<unsigned>(random() % 90000), static_cast<unsigned>(random() % 100));
        lines.emplace_back(line.data());
    }
    return lines;
}

}  // namespace

int main(int count, char** arguments) {
    const int pages = count > 1 ? std::atoi(arguments[1]) : 1000;
    const int file = count > 2 ? open(arguments[2], O_RDWR | O_CREAT | O_TRUNC, 0644) : memfd_create("pages", 0);
    constexpr std::size_t linesPerPage = 60;
    const std::vector<std::string> lines = reportLines(linesPerPage * 1000);
    std::size_t bytes = 0;

    const auto start = Clock::now();
    {
        auto settings = pdf_support::settings();
        settings.archive = true;
        platform_linux::pdf::Document document(settings, file);
        document.setPage(pdf_support::a4Page());
        platform::FontRequest font;
        font.name = "Courier New";
        font.emHeight = 78;
        for (int page = 0; page < pages; ++page) {
            document.beginPage();
            document.surface().setFont(font);
            for (std::size_t line = 0; line < linesPerPage; ++line) {
                const std::string& text = lines[(static_cast<std::size_t>(page) * linesPerPage + line) % lines.size()];
                document.surface().drawText(0, static_cast<int>(line) * 100, text, {}, platform::TextRole::content);
                bytes += text.size();
            }
            document.endPage();
        }
        document.finish();
    }
    const double whole = secondsSince(start);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);

    const auto compressing = Clock::now();
    platform_linux::pdf::Deflater deflater;
    std::string content;
    for (int page = 0; page < pages; ++page) {
        content.clear();
        for (std::size_t line = 0; line < linesPerPage; ++line) {
            content += lines[(static_cast<std::size_t>(page) * linesPerPage + line) % lines.size()];
        }
        deflater.compress(content);
    }
    const double alone = secondsSince(compressing);
    std::printf(
        "%d pages, %zu bytes of text: %.1f us a page, %.2f times compressing alone; %lld bytes of PDF; peak %ld KiB\n",
        pages, bytes, whole / pages * 1e6, whole / alone, static_cast<long long>(lseek(file, 0, SEEK_CUR)),
        usage.ru_maxrss);
    return 0;
}
