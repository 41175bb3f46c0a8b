#include "app/ui/SearchField.h"

#include "app/ui/Icons.h"

#include <QAction>
#include <QKeyEvent>
#include <QToolButton>

SearchField::SearchField(QWidget* parent) : ArrowCaptureTextField(parent)
{
    setObjectName(QStringLiteral("searchField"));
    setPlaceholderText(tr("Search"));
    setAccessibleName(tr("Search"));
    setClearButtonEnabled(true);
    findChild<QToolButton*>()->setAccessibleName(tr("Clear"));
    addAction(Icons::symbol(QStringLiteral("search")), QLineEdit::LeadingPosition)->setText(tr("Search"));
}

void SearchField::begin()
{
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

void SearchField::keyPressEvent(QKeyEvent* event)
{
    const bool isEscape = event->key() == Qt::Key_Escape;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isBare = !(event->modifiers() & ~Qt::KeypadModifier);
    if (!isBare || (!isEscape && !isReturn)) {
        ArrowCaptureTextField::keyPressEvent(event);
        return;
    }
    if (isEscape)
        clear();
    emit left();
}
