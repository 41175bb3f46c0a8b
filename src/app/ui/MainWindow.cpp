#include "app/ui/MainWindow.h"

#include "app/FailureLog.h"
#include "app/LongWork.h"
#include "app/PreviewController.h"
#include "app/ViewController.h"
#include "app/ui/Actions.h"
#include "app/ui/EmptyListHint.h"
#include "app/ui/Icons.h"
#include "app/ui/LightGradientView.h"
#include "app/ui/LinkLabel.h"
#include "app/ui/MainMenu.h"
#include "app/ui/MessagesWindow.h"
#include "app/ui/WorkBar.h"
#include "artwork/ui/DropView.h"
#include "artwork/ui/RowDragImage.h"
#include "library/ArrayController.h"
#include "library/ui/ArrowCaptureTextField.h"
#include "library/ui/EditorPane.h"
#include "library/ui/QuickLookTableView.h"
#include "naming/ui/FileFormatController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/DesktopWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include <utility>

namespace {

constexpr QSize initialSize(1100, 700);
constexpr QSize leastSize(640, 360);
constexpr int editorWidth = 320;
constexpr int statusIndent = 5;
constexpr int layoutSettlesAfter = 500;
constexpr int passingStatusLasts = 10'000;

/// The list, and above it what it shows while it is empty.
QWidget* listArea(QuickLookTableView& table, QWidget* hint)
{
    auto* area = new QWidget;
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins({});
    column->addWidget(&table);
    table.setEmptyHint(hint);
    return area;
}

} // namespace

MainWindow::MainWindow(ViewController& controller, ArrayController& list, ListDrops& drops, ShownArt& art,
                       ArtworkDrops& artworkDrops, RecentDocuments& recentDocuments, UserDefaults& defaults)
    : controller_(controller), list_(list), defaults_(defaults),
      actions_(std::make_unique<Actions>(controller, list, art))
{
    setWindowTitle(tr("Sonvika"));
    DesktopWindow::moveByBackground(*this);
    setMinimumSize(leastSize);
    resize(initialSize);
    buildCentre(drops, art, artworkDrops);
    new MainMenu(*this, *actions_, *table_, controller, recentDocuments);
    connect(actions_->find, &QAction::triggered, this, &MainWindow::findInList);
    buildToolBar();
    passingStatusEnds_.setSingleShot(true);
    passingStatusEnds_.setInterval(passingStatusLasts);
    passingStatusEnds_.callOnTimeout(this, [this] {
        passingStatus_.clear();
        updateStatus();
    });
    status_ = new QLabel(this);
    status_->setIndent(statusIndent);
    statusBar()->addWidget(status_, 1);
    setTabOrder(searchField_, table_);
    setTabOrder(table_, well_);
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
    if (!isVisible())
        restoreGeometry(defaults_.dataForKey(DefaultsKey::windowGeometry));
    DesktopWindow::bringToFront(*this);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    closeFormatWindow();
    controller_.closeQuickLook();
    controller_.endEditing();
    storeLayout();
    controller_.viewDidDisappear();
    event->accept();
}

