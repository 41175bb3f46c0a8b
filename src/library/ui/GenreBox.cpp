#include "library/ui/GenreBox.h"

#include "library/ui/TagField.h"
#include "model/GenreList.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWheelEvent>

namespace {

bool isDeletion(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete || event.matches(QKeySequence::Cut)
           || event.matches(QKeySequence::Undo);
}

} // namespace

GenreBox::GenreBox(QWidget* parent)
    : QComboBox(parent), field_(new TagField(QStringLiteral("GENRE"), QStringLiteral("genre"), this))
{
    setEditable(true);
    setLineEdit(field_);
    setCompleter(nullptr);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxVisibleItems(16);
    setMinimumContentsLength(8);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addItems(GenreList::names());
    setCurrentIndex(-1);
    connect(field_, &QLineEdit::textEdited, this, &GenreBox::complete);
    // The box shows the chosen entry only after this signal.
    connect(this, &QComboBox::activated, this, &GenreBox::applyChoice, Qt::QueuedConnection);
}

void GenreBox::keyPressEvent(QKeyEvent* event)
{
    const bool upOrDown = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    const bool pages = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (upOrDown && !modifiers) {
        emit field_->rowStepWanted(event->key() == Qt::Key_Up ? -1 : 1);
    } else if (pages || (upOrDown && modifiers != Qt::AltModifier)) {
        // These would choose another genre, and write it, unseen.
        event->ignore();
    } else {
        const QScopedValueRollback guard(deleting_, isDeletion(*event));
        QComboBox::keyPressEvent(event);
    }
}

void GenreBox::wheelEvent(QWheelEvent* event)
{
    // Scrolling past the box must not change files.
    event->ignore();
}

void GenreBox::complete(const QString& typed)
{
    if (deleting_ || field_->cursorPosition() < typed.size())
        return;
    if (const auto genre = GenreList::completed(typed)) {
        field_->setText(*genre);
        field_->setSelection(static_cast<int>(genre->size()), static_cast<int>(typed.size() - genre->size()));
    }
}

void GenreBox::applyChoice(int index)
{
    // The field may have been filled for another selection meanwhile.
    if (field_->text() == itemText(index))
        field_->commit();
}
