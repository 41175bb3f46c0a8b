#pragma once

#include "naming/ui/TokenChip.h"

#include <QStringList>
#include <QTextEdit>

/// A line of text in which some texts are chips: the file-name format as it is edited.
///
/// A chip is one character for the cursor: it is selected by a click, removed by Backspace or Delete, dragged, cut,
/// copied and pasted, inside the field and from one to another. Alt+Left and Alt+Right move the chip at the cursor
/// past its neighbour. A typed text that reads like a chip becomes one at Return, and when the field loses the focus.
class TokenField : public QTextEdit {
    Q_OBJECT

public:
    /// The MIME type under which tokens are dragged and copied: a JSON array of field tokens and of {"literal": text}.
    static const QString tokenType;

    /// What carries one field token: under tokenType, and as plain text for others. The caller owns it.
    static QMimeData* mimeDataFor(const QString& token);

    explicit TokenField(QWidget* parent = nullptr);

    /// The chips and the texts between them, in order; no text is empty and no two stand side by side.
    QStringList tokens() const;
    void setTokens(const QStringList& tokens);
    /// Puts tokens in the place of the selection.
    void insertTokens(const QStringList& tokens);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void tokensChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void makeChipsOfTitles();
    void moveChip(int step);
    bool isChip(int position) const;
    /// The chip under a point; -1 for none.
    int chipAt(const QPoint& point) const;
    void selectChip(int position);

    TokenChip::Renderer* chips_;
    int pressedChip_ = -1;
};
