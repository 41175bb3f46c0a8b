#include "app/ui/WorkBar.h"

#include "app/LongWork.h"
#include "app/ui/ElidedLabel.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QWindow>

namespace {

constexpr int fileWidth = 220;
constexpr int barWidth = 160;
constexpr int leastBarWidth = 60;

} // namespace

WorkBar::WorkBar(LongWork& work, QWidget* parent)
    : QWidget(parent), file_(new ElidedLabel(Qt::ElideMiddle, this)), bar_(new QProgressBar(this)),
      cancel_(new QPushButton(tr("Cancel"), this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(file_, fileWidth);
    row->addWidget(bar_, barWidth);
    row->addWidget(cancel_);
    setMaximumWidth(fileWidth + row->spacing() + barWidth + row->spacing() + cancel_->sizeHint().width());
    file_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    bar_->setMinimumWidth(leastBarWidth);
    bar_->setMaximumWidth(barWidth);
    bar_->setAccessibleName(tr("Progress"));
    cancel_->setFocusPolicy(Qt::NoFocus);
    cancel_->setToolTip(tr("Stop after the file that is being worked on (Escape)"));
    connect(cancel_, &QPushButton::clicked, &work, &LongWork::cancel);
    connect(&work, &LongWork::advanced, this, &WorkBar::showWork);
    connect(&work, &LongWork::ended, this, &QWidget::hide);
    work.setMayUse([this](const QWindow& window, const QPoint& place) { return isCancelAt(window, place); });
    hide();
}

void WorkBar::showWork(qsizetype done, qsizetype count, const QString& path)
{
    file_->setFullText(QFileInfo(path).fileName());
    bar_->setMaximum(static_cast<int>(count));
    bar_->setValue(static_cast<int>(done));
    show();
    // What is only scheduled may wait for a moment that does not come before the work has ended.
    repaint();
}

bool WorkBar::isCancelAt(const QWindow& window, const QPoint& place) const
{
    const QWidget* top = this->window();
    return top->windowHandle() == &window && cancel_->rect().contains(cancel_->mapFrom(top, place));
}
