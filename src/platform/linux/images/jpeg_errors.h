// How libjpeg reports to its caller.
#pragma once

#include <csetjmp>
#include <cstdio>
// libjpeg's own header needs those above.
#include <jpeglib.h>

#include "platform/linux/images/guarded.h"

namespace platform_linux::images {

// An error manager that leaves by a jump with the first error, and the first warning that stands for lost pixels. To be
// given to jpeg_create_...() as "err".
class JpegErrors {
public:
    JpegErrors();
    JpegErrors(const JpegErrors&) = delete;
    JpegErrors& operator=(const JpegErrors&) = delete;

    jpeg_error_mgr* manager() { return &shared_.manager; }

    // Runs a step of calls of the library as completes() does; throws what a jump was about: std::bad_alloc, or
    // errInvalidPicture.
    template <typename Step>
    void run(const Step& step) {
        if (!completes(shared_.jump, step)) {
            refuse();
        }
    }

private:
    [[noreturn]] void refuse() const;

    // The library hands out the first member; the second is found behind it.
    struct Shared {
        jpeg_error_mgr manager{};
        std::jmp_buf jump{};
    };

    [[noreturn]] static void onError(j_common_ptr info);
    static void onMessage(j_common_ptr info, int level);

    Shared shared_;
};

}  // namespace platform_linux::images
