#include "app/ui/MainWindow.h"

#include "app/LongWork.h"
#include "app/PreviewController.h"
#include "app/ViewController.h"
#include "app/ui/Actions.h"
#include "app/ui/EmptyListHint.h"
#include "app/ui/LightGradientView.h"
#include "app/ui/MainMenu.h"
#include "app/ui/SearchField.h"
#include "app/ui/StatusLine.h"
#include "app/ui/WindowLayout.h"
#include "artwork/ui/DropView.h"
#include "artwork/ui/RowDragImage.h"
#include "library/ArrayController.h"
#include "library/Deed.h"
#include "library/ui/EditorPane.h"
#include "library/ui/QuickLookTableView.h"
#include "naming/ui/FileFormatController.h"
#include "platform/ui/DesktopWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScrollArea>
#include <QSplitter>
#include <QTimer>
#include <QToolBar>
#include <QUrl>

#include <utility>

namespace {

constexpr QSize initialSize(1100, 700);
constexpr QSize leastSize(640, 360);
constexpr int editorWidth = 320;

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
      actions_(std::make_unique<Actions>(controller, list, art)), status_(new StatusLine(list, this))
{
    setWindowTitle(tr("Sonvika"));
    DesktopWindow::moveByBackground(*this);
    setMinimumSize(leastSize);
    resize(initialSize);
    setStatusBar(status_);
    buildCentre(drops, art, artworkDrops);
    new MainMenu(*this, *actions_, *table_, controller, recentDocuments);
    buildToolBar();
    connect(actions_->find, &QAction::triggered, searchField_, &SearchField::begin);
    setTabOrder(searchField_, table_);
    setTabOrder(table_, well_);
    connectController();
    layout_ = new WindowLayout(*this, *splitter_, table_->columns(), defaults_);
    controller_.updateFields();
    connect(qApp, &QApplication::focusChanged, actions_.get(),
            [this](const QWidget*, const QWidget* focused) { followFocus(focused); });
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
        layout_->restorePlace();
    DesktopWindow::bringToFront(*this);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    closeFormatWindow();
    controller_.closeQuickLook();
    controller_.endEditing();
    layout_->store();
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
    searchField_ = new SearchField(&bar);
    connect(searchField_, &SearchField::rowStepWanted, &controller_, &ViewController::moveSelection);
    connect(searchField_, &QLineEdit::textChanged, &list_, &ArrayController::setFilterText);
    connect(searchField_, &SearchField::left, table_, qOverload<>(&QWidget::setFocus));
    padding->addWidget(searchField_);
    padding->addSpacing(qMax(side - taken, 0));
    bar.addWidget(paddingView_);
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
    connect(&controller_, &ViewController::done, status_,
            [this](const Deed& deed) { status_->showDone(deed.text()); });
    connect(&controller_, &ViewController::windowWanted, this, &MainWindow::bringToFront);
    connect(&controller_, &ViewController::editingLocked, this, &MainWindow::lockEditing);
    connect(&controller_, &ViewController::formatWindowWanted, this, &MainWindow::showFormatWindow);
    connect(editor_, &EditorPane::edited, &controller_, &ViewController::applyEdit);
    connect(editor_, &EditorPane::compilationClicked, &controller_, &ViewController::updateCompilationState);
    connect(editor_, &EditorPane::rowStepWanted, &controller_, &ViewController::moveSelection);
    connect(table_, &QuickLookTableView::editWanted, editor_, &EditorPane::focusFirstField);
    connect(table_, &QuickLookTableView::quickLookWanted, &controller_, &ViewController::openQuickLook);
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
    status_->showUpdate(version, page);
}

QWidget& MainWindow::table()
{
    return *table_;
}

void MainWindow::lockEditing(bool locked)
{
    for (auto* widget : std::initializer_list<QWidget*>{searchField_, table_, editor_})
        widget->setEnabled(!locked);
    actions_->setLocked(locked);
}

void MainWindow::followFocus(const QWidget* focused)
{
    // Where it is in a menu, or in another window, it will come back to where it was.
    if (!focused || focused->window() != this || focused == menuBar())
        return;
    const auto isIn = [focused](const QWidget* part) { return part == focused || part->isAncestorOf(focused); };
    if (isIn(table_))
        actions_->setDeleteTarget(Actions::DeleteTarget::Rows);
    else if (isIn(well_))
        actions_->setDeleteTarget(Actions::DeleteTarget::Art);
    else
        actions_->setDeleteTarget(Actions::DeleteTarget::Text);
}

void MainWindow::showFormatWindow()
{
    closeFormatWindow();
    formatWindow_ = new FileFormatController(list_.selectedObjects(), defaults_, this);
    formatWindow_->setAttribute(Qt::WA_DeleteOnClose);
    connect(formatWindow_, &FileFormatController::renameWanted, &controller_,
            qOverload<const std::vector<AudioFilePtr>&, const QStringList&>(&ViewController::renameFiles));
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

void MainWindow::attachWork(LongWork& work)
{
    status_->attachWork(work);
    connect(&work, &LongWork::aboutToBegin, &controller_, &ViewController::endEditing);
    connect(&work, &LongWork::advanced, actions_.get(), [this] { actions_->setWorking(true); });
    connect(&work, &LongWork::ended, actions_.get(), [this] { actions_->setWorking(false); });
    // Only some of the files have what the fields and the art well show.
    connect(&work, &LongWork::stopped, &controller_, &ViewController::updateFields, Qt::QueuedConnection);
}

void MainWindow::attachFailures(FailureLog& failures)
{
    // After the fields, to which Tab leads last before it begins again.
    setTabOrder(editor_->lastField(), &status_->attachFailures(failures));
}
