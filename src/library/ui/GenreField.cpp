#include "library/ui/GenreField.h"

#include "model/GenreList.h"

#include <QKeyEvent>

GenreField::GenreField(QWidget* parent) : TagField(QStringLiteral("GENRE"), QStringLiteral("genre"), parent)
{
    connect(this, &QLineEdit::textEdited, this, &GenreField::complete);
    connect(this, &QLineEdit::textChanged, this, &GenreField::noteText);
    connect(this, &QLineEdit::selectionChanged, this, &GenreField::noteSelection);
}

void GenreField::takeProposal()
{
    isProposed_ = false;
    typed_ = shown_;
}

QString GenreField::editedText() const
{
    return isProposed_ && GenreList::names().contains(typed_, Qt::CaseInsensitive) ? typed_ : text();
}

void GenreField::keyPressEvent(QKeyEvent* event)
{
    // The cursor stands in front of the proposal, and would only go one step into it.
    if (isProposed_ && event->key() == Qt::Key_Right && !(event->modifiers() & ~Qt::KeypadModifier))
        end(false);
    else
        TagField::keyPressEvent(event);
}

void GenreField::complete(const QString& text)
{
    QString typed = text;
    // What was typed before stands in the field in the capitals of the list.
    if (isProposed_ && text.startsWith(QStringView(shown_).first(typed_.size())))
        typed.replace(0, typed_.size(), typed_);
    const bool shortened = text.size() <= typed_.size() && shown_.startsWith(text, Qt::CaseInsensitive);
    const auto genre = GenreList::completed(typed);
    isProposed_ = genre && !shortened && cursorPosition() >= text.size();
    typed_ = typed;
    shown_ = isProposed_ ? *genre : text;
    if (!isProposed_)
        return;
    isProposed_ = false;
    setText(shown_);
    setSelection(static_cast<int>(shown_.size()), static_cast<int>(typed.size() - shown_.size()));
    isProposed_ = true;
}

void GenreField::noteText()
{
    // Anything but what was typed or completed is a new filling of the field.
    if (text() == shown_)
        return;
    shown_ = text();
    takeProposal();
}

void GenreField::noteSelection()
{
    // Losing the focus moves the selection as well.
    if (isProposed_ && hasFocus() && selectedText() != QStringView(shown_).sliced(typed_.size()))
        takeProposal();
}
