// Fills a queue of CUPS, and measures how long its list of jobs takes, taking turns with libcups's own.
//
//     print-jobs fill QUEUE DOCUMENT COUNT
//     print-jobs list QUEUE ROUNDS         prints: jobs, milliseconds, processor milliseconds, libcups's two
#include <cups/cups.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/linux/cups/cups_print_jobs.h"

namespace {

constexpr double millisecondsPerSecond = 1000;

// What a call takes, on the clock and of the processor.
class Times {
public:
    template <typename Call>
    void measure(Call call) {
        const auto begin = std::chrono::steady_clock::now();
        const std::clock_t processor = std::clock();
        call();
        processor_.push_back(millisecondsPerSecond * static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC);
        const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
        clock_.push_back(took.count());
    }
    void print() const { std::printf(" %.3f %.3f", median(clock_), median(processor_)); }

private:
    static double median(std::vector<double> values) {
        std::ranges::sort(values);
        return values.at(values.size() / 2);
    }

    std::vector<double> clock_;
    std::vector<double> processor_;
};

void fill(const char* queue, const char* document, int count) {
    for (int i = 0; i < count; ++i) {
        cupsPrintFile2(CUPS_HTTP_DEFAULT, queue, document, ("RECHNUNG " + std::to_string(i)).c_str(), 0, nullptr);
    }
}

bool list(const char* queue, int rounds) {
    platform_linux::cups::CupsPrintJobs jobs(std::make_shared<platform_linux::cups::Connection>());
    Times own;
    Times library;
    std::size_t count = 0;
    int countOfLibrary = 0;
    for (int i = 0; i < rounds; ++i) {
        own.measure([&] { count = jobs.list(queue).size(); });
        library.measure([&] {
            cups_job_t* list = nullptr;
            countOfLibrary = cupsGetJobs2(CUPS_HTTP_DEFAULT, &list, queue, 0, CUPS_WHICHJOBS_ACTIVE);
            cupsFreeJobs(countOfLibrary, list);
        });
    }
    std::printf("%zu", count);
    own.print();
    library.print();
    return count == static_cast<std::size_t>(countOfLibrary);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 3 ? argv[1] : "";
    if (what == "fill" && argc > 4) {
        fill(argv[2], argv[3], std::atoi(argv[4]));
        return 0;
    }
    return what == "list" && list(argv[2], std::atoi(argv[3])) ? 0 : 1;
}
