#include "app/ui/MessagesWindow.h"

#include "app/FailureLog.h"
#include "platform/ui/NameDelegate.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr QSize initialSize(840, 340);
constexpr int fileWidth = 200;
constexpr int margin = 20;
constexpr int rowPadding = 6;

class RowDelegate : public NameDelegate {
public:
    using NameDelegate::NameDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return NameDelegate::sizeHint(option, index) + QSize(0, rowPadding);
    }
};

} // namespace

MessagesWindow::MessagesWindow(FailureLog& log, QWidget* parent)
    : QDialog(parent), log_(log), table_(new QTreeView(this))
{
    setWindowTitle(tr("Messages"));
    resize(initialSize);
    setUpTable();
    // Made in the order in which Tab leads through them.
    waysOutRow_ = makeWaysOut();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(table_);
    column->addWidget(waysOutRow_);
    column->addWidget(makeButtons());
    connect(&log, &FailureLog::countChanged, this, &MessagesWindow::offerWaysOut);
    connect(&log, &FailureLog::dataChanged, this, &MessagesWindow::offerWaysOut);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MessagesWindow::offerWaysOut);
    waysOutRow_->hide();
    offerWaysOut();
    selectFirstUndecided();
    table_->setFocus();
}

void MessagesWindow::setUpTable()
{
    table_->setModel(&log_);
    table_->setItemDelegate(new RowDelegate(table_));
    table_->setAccessibleName(tr("Messages"));
    table_->setRootIsDecorated(false);
    table_->setUniformRowHeights(true);
    table_->setAllColumnsShowFocus(true);
    table_->setAlternatingRowColors(true);
    // The path stands in the middle, and the reason at the end.
    table_->setTextElideMode(Qt::ElideMiddle);
    table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_->header()->setStretchLastSection(true);
    table_->resizeColumnToContents(FailureLog::Time);
    table_->setColumnWidth(FailureLog::File, fileWidth);
    table_->scrollToBottom();
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);
    // The view itself would copy one cell.
    auto* copySelected = new QAction(tr("&Copy"), this);
    copySelected->setShortcut(QKeySequence::Copy);
    copySelected->setShortcutContext(Qt::WidgetShortcut);
    connect(copySelected, &QAction::triggered, this, [this] { copy(selectedRows()); });
    table_->addAction(copySelected);
}

QWidget* MessagesWindow::makeWaysOut()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    addWayOut(*row, tr("&Restore a Copy Beside It"),
              tr("Save the file as it was before the interrupted change as a new file in the same folder"),
              [this](int selected) { log_.restoreCopy(selected); });
    addWayOut(*row, tr("&Forget"), tr("Leave the file as it is, and forget the interrupted change"),
              [this](int selected) { log_.forget(selected); });
    layout->addStretch();
    return row;
}

void MessagesWindow::addWayOut(QWidget& row, const QString& text, const QString& meaning,
                               const std::function<void(int row)>& take)
{
    auto* action = new QAction(text, this);
    auto* button = new QPushButton(text, &row);
    button->setToolTip(meaning);
    row.layout()->addWidget(button);
    table_->addAction(action);
    waysOut_.append(action);
    connect(action, &QAction::enabledChanged, button, &QWidget::setEnabled);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::triggered, this, [this, take] {
        // The button that was pressed may be disabled now.
        table_->setFocus();
        for (const int selected : selectedUndecided())
            take(selected);
    });
}

QWidget* MessagesWindow::makeButtons()
{
    auto* buttons = new QDialogButtonBox(this);
    // The row itself would lead Tab back to its first button for ever.
    buttons->setFocusPolicy(Qt::NoFocus);
    auto* copyButton = buttons->addButton(tr("&Copy All"), QDialogButtonBox::ActionRole);
    auto* clear = buttons->addButton(tr("C&lear"), QDialogButtonBox::ActionRole);
    clear->setObjectName(QStringLiteral("clear"));
    // Return in the list closes the window.
    buttons->addButton(QDialogButtonBox::Close)->setDefault(true);
    connect(copyButton, &QPushButton::clicked, this, &MessagesWindow::copyAll);
    connect(clear, &QPushButton::clicked, &log_, &FailureLog::clear);
    connect(clear, &QPushButton::clicked, this, &QDialog::close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    return buttons;
}

void MessagesWindow::selectFirstUndecided()
{
    for (int row = 0; row < log_.rowCount(); ++row) {
        if (log_.isUndecided(row))
            return table_->setCurrentIndex(log_.index(row, 0));
    }
}

void MessagesWindow::offerWaysOut()
{
    // They stay until the window is closed, so that nothing moves under the pointer.
    if (log_.hasUndecided())
        waysOutRow_->show();
    const bool isOffered = !selectedUndecided().isEmpty();
    for (auto* action : std::as_const(waysOut_))
        action->setEnabled(isOffered);
}

QList<int> MessagesWindow::selectedRows() const
{
    QList<int> rows;
    for (const auto& index : table_->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

QList<int> MessagesWindow::selectedUndecided() const
{
    QList<int> rows = selectedRows();
    rows.removeIf([this](int row) { return !log_.isUndecided(row); });
    return rows;
}

void MessagesWindow::copyAll() const
{
    QList<int> rows(log_.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    copy(rows);
}

void MessagesWindow::copy(const QList<int>& rows) const
{
    QGuiApplication::clipboard()->setText(log_.text(rows));
}
