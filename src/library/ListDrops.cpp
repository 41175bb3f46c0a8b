#include "library/ListDrops.h"

#include "library/ArrayController.h"
#include "library/FileFinder.h"
#include "library/FileLoader.h"
#include "library/Messages.h"
#include "platform/DropFolder.h"
#include "platform/DroppedData.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QIODevice>
#include <QUrl>

const QString ListDrops::rowDragType = QStringLiteral("application/x-org.sonvika.sonvika.rowdrag");

namespace {

const QStringList& audioTypes()
{
    static const QStringList types{QStringLiteral("audio/mpeg"), QStringLiteral("audio/mp4"),
                                   QStringLiteral("audio/x-m4a")};
    return types;
}

} // namespace

ListDrops::ListDrops(ArrayController& list, FileLoader& loader, DropFolder& dropFolder, Notifier& notifier)
    : list_(list), loader_(loader), dropFolder_(dropFolder), notifier_(notifier)
{
}

std::unique_ptr<QMimeData> ListDrops::rowDragData(const QList<int>& rows) const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << rows;
    auto data = std::make_unique<QMimeData>();
    data->setData(rowDragType, bytes);
    QList<QUrl> files;
    for (const int row : rows)
        files.append(PathBytes::toUrl(list_.arrangedObjects()[static_cast<std::size_t>(row)]->path));
    data->setUrls(files);
    return data;
}

ListDrops::Operation ListDrops::validateDrop(const QMimeData& data, bool fromThisList) const
{
    if (fromThisList) {
        const bool allSelected = list_.selection().rows().size() == list_.rowCount();
        return allSelected ? Operation::None : Operation::Move;
    }
    const QStringList files = DroppedData::localFiles(data);
    if (files.isEmpty())
        return DroppedData::offersData(data, audioTypes()) ? Operation::Copy : Operation::None;
    const bool welcome = FileFinder::hasSupportedExtension(files.first()) || FileSystem::isFolder(files.first());
    return welcome ? Operation::Copy : Operation::None;
}

void ListDrops::acceptDrop(const QMimeData& data, bool fromThisList, int gap)
{
    if (fromThisList) {
        reorder(data, gap);
        return;
    }
    const QStringList files = DroppedData::localFiles(data);
    if (files.isEmpty())
        receive(data);
    else
        loader_.openPaths(files);
}

void ListDrops::receive(const QMimeData& data)
{
    const auto take = [this](const QString& path, const QString& error) {
        if (error.isEmpty())
            loader_.openPath(path);
        else
            Messages::post(notifier_, {{}, Messages::couldNotReceiveAudioFile(error), {}});
    };
    const auto audio = DroppedData::readData(data, audioTypes());
    if (audio)
        dropFolder_.receive(audio->bytes, audio->fileName, take);
    else
        take({}, QCoreApplication::translate("ListDrops", "The source did not deliver it"));
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
