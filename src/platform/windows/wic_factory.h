// The system's picture codecs: Windows Imaging Component.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <wincodec.h>

#include "pictures/foreign_picture.h"
#include "platform/windows/com_object.h"

namespace platform_windows {

// COM and the factory of the codecs, as long as this lives; to be used on one thread. Throws errInvalidPicture where
// the system has none, as Windows XP, which had to be given them.
class WicFactory {
public:
    explicit WicFactory(const CLSID& codecs = CLSID_WICImagingFactory);

    IWICImagingFactory& get() const { return *factory_; }

private:
    ComScope com_;
    ComObject<IWICImagingFactory> factory_;
};

// Turns failures of the codecs into errors: std::bad_alloc, errInvalidPicture.
class WicCheck {
public:
    explicit WicCheck(pictures::ForeignKind kind) : kind_(kind) {}
    void operator()(HRESULT result) const;

private:
    pictures::ForeignKind kind_;
};

const GUID& containerOf(pictures::ForeignKind kind);

// The kinds of pixels that a Picture has, too: numbers in a palette, or shades of grey from black to white.
const GUID& indexedFormat(int bitsPerPixel);
const GUID& greyFormat(int bitsPerPixel);

}  // namespace platform_windows
