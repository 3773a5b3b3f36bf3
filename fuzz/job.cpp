// Whole jobs, from the command line to the PDF: HPLASER.INI, the printer's settings (lines of name=value) and the print
// file, with the byte 30 between them, all in memory. Inputs of odd size are printed in two passes.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "platform/linux/documents/document_factory.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/profile_text.h"
#include "startup/MMain.h"
#include "unit/pdf_support.h"
#include "unit/support/fake_platform.h"

namespace {

using namespace platform_linux::documents;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

class MemoryOutput : public PdfOutput {
public:
    int descriptor() const override { return file_.get(); }
    void pageBegins() override {}
    void deliver(const PageOptions& /*firstPage*/) override {
        const off_t size = ::lseek(file_.get(), 0, SEEK_END);
        std::string end(6, '\0');
        if (::pread(file_.get(), end.data(), end.size(), size - 6) != 6 || end != "%%EOF\n") {
            fail("the PDF is not whole");
        }
    }
    runtime::Error failure(const runtime::Error& cause) override { return cause; }

private:
    platform_linux::FileDescriptor file_{::memfd_create("pdf", MFD_CLOEXEC)};
};

class MemoryTarget : public DocumentTarget {
public:
    PageOptions defaults() const override { return {}; }
    bool accepts(platform::PageOption option, int value) override {
        return option != platform::PageOption::paperBin || value < 3;
    }
    platform_linux::pdf::PdfPage page(const PageOptions& options) const override {
        auto page = pdf_support::a4Page();
        page.color = options.colorMode != 1;
        return page;
    }
    bool separates(const PageOptions& previous, const PageOptions& next) const override {
        return previous.paperBin != next.paperBin;
    }
    std::unique_ptr<PdfOutput> open() override { return std::make_unique<MemoryOutput>(); }
};

class PdfSpooler : public testing_support::FakeSpooler {
public:
    std::unique_ptr<platform::PrintDocument> openDocument(const std::string& /*name*/,
                                                          const std::string& title) override {
        const auto make = [](const platform_linux::pdf::PdfSettings& settings, int file) {
            return std::make_unique<platform_linux::pdf::Document>(settings, file);
        };
        return pdfDocuments({[] { return platform_linux::dosCodePage(850); }, "fuzz"}, make)(
            std::make_unique<MemoryTarget>(), title);
    }
};

class JobSystem : public testing_support::FakeSystem {
public:
    std::unique_ptr<platform::Profile> openProfile(const std::string& path) override {
        return std::make_unique<platform_linux::ProfileText>(files.contains(path) ? files[path] : "");
    }
};

// Takes the part before the separator, or the rest.
std::string take(std::string_view& text) {
    const std::string part(text.substr(0, text.find('\x1E')));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    JobSystem system;
    testing_support::MemorySettings settings;
    PdfSpooler spooler;
    testing_support::FakePrintJobs jobs(spooler);
    testing_support::RecordingDialogs dialogs;
    testing_support::FakeImageFiles images;
    testing_support::MemoryUserFiles userFiles;
    testing_support::RecordingForms forms;
    testing_support::FakeXmlFiles xmlFiles;
    testing_support::RecordingErrorReports errorReports;
    platform::Platform ports{system, settings,  spooler, jobs,     dialogs,
                             images, userFiles, forms,   xmlFiles, errorReports};

    std::string_view input(reinterpret_cast<const char*>(data), size);
    system.files["C:\\KORVANO\\HPLASER.INI"] = take(input);
    system.files["HPLASER.INI"] = system.files["C:\\KORVANO\\HPLASER.INI"];
    std::istringstream lines(take(input));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t sign = std::min(line.find('='), line.size());
        settings.put("Software\\Velmora\\KRVWinPr\\3.0\\Drucker\\Laser 1", line.substr(0, sign),
                     line.substr(std::min(sign + 1, line.size())));
    }
    system.files["A.OUT"] = input;
    for (const char* name : {"LASER\\KRVWin.M1", "C:\\KORVANO\\LASER\\KRVWin.M1", "B.BMP"}) {
        system.files[name] = name;
        images.pictures[name] = pictures::makePicture(40, 20, 24);
    }
    system.tail = size % 2 == 1 ? " A.OUT B.BMP /TWOPASS" : " A.OUT";
    startup::MMain::Main(ports);
    if (!system.files.contains("KRVWINPR.OK")) {
        fail("the host was not let go");
    }
    return 0;
}
