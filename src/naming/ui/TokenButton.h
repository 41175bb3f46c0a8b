#pragma once

#include <QAbstractButton>

/// A field token to take from: dragged into a token field, or chosen by a double click or the keyboard.
class TokenButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit TokenButton(const QString& token, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent*) override {}
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void dragToken();

    QString token_;
    QPoint pressed_;
};
