// The host's DOS code page.
#pragma once

namespace platform_windows {

// Of the system's OEM code page and those of its own language and the user's, the first that a DOS program can have
// written in: where the system is set to UTF-8 throughout, the host still writes as it always did. 850 where none is.
unsigned dosCodePageOf(unsigned system, unsigned systemLanguage, unsigned userLanguage) noexcept;

// The code page that print files are written in. All that reads bytes of the host asks here.
unsigned dosCodePage() noexcept;

}  // namespace platform_windows
