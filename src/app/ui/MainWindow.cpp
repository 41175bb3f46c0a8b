#include "app/ui/MainWindow.h"

#include "app/ViewController.h"
#include "app/ui/EmptyListHint.h"
#include "app/ui/Icons.h"
#include "artwork/ui/AlbumArtView.h"
#include "library/ArrayController.h"
#include "library/ui/EditorPane.h"
#include "library/ui/QuickLookTableView.h"
#include "platform/UserDefaults.h"

#include <QAction>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenuBar>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <utility>

namespace {

constexpr QSize initialSize(1100, 700);
constexpr int editorWidth = 320;
constexpr int searchWidth = 240;
constexpr int statusIndent = 4;
constexpr int layoutSettlesAfter = 500;

} // namespace

MainWindow::MainWindow(ViewController& controller, ArrayController& list, ListDrops& drops, UserDefaults& defaults)
    : controller_(controller), list_(list), defaults_(defaults)
{
    setWindowTitle(tr("Sonvika"));
    resize(initialSize);
    buildCentre(drops);
    buildActions();
    buildMenus();
    buildToolBar();
    status_ = new QLabel(this);
    status_->setIndent(statusIndent);
    statusBar()->addWidget(status_, 1);
    connectController();
    restoreLayout();
    watchLayout();
    controller_.updateFields();
    updateStatus();
    table_->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::bringToFront()
{
    if (!std::exchange(frontWanted_, true))
        QTimer::singleShot(0, this, &MainWindow::comeToFront);
}

void MainWindow::comeToFront()
{
    frontWanted_ = false;
    if (isActiveWindow())
        return;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    controller_.endEditing();
    storeLayout();
    controller_.viewDidDisappear();
    event->accept();
}

QAction* MainWindow::makeAction(const QString& text, const QKeySequence& shortcut, void (ViewController::*command)())
{
    auto* action = new QAction(text, this);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, &controller_, command);
    return action;
}

