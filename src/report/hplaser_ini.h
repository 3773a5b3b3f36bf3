// What the host's settings file "hplaser.ini" says of barcodes and graphics. The host shares the file with its DOS
// printer drivers; it lies in the current directory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "graphics/clsGrafiken.h"
#include "platform/profile.h"
#include "session/session.h"

namespace report {

// Where the barcode height stands, as messages name it.
inline constexpr const char* barcodeHeightPlace = "(BarcodeHeight in [Font] von hplaser.ini)";

// A key that is missing, empty or "Vorgabe" is not set; a missing file sets nothing. Decimals have "." or "," as their
// separator, whatever the user's locale is.
class HplaserIni {
public:
    // Opens the file. Session and cache are borrowed; the graphics read borrow them too. A file that is there but
    // cannot be read is told, and sets nothing.
    HplaserIni(session::Session& session, graphics::PictureCache& pictures);

    // Height of barcodes in inches, "BarcodeHeight" in "Font": as much of it as is a number; defaultBarcodeHeight where
    // it is not set. errOverflow.
    double GetBarcodeHeight();

    // Whether scale factors are adapted to the screen: "AutoScaleDPI" in "Modus" is "TRUE" in any case. Kept for the
    // graphics read later.
    bool AutoScaleDPI();

    // Reads "Grafik1" to "Grafik9" of a section into the set, and after each the size that "GrafikSize1" to
    // "GrafikSize9" gives to what the set then holds. The offset is added to the macro numbers, whose sum is at most
    // 255 (errOverflow). A field that must be a number and is none is errTypeMismatch, as is a flag that is no truth
    // value; what a picture throws while it is loaded is the caller's too. The detail says which key it was.
    void ReadGrafikPositionen(graphics::clsGrafiken& grafiken, std::string_view section, std::uint8_t offset,
                              float sngScaleFactor);

    // The factor for the resolution of the screen: smaller as the screen has more than 96 pixels per inch.
    float ScaleDPIfactor(float factor);

private:
    struct Section {
        graphics::clsGrafiken& grafiken;
        std::string_view name;
        std::uint8_t offset;
        float sngScaleFactor;
    };

    void addGraphic(const Section& section, std::uint8_t key, std::string_view value);
    void resizeGraphics(const Section& section, std::string_view value);
    std::string normalisedScale(const std::string& field);
    template <typename Step>
    void readKey(std::string_view section, const std::string& key, Step step);
    std::string read(std::string_view section, std::string_view key);

    session::Session& session_;
    graphics::PictureCache& pictures_;
    std::unique_ptr<platform::Profile> profile_;
    bool blnAutoScaleDPI_ = false;
};

}  // namespace report
