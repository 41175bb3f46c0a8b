#pragma once

#include <QObject>
#include <QTimer>

class ColumnHeader;
class QSplitter;
class UserDefaults;

/// Remembers how the user has laid out the main window: its place and size, the splitter, the columns of the list.
class WindowLayout : public QObject {
public:
    /// Gives the window the stored layout. From then on it is stored a moment after each change.
    WindowLayout(QWidget& window, QSplitter& splitter, ColumnHeader& columns, UserDefaults& defaults);

    void store();
    /// Puts the window where it was; the rest stays as it is.
    void restorePlace();

private:
    void watch();

    QWidget& window_;
    QSplitter& splitter_;
    ColumnHeader& columns_;
    UserDefaults& defaults_;
    QTimer settled_;
};
