#pragma once

#include <QObject>

class Actions;
class QMainWindow;
class QMenu;
class QuickLookTableView;
class RecentDocuments;
class ViewController;

/// The menu bar of the main window, and the list's context menu.
class MainMenu : public QObject {
    Q_OBJECT

public:
    MainMenu(QMainWindow& window, Actions& actions, QuickLookTableView& table, ViewController& controller,
             RecentDocuments& recentDocuments);

private:
    void buildFile();
    void buildEdit();
    void buildTags();
    void buildView();
    void addSortMenu(QMenu& menu);
    void buildWindow();
    void buildHelp();
    void fillRecent(QMenu& menu);
    void addContextMenu();

    QMainWindow& window_;
    Actions& actions_;
    QuickLookTableView& table_;
    ViewController& controller_;
    RecentDocuments& recentDocuments_;
};
