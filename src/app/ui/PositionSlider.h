#pragma once

#include <QSlider>

/// The position in a file, in milliseconds. A click leads to where it points instead of a page further; assistive
/// technology is told the time.
class PositionSlider : public QSlider {
    Q_OBJECT

public:
    explicit PositionSlider(QWidget* parent = nullptr);

    /// "3:07", "1:02:03".
    static QString timeText(qint64 milliseconds);

protected:
    void mousePressEvent(QMouseEvent* event) override;
};
