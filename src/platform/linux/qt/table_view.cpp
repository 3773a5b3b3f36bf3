#include "platform/linux/qt/table_view.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace platform_linux::qt {

namespace {

// As long as it lives, the mark moves without being scrolled into sight: the program moves it, not the user.
class NoScrolling {
public:
    explicit NoScrolling(QAbstractItemView& view) : view_(view) { view_.setAutoScroll(false); }
    NoScrolling(const NoScrolling&) = delete;
    NoScrolling& operator=(const NoScrolling&) = delete;
    ~NoScrolling() { view_.setAutoScroll(true); }

private:
    QAbstractItemView& view_;
};

}  // namespace

void TableRows::setCount(int count) {
    if (count > count_) {
        beginInsertRows({}, count_, count - 1);
        count_ = count;
        endInsertRows();
    } else if (count < count_) {
        beginRemoveRows({}, count, count_ - 1);
        count_ = count;
        endRemoveRows();
    }
    if (count_ > 0) {
        emit dataChanged(index(0, 0), index(count_ - 1, columnCount() - 1), {Qt::DisplayRole});
    }
}

int TableRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant TableRows::data(const QModelIndex& index, int role) const {
    if (role == Qt::TextAlignmentRole) {
        return headerData(index.column(), Qt::Horizontal, role);
    }
    return role == Qt::DisplayRole ? QString::fromStdString(user_.cell(name_, index.row(), index.column()))
                                   : QVariant();
}

QVariant TableRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return {};
    }
    const platform::Column& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>(Qt::AlignVCenter | (column.alignedRight ? Qt::AlignRight : Qt::AlignLeft));
    }
    return role == Qt::DisplayRole ? QString::fromStdString(column.title) : QVariant();
}

void Cells::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem without = option;
    without.state &= ~QStyle::State_HasFocus;
    WholeTextTips::paint(painter, without, index);
}

TableView::TableView(const platform::Control& control, QWidget& parent, UserEvents& user, const DialogUnits& units)
    : QTableView(&parent), rows_(control, user) {
    for (const platform::Column& column : control.columns) {
        designed_.push_back(units.across(column.width));
    }
    setModel(&rows_);
    setUpRows();
    fillWidth();
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { widthsAreUsers_ = widthsAreUsers_ || !filling_; });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [name = control.name, &user] { user.clicked(name); });
    connect(this, &QTableView::doubleClicked, this, [name = control.name, &user] {
        if (QGuiApplication::mouseButtons() == Qt::LeftButton) {
            user.doubleClicked(name);
        }
    });
}

TableView::~TableView() { setModel(nullptr); }

void TableView::setUpRows() {
    setItemDelegate(&cells_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    // A double click between two titles looks at the rows to be seen only.
    horizontalHeader()->setResizeContentsPrecision(0);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, this) + 1;
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 2 * margin);
}

void TableView::setRowCount(int count) {
    count = std::max(count, 0);
    if (count >= rows_.rowCount()) {
        rows_.setCount(count);
        return;
    }
    // Qt selects another row where the one with the mark goes.
    const NoScrolling noScrolling(*this);
    std::vector<int> kept = selectedRows();
    std::erase_if(kept, [count](int row) { return row >= count; });
    rows_.setCount(count);
    const QModelIndex mark = currentIndex();
    selectRows(kept, false);
    selectionModel()->setCurrentIndex(mark, QItemSelectionModel::NoUpdate);
}

std::vector<int> TableView::selectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void TableView::selectRows(const std::vector<int>& rows, bool show) {
    if (!show && rows == selectedRows()) {
        return;  // the user's mark may be on another one of them
    }
    QItemSelection selection;
    const int columns = rows_.columnCount();
    for (const int row : rows) {
        if (row < 0 || row >= rows_.rowCount()) {
            continue;
        }
        if (!selection.isEmpty() && selection.back().bottom() == row - 1) {
            selection.back() = {selection.back().topLeft(), rows_.index(row, columns - 1)};
        } else {
            selection.append({rows_.index(row, 0), rows_.index(row, columns - 1)});
        }
    }
    const NoScrolling noScrolling(*this);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!selection.isEmpty()) {
        selectionModel()->setCurrentIndex(rows_.index(selection.back().bottom(), 0), QItemSelectionModel::NoUpdate);
        if (show) {
            scrollTo(selection.front().topLeft());
        }
    }
}

// Where nothing is selected, the first of these keys takes the row with the mark instead of leaving it.
void TableView::keyPressEvent(QKeyEvent* event) {
    const bool steps = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (steps && event->modifiers() == Qt::NoModifier && currentIndex().isValid() &&
        !selectionModel()->hasSelection()) {
        selectionModel()->select(currentIndex(), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        scrollTo(currentIndex());
    } else {
        QTableView::keyPressEvent(event);
    }
}

// A row is one to the keyboard: the keys for its cells go to the ends of the table, and scroll.
QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (rows_.rowCount() == 0) {
        return {};
    }
    QScrollBar& across = *horizontalScrollBar();
    switch (action) {
        case MoveHome:
            return rows_.index(0, 0);
        case MoveEnd:
            return rows_.index(rows_.rowCount() - 1, 0);
        case MoveLeft:
        case MoveRight:
            across.setValue(across.value() + (action == MoveLeft ? -1 : 1) * across.singleStep());
            return currentIndex();
        default:
            return QTableView::moveCursor(action, modifiers & ~Qt::ControlModifier);
    }
}

void TableView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    fillWidth();
}

// The columns share the table's width as designed, until the user makes one wider or narrower.
void TableView::fillWidth() {
    const int whole = std::accumulate(designed_.begin(), designed_.end(), 0);
    if (widthsAreUsers_ || whole == 0) {
        return;
    }
    filling_ = true;
    const double factor = std::max(1.0, static_cast<double>(viewport()->width()) / whole);
    int behind = 0;
    for (std::size_t i = 0; i < designed_.size(); ++i) {
        const int from = static_cast<int>(behind * factor);
        behind += designed_[i];
        horizontalHeader()->resizeSection(static_cast<int>(i), static_cast<int>(behind * factor) - from);
    }
    filling_ = false;
}

void TableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (!hasFocus() || !currentIndex().isValid()) {
        return;
    }
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    frame.rect = rowOf(currentIndex());
    frame.state |= QStyle::State_KeyboardFocusChange;
    frame.backgroundColor = palette().color(QPalette::Base);
    QPainter painter(viewport());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

void TableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    viewport()->update(rowOf(current));
    viewport()->update(rowOf(previous));
}

QRect TableView::rowOf(const QModelIndex& index) const {
    return visualRect(index.siblingAtColumn(0)).united(visualRect(index.siblingAtColumn(rows_.columnCount() - 1)));
}

}  // namespace platform_linux::qt
