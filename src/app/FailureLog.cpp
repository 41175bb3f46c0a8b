#include "app/FailureLog.h"

#include "library/Messages.h"
#include "tagengine/InterruptedChange.h"
#include "tagengine/TaglibWrapper.h"

#include <QFileInfo>
#include <QLocale>

#include <algorithm>

void FailureLog::append(const Failure& failure)
{
    add(failure, {});
}

void FailureLog::appendInterrupted(const InterruptedChange& change)
{
    add({change.path, Messages::couldNotTakeBack(), change.reasonText()}, change.id);
}

void FailureLog::add(const Failure& failure, const QString& undecided)
{
    beginInsertRows({}, rowCount(), rowCount());
    entries_.push_back({QDateTime::currentDateTime(), failure, undecided});
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

bool FailureLog::isUndecided(int row) const
{
    return !entries_.at(static_cast<std::size_t>(row)).undecided.isEmpty();
}

bool FailureLog::hasUndecided() const
{
    return std::any_of(entries_.begin(), entries_.end(),
                       [](const Entry& entry) { return !entry.undecided.isEmpty(); });
}

void FailureLog::restoreCopy(int row)
{
    decide(row, [](const QString& id, QString& message) {
        const auto copy = InterruptedChanges::restoreCopy(id);
        message =
            copy ? tr("Restored beside it as %1").arg(QFileInfo(*copy).fileName()) : tr("No copy could be restored");
        return copy.has_value();
    });
}

void FailureLog::forget(int row)
{
    decide(row, [](const QString& id, QString& message) {
        const bool isForgotten = InterruptedChanges::forget(id);
        message = isForgotten ? tr("The interrupted change is forgotten; the file stays as it is")
                              : tr("The interrupted change could not be forgotten");
        return isForgotten;
    });
}

void FailureLog::decide(int row, const WayOut& takeIt)
{
    auto& [time, failure, undecided] = entries_.at(static_cast<std::size_t>(row));
    failure.reason.clear();
    if (!InterruptedChanges::isLeft(undecided)) {
        failure.message = tr("The interrupted change has been taken back, or forgotten elsewhere");
        undecided.clear();
    } else if (takeIt(undecided, failure.message)) {
        undecided.clear();
    } else {
        failure.reason = TaglibWrapper::failureReason();
    }
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

QString FailureLog::text(const QList<int>& rows) const
{
    QString text;
    for (const int row : rows) {
        const auto& [time, failure, undecided] = entries_.at(static_cast<std::size_t>(row));
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
    const auto& [time, failure, undecided] = entries_.at(static_cast<std::size_t>(index.row()));
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