void MainWindow::buildActions()
{
    open_ = makeAction(tr("&Open…"), QKeySequence::Open, &ViewController::openDocument);
    open_->setIcon(Icons::symbol(QStringLiteral("open")));
    open_->setToolTip(tr("Add files to the list"));
    openFolder_ =
        makeAction(tr("Open &Folder…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), &ViewController::openFolder);
    remove_ = makeAction(tr("&Remove from List"), QKeySequence::Delete, &ViewController::removeDocuments);
    remove_->setIconText(tr("Remove"));
    remove_->setIcon(Icons::symbol(QStringLiteral("remove")));
    remove_->setToolTip(tr("Remove the selected files from the list; the files stay on disk"));
    remove_->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    table_->addAction(remove_);
    selectAll_ = makeAction(tr("Select &All"), QKeySequence::SelectAll, &ViewController::selectAll);
    deselectAll_ =
        makeAction(tr("&Deselect All"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), &ViewController::deselectAll);
    find_ = new QAction(tr("&Find"), this);
    find_->setShortcut(QKeySequence::Find);
    connect(find_, &QAction::triggered, this, &MainWindow::findInList);
}

void MainWindow::buildMenus()
{
    auto* file = menuBar()->addMenu(tr("&File"));
    file->addActions({open_, openFolder_, remove_});
    file->addSeparator();
    auto* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);

    auto* edit = menuBar()->addMenu(tr("&Edit"));
    edit->addActions({selectAll_, deselectAll_});
    edit->addSeparator();
    edit->addAction(find_);

    auto* view = menuBar()->addMenu(tr("&View"));
    auto* columns = view->addMenu(tr("&Columns"));
    connect(columns, &QMenu::aboutToShow, this, [this, columns] {
        columns->clear();
        table_->addColumnActions(*columns);
    });
    auto* notifications = view->addAction(tr("Show &Notifications"));
    notifications->setCheckable(true);
    connect(view, &QMenu::aboutToShow, this, [this, notifications] {
        notifications->setChecked(defaults_.boolForKey(DefaultsKey::showNotifications));
    });
    connect(notifications, &QAction::triggered, this,
            [this](bool on) { defaults_.setBool(DefaultsKey::showNotifications, on); });
}

void MainWindow::buildToolBar()
{
    auto* bar = addToolBar(tr("Toolbar"));
    bar->setObjectName(QStringLiteral("toolbar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize({16, 16});
    bar->addAction(open_);
    bar->addAction(remove_);
    auto* space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);

    searchField_ = new QLineEdit(bar);
    searchField_->setObjectName(QStringLiteral("searchField"));
    searchField_->setPlaceholderText(tr("Search"));
    searchField_->setAccessibleName(tr("Search"));
    searchField_->setClearButtonEnabled(true);
    searchField_->setFixedWidth(searchWidth);
    searchField_->addAction(Icons::symbol(QStringLiteral("search")), QLineEdit::LeadingPosition);
    connect(searchField_, &QLineEdit::textChanged, &list_, &ArrayController::setFilterText);
    bar->addWidget(searchField_);
    addSearchKey(Qt::Key_Escape, [this] {
        searchField_->clear();
        table_->setFocus();
    });
    for (const auto key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Enter})
        addSearchKey(key, [this] { table_->setFocus(); });
}

void MainWindow::addSearchKey(Qt::Key key, const std::function<void()>& action)
{
    auto* shortcut = new QShortcut(key, searchField_);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
}

void MainWindow::buildCentre(ListDrops& drops)
{
    table_ = new QuickLookTableView(list_, drops, this);
    table_->setObjectName(QStringLiteral("table"));
    auto* hint = new EmptyListHint;
    connect(hint, &EmptyListHint::openWanted, &controller_, &ViewController::openDocument);
    table_->setEmptyHint(hint);

    art_ = new AlbumArtView;
    editor_ = new EditorPane;
    editor_->setHeader(art_);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(editor_);
    scroll->setMinimumWidth(editor_->minimumSizeHint().width());

    splitter_ = new QSplitter(this);
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(table_);
    splitter_->addWidget(scroll);
    splitter_->setStretchFactor(0, 1);
    splitter_->setSizes({initialSize.width() - editorWidth, editorWidth});
    setCentralWidget(splitter_);
}

void MainWindow::connectController()
{
    connect(&controller_, &ViewController::fieldsChanged, editor_, &EditorPane::showSummary);
    connect(&controller_, &ViewController::artChanged, art_, &AlbumArtView::setArt);
    connect(&controller_, &ViewController::editingShouldEnd, editor_, &EditorPane::endEditing);
    connect(editor_, &EditorPane::edited, &controller_, &ViewController::applyEdit);
    connect(editor_, &EditorPane::rowStepWanted, &controller_, &ViewController::moveSelection);
    connect(table_, &QuickLookTableView::editWanted, editor_, &EditorPane::focusFirstField);
    connect(&list_, &ArrayController::countChanged, this, &MainWindow::updateStatus);
    connect(&list_.selection(), &ListSelection::changed, this, &MainWindow::updateStatus);
}

void MainWindow::updateStatus()
{
    const QLocale locale;
    const auto number = [&](auto count) { return locale.toString(static_cast<qlonglong>(count)); };
    const auto selected = list_.selection().rows().size();
    const auto all = list_.content().size();
    const auto shown = static_cast<std::size_t>(list_.rowCount());
    QString text = all == 1 ? tr("1 file") : tr("%1 files").arg(number(all));
    if (shown != all)
        text = tr("%1 of %2").arg(number(shown), text);
    if (selected > 0)
        text += tr(", %1 selected").arg(number(selected));
    status_->setText(all == 0 ? QString() : text);
    updateActions();
}

void MainWindow::updateActions()
{
    const bool anySelected = list_.selection().hasSelection();
    remove_->setEnabled(anySelected);
    deselectAll_->setEnabled(anySelected);
    selectAll_->setEnabled(list_.rowCount() > 0);
    find_->setEnabled(!list_.content().empty());
}

void MainWindow::findInList()
{
    searchField_->setFocus(Qt::ShortcutFocusReason);
    searchField_->selectAll();
}

void MainWindow::restoreLayout()
{
    restoreGeometry(defaults_.dataForKey(DefaultsKey::windowGeometry));
    splitter_->restoreState(defaults_.dataForKey(DefaultsKey::splitterState));
    table_->restoreHeaderState(defaults_.dataForKey(DefaultsKey::tableHeaderState));
}

void MainWindow::watchLayout()
{
    auto* settled = new QTimer(this);
    settled->setSingleShot(true);
    settled->setInterval(layoutSettlesAfter);
    connect(settled, &QTimer::timeout, this, &MainWindow::storeLayout);
    const auto changed = [settled] { settled->start(); };
    const auto* header = table_->horizontalHeader();
    connect(header, &QHeaderView::sectionResized, settled, changed);
    connect(header, &QHeaderView::sectionMoved, settled, changed);
    connect(header, &QHeaderView::sortIndicatorChanged, settled, changed);
    connect(splitter_, &QSplitter::splitterMoved, settled, changed);
}

void MainWindow::storeLayout()
{
    defaults_.setData(DefaultsKey::windowGeometry, saveGeometry());
    defaults_.setData(DefaultsKey::splitterState, splitter_->saveState());
    defaults_.setData(DefaultsKey::tableHeaderState, table_->headerState());
    defaults_.synchronize();
}
