#pragma once

#include "platform/Notifier.h"

#include <QAbstractTableModel>
#include <QDateTime>

#include <functional>
#include <vector>

struct InterruptedChange;

/// What went wrong since the program was started, as a table: when, with which file, and what. The newest stands last.
///
/// A row about an interrupted change that is left offers two ways out, until one is taken; it then tells what was done.
class FailureLog : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Time, File, Message };

    void append(const Failure& failure);
    void appendInterrupted(const InterruptedChange& change);
    void clear();

    /// Whether a row offers ways out.
    bool isUndecided(int row) const;
    bool hasUndecided() const;
    /// Brings the file of such a row, as it was before the change, into a new file beside it.
    void restoreCopy(int row);
    /// Forgets the change of such a row.
    void forget(int row);

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
        QString undecided; ///< the InterruptedChange's id
    };
    void add(const Failure& failure, const QString& undecided);
    /// Is given the change's id and the place of the new message. @return whether it was taken.
    using WayOut = std::function<bool(const QString& id, QString& message)>;
    void decide(int row, const WayOut& takeIt);
    static QString messageOf(const Failure& failure);

    std::vector<Entry> entries_;
};
