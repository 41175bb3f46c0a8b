#include "library/ui/TagField.h"

#include <QKeyEvent>

#include <limits>
#include <utility>

TagField::TagField(QString key, QString summaryName, QWidget* parent)
    : QLineEdit(parent), key_(std::move(key)), summaryName_(std::move(summaryName))
{
    // A text that is cut when it is shown would be written cut.
    setMaxLength(std::numeric_limits<int>::max());
    connect(this, &QLineEdit::editingFinished, this, &TagField::commit);
    connect(this, &QLineEdit::textChanged, this, &TagField::updateTextColour);
}

void TagField::showValue(const QString& text, bool isMixed)
{
    mixed_ = isMixed;
    setText(text);
    originalStringValue_ = this->text();
    updateTextColour();
    if (hasFocus())
        selectAll();
    else
        setCursorPosition(0);
}

void TagField::commit()
{
    if (text() == originalStringValue_)
        return;
    acceptText();
    emit edited(key_, text());
}

void TagField::acceptText()
{
    originalStringValue_ = text();
    mixed_ = false;
    updateTextColour();
}

void TagField::keyPressEvent(QKeyEvent* event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        emit rowStepWanted(event->key() == Qt::Key_Up ? -1 : 1);
        return;
    }
    if (plain && event->key() == Qt::Key_Escape && text() != originalStringValue_) {
        setText(originalStringValue_);
        selectAll();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TagField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    focusedByMouse_ = event->reason() == Qt::MouseFocusReason;
    if (showsMarker())
        selectAll();
}

void TagField::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    // The click that brought the focus has put the cursor into the marker.
    if (std::exchange(focusedByMouse_, false) && showsMarker() && !hasSelectedText())
        selectAll();
}

void TagField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        updateTextColour();
}

bool TagField::showsMarker() const
{
    return mixed_ && text() == originalStringValue_;
}

void TagField::updateTextColour()
{
    QPalette colours;
    if (showsMarker())
        colours.setColor(QPalette::Text, palette().color(QPalette::PlaceholderText));
    const bool isCurrent = colours.resolveMask() == palette().resolveMask()
                           && (!showsMarker() || colours.color(QPalette::Text) == palette().color(QPalette::Text));
    if (!isCurrent)
        setPalette(colours);
}
