#include "app/FailureLog.h"

#include <QFileInfo>
#include <QLocale>

void FailureLog::append(const Failure& failure)
{
    beginInsertRows({}, rowCount(), rowCount());
    entries_.push_back({QDateTime::currentDateTime(), failure});
    endInsertRows();
    emit countChanged(rowCount());
}

void FailureLog::clear()
{
    beginResetModel();
    entries_.clear();
    endResetModel();
    emit countChanged(0);
}

QString FailureLog::text(const QList<int>& rows) const
{
    QString text;
    for (const int row : rows) {
        const auto& [time, failure] = entries_.at(static_cast<std::size_t>(row));
        text += QStringLiteral("%1\t%2\t%3\n").arg(time.toString(Qt::ISODate), failure.path, messageOf(failure));
    }
    return text;
}

int FailureLog::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int FailureLog::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Message + 1;
}

QVariant FailureLog::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto& [time, failure] = entries_.at(static_cast<std::size_t>(index.row()));
    if (role == Qt::ToolTipRole)
        return index.column() == File ? failure.path : messageOf(failure);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Time:
        return QLocale().toString(time.time(), QLocale::ShortFormat);
    case File:
        return QFileInfo(failure.path).fileName();
    default:
        return messageOf(failure);
    }
}

QVariant FailureLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Time:
        return tr("Time");
    case File:
        return tr("File");
    default:
        return tr("Message");
    }
}

QString FailureLog::messageOf(const Failure& failure)
{
    const bool isToldAlready = failure.reason.isEmpty() || failure.message.contains(failure.reason);
    return isToldAlready ? failure.message : tr("%1 (%2)").arg(failure.message, failure.reason);
}
