#include "platform/ui/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace {

constexpr auto roleProperty = "accessibleRole";

QAccessibleInterface* make(const QString&, QObject* object)
{
    const QVariant role = object && object->isWidgetType() ? object->property(roleProperty) : QVariant();
    return role.isValid() ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Role(role.toInt()))
                          : nullptr;
}

} // namespace

void AccessibleRole::set(QWidget& widget, QAccessible::Role role)
{
    widget.setProperty(roleProperty, static_cast<int>(role));
    QAccessible::installFactory(make);
}
