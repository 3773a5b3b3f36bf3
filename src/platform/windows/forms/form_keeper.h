// What the forms of a program have in common.
#pragma once

namespace platform_windows::forms {

class WindowsForm;

class FormKeeper {
public:
    virtual ~FormKeeper() = default;
    // The form is gone.
    virtual void gone(WindowsForm& form) noexcept = 0;
    // An exception is under way that an event has thrown.
    virtual void failed() noexcept = 0;
};

}  // namespace platform_windows::forms
