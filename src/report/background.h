// The picture behind every page of a job.
#pragma once

#include <memory>
#include <string>

#include "graphics/picture_cache.h"
#include "printer/Printer.h"
#include "session/session.h"

namespace report {

// Whether a job's argument is a picture's file: it is not empty, nor "KEINEGRAFIK" in any case.
bool namesPicture(const std::string& sGrafikname);

class Background {
public:
    // See namesPicture(). Session and cache are borrowed.
    Background(session::Session& session, graphics::PictureCache& pictures, std::string sGrafikname)
        : session_(session), pictures_(pictures), sGrafikname_(std::move(sGrafikname)) {}

    bool wanted() const { return namesPicture(sGrafikname_); }

    // Draws the picture over the whole printable area. It is loaded once, but its file must be there for every page:
    // errFileNotFound. Otherwise throws what the picture throws.
    void draw(printer::Printer& printer);

private:
    session::Session& session_;
    graphics::PictureCache& pictures_;
    std::string sGrafikname_;
    std::shared_ptr<graphics::CheckedPicture> picture_;
};

}  // namespace report
