#pragma once

#include <QAccessible>

class QWidget;

/// What a widget is to assistive technology, where its class does not tell.
namespace AccessibleRole {

/// To be called by the widget's constructor, before anybody asks for its interface.
void set(QWidget& widget, QAccessible::Role role);

} // namespace AccessibleRole
