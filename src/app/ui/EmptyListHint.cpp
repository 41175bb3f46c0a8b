#include "app/ui/EmptyListHint.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

EmptyListHint::EmptyListHint(QWidget* parent) : QWidget(parent)
{
    auto* text = new QLabel(tr("Drop MP3 or M4A files or folders here"), this);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    text->setForegroundRole(QPalette::PlaceholderText);
    auto* open = new QPushButton(tr("Open…"), this);
    open->setAccessibleName(tr("Open music files"));
    connect(open, &QPushButton::clicked, this, &EmptyListHint::openWanted);

    auto* column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->addStretch(1);
    column->addWidget(text);
    column->addWidget(open, 0, Qt::AlignHCenter);
    column->addStretch(1);
}
