#pragma once

#include <QLineEdit>
#include <QString>

/// A line of the editor: the text of one tag field, or a marker where the selected files differ.
///
/// Return, Tab and any other loss of the focus end an edit; Escape brings back the text that the field had. Up and
/// Down ask for the row above or below. A marker is the field's text, drawn in the placeholder colour and selected
/// when the field gets the focus, so that typing replaces it and deleting it clears the field in every file.
class TagField : public QLineEdit {
    Q_OBJECT

public:
    /// @param key what an edit of this field applies (a property key, or one of the four number identifiers).
    /// @param summaryName the name in the selection summary whose value the field shows.
    TagField(QString key, QString summaryName, QWidget* parent = nullptr);

    const QString& key() const { return key_; }
    const QString& summaryName() const { return summaryName_; }

    /// Fills the field; an edit that begins afterwards starts from this text.
    void showValue(const QString& text, bool isMixed);
    /// Ends the edit in progress: emits `edited` if the text differs from the one it began with.
    void commit();
    /// Ends the edit in progress as one that was applied already.
    void acceptText();

signals:
    void edited(const QString& key, const QString& text);
    /// -1 for the row above, 1 for the row below.
    void rowStepWanted(int step);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool showsMarker() const;
    void updateTextColour();

    QString key_;
    QString summaryName_;
    QString originalStringValue_;
    bool mixed_ = false;
    bool focusedByMouse_ = false;
};
