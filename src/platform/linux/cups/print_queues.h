// Interface of the module "cups": the queues of CUPS in the words of the spooler port.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/spooler.h"

namespace platform_linux {

// A queue's page, as its driver has it.
struct QueueMedia {
    std::string keyword;  // standard media name of the size, "iso_a4_210x297mm"
    double widthPoints = 595.276;
    double heightPoints = 841.890;
    double marginLeft = 0;  // unprintable margins in points
    double marginTop = 0;
    double marginRight = 0;
    double marginBottom = 0;
};

struct QueueDevice {
    int resolutionX = 600;  // pixels per inch
    int resolutionY = 600;
    bool color = false;          // can print colour
    int defaultColorMode = 1;    // 1 monochrome, 2 colour
    int defaultOrientation = 1;  // 1 portrait, 2 landscape
    QueueMedia a4;               // A4 with this queue's margins for it
    QueueMedia own;              // the queue's default size
};

struct QueueJob {
    std::string queue;
    std::string title;
    std::map<std::string, std::string> options;  // job options under their standard names
};

// Every call that names a queue throws platform::SpoolerError when CUPS or the queue refuses; the code is the IPP
// status, or an errno value below 0x400 where CUPS cannot be reached.
class PrintQueues {
public:
    virtual ~PrintQueues() = default;

    // Queues in the order in which CUPS lists them; none where CUPS cannot be reached.
    virtual std::vector<std::string> names() = 0;
    // The user's or the server's default queue; empty for none.
    virtual std::string defaultName() = 0;
    virtual void setDefaultName(const std::string& queue) = 0;
    virtual platform::PrinterRecord record(const std::string& queue) = 0;
    virtual int jobCount(const std::string& queue) = 0;
    virtual std::vector<platform::PaperBin> bins(const std::string& queue) = 0;
    virtual QueueDevice device(const std::string& queue) = 0;
    // The options, under their standard names, that choose a bin of bins() by its number, and a page of the device.
    virtual std::map<std::string, std::string> options(const std::string& queue, const QueueMedia& media, int bin,
                                                       int orientation, int colorMode) = 0;
    virtual bool canAdminister(const std::string& queue) = 0;
    virtual void purge(const std::string& queue) = 0;
    virtual bool running() = 0;
    virtual std::string errorText(std::uint32_t code) = 0;
    // Prints a PDF from the start of the descriptor; returns the job's number.
    virtual int submit(const QueueJob& job, int fileDescriptor) = 0;
};

// The module's entry function.
using PrintQueuesFactory = std::unique_ptr<PrintQueues> (*)();

}  // namespace platform_linux
