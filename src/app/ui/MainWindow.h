#pragma once

#include <QMainWindow>

#include <functional>

class AlbumArtView;
class ArrayController;
class EditorPane;
class ListDrops;
class QLabel;
class QLineEdit;
class QSplitter;
class QuickLookTableView;
class UserDefaults;
class ViewController;

/// The main window: menus, toolbar, list, editor and status line. Layout only; commands are ViewController's.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(ViewController& controller, ArrayController& list, ListDrops& drops, UserDefaults& defaults);
    ~MainWindow() override;

    /// Makes the window visible and gives it the focus, unless it has it, when the event loop is reached again. Any
    /// number of wishes until then count as one.
    void bringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildActions();
    void buildMenus();
    void buildToolBar();
    void buildCentre(ListDrops& drops);
    void connectController();
    QAction* makeAction(const QString& text, const QKeySequence& shortcut, void (ViewController::*command)());
    void updateStatus();
    void updateActions();
    void findInList();
    /// What a key does in the search field.
    void addSearchKey(Qt::Key key, const std::function<void()>& action);
    void comeToFront();
    void restoreLayout();
    /// Has the layout stored a moment after its last change.
    void watchLayout();
    void storeLayout();

    ViewController& controller_;
    ArrayController& list_;
    UserDefaults& defaults_;
    QAction* open_ = nullptr;
    QAction* openFolder_ = nullptr;
    QAction* remove_ = nullptr;
    QAction* selectAll_ = nullptr;
    QAction* deselectAll_ = nullptr;
    QAction* find_ = nullptr;
    QLineEdit* searchField_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QuickLookTableView* table_ = nullptr;
    EditorPane* editor_ = nullptr;
    AlbumArtView* art_ = nullptr;
    QLabel* status_ = nullptr;
    bool frontWanted_ = false;
};