void MainWindow::buildToolBar()
{
    auto* bar = addToolBar(tr("Toolbar"));
    bar->setObjectName(QStringLiteral("toolbar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize({16, 16});
    bar->addAction(actions_->open);
    bar->addAction(actions_->remove);
    bar->addAction(actions_->rename);
    bar->addAction(actions_->quickLook);
    auto* space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    buildSearch(*bar);
}

void MainWindow::buildSearch(QToolBar& bar)
{
    paddingView_ = new QWidget(&bar);
    paddingView_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto* padding = new QHBoxLayout(paddingView_);
    padding->setContentsMargins({});
    padding->setSpacing(0);
    // The field stands exactly above those of the editor; the toolbar takes its own margin from the right.
    const int side = style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    const int taken = bar.layout()->contentsMargins().right();
    padding->addSpacing(side + taken);
    auto* searchField = new ArrowCaptureTextField(&bar);
    connect(searchField, &ArrowCaptureTextField::rowStepWanted, &controller_, &ViewController::moveSelection);
    searchField_ = searchField;
    searchField_->setObjectName(QStringLiteral("searchField"));
    searchField_->setPlaceholderText(tr("Search"));
    searchField_->setAccessibleName(tr("Search"));
    searchField_->setClearButtonEnabled(true);
    searchField_->findChild<QToolButton*>()->setAccessibleName(tr("Clear"));
    searchField_->addAction(Icons::symbol(QStringLiteral("search")), QLineEdit::LeadingPosition)
        ->setText(tr("Search"));
    connect(searchField_, &QLineEdit::textChanged, &list_, &ArrayController::setFilterText);
    padding->addWidget(searchField_);
    padding->addSpacing(qMax(side - taken, 0));
    bar.addWidget(paddingView_);
    addSearchKey(Qt::Key_Escape, [this] {
        searchField_->clear();
        table_->setFocus();
    });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        addSearchKey(key, [this] { table_->setFocus(); });
}

void MainWindow::addSearchKey(Qt::Key key, const std::function<void()>& action)
{
    auto* shortcut = new QShortcut(key, searchField_);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
}

void MainWindow::buildCentre(ListDrops& drops, ShownArt& art, ArtworkDrops& artworkDrops)
{
    table_ = new QuickLookTableView(list_, drops, this);
    table_->setObjectName(QStringLiteral("table"));
    auto* hint = new EmptyListHint;
    connect(hint, &EmptyListHint::openWanted, &controller_, &ViewController::openDocument);
    table_->setDragImage(RowDragImage::draggingImageComponents);
    table_->addActions({actions_->remove, actions_->moveUp, actions_->moveDown});

    well_ = new DropView(artworkDrops, art);
    well_->setObjectName(QStringLiteral("artWell"));
    well_->addActions(actions_->artCommands());
    well_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(well_, &DropView::changeWanted, actions_->updateImage, &QAction::trigger);
    editor_ = new EditorPane;
    editor_->setHeader(well_);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->installEventFilter(this);
    auto* background = new LightGradientView;
    auto* column = new QVBoxLayout(background);
    column->setContentsMargins({});
    column->addWidget(editor_);
    scroll->setWidget(background);
    scroll->setMinimumWidth(editor_->minimumSizeHint().width());

    splitter_ = new QSplitter(this);
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(listArea(*table_, hint));
    splitter_->addWidget(scroll);
    splitter_->setStretchFactor(0, 1);
    splitter_->setSizes({initialSize.width() - editorWidth, editorWidth});
    setCentralWidget(splitter_);
}

void MainWindow::connectController()
{
    connect(&controller_, &ViewController::fieldsChanged, editor_, &EditorPane::showSummary);
    connect(&controller_, &ViewController::fieldsChanged, well_, qOverload<>(&QWidget::update));
    connect(&controller_, &ViewController::editingShouldEnd, editor_, &EditorPane::endEditing);
    connect(&controller_, &ViewController::windowWanted, this, &MainWindow::bringToFront);
    connect(&controller_, &ViewController::editingLocked, this, &MainWindow::lockEditing);
    connect(&controller_, &ViewController::formatWindowWanted, this, &MainWindow::showFormatWindow);
    connect(editor_, &EditorPane::edited, &controller_, &ViewController::applyEdit);
    connect(editor_, &EditorPane::compilationClicked, &controller_, &ViewController::updateCompilationState);
    connect(editor_, &EditorPane::rowStepWanted, &controller_, &ViewController::moveSelection);
    connect(table_, &QuickLookTableView::editWanted, editor_, &EditorPane::focusFirstField);
    connect(table_, &QuickLookTableView::quickLookWanted, &controller_, &ViewController::openQuickLook);
    connect(&list_, &ArrayController::countChanged, this, &MainWindow::updateStatus);
    connect(&list_.selection(), &ListSelection::changed, this, &MainWindow::updateStatus);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        splitViewDidResizeSubviews();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::splitViewDidResizeSubviews()
{
    // The search field stands above the last pane, as wide as that.
    const QWidget* lastPane = splitter_->widget(splitter_->count() - 1);
    if (lastPane && paddingView_)
        paddingView_->setMinimumWidth(lastPane->width());
}

void MainWindow::attachPreview(PreviewController& preview)
{
    connect(&controller_, &ViewController::quickLookWanted, &preview, &PreviewController::openQuickLook);
    connect(&controller_, &ViewController::quickLookUnwanted, &preview, &PreviewController::closeQuickLook);
    connect(&preview, &PreviewController::shownChanged, actions_.get(), &Actions::setPreviewShown);
}

void MainWindow::showUpdate(const QString& version, const QUrl& page)
{
    auto* news = new LinkLabel(QStringLiteral("<a href=\"%1\">%2</a>")
                                   .arg(page.toString(QUrl::FullyEncoded).toHtmlEscaped(),
                                        tr("Version %1 is available").arg(version.toHtmlEscaped())));
    statusBar()->addPermanentWidget(news);
}

QWidget& MainWindow::table()
{
    return *table_;
}

void MainWindow::lockEditing(bool locked)
{
    for (auto* widget : std::initializer_list<QWidget*>{searchField_, table_, editor_})
        widget->setEnabled(!locked);
}

void MainWindow::showFormatWindow()
{
    closeFormatWindow();
    formatWindow_ = new FileFormatController(list_, defaults_, this);
    formatWindow_->setAttribute(Qt::WA_DeleteOnClose);
    connect(formatWindow_, &FileFormatController::renameWanted, &controller_, &ViewController::renameFiles);
    connect(formatWindow_, &QDialog::finished, &controller_, [this] {
        controller_.setEditingLocked(false);
        table_->setFocus();
    });
    formatWindow_->show();
    controller_.setEditingLocked(true);
}

void MainWindow::closeFormatWindow()
{
    if (formatWindow_)
        formatWindow_->close();
}

void MainWindow::updateStatus()
{
    const auto selected = static_cast<int>(list_.selection().rows().size());
    const auto all = static_cast<int>(list_.content().size());
    const int shown = list_.rowCount();
    QString text =
        shown == all
            ? tr("%Ln files", nullptr, all)
            : tr("%1 of %Ln files", "the files that match a search, of all", all).arg(QLocale().toString(shown));
    if (selected > 0)
        text = tr("%1, %Ln selected", "%1 tells the number of files", selected).arg(text);
    if (!passingStatus_.isEmpty())
        status_->setText(passingStatus_);
    else
        status_->setText(all == 0 ? QString() : text);
}

void MainWindow::attachWork(LongWork& work)
{
    // Next to the status, so that the room it keeps is not between the others and the edge.
    statusBar()->insertPermanentWidget(1, new WorkBar(work, this));
    connect(&work, &LongWork::aboutToBegin, &controller_, &ViewController::endEditing);
    connect(&work, &LongWork::advanced, actions_.get(), [this] { actions_->setWorking(true); });
    connect(&work, &LongWork::ended, actions_.get(), [this] { actions_->setWorking(false); });
    connect(&work, &LongWork::stopped, this, &MainWindow::showStopped);
    // Only some of the files have what the fields and the art well show.
    connect(&work, &LongWork::stopped, &controller_, &ViewController::updateFields, Qt::QueuedConnection);
}

void MainWindow::showStopped(qsizetype done, qsizetype count)
{
    passingStatus_ =
        tr("Stopped after %1 of %Ln files", nullptr, static_cast<int>(count)).arg(QLocale().toString(done));
    updateStatus();
    passingStatusEnds_.start();
}

void MainWindow::attachFailures(FailureLog& failures)
{
    auto* counter = new QToolButton(this);
    counter->setObjectName(QStringLiteral("messages"));
    counter->setAutoRaise(true);
    counter->setIcon(Icons::symbol(QStringLiteral("info")));
    counter->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    counter->setFocusPolicy(Qt::TabFocus);
    counter->setToolTip(tr("Show what went wrong"));
    counter->hide();
    statusBar()->addPermanentWidget(counter);
    // After the fields, to which Tab leads last before it begins again.
    setTabOrder(editor_->lastField(), counter);
    connect(&failures, &FailureLog::countChanged, counter, [counter](int count) {
        counter->setText(tr("%Ln messages", nullptr, count));
        counter->setVisible(count > 0);
    });
    connect(counter, &QToolButton::clicked, this, [this, &failures] { showMessages(failures); });
}

void MainWindow::showMessages(FailureLog& failures)
{
    if (!messagesWindow_) {
        messagesWindow_ = new MessagesWindow(failures, this);
        messagesWindow_->setAttribute(Qt::WA_DeleteOnClose);
    }
    DesktopWindow::bringToFront(*messagesWindow_);
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
