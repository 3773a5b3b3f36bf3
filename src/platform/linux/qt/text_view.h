// Many lines to be read, selected and copied by mouse and by keyboard.
#pragma once

#include <QPlainTextEdit>

namespace platform_linux::qt {

class TextView : public QPlainTextEdit {
public:
    explicit TextView(QWidget& parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace platform_linux::qt
