#include "platform/linux/images/jpeg_errors.h"

#include <jerror.h>

#include <new>

#include "pictures/foreign_picture.h"

namespace platform_linux::images {

namespace {

// Warnings after which every pixel is still what the file says.
bool isHarmless(int message) {
    return message == JWRN_EXTRANEOUS_DATA || message == JWRN_ADOBE_XFORM || message == JWRN_JFIF_MAJOR ||
           message == JWRN_TOO_MUCH_DATA || message == JWRN_BOGUS_PROGRESSION;
}

}  // namespace

JpegErrors::JpegErrors() {
    jpeg_std_error(&shared_.manager);
    shared_.manager.error_exit = onError;
    shared_.manager.emit_message = onMessage;
    shared_.manager.output_message = [](j_common_ptr) {};
}

void JpegErrors::refuse() const {
    switch (shared_.manager.msg_code) {
        case JERR_OUT_OF_MEMORY:
            throw std::bad_alloc();
        case JERR_SOF_UNSUPPORTED:
        case JERR_CONVERSION_NOTIMPL:
        case JERR_ARITH_NOTIMPL:
            pictures::refuseForeign(pictures::ForeignKind::jpeg, "ist auf eine Art codiert, die selten vorkommt");
        default:
            pictures::refuseDamaged(pictures::ForeignKind::jpeg);
    }
}

void JpegErrors::onError(j_common_ptr info) { std::longjmp(reinterpret_cast<Shared*>(info->err)->jump, 1); }

void JpegErrors::onMessage(j_common_ptr info, int level) {
    if (level < 0 && !isHarmless(info->err->msg_code)) {
        onError(info);
    }
}

}  // namespace platform_linux::images
