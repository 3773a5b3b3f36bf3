#include "platform/linux/qt/text_view.h"

#include <QFontDatabase>
#include <QKeyEvent>

namespace platform_linux::qt {

TextView::TextView(QWidget& parent) : QPlainTextEdit(&parent) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(parent.font().pointSizeF());
    setFont(font);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
}

// Enter belongs to the form's default button.
void TextView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->ignore();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

}  // namespace platform_linux::qt
