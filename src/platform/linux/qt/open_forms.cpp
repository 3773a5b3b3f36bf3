#include "platform/linux/qt/open_forms.h"

#include <algorithm>
#include <utility>

#include "platform/linux/qt/qt_form.h"

namespace platform_linux::qt {

void OpenForms::opened(QtForm& form) {
    if (std::find(forms_.begin(), forms_.end(), &form) == forms_.end()) {
        forms_.push_back(&form);
    }
}

void OpenForms::ended(const QtForm& form) {
    std::erase(forms_, &form);
    if (forms_.empty()) {
        loop_.quit();
    }
}

void OpenForms::run() {
    if (!forms_.empty()) {
        loop_.exec();
    }
    if (failure_ != nullptr) {
        std::rethrow_exception(std::exchange(failure_, nullptr));
    }
}

void OpenForms::closeAll() {
    for (QtForm* form : std::vector(forms_)) {
        form->close();
    }
}

void OpenForms::failed(const std::exception_ptr& failure) {
    if (failure_ == nullptr) {
        failure_ = failure;
    }
    closeAll();
}

}  // namespace platform_linux::qt
