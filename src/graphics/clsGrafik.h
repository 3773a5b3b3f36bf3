// One graphic of a job: which picture file, where on the page, how large.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "graphics/picture_cache.h"
#include "printer/Printer.h"
#include "printer/clsDrucker.h"
#include "session/session.h"

namespace graphics {

// Where a graphic is printed.
struct GraphicTarget {
    printer::Printer& printer;
    const printer::clsDrucker& objPrinterUtil;  // the margins that absolute positions begin at
    std::int32_t lngXOffset = 0;                // reference point of relative positions
    std::int32_t lngYOffset = 0;
};

// A graphic macro of number n is the file "LASER\KRVWin.M" with n behind it, in the current directory; the file
// "LASER\KRVWinIn.M" with n beside it, whatever is in it, has the picture printed inverted. A graphic may have a file
// of its own instead.
class clsGrafik {
public:
    static constexpr std::int32_t errFileMissing = 20010;    // a picture file that cannot be found, while it is loaded
    static constexpr std::int32_t errPrinting = 232943;      // anything that goes wrong in printing
    static constexpr std::int32_t errMissing = -2147194503;  // raised while debugging for a file that is not there
    static constexpr std::int32_t errUnreadable = -2147194502;  // raised for a file that cannot be loaded
    static constexpr float ownPosition = -1;

    // Both are borrowed for as long as Makro() is set.
    clsGrafik(session::Session& session, PictureCache& pictures) : session_(&session), pictures_(&pictures) {}

    // Whether the position is measured from the corner of the sheet, less the margins, or from a reference point.
    bool AbsolutPos() const { return absolutPos_; }
    void AbsolutPos(bool absolute) { absolutPos_ = absolute; }

    // What width and height are divided by. 2540/1440 prints a picture in its natural size, 5.5 one of 300 dots per
    // inch in its true size where the screen has 96.
    float ScaleFaktor() const { return scaleFaktor_; }
    void ScaleFaktor(float factor) { scaleFaktor_ = factor; }

    // "CM" or "INCH"; read in upper case, kept as it was written.
    std::string Masseinheit() const;
    void Masseinheit(std::string unit) { masseinheit_ = std::move(unit); }

    // The position in that unit times 1440: twips where the unit is inches.
    float YPos() const { return yPos_; }
    void YPos(float position) { yPos_ = position; }
    float XPos() const { return xPos_; }
    void XPos(float position) { xPos_ = position; }

    // Setting the number loads the picture: that of Bildname() or, where that is empty, of the number's macro file. A
    // file that is missing leaves the graphic without a picture; but while debugging it is errMissing, to be noticed.
    // Any other failure is errUnreadable. Both have the source "KRVWINPR.CLSGRAFIK".
    std::uint8_t Makro() const { return makro_; }
    void Makro(std::uint8_t number);

    const std::string& Bildname() const { return bildname_; }
    void Bildname(std::string path) { bildname_ = std::move(path); }

    // Null where there is none. It is decoded when it is first asked for; throws what CheckedPicture::picture() throws.
    std::shared_ptr<const platform::Picture> Bild() const;

    // Natural size in hundredths of a millimetre: a pixel of the picture is one of the screen.
    float Width() const { return width_; }
    void Width(float width) { width_ = width; }
    float Height() const { return height_; }
    void Height(float height) { height_ = height; }

    // Prints the graphic at (x, y), in the unit and scaling of XPos() and YPos(), which exactly -1 stands for. Appends
    // to the message what was done: the mode, the area in twips and the scale factor, or that there is no picture, in
    // which case nothing is printed. Every failure is errPrinting, source "clsGrafik_PrintGrafik", naming the cause.
    void PrintGrafik(const GraphicTarget& ziel, std::string& message, float x = ownPosition,
                     float y = ownPosition) const;

    // The same at the graphic's own position, but without a picture it fails. For callers that must not pass over it; a
    // job does.
    void PrintGrafik2(const GraphicTarget& ziel, std::string& message) const;

private:
    struct Area {  // twips
        float left;
        float top;
        float width;
        float height;
    };

    void load();
    void ignoreOrRaise(const runtime::Error& error) const;
    bool wantsInversion() const;
    std::string macroFolder() const;

    Area areaAt(const GraphicTarget& ziel, float x, float y) const;
    void paint(const GraphicTarget& ziel, const Area& area, std::string& message) const;

    session::Session* session_;
    PictureCache* pictures_;
    bool absolutPos_ = false;
    float scaleFaktor_ = 0;
    std::string masseinheit_;
    float yPos_ = 0;
    float xPos_ = 0;
    std::uint8_t makro_ = 0;
    std::string bildname_;
    std::shared_ptr<CheckedPicture> bild_;
    float width_ = 0;
    float height_ = 0;
};

}  // namespace graphics
