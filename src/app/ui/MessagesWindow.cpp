#include "app/ui/MessagesWindow.h"

#include "app/FailureLog.h"
#include "platform/ui/NameDelegate.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

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
    table_->setModel(&log);
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

    // Made in the order in which Tab leads through them; the row of buttons would lead back to its first for ever.
    auto* buttons = new QDialogButtonBox(this);
    buttons->setFocusPolicy(Qt::NoFocus);
    auto* copy = buttons->addButton(tr("&Copy All"), QDialogButtonBox::ActionRole);
    auto* clear = buttons->addButton(tr("C&lear"), QDialogButtonBox::ActionRole);
    clear->setObjectName(QStringLiteral("clear"));
    // Return in the list closes the window.
    buttons->addButton(QDialogButtonBox::Close)->setDefault(true);
    connect(copy, &QPushButton::clicked, this, &MessagesWindow::copyAll);
    connect(clear, &QPushButton::clicked, &log, &FailureLog::clear);
    connect(clear, &QPushButton::clicked, this, &QDialog::close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    table_->installEventFilter(this);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(table_);
    column->addWidget(buttons);
    table_->setFocus();
}

bool MessagesWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The view itself would copy one cell.
    if (event->type() != QEvent::KeyPress || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
        return QDialog::eventFilter(watched, event);
    copySelected();
    return true;
}

void MessagesWindow::copyAll() const
{
    QList<int> rows(log_.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    copy(rows);
}

void MessagesWindow::copySelected() const
{
    QList<int> rows;
    for (const auto& index : table_->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    copy(rows);
}

void MessagesWindow::copy(const QList<int>& rows) const
{
    QGuiApplication::clipboard()->setText(log_.text(rows));
}
