#include "platform/linux/qt/text_box.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QValidator>
#include <algorithm>
#include <utility>

namespace platform_linux::qt {

namespace {

// Sees every change before it counts, be it typed, pasted, dropped or composed by an input method.
class Filter : public QValidator {
public:
    explicit Filter(TextBox& box) : QValidator(&box), box_(box) {}

    State validate(QString& input, int& cursor) const override {
        const std::optional<TextBox::Taken> taken = box_.taken(input);
        if (!taken) {
            return Invalid;
        }
        if (taken->text != input) {
            input = taken->text;
            cursor = taken->end;
        }
        return Acceptable;
    }

private:
    TextBox& box_;
};

bool endsLine(char32_t character) {
    return character == U'\n' || character == U'\r' || character == 0x2028 || character == 0x2029;
}

bool isControl(char32_t character) { return character < 0x20 || character == 0x7F; }

}  // namespace

TextBox::TextBox(std::string name, QWidget& parent, UserEvents& user, Enter enter)
    : QLineEdit(&parent), name_(std::move(name)), user_(user), enter_(enter) {
    setValidator(new Filter(*this));  // which belongs to the box
    connect(this, &QLineEdit::textEdited, this, [this] {
        if (std::exchange(before_, text()) != text()) {
            user_.changed(name_);
        }
    });
    connect(this, &QLineEdit::textChanged, this, [this] { before_ = text(); });
}

std::optional<TextBox::Taken> TextBox::taken(const QString& wanted) const {
    if (user_.busy()) {
        return Taken{wanted, 0};
    }
    const auto [gone, added] = std::mismatch(before_.begin(), before_.end(), wanted.begin(), wanted.end());
    const auto [goneEnd, addedEnd] = std::mismatch(before_.rbegin(), std::make_reverse_iterator(gone), wanted.rbegin(),
                                                   std::make_reverse_iterator(added));
    const QString start(wanted.begin(), added - wanted.begin());
    const QString inserted(added, addedEnd.base() - added);
    const QString rest(addedEnd.base(), wanted.end() - addedEnd.base());
    QString kept;
    for (const char32_t character : inserted.toUcs4()) {
        if (endsLine(character)) {
            break;
        }
        // The first character taken replaces what was selected.
        if (!isControl(character) && accepts(kept.isEmpty() ? before_ : start + kept + rest, character)) {
            kept += QString::fromUcs4(&character, 1);
        }
    }
    if (kept.isEmpty() && !inserted.isEmpty()) {
        return std::nullopt;
    }
    return Taken{start + kept + rest, static_cast<int>(start.size() + kept.size())};
}

bool TextBox::accepts(const QString& text, char32_t character) const {
    return user_.accepts(name_, text.toStdString(), character);
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Backspace && !accepts(text(), U'\b')) {
        return;
    }
    if (enter_ == Enter::clicks && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        user_.clicked(name_);
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TextBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    switch (event->reason()) {
        case Qt::ActiveWindowFocusReason:
        case Qt::PopupFocusReason:
            break;  // it had the focus all the time
        case Qt::MouseFocusReason:
            // The click that gives the focus sets the cursor, which would undo what the presenter selects.
            focusedByMouse_ = true;
            break;
        default:
            user_.focused(name_);
    }
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    focusedByMouse_ = false;
    QLineEdit::focusOutEvent(event);
}

void TextBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    tellFocus();
}

void TextBox::contextMenuEvent(QContextMenuEvent* event) {
    tellFocus();
    QLineEdit::contextMenuEvent(event);
}

// Nothing is told where the user has selected a part of the text with that click.
void TextBox::tellFocus() {
    if (std::exchange(focusedByMouse_, false) && !hasSelectedText()) {
        user_.focused(name_);
    }
}

}  // namespace platform_linux::qt
