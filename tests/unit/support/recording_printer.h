// A printer that records what is drawn on it. Its device has 1440 pixels per inch, so a pixel is a twip.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/drawing/page_recording.h"
#include "platform/print_jobs.h"
#include "platform/spooler.h"

namespace testing_support {

struct DrawnText {
    int x = 0;
    int y = 0;
    std::string text;
    platform::FontRequest font;
    platform::Color color;
    platform::TextRole role = platform::TextRole::content;
};

using DrawnRectangle = platform::drawing::PageRecording::Rectangle;
using DrawnPicture = platform::drawing::PageRecording::PlacedPicture;

struct RecordedPage {
    RecordedPage() = default;
    explicit RecordedPage(const platform::drawing::PageRecording& recording) {
        for (const auto& step : recording.steps()) {
            if (const auto* text = std::get_if<platform::drawing::PageRecording::Text>(&step)) {
                texts.push_back({text->x, text->y, std::string(recording.bytesOf(*text)), recording.fontOf(*text),
                                 text->color, text->role});
            } else if (const auto* rectangle = std::get_if<DrawnRectangle>(&step)) {
                rectangles.push_back(*rectangle);
            } else {
                pictures.push_back(std::get<DrawnPicture>(step));
            }
        }
    }

    // Everything on it, to be compared with another page.
    std::string described() const {
        std::ostringstream text;
        for (const DrawnText& drawn : texts) {
            text << drawn.x << ',' << drawn.y << ' ' << drawn.text << ' ' << drawn.font.emHeight << drawn.font.bold
                 << drawn.font.italic << drawn.font.underline << static_cast<int>(drawn.role)
                 << static_cast<int>(drawn.color.red) << '\n';
        }
        for (const DrawnRectangle& drawn : rectangles) {
            text << drawn.x << ',' << drawn.y << ' ' << drawn.width << 'x' << drawn.height << '\n';
        }
        for (const DrawnPicture& drawn : pictures) {
            text << drawn.x << ',' << drawn.y << ' ' << drawn.width << 'x' << drawn.height << ' '
                 << drawn.picture->width << '\n';
        }
        return text.str();
    }

    std::vector<DrawnText> texts;
    std::vector<DrawnRectangle> rectangles;
    std::vector<DrawnPicture> pictures;
    std::map<platform::PageOption, int> options;
};

struct RecordedDocument {
    std::string printer;
    std::string title;
    std::vector<RecordedPage> pages;  // ended ones
    bool delivered = false;
    bool aborted = false;
};

// What the tests set of a printer, and what its documents came to.
struct RecordingDevice {
    platform::DeviceCapabilities capabilities{11424, 16358, 1440, 1440, 11904, 16838, 240, 240};
    std::map<platform::PageOption, int> options{{platform::PageOption::paperSize, 9},
                                                {platform::PageOption::paperBin, 0},
                                                {platform::PageOption::orientation, 1},
                                                {platform::PageOption::colorMode, 2}};
    std::string fontName;                                        // found instead of the requested one, where not empty
    bool keepsOptions = false;                                   // takes no new values
    std::function<void(platform::PageOption, int)> onSetOption;  // may throw
    std::function<void(std::size_t)> onBeginPage;                // may throw; pages ended so far
    std::function<void()> onEnd;                                 // may throw
    bool answerLost = false;
    std::vector<std::shared_ptr<RecordedDocument>> documents;

    const std::vector<RecordedPage>& pages() const { return documents.back()->pages; }
};

// Measures for the tests: every character is 0.6 of the em square wide.
class MeasuringSurface : public platform::Surface {
public:
    explicit MeasuringSurface(RecordingDevice& device) : device_(device) {}

    platform::DeviceCapabilities capabilities() const override { return device_.capabilities; }
    platform::FontFace setFont(const platform::FontRequest& font) override {
        font_ = font;
        return {device_.fontName.empty() ? font.name : device_.fontName, font.charset};
    }
    int textWidth(std::string_view text) const override {
        return static_cast<int>(text.size()) * static_cast<int>(std::lround(font_.emHeight * 0.6));
    }
    int textHeight() const override { return static_cast<int>(std::lround(font_.emHeight * 1.1328125)); }
    void drawText(int, int, std::string_view, platform::Color, platform::TextRole) override {}
    void fillRectangle(int, int, int, int, platform::Color) override {}
    void drawPicture(const std::shared_ptr<const platform::Picture>&, int, int, int, int) override {}

private:
    RecordingDevice& device_;
    platform::FontRequest font_;
};

struct Measures {
    MeasuringSurface measures;
};

class RecordingSurface : private Measures, public platform::drawing::RecordingSurface {
public:
    explicit RecordingSurface(RecordingDevice& device)
        : Measures{MeasuringSurface(device)}, platform::drawing::RecordingSurface(measures) {}

