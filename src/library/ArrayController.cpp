#include "library/ArrayController.h"

#include "library/RecordColumns.h"
#include "library/TextOrder.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace {

using RecordSet = std::unordered_set<const AudioFile*>;

RecordSet setOf(const std::vector<AudioFilePtr>& records)
{
    RecordSet set;
    for (const auto& record : records)
        set.insert(record.get());
    return set;
}

Qt::Alignment alignment(int column)
{
    return (RecordColumns::isNumeric(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

} // namespace

ArrayController::AddingBatch::AddingBatch(ArrayController& list) : list_(list)
{
    ++list_.batches_;
}

ArrayController::AddingBatch::~AddingBatch()
{
    if (--list_.batches_ == 0)
        list_.endAdding();
}

ArrayController::ArrayController() : fold_(TextOrder::locale()), selection_(*this) {}

std::vector<AudioFilePtr> ArrayController::selectedObjects() const
{
    std::vector<AudioFilePtr> records;
    for (const int row : selection_.rows())
        records.push_back(arranged_[static_cast<std::size_t>(row)]);
    return records;
}

void ArrayController::setSelectedObjects(const std::vector<AudioFilePtr>& records)
{
    const RecordSet wanted = setOf(records);
    QList<int> rows;
    for (std::size_t row = 0; row < arranged_.size(); ++row) {
        if (wanted.contains(arranged_[row].get()))
            rows.append(static_cast<int>(row));
    }
    selection_.setRows(rows);
}

void ArrayController::addObject(AudioFilePtr record)
{
    const AddingBatch batch(*this);
    paths_.insert(record->path);
    added_.push_back(std::move(record));
}

void ArrayController::endAdding()
{
    if (added_.empty())
        return;
    const std::vector<AudioFilePtr> added = std::exchange(added_, {});
    if (sortColumn_ < 0) {
        content_.insert(content_.end(), added.begin(), added.end());
        showAdded(added);
    } else {
        addSorted(added);
    }
    emit countChanged();
}

void ArrayController::addSorted(const std::vector<AudioFilePtr>& added)
{
    // What is shown stays so, even if an edit has taken it out of the filter: it may be selected and being edited.
    const RecordSet shown = setOf(arranged_);
    const ListSelection::QuietChange quiet(selection_, false);
    resetRows(
        [&] {
            content_.insert(content_.end(), added.begin(), added.end());
            RecordColumns::sort(content_, sortColumn_, sortOrder_ == Qt::AscendingOrder);
        },
        content_, [&](const AudioFile& record) { return shown.contains(&record) || passesFilter(record); });
}

void ArrayController::showAdded(const std::vector<AudioFilePtr>& added)
{
    std::vector<AudioFilePtr> shown;
    std::copy_if(added.begin(), added.end(), std::back_inserter(shown),
                 [this](const auto& record) { return passesFilter(*record); });
    if (shown.empty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(shown.size()) - 1);
    arranged_.insert(arranged_.end(), shown.begin(), shown.end());
    endInsertRows();
}

void ArrayController::removeObjectsAtArrangedObjectIndexes(const QList<int>& rows)
{
    RecordSet gone;
    for (const int row : rows) {
        const auto& record = arranged_[static_cast<std::size_t>(row)];
        gone.insert(record.get());
        paths_.remove(record->path);
    }
    rearrange([&] { std::erase_if(content_, [&](const auto& record) { return gone.contains(record.get()); }); },
              content_);
    emit countChanged();
}

void ArrayController::renameObject(AudioFile& record, const QString& fileName, const QString& path)
{
    paths_.remove(record.path);
    record.fileName = fileName;
    record.path = path;
    paths_.insert(path);
}

int ArrayController::moveRows(const QList<int>& rows, int gap)
{
    std::vector<AudioFilePtr> moved;
    for (const int row : rows)
        moved.push_back(arranged_[static_cast<std::size_t>(row)]);
    if (moved.empty())
        return 0;
    // The records go before the first shown record at or behind the gap that stays where it is.
    const RecordSet moving = setOf(moved);
    const auto stays = [&](const auto& record) { return !moving.contains(record.get()); };
    const auto behindGap = std::find_if(arranged_.begin() + gap, arranged_.end(), stays);
    const AudioFilePtr anchor = behindGap == arranged_.end() ? nullptr : *behindGap;
    const auto lastBefore =
        std::find_if(std::make_reverse_iterator(arranged_.begin() + gap), arranged_.rend(), stays);
    const AudioFilePtr before = lastBefore == arranged_.rend() ? nullptr : *lastBefore;

    if (!anchor && !before)
        return static_cast<int>(arranged_.size()) - 1;
    sortColumn_ = -1;
    rearrange(
        [&] {
            std::erase_if(content_, [&](const auto& record) { return moving.contains(record.get()); });
            auto place = anchor ? std::find(content_.begin(), content_.end(), anchor)
                                : std::next(std::find(content_.begin(), content_.end(), before));
            content_.insert(place, moved.begin(), moved.end());
        },
        content_);
    emit sortCleared();
    const auto last = std::find(arranged_.begin(), arranged_.end(), moved.back());
    return static_cast<int>(last - arranged_.begin());
}

void ArrayController::reloadData()
{
    if (!arranged_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void ArrayController::setFilterText(const QString& text)
{
    const QString wanted = fold_(text).simplified();
    if (wanted == filterText_)
        return;
    // What a longer text finds, its beginning has found already.
    const bool narrows = wanted.startsWith(filterText_);
    rearrange(
        [&] {
            filterText_ = wanted;
            filterWords_.clear();
            for (const auto& word : wanted.split(QLatin1Char(' '), Qt::SkipEmptyParts))
                filterWords_.emplace_back(word, Qt::CaseSensitive);
        },
        narrows ? arranged_ : content_);
    emit countChanged();
}

void ArrayController::sort(int column, Qt::SortOrder order)
{
    sortColumn_ = column;
    sortOrder_ = order;
    if (column >= 0)
        rearrange([&] { RecordColumns::sort(content_, column, order == Qt::AscendingOrder); }, content_);
}

int ArrayController::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(arranged_.size());
}

int ArrayController::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : RecordColumns::Count;
}

QVariant ArrayController::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const auto& record = *arranged_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return RecordColumns::cellText(record, index.column());
    case Qt::ToolTipRole:
        return index.column() == RecordColumns::FileName ? record.path : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alignment(index.column()));
    default:
        return {};
    }
}

Qt::ItemFlags ArrayController::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QVariant ArrayController::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return RecordColumns::heading(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(section));
    return {};
}

bool ArrayController::passesFilter(const AudioFile& record) const
{
    return filterWords_.empty() || RecordColumns::matches(record, filterWords_, fold_);
}

template <class Change>
void ArrayController::rearrange(Change change, const std::vector<AudioFilePtr>& candidates)
{
    const ListSelection::QuietChange quiet(selection_);
    resetRows(change, candidates, [this](const AudioFile& record) { return passesFilter(record); });
}

template <class Change, class IsShown>
void ArrayController::resetRows(Change change, const std::vector<AudioFilePtr>& candidates, IsShown isShown)
{
    const std::vector<AudioFilePtr> selected = selectedObjects();
    beginResetModel();
    change();
    std::vector<AudioFilePtr> arranged;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(arranged),
                 [&](const auto& record) { return isShown(*record); });
    arranged_ = std::move(arranged);
    endResetModel();
    setSelectedObjects(selected);
}
