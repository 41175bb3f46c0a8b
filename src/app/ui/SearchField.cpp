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
    if (!isEscape && event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        ArrowCaptureTextField::keyPressEvent(event);
        return;
    }
    if (isEscape)
        clear();
    emit left();
}
