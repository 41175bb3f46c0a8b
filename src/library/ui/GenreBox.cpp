#include "library/ui/GenreBox.h"

#include "library/ui/TagField.h"
#include "model/GenreList.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QWheelEvent>

GenreBox::GenreBox(QWidget* parent)
    : QComboBox(parent), field_(new TagField(QStringLiteral("GENRE"), QStringLiteral("genre"), this))
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
    connect(field_, &QLineEdit::textEdited, this, &GenreBox::complete);
    connect(field_, &QLineEdit::textChanged, this, &GenreBox::noteText);
    // The box shows the chosen entry only after this signal.
    connect(this, &QComboBox::activated, this, &GenreBox::applyChoice, Qt::QueuedConnection);
}

void GenreBox::showPopup()
{
    const QString text = field_->text();
    const QSignalBlocker quietBox(this);
    const QSignalBlocker quietField(field_);
    setCurrentIndex(GenreList::indexOf(text));
    field_->setText(text);
    view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QComboBox::showPopup();
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

void GenreBox::complete(const QString& typed)
{
    const bool shortened = typed.size() <= typed_.size() && shown_.startsWith(typed, Qt::CaseInsensitive);
    typed_ = typed;
    shown_ = typed;
    const auto genre = GenreList::completed(typed);
    if (shortened || !genre || field_->cursorPosition() < typed.size())
        return;
    shown_ = *genre;
    field_->setText(*genre);
    field_->setSelection(static_cast<int>(genre->size()), static_cast<int>(typed.size() - genre->size()));
}

void GenreBox::noteText(const QString& text)
{
    // Anything but what was typed or completed is a new filling of the field.
    if (text != typed_ && text != shown_)
        typed_ = shown_ = text;
}

void GenreBox::applyChoice(int index)
{
    // The field may have been filled for another selection meanwhile.
    if (field_->text() != itemText(index))
        return;
    field_->acceptText();
    emit field_->edited(field_->key(), field_->text());
}
