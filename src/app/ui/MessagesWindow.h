#pragma once

#include <QDialog>
#include <QList>

#include <functional>

class FailureLog;
class QAction;
class QTreeView;

/// The list of what went wrong. All of it or the selected rows can be copied, and it can be emptied. Once it tells of an
/// interrupted change that is left, there are buttons for the ways out.
class MessagesWindow : public QDialog {
    Q_OBJECT

public:
    MessagesWindow(FailureLog& log, QWidget* parent);

private:
    void setUpTable();
    QWidget* makeWaysOut();
    void addWayOut(QWidget& row, const QString& text, const QString& meaning,
                   const std::function<void(int row)>& take);
    QWidget* makeButtons();
    void selectFirstUndecided();
    void offerWaysOut();
    QList<int> selectedRows() const;
    QList<int> selectedUndecided() const;
    void copyAll() const;
    void copy(const QList<int>& rows) const;

    FailureLog& log_;
    QTreeView* table_;
    QWidget* waysOutRow_;
    QList<QAction*> waysOut_;
};
