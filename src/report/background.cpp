#include "report/background.h"

#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace report {

bool namesPicture(const std::string& sGrafikname) {
    return !sGrafikname.empty() && runtime::upperCase(sGrafikname) != "KEINEGRAFIK";
}

void Background::draw(printer::Printer& printer) {
    session_.log.line(">     Hintergrundbild laden: ", runtime::shown(sGrafikname_));
    if (!session_.platform.system.fileExists(sGrafikname_)) {
        throw runtime::Error(runtime::errFileNotFound, runtime::shown(sGrafikname_));
    }
    if (!picture_) {
        picture_ = pictures_.load(sGrafikname_);
    }
    printer.PaintPicture(picture_->picture(), 0, 0, printer.ScaleWidth(), printer.ScaleHeight());
}

}  // namespace report
