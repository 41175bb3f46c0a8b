#include "app/ui/SearchField.h"

#include "app/ui/Icons.h"

#include <QAction>
#include <QShortcut>
#include <QToolButton>

SearchField::SearchField(QWidget* parent) : ArrowCaptureTextField(parent)
{
    setObjectName(QStringLiteral("searchField"));
    setPlaceholderText(tr("Search"));
    setAccessibleName(tr("Search"));
    setClearButtonEnabled(true);
    findChild<QToolButton*>()->setAccessibleName(tr("Clear"));
    addAction(Icons::symbol(QStringLiteral("search")), QLineEdit::LeadingPosition)->setText(tr("Search"));
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter})
        addLeavingKey(key);
}

void SearchField::begin()
{
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

void SearchField::addLeavingKey(Qt::Key key)
{
    auto* shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, key] {
        if (key == Qt::Key_Escape)
            clear();
        emit left();
    });
}
