// The printer object that reports are printed with: a current position in twips, a font, a colour, pages.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/spooler.h"
#include "printer/patience.h"
#include "runtime/currency.h"

namespace printer {

inline constexpr int twipsPerInch = 1440;
inline constexpr int pointsPerInch = 72;

struct FontStyle {
    std::string name = "Courier New";
    int charset = platform::charsetOem;
    runtime::Currency size = runtime::Currency::fromUnits(120000);  // points
    bool bold = false;
    bool italic = false;
    bool underline = false;

    bool operator==(const FontStyle&) const = default;
};

// Positions are twips (1/1440 inch) from the top left corner of the printable area, y downwards. The document is opened
// with the first question that needs the device; a page begins with the first thing drawn on it, so a page that
// nothing was drawn on is printed only where NewPage() turns it. Failures are runtime::Error.
class Printer {
public:
    // The title is the job's title. The spooler is borrowed.
    Printer(platform::Spooler& spooler, std::string deviceName, std::string title, Patience patience = {});

    // Prints on a document that is opened by this function, again after one that failed was dropped; the name says
    // whose settings count.
    using OpenDocument = std::function<std::unique_ptr<platform::PrintDocument>()>;
    Printer(std::string deviceName, OpenDocument openDocument, Patience patience = {});

    const std::string& DeviceName() const { return deviceName_; }
    const platform::Surface& Device();

    float TwipsPerPixelX();
    float TwipsPerPixelY();
    // Size of the printable area in twips.
    float ScaleWidth();
    float ScaleHeight();

    double CurrentX() const { return x_; }
    double CurrentY() const { return y_; }
    void CurrentX(double twips) { x_ = twips; }
    void CurrentY(double twips) { y_ = twips; }

    const FontStyle& Font() const { return font_; }
    void FontSize(runtime::Currency points) { font_.size = points; }
    void FontBold(bool on) { font_.bold = on; }
    void FontItalic(bool on) { font_.italic = on; }
    void FontUnderline(bool on) { font_.underline = on; }
    // Takes the font for the following text; returns what the device has for it.
    platform::FontFace Font(const FontStyle& font);

    void ForeColor(platform::Color color) { color_ = color; }

    // The driver's numbers; see platform::PageOption. Setting takes effect with the next page begun.
    int Option(platform::PageOption option);
    void Option(platform::PageOption option, int value);

    // Draws the text at the current position, its cells' top left corner there, and moves x by its width.
    void Print(std::string_view text, platform::TextRole role = platform::TextRole::content);

    // Paints a whole picture, stretched to the area given in twips; each edge lies on the nearest pixel.
    void PaintPicture(const std::shared_ptr<const platform::Picture>& picture, double left, double top, double width,
                      double height);

    // The page's surface for drawing in device pixels. Begins the page; the current font is selected anew for the next
    // text that is printed, so whoever draws may select another one.
    platform::Surface& Canvas();

    // Ends the page, an empty one too.
    void NewPage();

    // Ends the page where something was drawn on it, and hands the document to the printer.
    void EndDoc();

    // After a failure: hands over the pages that are finished, drops the one begun. Without a finished page nothing is
    // left behind. Where handing over is what failed, nothing happens.
    void Release();

    // Pages that the printer has taken, and whether there are some of which nobody knows.
    int PagesHandedOver() const;
    bool PerhapsHandedOver() const;

    // What the documents say of themselves; see platform::PrintDocument::remarks().
    std::vector<std::string> Remarks() const;

    // Keeps what could not be handed over; see platform::PrintDocument::saveRest().
    std::vector<std::string> SaveRest(const std::string& path);

private:
    platform::PrintDocument& document();
    platform::Surface& surface() { return document().surface(); }
    template <typename Step>
    void attempt(Step step);
    void beginPage();
    void endPage();
    void drop();
    void selectFont();

    std::string deviceName_;
    OpenDocument openDocument_;
    Patience patience_;
    std::unique_ptr<platform::PrintDocument> document_;
    bool refused_ = false;              // handing the document over failed
    int pagesHandedOver_ = 0;           // of documents that are gone
    bool perhapsHandedOver_ = false;    // likewise
    std::vector<std::string> remarks_;  // likewise
    bool pageOpen_ = false;
    int pagesEnded_ = 0;
    double x_ = 0;
    double y_ = 0;
    FontStyle font_;
    FontStyle selected_;
    int selectedDpi_ = 0;
    platform::Color color_;
};

}  // namespace printer
