// The programs that carry out a folder's orders.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "messenger/desk.h"
#include "messenger/order.h"

namespace messenger {

// One order begins behind the other: when the program before has ended, or soon after its completion file is written,
// so that what hosts print comes out in their order, and a message box of a program keeps nobody waiting for long.
class OrderRuns {
public:
    static constexpr std::int64_t behindCompletion = 3'000;  // milliseconds
    static constexpr std::int64_t patience = 300'000;        // milliseconds without a completion file

    explicit OrderRuns(const Desk& desk) : desk_(desk) {}

    // Starts KRVWinPr for an order, which is told of whatever becomes of it. False where that cannot be written down,
    // and so nothing was started.
    bool begin(const std::string& orderName, const Order& order);

    // What a program says; nothing where it is none of these.
    void happened(const platform::MessengerEvent& event);

    // Whether the next order has to wait, and in how many milliseconds at the latest that is another answer.
    bool keepOthersWaiting() const;
    std::optional<std::int64_t> nextChange() const;

    // Tells of those whose completion file does not come. They keep nobody waiting any more.
    void tellOverdue();

    // Whether a host waits for one of them.
    bool awaitsCompletion() const;

private:
    struct Run {
        platform::ProgramId program = 0;
        std::string orderName;
        std::string mark;
        std::string completionBefore;
        std::int64_t begunAt = 0;
        std::int64_t othersWaitTo = 0;
        bool awaited = false;  // its completion file, which is not written yet
        bool overdue = false;
    };

    std::int64_t now() const { return desk_.system.elapsedMilliseconds(); }
    std::string programFile() const;
    void completed(Run& run);
    void ended(const Run& run, const std::string& how);

    const Desk& desk_;
    std::vector<Run> runs_;
};

}  // namespace messenger
