// The jobs of a queue, with a spooler that answers as Windows' own does.
#include "platform/windows/print/spooler_error.h"
#include "platform/windows/print/windows_print_jobs.h"
#include "unit/windows_support.h"

#include <cstring>

namespace platform_windows::print {

namespace {

using platform::JobOperation;

class WindowsJobs : public testing::Test {
protected:
    static JOB_INFO_2W record(DWORD number) {
        static std::array texts{std::wstring(L"Rechnung Müller"), std::wstring(L"meier"), std::wstring(L"\\\\PC-7"),
                                std::wstring(L"Papier fehlt")};
        JOB_INFO_2W job{};
        job.JobId = number;
        job.pDocument = texts[0].data();
        job.pUserName = texts[1].data();
        job.pMachineName = texts[2].data();
        job.pStatus = texts[3].data();
        job.Status = JOB_STATUS_PRINTING | JOB_STATUS_PAPEROUT;
        job.Priority = 42;
        job.Position = number;
        job.TotalPages = 9;
        job.PagesPrinted = 3;
        job.Size = 0xFFFFFFFF;
        return job;
    }
    BOOL list(BYTE* to, DWORD room, DWORD* needed, DWORD* count) {
        ++questions;
        *needed = static_cast<DWORD>(jobs.size() * sizeof(JOB_INFO_2W));
        *count = 0;
        if (*needed > room) {
            return fail(ERROR_INSUFFICIENT_BUFFER);
        }
        std::memcpy(to, jobs.data(), *needed);
        *count = static_cast<DWORD>(jobs.size());
        return TRUE;
    }
    static BOOL fail(DWORD code) { return ::SetLastError(code), FALSE; }
    BOOL get(DWORD number, BYTE* to, DWORD room, DWORD* needed) const {
        JOB_INFO_1W job{};
        *needed = sizeof job + 8;
        if (number != 17) {
            return fail(ERROR_INVALID_PARAMETER);
        }
        if (room < *needed) {
            return fail(ERROR_INSUFFICIENT_BUFFER);
        }
        job.Priority = 42;
        job.Position = 5;
        std::memcpy(to, &job, sizeof job);
        return TRUE;
    }
    BOOL set(DWORD number, DWORD level, const BYTE* from, DWORD command) {
        if (refusal != 0 || number != 17) {
            return fail(refusal != 0 ? refusal : ERROR_INVALID_PARAMETER);
        }
        const auto* job = reinterpret_cast<const JOB_INFO_1W*>(from);
        done += std::to_string(command) +
                (level == 1 ? ":" + std::to_string(job->Priority) + "," + std::to_string(job->Position) : "") + " ";
        return TRUE;
    }
    JobCalls calls() {
        JobCalls calls;
        calls.openPrinter = [](const std::string&, ACCESS_MASK) { return PrinterHandle(); };
        calls.enumJobs = [this](HANDLE, DWORD, DWORD, DWORD, BYTE* to, DWORD room, DWORD* needed, DWORD* count) {
            return list(to, room, needed, count);
        };
        calls.getJob = [this](HANDLE, DWORD number, DWORD, BYTE* to, DWORD room, DWORD* needed) {
            return get(number, to, room, needed);
        };
        calls.setJob = [this](HANDLE, DWORD number, DWORD level, BYTE* from, DWORD command) {
            return set(number, level, from, command);
        };
        calls.setPrinter = [this](HANDLE, DWORD, BYTE*, DWORD command) {
            done += "printer " + std::to_string(command);
            return refusal == 0 ? TRUE : fail(refusal);
        };
        calls.firstChange = [this](HANDLE, DWORD, DWORD, void*) { return event.get(); };
        calls.nextChange = [](HANDLE changes, DWORD*, void*, void**) { return ::ResetEvent(changes); };
        calls.closeChanges = [this](HANDLE) {
            event.reset();
            return TRUE;
        };
        return calls;
    }
    template <typename Step>
    std::string detailOf(const Step& step) {
        std::string detail;
        EXPECT_EQ(windows_support::errorOf(step, &detail), runtime::errPrinter);
        return detail;
    }