    RecordedPage page() const { return RecordedPage(recording()); }
};

class RecordingDocument : public platform::PrintDocument {
public:
    RecordingDocument(RecordingDevice& device, std::shared_ptr<RecordedDocument> record)
        : device_(device), record_(std::move(record)), surface_(device) {}
    RecordingDocument(const RecordingDocument&) = delete;
    RecordingDocument& operator=(const RecordingDocument&) = delete;
    ~RecordingDocument() override { record_->aborted = !record_->delivered; }

    platform::Surface& surface() override { return surface_; }
    int option(platform::PageOption option) const override { return device_.options.at(option); }
    void setOption(platform::PageOption option, int value) override {
        if (device_.onSetOption) {
            device_.onSetOption(option, value);
        }
        if (!device_.keepsOptions) {
            device_.options[option] = value;
        }
    }
    void beginPage() override {
        if (device_.onBeginPage) {
            device_.onBeginPage(record_->pages.size());
        }
        surface_.clear();
        options_ = device_.options;
    }
    void endPage() override {
        record_->pages.push_back(surface_.page());
        record_->pages.back().options = options_;
    }
    void end() override {
        if (device_.onEnd) {
            device_.onEnd();
        }
        record_->delivered = true;
    }
    int pagesHandedOver() const override { return record_->delivered ? static_cast<int>(record_->pages.size()) : 0; }
    bool perhapsHandedOver() const override { return device_.answerLost; }
    std::vector<std::string> saveRest(const std::string& path) override { return {path + ".pdf"}; }
    void abort() noexcept override {}

private:
    RecordingDevice& device_;
    std::shared_ptr<RecordedDocument> record_;
    RecordingSurface surface_;
    std::map<platform::PageOption, int> options_;
};

class FakeSpooler : public platform::Spooler {
public:
    std::vector<std::string> names{"Laser 1"};
    std::string byDefault = "Laser 1";
    std::vector<platform::PaperBin> bins;
    std::map<std::string, std::string> discoverable;  // device names by what they are called
    std::vector<std::string> looksFor;                // what discover() was asked for
    std::function<void()> onDiscover;
    RecordingDevice device;
    platform::PrinterRecord record;
    std::uint32_t failWith = 0;     // every call that names a printer fails with this code
    std::vector<int> jobCounts{0};  // one for each question, the last one for ever
    platform::ServiceState service = platform::ServiceState::running;
    int serviceAsked = 0;
    int silentFor = 0;  // so many further questions are not answered

    bool hasPrinters() override { return !names.empty(); }
    std::vector<std::string> printerNames() override {
        answer();
        return names;
    }
    std::string builtinPrinter() override { return "Eingebaut"; }
    std::string defaultPrinter() override {
        answer();
        return byDefault;
    }
    bool answersAgain() override { return silentFor == 0 || --silentFor == 0; }
    std::optional<std::string> discover(const std::string& name) override {
        looksFor.push_back(name);
        if (onDiscover) {
            onDiscover();
        }
        const auto found = discoverable.find(name);
        return found != discoverable.end() ? std::optional(found->second) : std::nullopt;
    }
    void setDefaultPrinter(const std::string& name) override {
        check();
        byDefault = name;
    }
    platform::PrinterRecord printer(const std::string&) override {
        check();
        return record;
    }
    std::vector<platform::PaperBin> paperBins(const std::string&) override { return bins; }
    bool administers = true;
    bool canAdminister(const std::string&) override { return administers; }
    void showProperties(const std::string&) override {}
    platform::ServiceState serviceState() override {
        ++serviceAsked;
        return service;
    }
    std::string errorText(std::uint32_t code) override { return code == 5 ? "Zugriff verweigert" : ""; }
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& name, const std::string& title) override {
        check();
        answer();
        return recorded(name, title);
    }
    bool hasSheet = true;
    std::unique_ptr<platform::PrintDocument> openSheet() override { return hasSheet ? recorded("Blatt", "") : nullptr; }
    bool writesPdf = true;
    std::string pdfPrinterName;
    bool writesFiles() override { return writesPdf; }
    std::string pdfPrinter() override { return pdfPrinterName; }
    std::unique_ptr<platform::PrintDocument> openFile(const std::string& path, const std::string& title) override {
        return recorded(path, title);
    }

