#include "platform/linux/qt/seen_timer.h"

#include <QEvent>
#include <QWindow>
#include <utility>

namespace platform_linux::qt {

SeenTimer::SeenTimer(QWidget& window, std::function<void()> passed) : window_(window), passed_(std::move(passed)) {
    connect(&timer_, &QTimer::timeout, this, [this] {
        timer_.setInterval(interval_);
        passed_();
    });
    late_.setSingleShot(true);
    connect(&late_, &QTimer::timeout, this, [this] { look(); });
    window_.installEventFilter(this);
}

void SeenTimer::want(int milliseconds) {
    interval_ = milliseconds;
    rested_ = false;
    timer_.stop();
    look();
}

// A window that is shown has a window of the system, which alone knows whether the desktop has taken it away.
bool SeenTimer::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Show:
            if (watched == &window_ && window_.windowHandle() != nullptr) {
                window_.windowHandle()->installEventFilter(this);
            }
            [[fallthrough]];
        case QEvent::Hide:
        case QEvent::Expose:
        case QEvent::WindowStateChange:
            late_.start(0);
            break;
        default:
            break;
    }
    return false;
}

bool SeenTimer::seen() const {
    const QWindow* handle = window_.windowHandle();
    return window_.isVisible() && !window_.isMinimized() && handle != nullptr && handle->isExposed();
}

void SeenTimer::look() {
    if (interval_ <= 0 || !seen()) {
        rested_ = rested_ || timer_.isActive();
        timer_.stop();
    } else if (!timer_.isActive()) {
        timer_.start(std::exchange(rested_, false) ? 0 : interval_);
    }
}

}  // namespace platform_linux::qt
