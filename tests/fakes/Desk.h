#pragma once

#include "app/ui/MainWindow.h"
#include "fakes/Library.h"
#include "library/RecordColumns.h"
#include "library/ui/QuickLookTableView.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

/// The program with its main window.
struct Desk : Library {
    MainWindow window{controller, list, drops, art, artworkDrops, recent, defaults};
    QuickLookTableView& table = *find<QuickLookTableView>();

    /// Shows the window; it is active then.
    void show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    template <class Widget>
    Widget* find(const QString& name = {})
    {
        return window.findChild<Widget*>(name);
    }
    /// The middle of a title in the table.
    QPoint cell(int row) { return table.visualRect(list.index(row, RecordColumns::Title)).center(); }
};

/// Waits for a menu and closes it. @return whether there was one.
inline bool closeMenu()
{
    bool closed = false;
    QTimer closing;
    closing.callOnTimeout([&] {
        if (auto* menu = QApplication::activePopupWidget())
            closed = menu->close();
    });
    closing.start(10);
    return QTest::qWaitFor([&] { return closed; });
}
