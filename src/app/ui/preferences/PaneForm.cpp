#include "app/ui/preferences/PaneForm.h"

#include <QLabel>

namespace {

constexpr int margin = 20;
constexpr int labelWidth = 140;
constexpr int spaceBetweenGroups = 8;
constexpr qreal noteScale = 0.9;

} // namespace

PaneForm::PaneForm(QWidget& pane) : grid_(*new QGridLayout(&pane))
{
    grid_.setContentsMargins(margin, margin, margin, margin);
    grid_.setHorizontalSpacing(8);
    grid_.setVerticalSpacing(6);
    grid_.setColumnMinimumWidth(0, labelWidth);
    grid_.setColumnStretch(1, 1);
}

void PaneForm::addRow(const QString& label, QWidget* control)
{
    const int row = grid_.rowCount();
    auto* name = new QLabel(label);
    name->setBuddy(control);
    grid_.addWidget(name, row, 0, Qt::AlignRight | Qt::AlignVCenter);
    grid_.addWidget(control, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
}

QLabel* PaneForm::addNote(const QString& text)
{
    auto* note = new QLabel(text);
    addNote(note);
    return note;
}

void PaneForm::addNote(QLabel* note)
{
    const int row = grid_.rowCount();
    note->setWordWrap(true);
    QFont font = note->font();
    font.setPointSizeF(font.pointSizeF() * noteScale);
    note->setFont(font);
    grid_.addWidget(note, row, 1);
    grid_.setRowMinimumHeight(row + 1, spaceBetweenGroups);
    // The next row comes after the space.
    grid_.addItem(new QSpacerItem(0, 0), row + 1, 0);
}
