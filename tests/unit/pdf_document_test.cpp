// Whole documents, read back with the tools of poppler-utils and with qpdf.
#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>
#include <libdeflate.h>
#include <unistd.h>

#include "platform/linux/file_descriptor.h"
#include "runtime/error.h"
#include "unit/linux_support.h"
#include "unit/pdf_support.h"

namespace {

using linux_support::TemporaryFile;
using pdf_support::a4Page;
using pdf_support::onePage;
using pdf_support::run;
using platform::TextRole;
using platform_linux::pdf::Document;

platform::FontRequest fontOf(const std::string& name, bool bold = false) {
    return {name, platform::charsetOem, 78, bold, false, false};
}

TEST(PdfDocument, HoldsManyPagesOfSeveralSizes) {
    constexpr int pages = 300;  // more than two branches of the page tree
    auto turned = a4Page();
    std::swap(turned.widthPoints, turned.heightPoints);
    std::swap(turned.device.horzRes, turned.device.vertRes);
    for (const bool archive : {false, true}) {
        const TemporaryFile file;
        auto settings = pdf_support::settings();
        settings.archive = archive;
        Document document(settings, file.descriptor());
        document.setPage(a4Page());
        for (int page = 1; page <= pages; ++page) {
            document.beginPage();
            document.surface().setFont(fontOf("Courier New", page % 2 == 0));
            document.surface().drawText(0, 0, "Seite " + std::to_string(page), {}, TextRole::content);
            document.setPage(page == 150 ? turned : a4Page());  // for the page after this one
            EXPECT_EQ(document.surface().capabilities().horzRes, page == 151 ? 6816 : 4761);
            document.endPage();
        }
        document.beginPage();  // left open, left out
        document.finish();
        EXPECT_NE(run("qpdf --check " + file.path()).find("No syntax or stream encoding errors"), std::string::npos);
        EXPECT_EQ(run("qpdf --show-npages " + file.path()), "300\n");
        EXPECT_EQ(run("pdfinfo -f 150 -l 152 " + file.path() + " | grep -o 'size: .*pts'"),
                  "size:  595.276 x 841.89 pts\nsize:  841.89 x 595.276 pts\nsize:  595.276 x 841.89 pts\n");
        EXPECT_EQ(run("pdftotext -f 299 " + file.path() + " -"), "Seite 299\n\n\fSeite 300\n\n\f");
    }
}

std::string lineOf(int page, int number) {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
    const std::uint64_t digits = spread * static_cast<std::uint64_t>(1000 * page + number + 1);
    return "Seite " + std::to_string(page) + ", Zeile " + std::to_string(number) + ": " + std::to_string(digits) +
           std::to_string(digits * spread) + std::string(30, '.');
}

// Pages of all sizes, pictures among them, and one that is larger than those that wait for a worker.
void drawBook(Document& document, int pages) {
    const auto picture = [](int width) {
        platform::Picture made;
        made.width = made.height = width;
        made.bitsPerPixel = 24;
        made.pixels.resize(made.stride() * static_cast<std::size_t>(width), static_cast<std::uint8_t>(width));
        return std::make_shared<const platform::Picture>(std::move(made));
    };
    const auto first = picture(40);
    document.setPage(a4Page());
    for (int page = 1; page <= pages; ++page) {
        document.beginPage();
        document.surface().setFont(fontOf("Courier New", page % 3 == 0));
        for (int repeat = 0; repeat < (page == 77 ? 12'000 : page % 50); ++repeat) {
            document.surface().drawText(0, 60 * (repeat % 110), lineOf(page, repeat), {}, TextRole::content);
        }
        if (page % 40 == 0) {
            document.surface().drawPicture(page == 80 ? picture(50) : first, 0, 0, 100, 100);
        }
        document.endPage();
    }
    document.finish();
}

TEST(PdfDocument, IsTheSameWithAnyNumberOfWorkers) {
    std::vector<std::string> books;
    for (const int workers : {0, 1, 4, -1}) {
        const TemporaryFile file;
        auto settings = pdf_support::settings();
        settings.workers = workers;
        settings.archive = true;
        Document document(settings, file.descriptor());
        drawBook(document, 250);
        EXPECT_EQ(document.pageCount(), 250);
        books.push_back(run("cat " + file.path()));
    }
    EXPECT_GT(books[0].size(), 100'000U);
    for (const std::string& book : books) {
        EXPECT_TRUE(book == books[0]);
    }
}

// Memory for the document's own thread, and none for the others.
void* onlyForTheFirst(std::size_t size) { return ::gettid() == ::getpid() ? std::malloc(size) : nullptr; }

TEST(PdfDocument, IsTheSameWhereWorkersHaveNoMemory) {
    std::vector<std::string> books;
    for (const int workers : {0, 2}) {
        const TemporaryFile file;
        auto settings = pdf_support::settings();
        settings.workers = workers;
        libdeflate_set_memory_allocator(workers == 0 ? std::malloc : onlyForTheFirst, std::free);
        Document document(settings, file.descriptor());
        drawBook(document, 60);
        books.push_back(run("cat " + file.path()));
    }
    libdeflate_set_memory_allocator(std::malloc, std::free);
    EXPECT_TRUE(books[0] == books[1]);
}

TEST(PdfDocument, TellsOfAFullDiskWithWorkersToo) {
    for (const int pages : {20, 1000}) {
        auto settings = pdf_support::settings();
        settings.workers = 2;
        const platform_linux::FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
        Document document(settings, full.get());
        EXPECT_EQ(linux_support::errorOf([&] { drawBook(document, pages); }), runtime::errDiskFull);
    }
}

TEST(PdfDocument, KeepsTheWidthOfCharactersThatTheFontLacks) {
    auto settings = pdf_support::settings();
    settings.codePage['X'] = 0x4E00;
    settings.codePage['Y'] = 0;
    settings.archive = true;
    const TemporaryFile file;
    const auto draw = [](platform::Surface& surface) {
        EXPECT_EQ(surface.setFont(fontOf("Courier New")).charset, platform::charsetOem);  // one missing of many
        EXPECT_EQ(surface.textWidth(std::string_view("aXYZ\0", 5)), 5 * 47);
        surface.drawText(0, 0, std::string_view("XY\0", 3), {}, TextRole::content);
    };
    onePage(file.descriptor(), draw, a4Page(), settings);
    const std::string sheet = run("pdftoppm -r 50 -gray " + file.path());
    EXPECT_EQ(sheet.find_first_not_of('\xFF', sheet.find("255\n") + 4), std::string::npos);
    EXPECT_NE(run("pdftotext " + file.path() + " -").find("\u4E00\uFFFD"), std::string::npos);
    EXPECT_EQ(run("grep -ac pdfaid:part " + file.path()), "1\n");

    std::fill_n(&settings.codePage[128], 32, 0x4E00);
    Document many(settings, file.descriptor());
    EXPECT_EQ(many.surface().setFont(fontOf("Courier New")).charset, platform::charsetAnsi);
}

TEST(PdfDocument, SaysWhatItTookForAMissingFont) {
    const TemporaryFile file;
    Document document(pdf_support::settings(), file.descriptor());
    EXPECT_EQ(document.surface().setFont(fontOf("liberation mono")).name, "liberation mono");
    const std::string found = document.surface().setFont(fontOf("Keine Schrift (\xFF")).name;
    EXPECT_FALSE(found.empty());
    EXPECT_EQ(found.find("Keine"), std::string::npos);

    const TemporaryFile none;
    std::ofstream(none.path()) << "<?xml version=\"1.0\"?><fontconfig></fontconfig>";
    setenv("FONTCONFIG_FILE", none.path().c_str(), 1);
    FcInitReinitialize();
    Document without(pdf_support::settings(), file.descriptor());
    std::string message;
    EXPECT_EQ(linux_support::errorOf([&] { without.surface().setFont(fontOf("Courier New")); }, &message),
              runtime::errPrinter);
    EXPECT_NE(message.find("fonts-liberation"), std::string::npos);
    unsetenv("FONTCONFIG_FILE");
    FcInitReinitialize();
}

}  // namespace
