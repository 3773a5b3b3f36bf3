#include "platform/linux/qt/controls.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QWheelEvent>

#include "platform/linux/qt/canvas_view.h"
#include "platform/linux/qt/table_view.h"
#include "platform/linux/qt/text_view.h"
#include "platform/linux/qt/tool_button.h"
#include "platform/linux/qt/whole_text_tips.h"

namespace platform_linux::qt {

namespace {

QStringList textsOf(const std::vector<std::string>& items) {
    QStringList texts;
    for (const std::string& item : items) {
        texts.append(QString::fromStdString(item));
    }
    return texts;
}

// One whose room may become too small shows by "…" that there is more.
class Label : public QLabel {
public:
    using QLabel::QLabel;
    void elide() { elided_ = true; }

protected:
    void paintEvent(QPaintEvent* event) override {
        if (!elided_) {
            QLabel::paintEvent(event);
            return;
        }
        QPainter painter(this);
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
        const int flags = static_cast<int>(alignment()) | (buddy() != nullptr ? int{Qt::TextShowMnemonic} : 0);
        style()->drawItemText(&painter, contentsRect(), flags, palette(), isEnabled(), shown, foregroundRole());
    }

private:
    bool elided_ = false;
};

class LabelView final : public ControlView {
public:
    LabelView(const platform::Control& control, QWidget& parent)
        : label_(QString::fromStdString(control.caption), &parent) {
        label_.setTextFormat(Qt::PlainText);
        constexpr int oneLine = 8;
        label_.setWordWrap(control.place.height > oneLine);
        label_.setAlignment(Qt::AlignLeft | (label_.wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
        if (control.sizing == platform::Sizing::bottomLine) {
            label_.setWordWrap(false);
            label_.elide();
        }
    }
    QWidget& widget() override { return label_; }
    QString text() const override { return label_.text(); }
    void setText(const QString& text) override { label_.setText(text); }
    void nameOf(QWidget& named) override {
        label_.setBuddy(&named);
        named.setAccessibleName(label_.text().remove('&'));
    }

private:
    Label label_;
};

class TextBoxView final : public ControlView {
public:
    TextBoxView(const platform::Control& control, const Surroundings& form)
        : box_(control.name, form.parent, form.user, form.enter) {
        box_.setText(QString::fromStdString(control.caption));
    }
    QWidget& widget() override { return box_; }
    QString text() const override { return box_.text(); }
    void setText(const QString& text) override { box_.setText(text); }
    void selectText() override { box_.selectAll(); }

private:
    TextBox box_;
};

// Rows as wide as the list, whatever their text: longer ones are elided.
class Rows : public WholeTextTips {
public:
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()};
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

class ComboBoxView final : public ControlView {
public:
    ComboBoxView(const platform::Control& control, const Surroundings& form) : list_(&form.parent) {
        auto* box = new TextBox(control.name, list_, form.user, form.enter);  // which belongs to the list
        list_.setLineEdit(box);
        list_.setInsertPolicy(QComboBox::NoInsert);
        list_.setCompleter(nullptr);
        // Otherwise a text that one of the items has counts as that one chosen when the focus goes.
        QObject::disconnect(box, &QLineEdit::editingFinished, &list_, nullptr);
        QObject::disconnect(box, &QLineEdit::returnPressed, &list_, nullptr);
        QObject::connect(&list_, &QComboBox::activated, &list_,
                         [name = control.name, &user = form.user] { user.clicked(name); });
        box->setText(QString::fromStdString(control.caption));
    }
    QWidget& widget() override { return list_; }
    QString text() const override { return list_.currentText(); }
    void setText(const QString& text) override { list_.setEditText(text); }
    void selectText() override { list_.lineEdit()->selectAll(); }
    void setItems(const std::vector<std::string>& items) override {
        const QString text = list_.currentText();
        list_.clear();
        list_.addItems(textsOf(items));
        list_.setCurrentIndex(-1);
        list_.setEditText(text);
    }
    int selected() const override { return list_.findText(list_.currentText(), Qt::MatchExactly); }
    void select(int index) override { list_.setCurrentIndex(index); }

private:
    DropDown list_;
};

class OptionButtonView final : public ControlView {
public:
    OptionButtonView(const platform::Control& control, QWidget& parent, UserEvents& user)
        : button_(QString::fromStdString(control.caption), &parent) {
        QObject::connect(&button_, &QRadioButton::toggled, &button_, [name = control.name, &user](bool chosen) {
            if (chosen) {
                user.clicked(name);
            }
        });
    }
    QWidget& widget() override { return button_; }
    QString text() const override { return button_.text(); }
    void setText(const QString& text) override { button_.setText(text); }
    int selected() const override { return button_.isChecked() ? 0 : -1; }
    void select(int index) override { button_.setChecked(index == 0); }

private:
    QRadioButton button_;
};

class ToolButtonView final : public ControlView {
public:
    ToolButtonView(const platform::Control& control, QWidget& parent, UserEvents& user) : button_(control, parent) {
        QObject::connect(&button_, &QToolButton::clicked, &button_,
                         [name = control.name, &user] { user.clicked(name); });
    }
    QWidget& widget() override { return button_; }
    QString text() const override { return button_.accessibleName(); }
    void setText(const QString& text) override { button_.setAccessibleName(QString(text).remove('&')); }

private:
    ToolButton button_;
};

class CanvasControl final : public ControlView {
public:
    CanvasControl(const platform::Control& control, const Surroundings& form)
        : view_(control.name, form.parent, form.user, form.sheet) {
        view_.setAccessibleName(QString::fromStdString(control.caption).remove('&'));
    }
    QWidget& widget() override { return view_; }
    CanvasView* canvas() override { return &view_; }
    QString text() const override { return view_.accessibleName(); }
    void setText(const QString& text) override { view_.setAccessibleName(text); }

private:
    CanvasView view_;
};

class TextViewControl final : public ControlView {
public:
    explicit TextViewControl(QWidget& parent) : view_(parent) {}
    QWidget& widget() override { return view_; }
    QString text() const override { return view_.toPlainText(); }
    void setText(const QString& text) override { view_.setPlainText(text); }
    void selectText() override { view_.selectAll(); }

private:
    TextView view_;
};

class TableControl final : public ControlView {
public:
    TableControl(const platform::Control& control, const Surroundings& form)
        : view_(control, form.parent, form.user, form.units) {}
    QWidget& widget() override { return view_; }
    TableView* table() override { return &view_; }

private:
    TableView view_;
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

std::unique_ptr<ControlView> viewOf(const platform::Control& control, const Surroundings& form) {
    QWidget& parent = form.parent;
    UserEvents& user = form.user;
    switch (control.kind) {
        case platform::ControlKind::textBox:
            return std::make_unique<TextBoxView>(control, form);
        case platform::ControlKind::listBox:
            return std::make_unique<ListBoxView>(control, parent, user);
        case platform::ControlKind::dropDownList:
            return std::make_unique<DropDownListView>(control, parent, user);
        case platform::ControlKind::button:
            return std::make_unique<ButtonView>(control, parent, user);
        case platform::ControlKind::comboBox:
            return std::make_unique<ComboBoxView>(control, form);
        case platform::ControlKind::optionButton:
            return std::make_unique<OptionButtonView>(control, parent, user);
        case platform::ControlKind::toolButton:
            return std::make_unique<ToolButtonView>(control, parent, user);
        case platform::ControlKind::canvas:
            return std::make_unique<CanvasControl>(control, form);
        case platform::ControlKind::textView:
            return std::make_unique<TextViewControl>(parent);
        case platform::ControlKind::table:
            return std::make_unique<TableControl>(control, form);
        case platform::ControlKind::label:
            break;
    }
    return std::make_unique<LabelView>(control, parent);
}

}  // namespace

std::unique_ptr<ControlView> makeControl(const platform::Control& control, const Surroundings& form) {
    std::unique_ptr<ControlView> view = viewOf(control, form);
    view->widget().setObjectName(QString::fromStdString(control.name));
    view->widget().setToolTip(QString::fromStdString(control.tooltip));
    return view;
}

}  // namespace platform_linux::qt
