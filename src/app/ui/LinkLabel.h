#pragma once

#include <QLabel>

/// A text with links that open in the browser, by mouse and by keyboard; it shows when it has the focus.
class LinkLabel : public QLabel {
    Q_OBJECT

public:
    explicit LinkLabel(const QString& text = {}, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
