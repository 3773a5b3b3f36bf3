// The preview: shows the pages of a print file as its printer would print them, finds text in them, and prints them.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <tuple>

#include "platform/forms.h"
#include "preview/FDrucken.h"
#include "preview/find_run.h"
#include "preview/preview_pages.h"
#include "preview/sheet_pane.h"
#include "preview/tray_names.h"
#include "session/session.h"

namespace preview {

// What takes its time (far pages, a search, printing) is done in slices while nothing else is to be done. What goes
// wrong is said in the place of the page.
class FVorschau final : public platform::FormEvents {
public:
    // The session must outlive it.
    FVorschau(session::Session& session, PreviewOrder order);

    // Shows the form, still without a page, and does not wait. runtime::Error where there is no desktop.
    void Show();

    // Reads the file, prepares the printer and shows the first page. What fails is shown. Where no file was ordered,
    // the user is asked for one.
    void DoVorschau();

    void clicked(const std::string& control) override;
    void changed(const std::string& control) override;
    void focused(const std::string& control) override;
    bool accepts(const std::string& control, const std::string& text, char32_t character) override;
    void paint(const std::string& control, platform::Canvas& canvas) override;
    void resized(const std::string& control) override;
    void pointed(const std::string& control, const platform::Pointer& pointer) override;
    void wheeled(const std::string& control, const platform::Wheel& wheel) override;
    void scrolled(const std::string& control, int across, int down) override;
    void idle() override;
    void closed() override;

private:
    using Start = SheetPane::Start;

    static constexpr PreviewPages::Milliseconds slice{10};

    void setTitle();
    void openFile();
    void startReading();
    void load(std::size_t page, Start start);
    void showAnew(std::size_t page, Start start);
    bool read();
    bool reading() const { return pages_ && !pages_->complete(); }
    void readOn();
    void readAll();
    void readUpTo(std::size_t page);
    void prepare();
    bool hasPages() const { return ready_ && pages_->pageCount() > 0; }
    const PreviewPage* pageShown();
    void goTo(std::size_t page, Start start);
    void turn(int pages, Start start);
    void turnByScrolling(int pages) { turn(pages, pages > 0 ? Start::top : Start::bottom); }
    void goTowardsTarget();
    void showTarget();
    void goToTypedPage();
    void setZoom(const Zoom& zoom);
    void takeTypedZoom();
    void beginSearch(const std::string& text);
    void startSearch(const std::string& text);
    void find(FindRun::Direction direction);
    void workOnSearch();
    void markHits();
    void copySelection();
    void print();
    void savePdf();
    void readAgain();
    void close();

    // Lets the form say what is the case now.
    void refresh();
    void show(const char* control, std::string text, std::string& shown);
    void enableCommands();
    bool asksForTray();
    std::string statusText();
    std::string printerText() const;
    std::string jumpText() const;

    session::Session& session_;
    PreviewOrder order_;
    std::unique_ptr<platform::Form> form_;
    std::optional<SheetPane> pane_;
    std::unique_ptr<PreviewPages> pages_;
    bool ready_ = false;      // the pages are prepared
    std::size_t shown_ = 0;   // page; 0 where there is none
    std::size_t target_ = 0;  // where the user wants to be; on the way there while it is another one
    Start start_ = Start::top;
    bool revealsHit_ = false;  // when the page is there
    FindRun find_;
    TrayNames trays_;
    std::unique_ptr<FDrucken> drucken_;
    // What the form shows already.
    std::string statusShown_;
    std::string zoomShown_;
    std::string foundShown_;
    std::string pageFieldShown_;
    std::string countShown_;
    std::optional<std::tuple<std::size_t, bool, bool>> enabledFor_;
};

}  // namespace preview
