#include "app/ui/preferences/PreferencesTabViewController.h"

#include "app/ui/Icons.h"
#include "app/ui/preferences/AboutViewController.h"
#include "app/ui/preferences/GeneralViewController.h"
#include "app/ui/preferences/UpdatesViewController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/AccessibleRole.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QFrame>
#include <QShortcut>
#include <QToolButton>

namespace {

constexpr int switchingTakes = 100;
constexpr QSize symbolSize(24, 24);
constexpr int minButtonWidth = 76;

/// What the panes are known by, in their order.
QStringList identifiers()
{
    return {QStringLiteral("general"), QStringLiteral("Updates"), QStringLiteral("about")};
}

QIcon symbolFor(const QString& identifier)
{
    static const QMap<QString, QString> symbols{{QStringLiteral("general"), QStringLiteral("gearshape")},
                                                {QStringLiteral("Updates"), QStringLiteral("updates")},
                                                {QStringLiteral("about"), QStringLiteral("info")}};
    return Icons::symbol(symbols.value(identifier));
}

} // namespace

PreferencesTabViewController::PreferencesTabViewController(UserDefaults& defaults, NotificationPoster& notifier,
                                                           Updater& updater, QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), defaults_(defaults)
{
    AccessibleRole::set(*this, QAccessible::Dialog);
    prefWidth_ += preferencesPadding();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    buildBar(*column);
    stage_ = new QWidget(this);
    stage_->installEventFilter(this);
    column->addWidget(stage_, 1);
    panes_ = {new GeneralViewController(defaults, notifier, stage_), new UpdatesViewController(updater, stage_),
              new AboutViewController(stage_)};
    for (auto* view : panes_)
        view->hide();
    for (const auto key : {QKeySequence::Cancel, QKeySequence::Close})
        connect(new QShortcut(key, this), &QShortcut::activated, this, &QWidget::close);
    resizing_.setDuration(switchingTakes);
    connect(&resizing_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& size) { setFixedSize(size.toSize()); });
    connect(&resizing_, &QVariantAnimation::finished, this, &PreferencesTabViewController::transitionDidEnd);
    viewDidLoad();
}

PreferencesTabViewController::~PreferencesTabViewController()
{
    if (isVisible())
        viewWillDisappear();
}

int PreferencesTabViewController::preferencesPadding()
{
    return tr("0", "preferences padding").toInt();
}

void PreferencesTabViewController::buildBar(QBoxLayout& column)
{
    bar_ = new QWidget(this);
    auto* row = new QHBoxLayout(bar_);
    row->setContentsMargins(8, 6, 8, 6);
    row->setSpacing(4);
    buttons_ = new QButtonGroup(this);
    connect(buttons_, &QButtonGroup::idClicked, this, &PreferencesTabViewController::selectPane);
    row->addStretch(1);
    for (const auto& identifier : identifiers())
        row->addWidget(makeButton(identifier));
    row->addStretch(1);
    column.addWidget(bar_);
    auto* line = new QFrame(this);
    line->setFrameStyle(QFrame::HLine | QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    column.addWidget(line);
}

QToolButton* PreferencesTabViewController::makeButton(const QString& identifier)
{
    const auto index = static_cast<int>(buttons_->buttons().size());
    auto* button = new QToolButton(bar_);
    button->setObjectName(identifier);
    button->setCheckable(true);
    button->setAutoExclusive(true);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setIconSize(symbolSize);
    button->setMinimumWidth(minButtonWidth);
    button->setFocusPolicy(Qt::StrongFocus);
    buttons_->addButton(button, index);
    return button;
}

void PreferencesTabViewController::viewDidLoad()
{
    const int stored = defaults_.intForKey(DefaultsKey::selectedTabIndex);
    selected_ = stored >= 0 && stored < panes_.size() ? stored : 0;
    viewWillAppear();
    transitionDidEnd();
}

void PreferencesTabViewController::viewWillAppear()
{
    measurePanes();
    for (int i = 0; i < panes_.size(); ++i) {
        const QString title = pane(i).windowTitle();
        auto* button = static_cast<QToolButton*>(buttons_->button(i));
        // A new text takes the shortcut away.
        button->setText(title);
        button->setShortcut(QKeySequence(static_cast<int>(Qt::CTRL) | (Qt::Key_1 + i)));
        button->setAccessibleName(title);
        button->setIcon(symbolFor(button->objectName()));
    }
}

void PreferencesTabViewController::measurePanes()
{
    for (auto* view : panes_) {
        view->resize(fittingSize(*view));
        tabViewSizes_[view->windowTitle()] = view->size();
    }
}

void PreferencesTabViewController::viewWillDisappear()
{
    defaults_.setInt(DefaultsKey::selectedTabIndex, selected_);
    defaults_.synchronize();
}

void PreferencesTabViewController::selectPane(int index)
{
    if (index < 0 || index >= panes_.size() || index == selected_)
        return;
    QWidget& from = pane(selected_);
    selected_ = index;
    transition(from, pane(index));
}

void PreferencesTabViewController::transition(QWidget& from, QWidget& to)
{
    resizing_.stop();
    from.hide();
    buttons_->button(selected_)->setChecked(true);
    setWindowTitle(to.windowTitle());
    if (!isVisible()) {
        transitionDidEnd();
        return;
    }
    resizing_.setStartValue(size());
    resizing_.setEndValue(windowSize(to));
    resizing_.start();
}

void PreferencesTabViewController::transitionDidEnd()
{
    QWidget& shown = pane(selected_);
    buttons_->button(selected_)->setChecked(true);
    setWindowTitle(shown.windowTitle());
    setFixedSize(windowSize(shown));
    shown.show();
}

QSize PreferencesTabViewController::windowSize(QWidget& pane)
{
    const QString title = pane.windowTitle();
    if (!tabViewSizes_.contains(title))
        tabViewSizes_[title] = pane.size();
    // All but the stage, which asks for no room of its own.
    const int above = layout()->minimumSize().height();
    return tabViewSizes_[title] + QSize(0, above);
}

QSize PreferencesTabViewController::fittingSize(QWidget& pane) const
{
    const int width = qMax(qRound(prefWidth_), pane.minimumSizeHint().width());
    return {width, pane.hasHeightForWidth() ? pane.heightForWidth(width) : pane.sizeHint().height()};
}

bool PreferencesTabViewController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == stage_ && event->type() == QEvent::LayoutRequest
        && resizing_.state() == QAbstractAnimation::Stopped) {
        measurePanes();
        setFixedSize(windowSize(pane(selected_)));
    }
    return QWidget::eventFilter(watched, event);
}

void PreferencesTabViewController::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    viewWillAppear();
    setFixedSize(windowSize(pane(selected_)));
}

void PreferencesTabViewController::closeEvent(QCloseEvent* event)
{
    viewWillDisappear();
    QWidget::closeEvent(event);
}
