#pragma once

#include <QLabel>

/// One line of plain text, cut with an ellipsis where it is longer than its place; the tool tip then has all of it.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode mode = Qt::ElideRight, QWidget* parent = nullptr);

    /// Line breaks and other runs of white space are shown as one space.
    void setFullText(const QString& text);
    const QString& fullText() const { return fullText_; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void elide();

    Qt::TextElideMode mode_;
    QString fullText_;
};
