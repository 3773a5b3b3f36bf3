// The timer of a form, which rests while nobody can see the form.
#pragma once

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace platform_linux::qt {

class SeenTimer : public QObject {
public:
    SeenTimer(QWidget& window, std::function<void()> passed);

    // As in the port Form.
    void want(int milliseconds);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool seen() const;
    void look();

    QWidget& window_;
    std::function<void()> passed_;
    QTimer timer_;
    QTimer late_;  // looks when the event under way is over
    int interval_ = 0;
    bool rested_ = false;
};

}  // namespace platform_linux::qt
