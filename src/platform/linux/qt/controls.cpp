#include "platform/linux/qt/controls.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QWheelEvent>

#include "platform/linux/qt/text_box.h"

namespace platform_linux::qt {

namespace {

QStringList textsOf(const std::vector<std::string>& items) {
    QStringList texts;
    for (const std::string& item : items) {
        texts.append(QString::fromStdString(item));
    }
    return texts;
}

class LabelView final : public ControlView {
public:
    LabelView(const platform::Control& control, QWidget& parent)
        : label_(QString::fromStdString(control.caption), &parent) {
        label_.setTextFormat(Qt::PlainText);
        constexpr int oneLine = 8;
        label_.setWordWrap(control.place.height > oneLine);
        label_.setAlignment(Qt::AlignLeft | (label_.wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
    }
    QWidget& widget() override { return label_; }
    QString text() const override { return label_.text(); }
    void setText(const QString& text) override { label_.setText(text); }
    void nameOf(QWidget& named) override {
        label_.setBuddy(&named);
        named.setAccessibleName(label_.text().remove('&'));
    }

private:
    QLabel label_;
};

class TextBoxView final : public ControlView {
public:
    TextBoxView(const platform::Control& control, QWidget& parent, UserEvents& user)
        : box_(control.name, parent, user) {
        box_.setText(QString::fromStdString(control.caption));
    }
    QWidget& widget() override { return box_; }
    QString text() const override { return box_.text(); }
    void setText(const QString& text) override { box_.setText(text); }
    void selectText() override { box_.selectAll(); }

private:
    TextBox box_;
};

// Rows as wide as the list, whatever their text: longer ones are elided, and their tooltip is the whole.
class Rows : public QStyledItemDelegate {
public:
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
    }
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        const int needed = QStyledItemDelegate::sizeHint(option, index).width();
        const QString text = needed > option.rect.width() ? index.data().toString().toHtmlEscaped() : QString();
        QToolTip::showText(event->globalPos(), text, view);
        return true;
    }
};

class List : public QListWidget {
public:
    using QListWidget::QListWidget;

protected:
    // One row is selected, come what may.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override {
        const QItemSelectionModel::SelectionFlags command = QListWidget::selectionCommand(index, event);
        return (command & QItemSelectionModel::Deselect) != 0 ? QItemSelectionModel::NoUpdate : command;
    }
};

class ListBoxView final : public ControlView {
public:
    ListBoxView(const platform::Control& control, QWidget& parent, UserEvents& user) : list_(&parent) {
        list_.setItemDelegate(&rows_);
        list_.setUniformItemSizes(true);
        list_.setTextElideMode(Qt::ElideMiddle);
        list_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QObject::connect(&list_, &QListWidget::currentRowChanged, &list_, [name = control.name, &user](int row) {
            if (row >= 0) {
                user.clicked(name);
            }
        });
        QObject::connect(&list_, &QListWidget::itemDoubleClicked, &list_, [name = control.name, &user] {
            if (QGuiApplication::mouseButtons() == Qt::LeftButton) {
                user.doubleClicked(name);
            }
        });
    }
    QWidget& widget() override { return list_; }
    void setItems(const std::vector<std::string>& items) override {
        list_.clear();
        list_.addItems(textsOf(items));
        list_.setCurrentRow(-1);
    }
    int selected() const override { return list_.currentRow(); }
    void select(int index) override { list_.setCurrentRow(index); }
    void shown() override { list_.scrollToItem(list_.currentItem()); }

private:
    Rows rows_;
    List list_;
};

// The wheel turns what has the focus: a page that is scrolled, or a hand that slips, changes no setting.
class DropDown : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (hasFocus()) {
            QComboBox::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
};

class DropDownListView final : public ControlView {
public:
    DropDownListView(const platform::Control& control, QWidget& parent, UserEvents& user) : list_(&parent) {
        list_.view()->setTextElideMode(Qt::ElideMiddle);
        QObject::connect(&list_, &QComboBox::activated, &list_, [name = control.name, &user] { user.clicked(name); });
    }
    QWidget& widget() override { return list_; }
    void setItems(const std::vector<std::string>& items) override {
        list_.clear();
        list_.addItems(textsOf(items));
        list_.setCurrentIndex(-1);
    }
    int selected() const override { return list_.currentIndex(); }
    void select(int index) override { list_.setCurrentIndex(index); }

private:
    DropDown list_;
};

class ButtonView final : public ControlView {
public:
    ButtonView(const platform::Control& control, QWidget& parent, UserEvents& user)
        : button_(QString::fromStdString(control.caption), &parent) {
        QObject::connect(&button_, &QPushButton::clicked, &button_,
                         [name = control.name, &user] { user.clicked(name); });
    }
    QWidget& widget() override { return button_; }
    QString text() const override { return button_.text(); }
    void setText(const QString& text) override { button_.setText(text); }

private:
    QPushButton button_;
};

std::unique_ptr<ControlView> viewOf(const platform::Control& control, QWidget& parent, UserEvents& user) {
    switch (control.kind) {
        case platform::ControlKind::textBox:
            return std::make_unique<TextBoxView>(control, parent, user);
        case platform::ControlKind::listBox:
            return std::make_unique<ListBoxView>(control, parent, user);
        case platform::ControlKind::dropDownList:
            return std::make_unique<DropDownListView>(control, parent, user);
        case platform::ControlKind::button:
            return std::make_unique<ButtonView>(control, parent, user);
        default:
            break;
    }
    return std::make_unique<LabelView>(control, parent);
}

}  // namespace

std::unique_ptr<ControlView> makeControl(const platform::Control& control, QWidget& parent, UserEvents& user) {
    std::unique_ptr<ControlView> view = viewOf(control, parent, user);
    view->widget().setObjectName(QString::fromStdString(control.name));
    view->widget().setToolTip(QString::fromStdString(control.tooltip));
    return view;
}

}  // namespace platform_linux::qt
