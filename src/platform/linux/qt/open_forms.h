// The forms on the desktop, and the loop that serves them.
#pragma once

#include <QEventLoop>
#include <exception>
#include <vector>

namespace platform_linux::qt {

class QtForm;

class OpenForms {
public:
    void opened(QtForm& form);
    // May be said of a form that is not open.
    void ended(const QtForm& form);

    // As in the port Forms.
    void run();
    void closeAll();

    // The first failure of an event is what run() throws, once the forms, which close now, are closed.
    void failed(const std::exception_ptr& failure);

private:
    std::vector<QtForm*> forms_;
    std::exception_ptr failure_;
    QEventLoop loop_;
};

}  // namespace platform_linux::qt
