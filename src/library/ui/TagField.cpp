#include "library/ui/TagField.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace {

/// Alt, Meta and Ctrl call commands. Only AltGr, which some systems report as Ctrl and Alt together, is a part of typing.
bool mayType(const QKeyEvent& event)
{
    const auto commandKeys = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!commandKeys || event.modifiers().testFlag(Qt::GroupSwitchModifier))
        return true;
    const QString text = event.text();
    const bool isPlainLetter =
        text.isEmpty() || (text.front().isLetterOrNumber() && text.front().toUpper().unicode() == event.key());
    return commandKeys == (Qt::ControlModifier | Qt::AltModifier) && !isPlainLetter;
}

bool removes(const QKeyEvent& event)
{
    constexpr std::array commands{QKeySequence::Cut,
                                  QKeySequence::Delete,
                                  QKeySequence::DeleteStartOfWord,
                                  QKeySequence::DeleteEndOfWord,
                                  QKeySequence::DeleteEndOfLine,
                                  QKeySequence::DeleteCompleteLine};
    const bool isBackspace = event.key() == Qt::Key_Backspace && !event.modifiers();
    return isBackspace
           || std::any_of(commands.begin(), commands.end(), [&](auto command) { return event.matches(command); });
}

bool isKeyOf(QKeySequence::StandardKey command, const QString& keys)
{
    return !keys.isEmpty() && keys == QKeySequence(command).toString(QKeySequence::NativeText);
}

} // namespace

TagField::TagField(QString key, QString summaryName, QWidget* parent)
    : QLineEdit(parent), key_(std::move(key)), summaryName_(std::move(summaryName))
{
    // A text that is cut when it is shown would be written cut.
    setMaxLength(std::numeric_limits<int>::max());
    connect(this, &QLineEdit::returnPressed, this, &TagField::commit);
    connect(this, &QLineEdit::textEdited, this, &TagField::noteEdited);
    connect(this, &QLineEdit::textChanged, this, &TagField::updateTextColour);
    // The field offers what was selected only after that.
    connect(this, &QLineEdit::selectionChanged, this, &TagField::withholdMarker, Qt::QueuedConnection);
}

void TagField::showValue(const QString& text, bool isMixed)
{
    setValue(text, isMixed);
    if (hasFocus())
        selectAll();
    else
        setCursorPosition(0);
}

void TagField::updateValue(const QString& text, bool isMixed)
{
    if (isBeingEdited()) {
        originalStringValue_ = text;
        mixed_ = isMixed;
        updateTextColour();
        return;
    }
    // The text is left alone, with its cursor and what can be undone, unless a marker could come back.
    if (text == this->text() && isMixed == mixed_ && (isMixed || marker_.isNull()))
        return;
    const int cursor = hasFocus() ? cursorPosition() : 0;
    setValue(text, isMixed);
    setCursorPosition(cursor);
    if (hasFocus() && showsMarker())
        selectAll();
}

void TagField::setValue(const QString& text, bool isMixed)
{
    mixed_ = isMixed;
    isTyped_ = false;
    isComposing_ = false;
    isComposedOverMarker_ = false;
    marker_ = isMixed ? text : QString();
    setText(text);
    originalStringValue_ = this->text();
    updateTextColour();
}

void TagField::restore()
{
    setValue(QString(originalStringValue_), mixed_);
}

void TagField::commit()
{
    const QString wanted = editedText();
    if (isChanged(wanted)) {
        if (wanted != text())
            setText(wanted);
        acceptText();
        emit edited(key_, wanted);
    } else if (wanted != text() || text() != originalStringValue_) {
        restore();
    }
}

void TagField::acceptText()
{
    originalStringValue_ = text();
    mixed_ = false;
    updateTextColour();
}

bool TagField::isChanged(const QString& wanted) const
{
    const bool isMarker =
        (!isTyped_ && !marker_.isNull() && wanted == marker_) || (isComposedOverMarker_ && wanted.isEmpty());
    return !isMarker && (wanted != originalStringValue_ || (mixed_ && isTyped_));
}

bool TagField::isBeingEdited() const
{
    return isComposing_ || text() != originalStringValue_ || isChanged(editedText());
}

void TagField::noteEdited(const QString& text)
{
    isTyped_ = !typed_.isNull() && (isTyped_ || text == typed_);
}

