#include "platform/windows/forms/table_view.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include "platform/windows/forms/kept_pointer.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

constexpr int allRows = -1;

// The one that follows; -1 behind the last one, and where the window is gone, which answers 0.
int nextSelected(HWND list, int row) {
    const auto next = static_cast<int>(::SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED));
    return next > row && ::IsWindow(list) != FALSE ? next : -1;
}

bool isSelection(const NMLISTVIEW& change) {
    // One for all rows does not tell what they were before.
    return (change.uChanged & LVIF_STATE) != 0 &&
           (change.iItem < 0 || ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) != 0);
}

}  // namespace

const DWORD TableView::windowStyle = WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;

TableView::TableView(HWND window, const platform::Control& control, EventTeller& teller)
    : window_(window), name_(control.name), teller_(teller) {
    constexpr LPARAM look = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
    ::SendMessageW(window, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, look);
    addColumns(control.columns);
    designed_ = filled_ = widths();
    fillWidth();
}

// The first column of a list never lies at the right, so it gets one in front for that long.
void TableView::addColumns(const std::vector<platform::Column>& columns) {
    const bool inFront = !columns.empty() && columns.front().alignedRight;
    const auto insert = [&](int place, const std::string& title, int width, bool right) {
        RECT size{0, 0, width, 0};
        ::MapDialogRect(::GetParent(window_), &size);
        std::wstring text = widen(title);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = right ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = static_cast<int>(size.right);
        column.pszText = text.data();
        ::SendMessageW(window_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&column));
    };
    int place = 0;
    if (inFront) {
        insert(place++, {}, 0, false);
    }
    for (const platform::Column& column : columns) {
        insert(place++, column.title, column.width, column.alignedRight);
    }
    if (inFront) {
        ::SendMessageW(window_, LVM_DELETECOLUMN, 0, 0);
    }
}

std::vector<int> TableView::widths() const {
    const auto header = keptPointer<HWND>(::SendMessageW(window_, LVM_GETHEADER, 0, 0));
    const LRESULT count = ::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    std::vector<int> result;
    for (LRESULT column = 0; column < count; ++column) {
        result.push_back(static_cast<int>(::SendMessageW(window_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0)));
    }
    return result;
}

void TableView::fillWidth() {
    const int designed = std::accumulate(designed_.begin(), designed_.end(), 0);
    if (designed == 0 || widths() != filled_) {
        return;
    }
    // The scroll bar comes and goes with the rows.
    RECT room{};
    ::GetWindowRect(window_, &room);
    const int frame = 2 * ::GetSystemMetrics(SM_CXEDGE) + ::GetSystemMetrics(SM_CXVSCROLL);
    const int whole = std::max(designed, static_cast<int>(room.right - room.left) - frame);
    int before = 0;
    for (std::size_t column = 0; column < designed_.size(); ++column) {
        const int from = ::MulDiv(before, whole, designed);
        before += designed_[column];
        ::SendMessageW(window_, LVM_SETCOLUMNWIDTH, column, ::MulDiv(before, whole, designed) - from);
    }
    filled_ = widths();
}

