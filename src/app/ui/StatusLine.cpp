#include "app/ui/StatusLine.h"

#include "app/FailureLog.h"
#include "app/LongWork.h"
#include "app/ui/Icons.h"
#include "app/ui/LinkLabel.h"
#include "app/ui/MessagesWindow.h"
#include "app/ui/WorkBar.h"
#include "library/ArrayController.h"
#include "platform/ui/DesktopWindow.h"

#include <QLabel>
#include <QLocale>
#include <QToolButton>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int indent = 5;
constexpr int passingLasts = 10'000;

} // namespace

StatusLine::StatusLine(ArrayController& list, QWidget* parent)
    : QStatusBar(parent), list_(list), text_(new QLabel(this))
{
    text_->setIndent(indent);
    // Where all is too much, its end goes rather than a button.
    text_->setMinimumWidth(1);
    addWidget(text_);
    passing_.setSingleShot(true);
    passing_.setInterval(passingLasts);
    passing_.callOnTimeout(this, &StatusLine::showCounts);
    connect(&list, &ArrayController::countChanged, this, &StatusLine::showCounts);
    connect(&list.selection(), &ListSelection::changed, this, [this] {
        done_.clear();
        showCounts();
    });
    showCounts();
}

void StatusLine::attachWork(LongWork& work)
{
    // Next to the text: nothing that stands behind moves when it comes. It takes what the others leave.
    auto* bar = new WorkBar(work, this);
    insertPermanentWidget(1, bar, 1);
    // Nor is the line higher with it.
    setMinimumHeight(std::max(minimumSizeHint().height(), bar->sizeHint().height()));
    connect(&work, &LongWork::stopped, this, &StatusLine::showStopped);
}

QWidget& StatusLine::attachFailures(FailureLog& failures)
{
    auto* counter = new QToolButton(this);
    counter->setObjectName(QStringLiteral("messages"));
    counter->setAutoRaise(true);
    counter->setIcon(Icons::symbol(QStringLiteral("info")));
    counter->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    counter->setFocusPolicy(Qt::TabFocus);
    counter->setToolTip(tr("Show what went wrong"));
    counter->hide();
    addPermanentWidget(counter);
    connect(&failures, &FailureLog::countChanged, counter, [counter](int count) {
        counter->setText(tr("%Ln messages", nullptr, count));
        counter->setVisible(count > 0);
    });
    connect(counter, &QToolButton::clicked, this, [this, &failures] { showMessages(failures); });
    return *counter;
}

void StatusLine::showUpdate(const QString& version, const QUrl& page)
{
    auto* news = new LinkLabel(QStringLiteral("<a href=\"%1\">%2</a>")
                                   .arg(page.toString(QUrl::FullyEncoded).toHtmlEscaped(),
                                        tr("Version %1 is available").arg(version.toHtmlEscaped())));
    addPermanentWidget(news);
}

void StatusLine::showDone(const QString& text)
{
    passing_.stop();
    done_ = text;
    showCounts();
}

void StatusLine::showCounts()
{
    if (passing_.isActive())
        return;
    const auto selected = static_cast<int>(list_.selection().rows().size());
    const auto all = static_cast<int>(list_.content().size());
    const int shown = list_.rowCount();
    QString text =
        shown == all
            ? tr("%Ln files", nullptr, all)
            : tr("%1 of %Ln files", "the files that match a search, of all", all).arg(QLocale().toString(shown));
    if (selected > 0)
        text = tr("%1, %Ln selected", "%1 tells the number of files", selected).arg(text);
    if (!done_.isEmpty())
        text += QStringLiteral(" · ") + done_;
    text_->setText(all == 0 ? QString() : text);
}

void StatusLine::showStopped(qsizetype done, qsizetype count)
{
    text_->setText(
        tr("Stopped after %1 of %Ln files", nullptr, static_cast<int>(count)).arg(QLocale().toString(done)));
    passing_.start();
}

void StatusLine::showMessages(FailureLog& failures)
{
    if (!messagesWindow_) {
        messagesWindow_ = new MessagesWindow(failures, window());
        messagesWindow_->setAttribute(Qt::WA_DeleteOnClose);
    }
    DesktopWindow::bringToFront(*messagesWindow_);
}