void TagField::keyPressEvent(QKeyEvent* event)
{
    if (handleCommand(*event))
        return;
    if (mayType(*event)) {
        // Keys without a text, such as those for Undo and Paste on some keyboards, don't type either.
        const QScopedValueRollback typing(typed_, event->text().isEmpty() ? QString() : event->text());
        QLineEdit::keyPressEvent(event);
        return;
    }
    // Without a text it can only be a shortcut.
    QKeyEvent shortcut(event->type(), event->key(), event->modifiers(), QString(), event->isAutoRepeat());
    QLineEdit::keyPressEvent(&shortcut);
    event->setAccepted(shortcut.isAccepted());
}

bool TagField::handleCommand(const QKeyEvent& event)
{
    const bool plain = !(event.modifiers() & ~Qt::KeypadModifier);
    if (plain && (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down)) {
        emit rowStepWanted(event.key() == Qt::Key_Up ? -1 : 1);
        return true;
    }
    if (plain && event.key() == Qt::Key_Escape && isBeingEdited()) {
        restore();
        selectAll();
        return true;
    }
    return showsMarker() && handleOnMarker(event);
}

/// The marker goes as a whole, and never to the clipboard, where it would be a text like any other.
bool TagField::handleOnMarker(const QKeyEvent& event)
{
    if (event.matches(QKeySequence::Copy))
        return true;
    if (removes(event)) {
        selectAll();
        del();
        return true;
    }
    const bool types = mayType(event) && !event.text().isEmpty() && event.text().front().isPrint();
    if (types || event.matches(QKeySequence::Paste))
        selectAll();
    return false;
}

void TagField::inputMethodEvent(QInputMethodEvent* event)
{
    const bool composes = !event->preeditString().isEmpty();
    if (composes && !isComposing_)
        isComposedOverMarker_ = showsMarker();
    if (showsMarker() && (composes || !event->commitString().isEmpty()))
        selectAll();
    const QScopedValueRollback typing(typed_, event->commitString());
    QLineEdit::inputMethodEvent(event);
    isComposing_ = composes;
    // What was given up leaves the field empty, which would clear it in every file.
    if (!composes && std::exchange(isComposedOverMarker_, false) && text().isEmpty())
        restore();
}

void TagField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    focusedByMouse_ = event->reason() == Qt::MouseFocusReason;
    if (showsMarker())
        selectAll();
}

void TagField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // A menu, a list or another window in front gives the focus back.
    const bool comesBack =
        event->reason() == Qt::MenuBarFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
    if (!comesBack && !QApplication::activePopupWidget())
        commit();
}

void TagField::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton && showsMarker()) {
        replaceMarker(QGuiApplication::clipboard()->text(QClipboard::Selection));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
    // The click that brought the focus has put the cursor into the marker.
    if (std::exchange(focusedByMouse_, false) && showsMarker() && !hasSelectedText())
        selectAll();
}

void TagField::dropEvent(QDropEvent* event)
{
    if (!showsMarker() || !event->mimeData()->hasText()) {
        QLineEdit::dropEvent(event);
        return;
    }
    replaceMarker(event->mimeData()->text());
    event->acceptProposedAction();
}

void TagField::replaceMarker(const QString& text)
{
    if (text.isEmpty())
        return;
    selectAll();
    insert(text);
}

/// Selected, by whatever means, the marker could be pasted with the middle button of the mouse.
void TagField::withholdMarker()
{
    auto* clipboard = QGuiApplication::clipboard();
    const bool isOffered =
        clipboard->ownsSelection() && hasSelectedText() && clipboard->text(QClipboard::Selection) == selectedText();
    if (!showsMarker() || !isOffered)
        return;
    const int start = selectionStart();
    const int length = selectionLength();
    clipboard->clear(QClipboard::Selection);
    setSelection(start, length);
}

void TagField::contextMenuEvent(QContextMenuEvent* event)
{
    if (showsMarker())
        selectAll();
    auto* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (auto* action : menu->actions()) {
        const QString keys = action->text().section(QLatin1Char('\t'), 1);
        if (showsMarker() && (isKeyOf(QKeySequence::Cut, keys) || isKeyOf(QKeySequence::Copy, keys)))
            action->setEnabled(false);
    }
    menu->popup(event->globalPos());
}

void TagField::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        updateTextColour();
}

bool TagField::showsMarker() const
{
    return mixed_ && !isTyped_ && text() == originalStringValue_;
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
