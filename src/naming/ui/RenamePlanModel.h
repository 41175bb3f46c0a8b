#pragma once

#include "naming/RenamePlan.h"

#include <QAbstractTableModel>

/// The plan as a table: old name, new name, what stands against it.
class RenamePlanModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { OldName, NewName, Remark, Count };

    const RenamePlan& plan() const { return plan_; }
    void setPlan(RenamePlan plan);
    /// Leaves out the files that can be renamed.
    void showOnlyFailing(bool onlyFailing);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void choose();
    QString text(const RenamePlan::Entry& entry, int column) const;

    RenamePlan plan_;
    bool onlyFailing_ = false;
    std::vector<std::size_t> shown_;
};
