#include "platform/windows/wic_factory.h"

#include <new>

#include "platform/windows/system_error.h"
#include "runtime/error.h"

namespace platform_windows {

namespace {

[[noreturn]] void refuseWithoutCodecs(HRESULT result) {
    if (isOutOfMemory(result)) {
        throw std::bad_alloc();
    }
    const bool missing = result == REGDB_E_CLASSNOTREG || result == HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND);
    const std::string reason =
        missing ? "Auf diesem Windows fehlt die Windows Imaging Component, die PNG, JPEG, GIF und TIFF liest ("
                : "Windows kann auf diesem Rechner keine Bilder dieser Art lesen (";
    throw runtime::Error(runtime::errInvalidPicture, reason + codeOf(result) + "). Bitte " +
                                                         (missing ? "sie installieren oder " : "") +
                                                         "das Bild als BMP speichern.");
}

}  // namespace

WicFactory::WicFactory(const CLSID& codecs) {
    void* created = nullptr;
    const HRESULT result = ::CoCreateInstance(codecs, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory, &created);
    if (FAILED(result)) {
        refuseWithoutCodecs(result);
    }
    factory_.reset(static_cast<IWICImagingFactory*>(created));
}

void WicCheck::operator()(HRESULT result) const {
    if (SUCCEEDED(result)) {
        return;
    }
    if (isOutOfMemory(result)) {
        throw std::bad_alloc();
    }
    switch (result) {
        case WINCODEC_ERR_COMPONENTNOTFOUND:
        case REGDB_E_CLASSNOTREG:
        case WINCODEC_ERR_UNSUPPORTEDVERSION:
        case WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT:
        case WINCODEC_ERR_UNSUPPORTEDOPERATION:
            pictures::refuseForeign(kind_, "ist von einer Art, die Windows nicht kennt (" + codeOf(result) + ")");
        default:
            pictures::refuseForeign(kind_, "ist beschädigt (" + codeOf(result) + ")");
    }
}

const GUID& containerOf(pictures::ForeignKind kind) {
    switch (kind) {
        case pictures::ForeignKind::png:
            return GUID_ContainerFormatPng;
        case pictures::ForeignKind::jpeg:
            return GUID_ContainerFormatJpeg;
        case pictures::ForeignKind::gif:
            return GUID_ContainerFormatGif;
        case pictures::ForeignKind::tiff:
            break;
    }
    return GUID_ContainerFormatTiff;
}

const GUID& indexedFormat(int bitsPerPixel) {
    return bitsPerPixel == 1   ? GUID_WICPixelFormat1bppIndexed
           : bitsPerPixel == 2 ? GUID_WICPixelFormat2bppIndexed
           : bitsPerPixel == 4 ? GUID_WICPixelFormat4bppIndexed
                               : GUID_WICPixelFormat8bppIndexed;
}

const GUID& greyFormat(int bitsPerPixel) {
    return bitsPerPixel == 1   ? GUID_WICPixelFormatBlackWhite
           : bitsPerPixel == 2 ? GUID_WICPixelFormat2bppGray
           : bitsPerPixel == 4 ? GUID_WICPixelFormat4bppGray
                               : GUID_WICPixelFormat8bppGray;
}

}  // namespace platform_windows
