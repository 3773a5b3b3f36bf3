// What a PDF viewer's library takes to load a document and to render its first page: poppler, milliseconds.
//
//     poppler-first-page FILE.pdf DPI
#include <poppler-document.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: poppler-first-page FILE.pdf DPI\n", stderr);
        return 1;
    }
    const auto begin = std::chrono::steady_clock::now();
    const std::unique_ptr<poppler::document> document(poppler::document::load_from_file(argv[1]));
    const std::unique_ptr<poppler::page> page(document ? document->create_page(0) : nullptr);
    if (!page) {
        std::fputs("poppler-first-page: no page\n", stderr);
        return 1;
    }
    poppler::page_renderer renderer;
    renderer.set_render_hint(poppler::page_renderer::antialiasing, true);
    renderer.set_render_hint(poppler::page_renderer::text_antialiasing, true);
    const double dpi = std::atof(argv[2]);
    const poppler::image image = renderer.render_page(page.get(), dpi, dpi);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    std::printf("%.2f\n", image.is_valid() ? took.count() : -1.0);
    return image.is_valid() ? 0 : 1;
}