void TableView::setState(int row, UINT state, UINT which) const {
    LVITEMW item{};
    item.state = state;
    item.stateMask = which;
    ::SendMessageW(window_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void TableView::setRowCount(int count) {
    const Raised quiet = teller_.silence();
    for (int row = nextSelected(window_, count - 1); row >= 0; row = nextSelected(window_, row)) {
        setState(row, 0, LVIS_SELECTED);
    }
    ::SendMessageW(window_, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOSCROLL);
    known_ = selectedRows();
}

std::vector<int> TableView::selectedRows() const {
    std::vector<int> rows;
    for (int row = nextSelected(window_, -1); row >= 0; row = nextSelected(window_, row)) {
        rows.push_back(row);
    }
    return rows;
}

void TableView::selectRows(const std::vector<int>& rows, bool show) {
    if (!show && rows == selectedRows()) {
        return;  // the user's mark may be on another one of them
    }
    const Raised quiet = teller_.silence();
    changeSelection(rows);
    if (!rows.empty()) {
        setState(rows.back(), LVIS_FOCUSED, LVIS_FOCUSED);
        ::SendMessageW(window_, LVM_SETSELECTIONMARK, 0, rows.back());
    }
    if (show && !rows.empty()) {
        ::SendMessageW(window_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(rows.front()), FALSE);
    }
    known_ = selectedRows();
}

// Each row is a call of its own, but for all of them.
void TableView::changeSelection(std::vector<int> rows) const {
    std::sort(rows.begin(), rows.end());
    if (rows.empty() || std::ssize(rows) == ::SendMessageW(window_, LVM_GETITEMCOUNT, 0, 0)) {
        setState(allRows, rows.empty() ? 0 : LVIS_SELECTED, LVIS_SELECTED);
        return;
    }
    const std::vector<int> before = selectedRows();
    std::vector<int> changed;
    std::set_symmetric_difference(before.begin(), before.end(), rows.begin(), rows.end(), std::back_inserter(changed));
    for (const int row : changed) {
        const bool now = std::binary_search(rows.begin(), rows.end(), row);
        setState(row, now ? LVIS_SELECTED : 0, LVIS_SELECTED);
    }
}

LRESULT TableView::answer(NMHDR& notification) noexcept {
    constexpr LRESULT noSuchRow = -1;
    const auto address = reinterpret_cast<LPARAM>(&notification);
    switch (notification.code) {
        case LVN_GETDISPINFOW: {
            const LVITEMW& item = keptPointer<NMLVDISPINFOW*>(address)->item;
            if ((item.mask & LVIF_TEXT) != 0) {
                giveText(item.iItem, item.iSubItem, item.pszText, item.cchTextMax);
            }
            return 0;
        }
        case LVN_ITEMCHANGED:
            if (isSelection(*keptPointer<const NMLISTVIEW*>(address))) {
                moved();
            }
            return 0;
        case LVN_ODSTATECHANGED:
            moved();
            return 0;
        case LVN_KEYDOWN:
            pressed(keptPointer<const NMLVKEYDOWN*>(address)->wVKey);
            return 0;
        case NM_DBLCLK:
            if (keptPointer<const NMITEMACTIVATE*>(address)->iItem >= 0) {
                tellSelection();
                teller_.tell([&](platform::FormEvents& events) { events.doubleClicked(name_); });
            }
            return 0;
        case LVN_ODFINDITEMW:  // letters were typed
            return noSuchRow;
        default:
            return 0;
    }
}

void TableView::giveText(int row, int column, wchar_t* place, int room) noexcept {
    teller_.ask([&](platform::FormEvents& events) {
        const std::wstring text = widen(events.cell(name_, row, column));
        const auto length = std::min(text.size(), static_cast<std::size_t>(std::max(room, 1) - 1));
        *std::copy_n(text.begin(), length, place) = L'\0';
    });
}

void TableView::pressed(WORD key) const {
    if (key == 'A' && ::GetKeyState(VK_CONTROL) < 0 && ::GetKeyState(VK_MENU) >= 0) {
        setState(allRows, LVIS_SELECTED, LVIS_SELECTED);
    }
}

// One click changes many rows, each with a notification of its own.
void TableView::moved() const {
    if (!teller_.isSilent()) {
        ::PostMessageW(::GetParent(window_), selectionMoved, static_cast<WPARAM>(::GetDlgCtrlID(window_)), 0);
    }
}

void TableView::tellSelection() noexcept {
    teller_.tell([&](platform::FormEvents& events) {
        if (std::vector<int> rows = selectedRows(); rows != known_) {
            known_ = std::move(rows);
            events.clicked(name_);
        }
    });
}

}  // namespace platform_windows::forms
