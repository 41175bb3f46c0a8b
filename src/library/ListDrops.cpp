#include "library/ListDrops.h"

#include "library/ArrayController.h"
#include "library/FileFinder.h"
#include "library/FileLoader.h"

#include <QDataStream>
#include <QFileInfo>
#include <QIODevice>
#include <QUrl>

const QString ListDrops::rowDragType = QStringLiteral("application/x-org.sonvika.sonvika.rowdrag");

namespace {

QStringList localFiles(const QMimeData& data)
{
    QStringList files;
    for (const auto& url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

} // namespace

ListDrops::ListDrops(ArrayController& list, FileLoader& loader) : list_(list), loader_(loader) {}

std::unique_ptr<QMimeData> ListDrops::rowDragData(const QList<int>& rows) const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << rows;
    auto data = std::make_unique<QMimeData>();
    data->setData(rowDragType, bytes);
    return data;
}

ListDrops::Operation ListDrops::validateDrop(const QMimeData& data, bool fromThisList) const
{
    if (fromThisList) {
        const bool allSelected = list_.selection().rows().size() == list_.rowCount();
        return allSelected ? Operation::None : Operation::Move;
    }
    const QStringList files = localFiles(data);
    if (files.isEmpty())
        return Operation::None;
    const bool welcome = FileFinder::hasSupportedExtension(files.first()) || QFileInfo(files.first()).isDir();
    return welcome ? Operation::Copy : Operation::None;
}

void ListDrops::acceptDrop(const QMimeData& data, bool fromThisList, int gap)
{
    if (fromThisList) {
        reorder(data, gap);
        return;
    }
    loader_.openPaths(localFiles(data));
}

void ListDrops::reorder(const QMimeData& data, int gap)
{
    QList<int> rows;
    QDataStream stream(data.data(rowDragType));
    stream >> rows;
    rows.removeIf([this](int row) { return row < 0 || row >= list_.rowCount(); });
    const bool anySelected = list_.selection().hasSelection();
    const int last = list_.moveRows(rows, gap);
    if (!anySelected && list_.rowCount() > 0)
        list_.selection().setRows({last});
}
