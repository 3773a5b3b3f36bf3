// The print form of the preview: which pages go to which printer, and how far that is.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/forms.h"
#include "preview/preview_pages.h"
#include "preview/preview_print.h"
#include "report/FFortschritt.h"
#include "session/session.h"

namespace preview {

// Shown once, either to print or to save a PDF file. Over its owner, which takes no input meanwhile.
class FDrucken final : public platform::FormEvents {
public:
    // Session and pages are borrowed; page is the one that is shown.
    FDrucken(session::Session& session, const PreviewPages& pages, std::size_t page);

    // Does not wait.
    void Show(platform::Form& owner, const std::string& printer);
    // Asks for the file's name, and saves all pages. Where the program writes no PDF files itself, shows the form with
    // the printer that does, or says how to get one.
    void SavePdf(platform::Form& owner);

    // Whether it prints.
    bool busy() const { return print_ != nullptr; }

    void clicked(const std::string& control) override;
    void changed(const std::string& control) override;
    bool accepts(const std::string& control, const std::string& text, char32_t character) override;
    void idle() override;
    void closed() override;

private:
    void create(platform::Form& owner);
    void fillPrinters(const std::string& printer);
    void savePdfAs(platform::Form& owner, const std::string& file);
    std::string suggestedFile() const;
    std::optional<std::pair<std::size_t, std::size_t>> chosenPages() const;
    void start(PrintRequest request);
    void work();
    void fail(const runtime::Error& error);
    void showProgress();
    void endCancelled();
    void lookWhileWaiting();
    void enableChoice(bool enabled);

    session::Session& session_;
    const PreviewPages& pages_;
    std::size_t page_;
    std::unique_ptr<platform::Form> form_;
    std::vector<std::string> printers_;
    std::unique_ptr<PreviewPrint> print_;
    std::optional<report::FFortschritt> waiting_;  // for a printer that does not answer
    bool savesPdf_ = false;
    bool working_ = false;  // a step is under way
    bool cancelled_ = false;
};

}  // namespace preview
