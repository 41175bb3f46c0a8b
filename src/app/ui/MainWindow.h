#pragma once

#include <QMainWindow>
#include <QPointer>

#include <memory>

class Actions;
class ArrayController;
class ArtworkDrops;
class DropView;
class EditorPane;
class FailureLog;
class FileFormatController;
class ListDrops;
class LongWork;
class PreviewController;
class QSplitter;
class QToolBar;
class QuickLookTableView;
class RecentDocuments;
class SearchField;
class ShownArt;
class StatusLine;
class UserDefaults;
class ViewController;
class WindowLayout;

/// The main window: menus, toolbar, list, editor and status line. Layout only; commands are ViewController's.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(ViewController& controller, ArrayController& list, ListDrops& drops, ShownArt& art,
               ArtworkDrops& artworkDrops, RecentDocuments& recentDocuments, UserDefaults& defaults);
    ~MainWindow() override;

    /// Lets the commands show and hide the preview.
    void attachPreview(PreviewController& preview);
    /// Shows long work in the status line, with a button to cancel it.
    void attachWork(LongWork& work);
    /// Counts failures in the status line, where they can be looked up.
    void attachFailures(FailureLog& failures);
    /// Tells in the status line that there is a newer version, with a link to its page.
    void showUpdate(const QString& version, const QUrl& page);
    /// The list of files.
    QWidget& table();

    /// Makes the window visible and gives it the focus, unless it has it, when the event loop is reached again. Any
    /// number of wishes until then count as one.
    void bringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void splitViewDidResizeSubviews();
    void buildToolBar();
    void buildSearch(QToolBar& bar);
    void buildCentre(ListDrops& drops, ShownArt& art, ArtworkDrops& artworkDrops);
    void connectController();
    void lockEditing(bool locked);
    /// Lets the key Delete mean what it does in the widget that has the keyboard now.
    void followFocus(const QWidget* focused);
    void showFormatWindow();
    void closeFormatWindow();
    void comeToFront();

    ViewController& controller_;
    ArrayController& list_;
    UserDefaults& defaults_;
    std::unique_ptr<Actions> actions_;
    StatusLine* status_;
    WindowLayout* layout_ = nullptr;
    /// Keeps the toolbar's room above the last pane.
    QWidget* paddingView_ = nullptr;
    SearchField* searchField_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QuickLookTableView* table_ = nullptr;
    EditorPane* editor_ = nullptr;
    DropView* well_ = nullptr;
    QPointer<FileFormatController> formatWindow_;
    bool frontWanted_ = false;
};
