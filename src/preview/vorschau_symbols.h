// The symbols on the preview's tool bar.
#pragma once

#include "platform/symbol.h"

namespace preview::symbols {

platform::Symbol firstPage();
platform::Symbol previousPage();
platform::Symbol nextPage();
platform::Symbol lastPage();
platform::Symbol zoomOut();
platform::Symbol zoomIn();
platform::Symbol wholePage();
platform::Symbol pageWidth();
platform::Symbol previousHit();
platform::Symbol nextHit();
platform::Symbol openFile();
platform::Symbol print();
platform::Symbol savePdf();
platform::Symbol close();

}  // namespace preview::symbols
