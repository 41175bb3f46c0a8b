#pragma once

#include <QWidget>

/// A calm background: white fading to nearly white in a light appearance, nothing at all in a dark one. Clicks end here.
class LightGradientView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};
