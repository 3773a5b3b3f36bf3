// Tables of many rows, on a screen that nobody sees.
#include "platform/linux/qt/table_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <array>
#include <stdexcept>

namespace {

using platform_linux::qt::TableView;
using platform_linux::qt::UserEvents;

struct Events : platform::FormEvents {
    void clicked(const std::string& control) override { told += "clicked " + control + ";"; }
    std::string cell(const std::string& /*table*/, int row, int /*column*/) override {
        ++asked;
        return row == 7 ? throw std::runtime_error("gone") : std::to_string(row);
    }

    std::string told;
    int asked = 0;
};

TEST(TableView, KeepsSelectionAndPlaceAndAsksForWhatIsSeenOnly) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    int count = 1;
    std::array<char*, 2> arguments{};
    const QApplication application(count, arguments.data());
    Events events;
    int failures = 0;
    UserEvents user(
        events, [&failures](const std::exception_ptr&) { ++failures; }, [] {});
    QWidget window;
    platform::Control control;
    control.name = "jobs";
    control.columns = {{"Nr.", 30, true}, {"Dokument", 200}};
    TableView table(control, window, user, {window.font(), window.logicalDpiY()});
    table.resize(400, 300);
    window.show();
    const auto call = [&](auto function) {
        const UserEvents::Call running(user);
        function();
        QCoreApplication::processEvents();
    };
    call([&] { table.setRowCount(10'000); });
    EXPECT_GT(events.asked, 0);
    EXPECT_LT(events.asked, 100);
    EXPECT_GT(failures, 0);

    call([&] { table.selectRows({2, 50, 51, 5000}, false); });
    EXPECT_EQ(table.verticalScrollBar()->value(), 0);
    call([&] { table.selectRows({50, 51, 5000}, true); });
    const int top = table.verticalScrollBar()->value();
    EXPECT_TRUE(top > 0 && top <= 50);
    const auto refreshed = [&](int rows) {
        events.asked = 0;
        call([&] { table.setRowCount(rows); });
        EXPECT_TRUE(QTest::qWaitFor([&events] { return events.asked > 0; }));
        EXPECT_LT(events.asked, 100);
        return std::pair(table.selectedRows(), table.verticalScrollBar()->value());
    };
    EXPECT_EQ(refreshed(10'000), std::pair(std::vector{50, 51, 5000}, top));
    EXPECT_EQ(refreshed(4'000), std::pair(std::vector{50, 51}, top));
    EXPECT_EQ(refreshed(51).first, std::vector{50});
    EXPECT_EQ(refreshed(20).first, std::vector<int>());
    EXPECT_EQ(events.told, "");

    QTest::keyClick(&table, Qt::Key_Home);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRows(), (std::vector{0, 1}));
    EXPECT_EQ(events.told, "clicked jobs;clicked jobs;");
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&table, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

}  // namespace
