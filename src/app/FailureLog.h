#pragma once

#include "platform/Notifier.h"

#include <QAbstractTableModel>
#include <QDateTime>

#include <vector>

/// What went wrong since the program was started, as a table: when, with which file, and what. The newest stands last.
class FailureLog : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Time, File, Message };

    void append(const Failure& failure);
    void clear();

    /// The rows as text, a line each, with tabs between the columns; the file by its path.
    QString text(const QList<int>& rows) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    void countChanged(int count);

private:
    struct Entry {
        QDateTime time;
        Failure failure;
    };
    static QString messageOf(const Failure& failure);

    std::vector<Entry> entries_;
};
