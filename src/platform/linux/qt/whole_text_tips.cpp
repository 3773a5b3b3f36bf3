#include "platform/linux/qt/whole_text_tips.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace platform_linux::qt {

bool WholeTextTips::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
    const int needed = QStyledItemDelegate::sizeHint(option, index).width();
    const QString text = needed > option.rect.width() ? index.data().toString().toHtmlEscaped() : QString();
    QToolTip::showText(event->globalPos(), text, view);
    return true;
}

}  // namespace platform_linux::qt
