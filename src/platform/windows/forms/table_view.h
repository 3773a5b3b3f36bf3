// A table whose rows the program has: the system's list, which asks for what it shows.
#pragma once

#include "platform/windows/gdi/system_headers.h"

#include <string>
#include <vector>

#include "platform/form_design.h"
#include "platform/windows/forms/event_teller.h"

namespace platform_windows::forms {

class TableView {
public:
    static constexpr const wchar_t* windowClass = L"SysListView32";
    static const DWORD windowStyle;
    // What the table posts to its form, with its number, when the user has selected other rows: for tellSelection().
    static constexpr UINT selectionMoved = WM_APP + 3;

    TableView(HWND window, const platform::Control& control, EventTeller& teller);

    void setRowCount(int count);
    std::vector<int> selectedRows() const;
    void selectRows(const std::vector<int>& rows, bool show);

    // The columns share the width as they were designed, until the user makes one wider or narrower.
    void fillWidth();

    // A notification of the window, and what is answered to it.
    LRESULT answer(NMHDR& notification) noexcept;
    void tellSelection() noexcept;

private:
    void addColumns(const std::vector<platform::Column>& columns);
    std::vector<int> widths() const;
    void changeSelection(std::vector<int> rows) const;
    void setState(int row, UINT state, UINT which) const;
    void giveText(int row, int column, wchar_t* place, int room) noexcept;
    void pressed(WORD key) const;
    void moved() const;

    HWND window_;
    std::string name_;
    EventTeller& teller_;
    std::vector<int> known_;     // the rows whose selection the program knows of
    std::vector<int> designed_;  // widths of the columns in pixels
    std::vector<int> filled_;    // as they share the width
};

}  // namespace platform_windows::forms
