// Rows and cells whose text is longer than their room tell the whole of it in a tooltip.
#pragma once

#include <QStyledItemDelegate>

namespace platform_linux::qt {

class WholeTextTips : public QStyledItemDelegate {
public:
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

}  // namespace platform_linux::qt
