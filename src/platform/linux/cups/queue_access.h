// A queue of CUPS as documents need it: the device behind it, its bins, and the way into it.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/cups/saved_options.h"
#include "platform/spooler.h"

namespace platform_linux::cups {

// A queue's page, as its driver has it.
struct QueueMedia {
    std::string keyword;  // standard media name of the size, "iso_a4_210x297mm"
    double widthPoints = 0;
    double heightPoints = 0;
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
    Options options;  // job options under their standard names
};

// Cancelled by somebody before it had its document; once it has one, the server takes care of that.
enum class JobFate { unknown, withoutDocument, withDocument, cancelled };

// Every call throws platform::SpoolerError when CUPS or the queue refuses.
class QueueAccess {
public:
    virtual ~QueueAccess() = default;

    virtual std::vector<platform::PaperBin> bins(const std::string& queue) = 0;
    virtual QueueDevice device(const std::string& queue) = 0;
    // The options, under their standard names, that choose a bin of bins() by its number, and a page of the device;
    // with them what the user saved for the queue and the job does not say otherwise.
    virtual Options options(const std::string& queue, const QueueMedia& media, int bin, int orientation, int colorMode,
                            const Options& saved) = 0;
    // Makes a job that has no document yet, of which nothing is printed; returns its number.
    virtual int createJob(const QueueJob& job) = 0;
    // Gives a job its document, a PDF, from the start of the descriptor; then it is printed.
    virtual void sendDocument(const std::string& queue, int job, int fileDescriptor) = 0;
    // What the server knows of a job.
    virtual JobFate fate(const std::string& queue, int job) = 0;
    // Drops a job, if the server lets it.
    virtual void cancel(const std::string& queue, int job) noexcept = 0;
};

}  // namespace platform_linux::cups
