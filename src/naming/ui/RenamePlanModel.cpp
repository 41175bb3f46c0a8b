#include "naming/ui/RenamePlanModel.h"

#include <QFont>

#include <utility>

void RenamePlanModel::setPlan(RenamePlan plan)
{
    beginResetModel();
    plan_ = std::move(plan);
    choose();
    endResetModel();
}

void RenamePlanModel::showOnlyFailing(bool onlyFailing)
{
    beginResetModel();
    onlyFailing_ = onlyFailing;
    choose();
    endResetModel();
}

void RenamePlanModel::choose()
{
    shown_.clear();
    for (std::size_t i = 0; i < plan_.entries().size(); ++i) {
        if (!onlyFailing_ || !plan_.entries()[i].objection.isEmpty())
            shown_.push_back(i);
    }
}

int RenamePlanModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int RenamePlanModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Count;
}

QString RenamePlanModel::text(const RenamePlan::Entry& entry, int column) const
{
    switch (column) {
    case OldName:
        return entry.oldName;
    case NewName:
        return entry.newName;
    default:
        if (!entry.objection.isEmpty())
            return entry.objection;
        return entry.isUnchanged() ? tr("Stays as it is") : entry.remark;
    }
}

QVariant RenamePlanModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto& entry = plan_.entries()[shown_[static_cast<std::size_t>(index.row())]];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return text(entry, index.column());
    if (role == Qt::FontRole && !entry.objection.isEmpty() && index.column() == Remark) {
        QFont font;
        font.setBold(true);
        return font;
    }
    return {};
}

QVariant RenamePlanModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString headings[]{tr("File Name"), tr("New Name"), tr("Remark")};
    return section < Count ? headings[section] : QString();
}