    std::vector<JOB_INFO_2W> jobs;
    int questions = 0;
    DWORD refusal = 0;
    std::string done;
    KernelHandle event{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    WindowsPrintJobs port{calls()};
};

TEST_F(WindowsJobs, AThousandAreListedWithOneQuestionAndSayWhatTheSpoolerKnows) {
    for (DWORD number = 1; number <= 1000; ++number) {
        jobs.push_back(record(number));
    }
    FILETIME submitted{};
    ::GetSystemTimeAsFileTime(&submitted);
    ULARGE_INTEGER time{{submitted.dwLowDateTime, submitted.dwHighDateTime}};
    time.QuadPart -= 90ULL * 10'000'000;
    submitted = {time.LowPart, time.HighPart};
    ::FileTimeToSystemTime(&submitted, &jobs[1].Submitted);
    EXPECT_EQ(port.list("Laser").size(), 1000U);
    questions = 0;
    const std::vector<platform::PrintJob> listed = port.list("Laser");
    EXPECT_EQ(questions, 1);
    ASSERT_EQ(listed.size(), 1000U);
    EXPECT_EQ(listed[999].number, 1000U);

    const platform::PrintJob& job = listed[1];
    EXPECT_EQ(job.document + "|" + job.user + "|" + job.computer + "|" + job.statusText,
              "Rechnung Müller|meier|PC-7|Papier fehlt");
    EXPECT_EQ(job.status, platform::job_status::printing | platform::job_status::paperOut);
    EXPECT_EQ((std::array{job.priority, job.position, job.pages, job.pagesPrinted}), (std::array{42U, 2U, 9U, 3U}));
    EXPECT_EQ(job.size, 0xFFFFFFFFU);
    EXPECT_TRUE(job.waitingSeconds >= 90 && job.waitingSeconds < 100);
    FILETIME local{};
    SYSTEMTIME shown{};
    ::FileTimeToLocalFileTime(&submitted, &local);
    ::FileTimeToSystemTime(&local, &shown);
    ASSERT_TRUE(job.submitted);
    EXPECT_EQ(std::pair(job.submitted->hour, job.submitted->minute), std::pair(int{shown.wHour}, int{shown.wMinute}));
    EXPECT_FALSE(listed[0].submitted) << "the spooler does not know";
}

TEST_F(WindowsJobs, AreControlledAsTheSpoolerWantsItTold) {
    for (const auto operation : {JobOperation::pause, JobOperation::resume, JobOperation::restart, JobOperation::cancel,
                                 JobOperation::toFront}) {
        port.control("Laser", 17, operation);
    }
    port.setPriority("Laser", 17, 250);
    port.resumePrinter("Laser");
    EXPECT_EQ(done, "1 2 4 5 0:42,1 0:99,0 printer 2");
}

TEST_F(WindowsJobs, ThatAreRefusedOrGoneSaySo) {
    EXPECT_EQ(detailOf([&] { port.control("Laser", 18, JobOperation::pause); }),
              "Drucker „Laser“: Auftrag 18 wurde nicht angehalten, denn er steht nicht mehr in der Warteschlange.");
    EXPECT_NE(detailOf([&] { port.setPriority("Laser", 18, 1); }).find("Auftrag 18 behält"), std::string::npos);
    refusal = ERROR_ACCESS_DENIED;
    const std::string detail = detailOf([&] { port.control("Laser", 17, JobOperation::cancel); });
    EXPECT_EQ(detail.find("Auftrag 17 wurde nicht abgebrochen: Drucker „Laser“: Windows-Fehler 5"), 0U) << detail;
    EXPECT_NE(detail.find("Bitte den Verwalter"), std::string::npos);
    EXPECT_EQ(detailOf([&] { port.resumePrinter("Laser"); }).find("Der Drucker wurde nicht fortgesetzt: "), 0U);
    EXPECT_EQ(done, "printer 2");
}

TEST_F(WindowsJobs, AreWatchedUntilNobodyWantsToKnow) {
    auto watch = port.watch("Laser");
    EXPECT_TRUE(watch->changed());
    EXPECT_FALSE(watch->changed());
    ::SetEvent(event.get());
    EXPECT_TRUE(watch->changed());
    EXPECT_FALSE(watch->changed());
    watch.reset();
    EXPECT_FALSE(event);
    EXPECT_EQ(port.watch("Laser"), nullptr) << "the spooler has none";
}

}  // namespace

}  // namespace platform_windows::print
