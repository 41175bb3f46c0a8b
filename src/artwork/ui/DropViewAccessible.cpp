#include "artwork/ui/DropViewAccessible.h"

#include "artwork/ui/DropView.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QTimer>

namespace {

void showMenu(QWidget& well)
{
    const QPoint middle = well.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, well.mapToGlobal(middle));
    QCoreApplication::sendEvent(&well, &event);
}

} // namespace

void DropViewAccessible::install()
{
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* well = qobject_cast<DropView*>(object);
        return well ? new DropViewAccessible(well) : nullptr;
    });
}

DropViewAccessible::DropViewAccessible(QWidget* well) : QAccessibleWidget(well, QAccessible::Button) {}

QStringList DropViewAccessible::actionNames() const
{
    return QStringList{pressAction(), showMenuAction()} + QAccessibleWidget::actionNames();
}

void DropViewAccessible::doAction(const QString& name)
{
    auto* well = static_cast<DropView*>(widget());
    // Whoever asks does not wait until the panel or the menu is closed.
    if (name == pressAction())
        QTimer::singleShot(0, well, &DropView::changeWanted);
    else if (name == showMenuAction())
        QTimer::singleShot(0, well, [well] { showMenu(*well); });
    else
        QAccessibleWidget::doAction(name);
}
