#pragma once

#include <QDialog>

class FailureLog;
class QTreeView;

/// The list of what went wrong. It can be copied, the selected rows or else all, and emptied.
class MessagesWindow : public QDialog {
    Q_OBJECT

public:
    MessagesWindow(FailureLog& log, QWidget* parent);

private:
    void copy() const;

    FailureLog& log_;
    QTreeView* table_;
};
