#include "library/ui/GenreBox.h"

#include "library/ui/GenreField.h"
#include "model/GenreList.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QWheelEvent>

GenreBox::GenreBox(QWidget* parent) : QComboBox(parent), field_(new GenreField(this))
{
    // Makes the box editable by itself; setEditable() would make its list as well, which the first opening does.
    setLineEdit(field_);
    // The end of typing is the field's alone to notice; the box would choose the entry of the same name once more.
    disconnect(field_, &QLineEdit::editingFinished, this, nullptr);
    disconnect(field_, &QLineEdit::returnPressed, this, nullptr);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxVisibleItems(16);
    setMinimumContentsLength(8);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addItems(GenreList::names());
    setCurrentIndex(-1);
    connect(this, &QComboBox::activated, field_, &GenreField::takeProposal);
    // The box shows the chosen entry only after this signal.
    connect(this, &QComboBox::activated, this, &GenreBox::applyChoice, Qt::QueuedConnection);
}

void GenreBox::showPopup()
{
    view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QComboBox::showPopup();
    // The current item is not the box's own, which would choose it for the field as well.
    view()->setCurrentIndex(model()->index(GenreList::indexOf(field_->text()), 0));
}

void GenreBox::keyPressEvent(QKeyEvent* event)
{
    const bool upOrDown = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    const bool pages = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool opensList = event->key() == Qt::Key_Down && modifiers == Qt::AltModifier;
    if (upOrDown && !modifiers)
        emit field_->rowStepWanted(event->key() == Qt::Key_Up ? -1 : 1);
    else if (pages || (upOrDown && !opensList))
        event->ignore(); // The box would choose another genre, and write it, unseen.
    else
        QComboBox::keyPressEvent(event);
}

void GenreBox::wheelEvent(QWheelEvent* event)
{
    // Scrolling past the box must not change files.
    event->ignore();
}

void GenreBox::applyChoice(int index)
{
    // The field may have been filled for another selection meanwhile.
    if (field_->text() != itemText(index))
        return;
    field_->acceptText();
    emit field_->edited(field_->key(), field_->text());
}
