// A table whose rows are as many as the program says, and whose texts it gives when they are to be seen.
#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <string>
#include <vector>

#include "platform/form_design.h"
#include "platform/linux/qt/dialog_units.h"
#include "platform/linux/qt/user_events.h"
#include "platform/linux/qt/whole_text_tips.h"

namespace platform_linux::qt {

class TableRows : public QAbstractTableModel {
public:
    TableRows(const platform::Control& control, UserEvents& user)
        : name_(control.name), columns_(control.columns), user_(user) {}

    // Rows come and go at the end; all texts are other ones.
    void setCount(int count);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::string name_;
    std::vector<platform::Column> columns_;
    UserEvents& user_;
    int count_ = 0;
};

// The mark of the keyboard is one of the row.
class Cells : public WholeTextTips {
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

class TableView : public QTableView {
public:
    TableView(const platform::Control& control, QWidget& parent, UserEvents& user, const DialogUnits& units);
    TableView(const TableView&) = delete;
    TableView& operator=(const TableView&) = delete;
    ~TableView() override;

    // As in the port Form.
    void setRowCount(int count);
    std::vector<int> selectedRows() const;
    void selectRows(const std::vector<int>& rows, bool show);

    void keyboardSearch(const QString& /*text*/) override {}

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    QRect rowOf(const QModelIndex& index) const;
    void setUpRows();
    void fillWidth();

    TableRows rows_;
    Cells cells_;
    std::vector<int> designed_;  // widths of the columns, in pixels
    bool widthsAreUsers_ = false;
    bool filling_ = false;
};

}  // namespace platform_linux::qt
