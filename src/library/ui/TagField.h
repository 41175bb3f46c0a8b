#pragma once

#include <QLineEdit>
#include <QString>

/// A line of the editor: the text of one tag field, or a marker where the selected files differ.
///
/// Return, Tab and any other loss of the focus within the window end an edit; Escape brings back the text that the
/// field had. Up and Down ask for the row above or below. A marker is the field's text, drawn in the placeholder
/// colour and selected when the field gets the focus, so that typing replaces it and deleting it clears the field in
/// every file. It is never the text of an edit, whatever brings it back, unless it was typed.
class TagField : public QLineEdit {
    Q_OBJECT

public:
    /// @param key what an edit of this field applies (a property key, or one of the four number identifiers).
    /// @param summaryName the name in the selection summary whose value the field shows.
    TagField(QString key, QString summaryName, QWidget* parent = nullptr);

    const QString& key() const { return key_; }
    const QString& summaryName() const { return summaryName_; }

    /// Fills the field for other files; an edit that begins afterwards starts from this text.
    void showValue(const QString& text, bool isMixed);
    /// Shows what the same files have now. An edit in progress goes on, and ends as one that began with this text.
    void updateValue(const QString& text, bool isMixed);
    /// Ends the edit in progress: emits `edited` if the text differs from the one it began with.
    void commit();
    /// Ends the edit in progress as one that was applied already.
    void acceptText();

signals:
    void edited(const QString& key, const QString& text);
    /// -1 for the row above, 1 for the row below.
    void rowStepWanted(int step);

protected:
    /// The text that an edit which ends now has.
    virtual QString editedText() const { return text(); }

    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setValue(const QString& text, bool isMixed);
    void restore();
    bool isChanged(const QString& wanted) const;
    bool isBeingEdited() const;
    bool showsMarker() const;
    void noteEdited(const QString& text);
    void withholdMarker();
    bool handleOnMarker(const QKeyEvent& event);
    void replaceMarker(const QString& text);
    bool handleCommand(const QKeyEvent& event);
    void updateTextColour();

    QString key_;
    QString summaryName_;
    QString originalStringValue_;
    /// The marker that undoing may bring back; null when there is none.
    QString marker_;
    /// What a key or an input method is about to insert; null for all other ways to change the text.
    QString typed_;
    bool mixed_ = false;
    /// All of the text was typed by hand.
    bool isTyped_ = false;
    bool isComposing_ = false;
    /// The text that is being composed stands in the place of the marker.
    bool isComposedOverMarker_ = false;
    bool focusedByMouse_ = false;
};
