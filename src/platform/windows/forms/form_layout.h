// Where the controls of a form are when the user makes it larger.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <vector>

#include "platform/form_design.h"

namespace platform_windows::forms {

class FormLayout {
public:
    FormLayout() = default;
    // The form's room as it is designed, in dialog units.
    FormLayout(HWND form, int width, int height);

    void add(HWND window, const platform::Control& control);

    // The form's room has another size now.
    void arrange() const;

    // The window's least size outside its frame, in pixels; no more than its screen has room for.
    SIZE least() const;

private:
    struct Moving {
        HWND window = nullptr;
        RECT designed{};
        platform::Sizing sizing = platform::Sizing::fixed;
    };

    HWND form_ = nullptr;
    SIZE designed_{};
    std::vector<Moving> moving_;
};

}  // namespace platform_windows::forms
