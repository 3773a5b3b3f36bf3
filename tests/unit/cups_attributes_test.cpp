// What the attributes of CUPS mean.
#include <cups/cups.h>
#include <gtest/gtest.h>

#include <array>

#include "linux_support.h"
#include "platform/linux/cups/bin_names.h"
#include "platform/linux/cups/job_records.h"
#include "platform/linux/cups/printer_state.h"
#include "platform/linux/cups/queue_device.h"
#include "platform/linux/cups/saved_options.h"
#include "platform/spooler.h"

namespace {

using namespace platform_linux::cups;
namespace flag = platform::printer_status;
using Strings = std::vector<std::string>;

TEST(PrinterState, ReasonsBecomeFlagsAndAnIdleQueueIsReady) {
    EXPECT_EQ(printerStatus(3, {"none"}, true), flag::ready);
    EXPECT_EQ(printerStatus(3, {"cups-missing-filter-warning", "media-low-report", "wifi-not-configured-report"}, true),
              flag::ready);
    EXPECT_EQ(printerStatus(4, {"toner-low-report"}, true), flag::printing | flag::tonerLow);
    EXPECT_EQ(printerStatus(5, {"paused", "media-jam-error", "media-empty"}, true),
              flag::paused | flag::paperJam | flag::paperOut);
    EXPECT_EQ(printerStatus(3, {"cover-open-warning", "marker-supply-empty-error", "offline-report"}, false),
              flag::doorOpen | flag::noToner | flag::offline | flag::notAvailable);
    EXPECT_EQ(printerStatus(3, {"vendor-lamp-broken-error"}, true), flag::error);
}

TEST(BinNames, AreTheDriversTextsInTheUsersLanguage) {
    const std::string ppd =
        "*PPD-Adobe: \"4.3\"\r\n*OpenUI *InputSlot/Zufuhr: PickOne\r\n*DefaultInputSlot: Auto\r\n"
        "*InputSlot Auto/Ger\xE4t w\xE4hlt: \"<</ManualFeed false>>setpagedevice\"\r\n"
        "*InputSlot  Tray1/Fach <C3BC> : \"\"\r\n*InputSlot Tray2: \"\"\r\n*en.InputSlot Tray1/Tray 1: \"\"\r\n"
        "*InputSlotExtra Foo/Bar: \"\"\r\n*InputSlot\r\n*InputSlot :\r\n*InputSlot Cut";
    EXPECT_EQ(binNames(ppd, "de"), (Strings{"Gerät wählt", "Fach ü", "Tray2"}));
    EXPECT_EQ(binNames(ppd, "en"), (Strings{"Gerät wählt", "Tray 1", "Tray2"}));
    EXPECT_EQ(binNames("<html>*InputSlot A/B: \"\"</html>", "de"), Strings());
}

TEST(JobStatus, StateAndReasonsBecomeFlags) {
    namespace job = platform::job_status;
    EXPECT_EQ(jobStatus(IPP_JSTATE_PENDING, {"none"}, {"media-empty-error"}), job::waiting) << "not its printer yet";
    EXPECT_EQ(jobStatus(IPP_JSTATE_PENDING, {"printer-stopped"}, {}), job::blocked);
    EXPECT_EQ(jobStatus(IPP_JSTATE_HELD, {"job-hold-until-specified"}, {}), job::paused);
    EXPECT_EQ(jobStatus(IPP_JSTATE_HELD, {"job-incoming"}, {}), job::spooling) << "until it has its document";
    EXPECT_EQ(jobStatus(IPP_JSTATE_PROCESSING, {"job-printing"}, {"media-empty-warning", "cover-open", "toner-low"}),
              job::printing | job::paperOut | job::userIntervention);
    EXPECT_EQ(jobStatus(IPP_JSTATE_PROCESSING, {"processing-to-stop-point"}, {"offline-report", "lamp-broken-error"}),
              job::printing | job::deleting | job::offline | job::error);
    EXPECT_EQ(jobStatus(IPP_JSTATE_STOPPED, {"job-stopped"}, {}), job::blocked | job::error);
    EXPECT_EQ(jobStatus(IPP_JSTATE_STOPPED, {"printer-stopped"}, {}), job::blocked);
}

// Two jobs as CUPS 2.4 tells them, the first of somebody else; and one as it need not be.
TEST(JobRecords, AreWhatTheServerTellsTheJobBeingPrintedFirst) {
    const linux_support::Variable zone("TZ", "CET-1CEST");
    const IppMessage message(ippNew());
    ipp_t* answer = message.get();
    const auto number = [answer](ipp_tag_t type, const char* name, int value) {
        ippAddInteger(answer, IPP_TAG_JOB, type, name, value);
    };
    const auto words = [answer](ipp_tag_t type, const char* name, const char* value) {
        ippAddString(answer, IPP_TAG_JOB, type, name, nullptr, value);
    };
    number(IPP_TAG_INTEGER, "job-id", 7);
    number(IPP_TAG_INTEGER, "job-priority", 100);
    number(IPP_TAG_ENUM, "job-state", IPP_JSTATE_HELD);
    words(IPP_TAG_KEYWORD, "job-state-reasons", "job-hold-until-specified");
    ippAddSeparator(answer);
    number(IPP_TAG_INTEGER, "job-printer-up-time", 1795325572);
    words(IPP_TAG_NAME, "job-originating-user-name", "müller");
    words(IPP_TAG_NAME, "job-name", "RECHNUNG.OUT");
    words(IPP_TAG_NAME, "job-originating-host-name", "kasse");
    number(IPP_TAG_INTEGER, "time-at-creation", 1795325512);
    number(IPP_TAG_INTEGER, "job-id", 9);
    number(IPP_TAG_ENUM, "job-state", IPP_JSTATE_PROCESSING);
    number(IPP_TAG_INTEGER, "job-impressions-completed", 0);
    number(IPP_TAG_INTEGER, "job-media-sheets", 5);
    number(IPP_TAG_INTEGER, "job-media-sheets-completed", 2);
    number(IPP_TAG_INTEGER, "job-k-octets", 5'000'000);
    words(IPP_TAG_TEXT, "job-printer-state-message", "Kein Papier");
    ippAddSeparator(answer);
    words(IPP_TAG_NAME, "job-id", "x");
    words(IPP_TAG_NAME, "job-name", "ohne Nummer");
    ippAddSeparator(answer);
    number(IPP_TAG_INTEGER, "job-id", 8);
    number(IPP_TAG_INTEGER, "job-priority", -1);
    ippAddOutOfBand(answer, IPP_TAG_JOB, IPP_TAG_NOVALUE, "time-at-creation");

    const auto jobs = jobRecords(answer);
    ASSERT_EQ(jobs.size(), 3U);
    EXPECT_EQ((std::array{jobs[0].number, jobs[1].number, jobs[2].number}), (std::array{9U, 7U, 8U}));
    EXPECT_EQ((std::array{jobs[0].position, jobs[1].position, jobs[2].position}), (std::array{1U, 2U, 3U}));
    EXPECT_EQ((Strings{jobs[0].document, jobs[0].user, jobs[0].computer, jobs[0].statusText}),
              (Strings{"RECHNUNG.OUT", "müller", "kasse", "Kein Papier"}));
    EXPECT_EQ(jobs[0].pages, 5U);
    EXPECT_EQ(jobs[0].pagesPrinted, 2U);
    EXPECT_EQ(jobs[0].size, 5'120'000'000U);
    EXPECT_EQ(jobs[0].waitingSeconds, 60);
    const auto& when = *jobs[0].submitted;
    EXPECT_EQ((std::array{when.month, when.day, when.hour, when.minute, when.second}), (std::array{11, 22, 6, 31, 52}));
    EXPECT_EQ(jobs[1].status, platform::job_status::paused);
    EXPECT_EQ(jobs[1].document + jobs[1].user, "");
    EXPECT_FALSE(jobs[1].submitted || jobs[2].submitted);
    EXPECT_EQ(jobs[2].priority, 0U);
}

ipp_t* sheet(int width, int height, int margin) {
    ipp_t* size = ippNew();
    ippAddInteger(size, IPP_TAG_ZERO, IPP_TAG_INTEGER, "x-dimension", width);
    ippAddInteger(size, IPP_TAG_ZERO, IPP_TAG_INTEGER, "y-dimension", height);
    ipp_t* media = ippNew();
    ippAddCollection(media, IPP_TAG_ZERO, "media-size", size);
    ippDelete(size);
    for (const char* side : {"media-left-margin", "media-top-margin", "media-right-margin", "media-bottom-margin"}) {
        ippAddInteger(media, IPP_TAG_ZERO, IPP_TAG_INTEGER, side, margin++);
    }
    return media;
}

TEST(QueueDevice, FindsA4WithMarginsAmongTheSizes) {
    const IppMessage message(ippNew());
    const IppMessage own(sheet(21590, 27940, 635));
    const IppMessage borderless(sheet(21000, 29700, -3));
    const IppMessage a4(sheet(20990, 29704, 423));
    std::array<const ipp_t*, 3> sizes = {own.get(), borderless.get(), a4.get()};
    ippAddCollection(message.get(), IPP_TAG_PRINTER, "media-col-default", own.get());
    ippAddCollections(message.get(), IPP_TAG_PRINTER, "media-col-database", 3, sizes.data());
    ippAddString(message.get(), IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "media-supported", nullptr, "iso_a4_210x297mm");
    ippAddResolution(message.get(), IPP_TAG_PRINTER, "printer-resolution-default", IPP_RES_PER_CM, 236, 118);
    ippAddString(message.get(), IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "print-color-mode-supported", nullptr, "monochrome");
    ippAddInteger(message.get(), IPP_TAG_PRINTER, IPP_TAG_ENUM, "orientation-requested-default", IPP_ORIENT_LANDSCAPE);
    const auto device = queueDevice(message.get());
    EXPECT_EQ(device.own.keyword, "na_letter_8.5x11in");
    EXPECT_NEAR(device.own.marginBottom, 18.085, 0.001);
    EXPECT_EQ(device.a4.keyword, "iso_a4_210x297mm");
    EXPECT_NEAR(device.a4.marginLeft, 11.991, 0.001);
    EXPECT_EQ(device.resolutionX, 599);
    EXPECT_EQ(device.resolutionY, 300);
    EXPECT_FALSE(device.color);
    EXPECT_EQ(device.defaultColorMode, 1);
    EXPECT_EQ(device.defaultOrientation, 2);
}

TEST(QueueDevice, NonsenseGivesAPageThatCanBePrinted) {
    const IppMessage message(ippNew());
    const IppMessage swallowed(sheet(21000, 29700, 20000));
    ippAddCollection(message.get(), IPP_TAG_PRINTER, "media-col-default", swallowed.get());
    ippAddResolution(message.get(), IPP_TAG_PRINTER, "printer-resolution-default", IPP_RES_PER_INCH, 0, 0);
    const auto device = queueDevice(message.get());
    EXPECT_EQ(device.own.marginLeft, 0);
    EXPECT_EQ(device.resolutionX, 600);
    EXPECT_EQ(device.defaultColorMode, 2);
}

TEST(SavedOptions, AreTheQueuesOrItsInstancesInTheOrderOfTheLines) {
    const std::string file =
        "Dest links media=A5 sides=one-sided\nDEFAULT Links/schnell number-up=2\n\nDest\nFoo Links copies=2\n"
        "Dest LINKS sides='two sided' fit-to-page";
    EXPECT_EQ(savedIn(file, "Links", ""), (Options{{"media", "A5"}, {"sides", "two sided"}, {"fit-to-page", "true"}}));
    EXPECT_EQ(savedIn(file, "links", "schnell"), (Options{{"number-up", "2"}}));
    EXPECT_EQ(savedIn(file, "links", "langsam"), Options());
}

// Saved options, a job's own choice of a bin, its colour mode; and the options that come, the source that stands, and
// the colour mode that a job has unless it is told otherwise.
TEST(SavedOptions, YieldToTheJobsOwn) {
    struct Row {
        Options saved;
        bool bin;
        int color;
        Options come;
        std::string source;
        int savedColor;
    };
    const std::string inTray2 = "{media-size={x-dimension=1 y-dimension=2} media-source=Tray-2}";
    for (const Row& row :
         {Row{{{"copies", "2"}, {"job-name", "x"}, {"printer-info", "x"}, {"raw", "true"}},
              false,
              2,
              {{"copies", "2"}},
              "",
              0},
          Row{{{"pagesize", "A5"}, {"media-col", inTray2}, {"Scaling", "50"}}, false, 2, {}, "tray-2", 0},
          Row{{{"media", "A4, fehlt,tray-1"}}, false, 2, {}, "tray-1", 0},
          Row{{{"media-source", "fehlt"}}, false, 2, {{"media-source", "fehlt"}}, "", 0},
          Row{{{"media-source", "tray-2"}, {"inputslot", "A"}},
              false,
              2,
              {{"media-source", "tray-2"}, {"inputslot", "A"}},
              "",
              0},
          Row{{{"media-source", "tray-2"}, {"ManualFeed", "True"}}, true, 2, {}, "", 0},
          Row{{{"print-color-mode", "auto"}, {"ColorModel", "KGray"}}, false, 1, {{"ColorModel", "KGray"}}, "", 1},
          Row{{{"ColorModel", "Gray"}}, false, 2, {}, "", 1},
          Row{{{"ColorModel", "CMYK"}}, false, 2, {{"ColorModel", "CMYK"}}, "", 2}}) {
        Options job = {{"print-color-mode", "job"}, {"print-scaling", "job"}};
        addSaved(job, row.saved, row.bin, row.color);
        job.erase("print-color-mode");
        job.erase("print-scaling");
        EXPECT_EQ(job, row.come);
        EXPECT_EQ(savedColorMode(row.saved).value_or(0), row.savedColor);
        if (!row.bin) {
            EXPECT_EQ(savedSource(row.saved, {"tray-1", "tray-2"}), row.source);
        }
    }
}

}  // namespace
