#include "library/ui/GenreBox.h"

#include "library/ui/TagField.h"
#include "model/GenreList.h"

#include <QKeyEvent>
#include <QWheelEvent>

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
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down))
        emit field_->rowStepWanted(event->key() == Qt::Key_Up ? -1 : 1);
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
    const bool appended = typed.size() > typedBefore_.size() && field_->cursorPosition() == typed.size();
    typedBefore_ = typed;
    if (!appended)
        return;
    if (const auto genre = GenreList::completed(typed)) {
        field_->setText(*genre);
        field_->setSelection(static_cast<int>(genre->size()), static_cast<int>(typed.size() - genre->size()));
    }
}

void GenreBox::applyChoice()
{
    if (currentIndex() < 0)
        return;
    field_->acceptText();
    emit chosen(field_->key(), field_->text());
}
