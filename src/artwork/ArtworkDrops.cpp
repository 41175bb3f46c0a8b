#include "artwork/ArtworkDrops.h"

#include "artwork/ArtworkCommands.h"
#include "artwork/ImageFormats.h"
#include "artwork/PictureSource.h"
#include "artwork/ShownArt.h"
#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/SelectionSummary.h"
#include "platform/DropFolder.h"
#include "platform/FileSystem.h"

#include <QDir>
#include <QUrl>

#include <iostream>

ArtworkDrops::ArtworkDrops(ArrayController& list, ArtworkCommands& commands, ShownArt& art, DropFolder& dropFolder,
                           Notifier& notifier, UserDefaults& defaults)
    : list_(list), commands_(commands), art_(art), dropFolder_(dropFolder), notifier_(notifier), defaults_(defaults)
{
}

bool ArtworkDrops::hasSelection() const
{
    return list_.selection().hasSelection();
}

bool ArtworkDrops::accepts(const QMimeData& data) const
{
    return hasSelection() && PictureSource::hasPicture(data);
}

bool ArtworkDrops::performDragOperation(const QMimeData& data)
{
    const auto setArt = [this, records = list_.selectedObjects()](const QStringList& paths) {
        const auto set = [this, records, paths] {
            for (const auto& path : paths) {
                if (!commands_.setArtFromFile(path, records))
                    break;
            }
        };
        QMetaObject::invokeMethod(this, set, Qt::QueuedConnection);
    };
    const QStringList files = PictureSource::files(data);
    if (!files.isEmpty()) {
        setArt(files);
        return true;
    }
    const auto received = PictureSource::readData(data);
    if (!received)
        return false;
    const auto take = [this, setArt](const QString& path, const QString& error) {
        if (error.isEmpty()) {
            setArt({path});
            return;
        }
        std::cout << "couldn't recieve image drag: " << error.toStdString() << std::endl;
        notifier_.noteFailure({{}, Messages::unableToLoadImage(error), error});
    };
    dropFolder_.receive(received->bytes, received->fileName, take);
    return true;
}

std::unique_ptr<QMimeData> ArtworkDrops::pasteboardWriterForDropView()
{
    if (!art_.isShown())
        return nullptr;
    auto provider = std::make_unique<FilePromiseProvider>();
    provider->promise(QStringLiteral("text/uri-list"), [this, art = art_.bytes(), name = fileNameForType()] {
        const QString path = writePromise(art, name);
        return path.isEmpty() ? QVariantList() : QVariantList{QUrl::fromLocalFile(path)};
    });
    return provider;
}

QString ArtworkDrops::fileNameForType() const
{
    const QString title = SelectionSummary(list_.selectedObjects()).shownValue(QStringLiteral("title"));
    const QString name = FileSystem::asFileName(title);
    return (name.isEmpty() ? QStringLiteral("AlbumArt") : name) + QLatin1Char('.')
           + ImageFormats::extensions().value(ImageFormats::storedIndex(defaults_));
}

QString ArtworkDrops::writePromise(const QByteArray& art, const QString& fileName)
{
    if (!promised_)
        promised_ = std::make_unique<QTemporaryDir>();
    if (!promised_->isValid()) {
        promised_.reset();
        return {};
    }
    const QDir folder(promised_->filePath(QString::number(++promiseCount_)));
    if (!folder.mkpath(QStringLiteral(".")))
        return {};
    const QString path = folder.filePath(fileName);
    return commands_.saveArt(art, path) ? path : QString();
}