    void answer() const {
        if (silentFor > 0) {
            throw platform::SpoolerError(110, "antwortet nicht", platform::Recovery::possible);
        }
    }
    void check() const {
        if (failWith != 0) {
            throw platform::SpoolerError(failWith, "");
        }
    }

private:
    std::unique_ptr<platform::PrintDocument> recorded(const std::string& name, const std::string& title) {
        device.documents.push_back(std::make_shared<RecordedDocument>());
        device.documents.back()->printer = name;
        device.documents.back()->title = title;
        return std::make_unique<RecordingDocument>(device, device.documents.back());
    }
};

// One queue, of whatever printer. Fails as the spooler does.
class FakePrintJobs : public platform::PrintJobs {
public:
    explicit FakePrintJobs(FakeSpooler& spooler) : spooler_(spooler) {}

    std::vector<platform::PrintJob> queue;
    std::map<std::uint32_t, std::string> refuses;  // why, by the numbers of jobs
    std::vector<std::string> done;                 // what was asked for, "cancel 7"
    int lists = 0;
    bool hasEvents = false;
    bool changed = false;  // since the last question

    void add(std::uint32_t number, const std::string& document, const std::string& user, std::uint32_t status = 0) {
        platform::PrintJob job;
        job.number = number;
        job.document = document;
        job.user = user;
        job.status = status;
        job.position = static_cast<std::uint32_t>(queue.size() + 1);
        queue.push_back(job);
    }

    int count(const std::string&) override {
        spooler_.check();
        const int count = spooler_.jobCounts.front();
        if (spooler_.jobCounts.size() > 1) {
            spooler_.jobCounts.erase(spooler_.jobCounts.begin());
        }
        return count;
    }
    std::vector<platform::PrintJob> list(const std::string&) override {
        ++lists;
        spooler_.check();
        spooler_.answer();
        return queue;
    }
    void control(const std::string&, std::uint32_t number, platform::JobOperation operation) override {
        static const std::map<platform::JobOperation, const char*> names = {
            {platform::JobOperation::pause, "pause"},
            {platform::JobOperation::resume, "resume"},
            {platform::JobOperation::cancel, "cancel"},
            {platform::JobOperation::restart, "restart"},
            {platform::JobOperation::toFront, "front"}};
        note(names.at(operation), number);
        const auto job = std::ranges::find(queue, number, &platform::PrintJob::number);
        if (operation == platform::JobOperation::cancel) {
            queue.erase(job);
        } else if (operation == platform::JobOperation::toFront) {
            std::rotate(queue.begin(), job, job + 1);
        } else if (operation == platform::JobOperation::pause) {
            job->status |= platform::job_status::paused;
        }
    }
    void setPriority(const std::string&, std::uint32_t number, std::uint32_t priority) override {
        note("priority " + std::to_string(priority), number);
        std::ranges::find(queue, number, &platform::PrintJob::number)->priority = priority;
    }
    void purge(const std::string&) override { spooler_.check(); }
    void resumePrinter(const std::string& printer) override {
        spooler_.check();
        done.push_back("resume " + printer);
        spooler_.record.status = 0;
    }
    std::unique_ptr<platform::QueueWatch> watch(const std::string&) override {
        return hasEvents ? std::make_unique<Watch>(*this) : nullptr;
    }

private:
    class Watch : public platform::QueueWatch {
    public:
        explicit Watch(FakePrintJobs& jobs) : jobs_(jobs) {}
        bool changed() override { return std::exchange(jobs_.changed, false); }

    private:
        FakePrintJobs& jobs_;
    };

    void note(const std::string& what, std::uint32_t number) {
        spooler_.check();
        if (refuses.contains(number)) {
            throw platform::SpoolerError(5, refuses[number]);
        }
        done.push_back(what + " " + std::to_string(number));
    }

    FakeSpooler& spooler_;
};

}  // namespace testing_support
