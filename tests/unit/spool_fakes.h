// What the documents of the spooler stand on, for tests: a PDF that can be read as text and queues that remember.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "linux_support.h"
#include "platform/linux/cups/queue_access.h"
#include "platform/linux/pdf/pdf_document.h"
#include "platform/print_document.h"

namespace spool_test {

// What the fake PDFs of a test share: errors to throw, and what the last one was told.
struct PdfScript {
    std::string failAt;  // "endPage" or "finish"
    int number = runtime::errDiskFull;
    int atPage = 1;
    platform_linux::pdf::PdfPage page;
};

class FakeSurface : public platform::Surface {
public:
    explicit FakeSurface(PdfScript& script) : script_(script) {}
    platform::DeviceCapabilities capabilities() const override { return script_.page.device; }
    platform::FontFace setFont(const platform::FontRequest& font) override { return {font.name, font.charset}; }
    int textWidth(std::string_view text) const override { return static_cast<int>(text.size()); }
    void drawText(int, int, std::string_view text, platform::Color, platform::TextRole) override {
        drawn += std::string(text) + ' ';
    }
    int textHeight() const override { return 0; }
    void drawPicture(const std::shared_ptr<const platform::Picture>&, int, int, int, int) override {}
    void fillRectangle(int, int, int, int, platform::Color) override {}

    std::string drawn;

private:
    PdfScript& script_;
};

// "head", the pages in brackets, "end": all written at once, the head before there is any page.
class FakePdf : public platform_linux::pdf::PdfDocument {
public:
    FakePdf(PdfScript& script, int descriptor) : script_(script), descriptor_(descriptor), surface_(script) {
        put("head ");
    }
    void setPage(const platform_linux::pdf::PdfPage& page) override { script_.page = page; }
    platform::Surface& surface() override { return surface_; }
    void beginPage() override { surface_.drawn.clear(); }
    void endPage() override {
        failIfAsked("endPage");
        put("[" + surface_.drawn + "] ");
        ++pages_;
    }
    int pageCount() const override { return pages_; }
    void finish() override {
        failIfAsked("finish");
        put("end");
    }

private:
    void put(const std::string& text) const {
        if (::write(descriptor_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw runtime::Error(runtime::errDeviceIo);
        }
    }
    void failIfAsked(const std::string& step) const {
        if (script_.failAt == step && pages_ + 1 >= script_.atPage) {
            throw runtime::Error(script_.number, "Kein Platz.");
        }
    }

    PdfScript& script_;
    int descriptor_;
    FakeSurface surface_;
    int pages_ = 0;
};

// Queues whose jobs are remembered as "bin paper orientation colour: content".
class FakeQueues : public platform_linux::cups::QueueAccess {
public:
    std::vector<platform::PaperBin> bins(const std::string&) override { return {{1, "Oben"}, {2, "Unten"}}; }
    platform_linux::cups::QueueDevice device(const std::string&) override { return hardware; }
    std::map<std::string, std::string> options(const std::string&, const platform_linux::cups::QueueMedia& media,
                                               int bin, int orientation, int colorMode) override {
        std::ostringstream text;
        text << bin << ' ' << media.keyword << ' ' << orientation << ' ' << colorMode;
        return {{"all", text.str()}};
    }
    int submit(const platform_linux::cups::QueueJob& job, int fileDescriptor) override {
        if (++submits == refused) {
            throw platform::SpoolerError(0x506, "Warteschlange „" + job.queue + "“ nimmt nichts an.");
        }
        std::string content(1000, '\0');
        const ssize_t size = ::pread(fileDescriptor, content.data(), content.size(), 0);
        content.resize(static_cast<std::size_t>(size));
        jobs.push_back(job.queue + '/' + job.title + ' ' + job.options.at("all") + ": " + content);
        return submits;
    }

    platform_linux::cups::QueueDevice hardware;
    std::vector<std::string> jobs;
    int submits = 0;
    int refused = 0;  // the number of the submit that fails
};

// A new folder as the current directory; the one before comes back, and the folder goes, with the object.
class ScratchFolder : public linux_support::TemporaryFolder {
public:
    ScratchFolder() { std::filesystem::current_path(*this / ""); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { std::filesystem::current_path(before_); }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

inline void printPage(platform::PrintDocument& document, const std::string& text) {
    document.beginPage();
    document.surface().drawText(0, 0, text, {}, platform::TextRole::content);
    document.endPage();
}

}  // namespace spool_test
