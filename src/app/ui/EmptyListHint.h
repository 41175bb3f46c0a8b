#pragma once

#include <QWidget>

/// What the list shows while it is empty: how to fill it, and a button that does.
class EmptyListHint : public QWidget {
    Q_OBJECT

public:
    explicit EmptyListHint(QWidget* parent = nullptr);

signals:
    void openWanted();
};
