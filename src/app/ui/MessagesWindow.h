#pragma once

#include <QDialog>

class FailureLog;
class QTreeView;

/// The list of what went wrong. All of it or the selected rows can be copied, and it can be emptied.
class MessagesWindow : public QDialog {
    Q_OBJECT

public:
    MessagesWindow(FailureLog& log, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void copyAll() const;
    void copySelected() const;
    void copy(const QList<int>& rows) const;

    FailureLog& log_;
    QTreeView* table_;
};
