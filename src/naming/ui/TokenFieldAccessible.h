#pragma once

#include <QAccessibleWidget>

#include <vector>

class TokenField;

/// A token field as a text in which each chip reads as its title.
///
/// A chip is one character for the cursor, so asking for the character at any of its letters gives the whole title.
/// Positions are those in the text that is read, not those in the field's document.
class TokenFieldAccessible : public QAccessibleWidget,
                             public QAccessibleTextInterface,
                             public QAccessibleEditableTextInterface {
public:
    /// Has every token field described by this class.
    static void install();

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    void selection(int index, int* startOffset, int* endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int index) override;
    void setSelection(int index, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                             int* endOffset) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                            int* endOffset) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                         int* endOffset) const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

    void deleteText(int startOffset, int endOffset) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int startOffset, int endOffset, const QString& text) override;

private:
    explicit TokenFieldAccessible(TokenField& field);

    /// What each character of the field's document reads as.
    std::vector<QString> characters() const;
    QString wholeText() const;
    int offsetOf(int position) const;
    /// @param offset inside a title stands for the place before its chip.
    int positionOf(int offset) const;
    /// The document's character at a position as a part of the text; nothing outside.
    QString characterAt(int position, int* startOffset, int* endOffset) const;

    TokenField& field_;
};
