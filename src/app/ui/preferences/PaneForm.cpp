#include "app/ui/preferences/PaneForm.h"

#include "platform/ui/FieldLabel.h"

#include <QLabel>

#include <utility>

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
    if (std::exchange(endsWithNote_, false))
        grid_.setRowMinimumHeight(grid_.rowCount(), spaceBetweenGroups);
    const int row = grid_.rowCount();
    if (!label.isEmpty())
        addLabel(label, control, row);
    grid_.addWidget(control, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
}

void PaneForm::addLabel(const QString& text, QWidget* control, int row)
{
    grid_.addWidget(FieldLabel::make(text, control), row, 0, Qt::AlignRight | Qt::AlignVCenter);
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
    endsWithNote_ = true;
}
