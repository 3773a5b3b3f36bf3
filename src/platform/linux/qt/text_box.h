// A box for one line of text, which takes only what the form's presenter accepts.
#pragma once

#include <QLineEdit>
#include <QString>
#include <optional>
#include <string>

#include "platform/linux/qt/user_events.h"

namespace platform_linux::qt {

class TextBox : public QLineEdit {
public:
    // Whether Enter in it is the user's, instead of pressing the form's default button.
    enum class Enter { defaultButton, clicks };

    TextBox(std::string name, QWidget& parent, UserEvents& user, Enter enter);

    // What the box takes of a text that the user wants in it instead of what is there; how much of it stands before
    // the end of what is taken. Nothing where none of what is new is taken.
    struct Taken {
        QString text;
        int end = 0;
    };
    std::optional<Taken> taken(const QString& wanted) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool accepts(const QString& text, char32_t character) const;
    void tellFocus();

    std::string name_;
    UserEvents& user_;
    Enter enter_;
    QString before_;               // the text before the change under way
    bool focusedByMouse_ = false;  // and the button is still down
};

}  // namespace platform_linux::qt
