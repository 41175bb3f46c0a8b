#include "naming/ui/TokenFieldAccessible.h"

#include "naming/ui/TokenChip.h"
#include "naming/ui/TokenField.h"

#include <QTextBlock>

#include <numeric>

void TokenFieldAccessible::install()
{
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* field = qobject_cast<TokenField*>(object);
        return field ? new TokenFieldAccessible(*field) : nullptr;
    });
}

TokenFieldAccessible::TokenFieldAccessible(TokenField& field)
    : QAccessibleWidget(&field, QAccessible::EditableText), field_(field)
{
}

void* TokenFieldAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State TokenFieldAccessible::state() const
{
    auto state = QAccessibleWidget::state();
    state.editable = true;
    state.selectableText = true;
    return state;
}

QString TokenFieldAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? wholeText() : QAccessibleWidget::text(kind);
}

std::vector<QString> TokenFieldAccessible::characters() const
{
    std::vector<QString> characters;
    const QTextBlock block = field_.document()->begin();
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        const bool isChip = format.objectType() == TokenChip::objectType;
        for (const QChar character : part.fragment().text())
            characters.push_back(isChip ? TokenChip::title(format) : QString(character));
    }
    return characters;
}

QString TokenFieldAccessible::wholeText() const
{
    const auto all = characters();
    return std::accumulate(all.begin(), all.end(), QString());
}

int TokenFieldAccessible::offsetOf(int position) const
{
    const auto all = characters();
    const auto end = all.begin() + std::min<std::ptrdiff_t>(position, std::ssize(all));
    return std::accumulate(all.begin(), end, 0, [](int sum, const QString& text) { return sum + int(text.size()); });
}

int TokenFieldAccessible::positionOf(int offset) const
{
    int position = 0;
    for (const auto& text : characters()) {
        offset -= static_cast<int>(text.size());
        if (offset < 0)
            break;
        ++position;
    }
    return position;
}

QString TokenFieldAccessible::characterAt(int position, int* startOffset, int* endOffset) const
{
    const auto all = characters();
    const bool exists = position >= 0 && position < std::ssize(all);
    const QString text = exists ? all[static_cast<std::size_t>(position)] : QString();
    *startOffset = offsetOf(std::max(position, 0));
    *endOffset = *startOffset + static_cast<int>(text.size());
    return text;
}

void TokenFieldAccessible::selection(int index, int* startOffset, int* endOffset) const
{
    const QTextCursor cursor = field_.textCursor();
    const bool exists = index == 0 && cursor.hasSelection();
    *startOffset = exists ? offsetOf(cursor.selectionStart()) : 0;
    *endOffset = exists ? offsetOf(cursor.selectionEnd()) : 0;
}

int TokenFieldAccessible::selectionCount() const
{
    return field_.textCursor().hasSelection() ? 1 : 0;
}

void TokenFieldAccessible::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void TokenFieldAccessible::removeSelection(int)
{
    setCursorPosition(cursorPosition());
}

void TokenFieldAccessible::setSelection(int, int startOffset, int endOffset)
{
    QTextCursor cursor = field_.textCursor();
    cursor.setPosition(positionOf(startOffset));
    cursor.setPosition(positionOf(endOffset), QTextCursor::KeepAnchor);
    field_.setTextCursor(cursor);
}

int TokenFieldAccessible::cursorPosition() const
{
    return offsetOf(field_.textCursor().position());
}

void TokenFieldAccessible::setCursorPosition(int position)
{
    setSelection(0, position, position);
}

QString TokenFieldAccessible::text(int startOffset, int endOffset) const
{
    return wholeText().mid(startOffset, endOffset - startOffset);
}

int TokenFieldAccessible::characterCount() const
{
    return static_cast<int>(wholeText().size());
}

QString TokenFieldAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                               int* endOffset) const
{
    return boundary == QAccessible::CharBoundary
               ? characterAt(positionOf(offset) - 1, startOffset, endOffset)
               : QAccessibleTextInterface::textBeforeOffset(offset, boundary, startOffset, endOffset);
}

QString TokenFieldAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                              int* endOffset) const
{
    return boundary == QAccessible::CharBoundary
               ? characterAt(positionOf(offset) + 1, startOffset, endOffset)
               : QAccessibleTextInterface::textAfterOffset(offset, boundary, startOffset, endOffset);
}

QString TokenFieldAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                           int* endOffset) const
{
    return boundary == QAccessible::CharBoundary
               ? characterAt(positionOf(offset), startOffset, endOffset)
               : QAccessibleTextInterface::textAtOffset(offset, boundary, startOffset, endOffset);
}

QRect TokenFieldAccessible::characterRect(int offset) const
{
    QTextCursor cursor(field_.document());
    cursor.setPosition(positionOf(offset));
    QRect place = field_.cursorRect(cursor);
    if (cursor.movePosition(QTextCursor::NextCharacter))
        place.setRight(std::max(place.right(), field_.cursorRect(cursor).left()));
    return place.translated(field_.viewport()->mapToGlobal(QPoint()));
}

int TokenFieldAccessible::offsetAtPoint(const QPoint& point) const
{
    return offsetOf(field_.cursorForPosition(field_.viewport()->mapFromGlobal(point)).position());
}

void TokenFieldAccessible::scrollToSubstring(int startIndex, int)
{
    setCursorPosition(startIndex);
    field_.ensureCursorVisible();
}

QString TokenFieldAccessible::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

void TokenFieldAccessible::deleteText(int startOffset, int endOffset)
{
    replaceText(startOffset, endOffset, {});
}

void TokenFieldAccessible::insertText(int offset, const QString& text)
{
    replaceText(offset, offset, text);
}

void TokenFieldAccessible::replaceText(int startOffset, int endOffset, const QString& text)
{
    setSelection(0, startOffset, endOffset);
    field_.insertTokens(text.isEmpty() ? QStringList() : QStringList{text});
}
