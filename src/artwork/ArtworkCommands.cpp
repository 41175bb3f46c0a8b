#include "artwork/ArtworkCommands.h"

#include "artwork/FilePromiseProvider.h"
#include "artwork/ImageFile.h"
#include "artwork/ImageFormats.h"
#include "artwork/PictureSource.h"
#include "artwork/ShownArt.h"
#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/SelectionSummary.h"
#include "library/WorkMonitor.h"
#include "model/ImageMeasure.h"
#include "model/Picture.h"
#include "platform/FileBrowser.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"
#include "tagengine/TaglibWrapper.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("ArtworkCommands", text);
}

} // namespace

ArtworkCommands::ArtworkCommands(ArrayController& list, ShownArt& art, Notifier& notifier, FilePanels& panels,
                                 FileBrowser& fileBrowser, UserDefaults& defaults, WorkMonitor& monitor)
    : list_(list), art_(art), notifier_(notifier), panels_(panels), fileBrowser_(fileBrowser), accessory_(defaults),
      monitor_(monitor)
{
}

void ArtworkCommands::updateImage()
{
    const Records records = list_.selectedObjects();
    if (records.empty())
        return;
    ImagePanelRequest request;
    request.title = translated(QT_TRANSLATE_NOOP("ArtworkCommands", "Change Image"));
    request.mimeTypes = ImageFormats::mimeTypes();
    for (const auto& record : records)
        request.subject.append(record->path);
    request.chosen = [this, records](const QStringList& paths) {
        const QString path = paths.value(0);
        if (ImageFormats::extensions().contains(QFileInfo(path).suffix()))
            setArtFromFile(path, records);
        else
            Messages::post(notifier_, {path, Messages::unsupportedFileType(), {}});
    };
    panels_.chooseImageFiles(request);
}

bool ArtworkCommands::setArtFromFile(const QString& path, const Records& records)
{
    const ImageFile file = ImageFile::read(path);
    if (file.error.isEmpty())
        return setArt(file.bytes, stillListed(records));
    refuse(file.error, path);
    return true;
}

ArtworkCommands::Records ArtworkCommands::stillListed(const Records& records)
{
    const std::unordered_set<AudioFilePtr> listed(list_.content().begin(), list_.content().end());
    Records left;
    std::copy_if(records.begin(), records.end(), std::back_inserter(left),
                 [&](const auto& record) { return listed.contains(record); });
    const auto gone = static_cast<int>(records.size() - left.size());
    if (gone > 0)
        Messages::post(notifier_,
                       {records.size() == 1 ? records[0]->path : QString(), Messages::noLongerInList(gone), {}});
    return left;
}

bool ArtworkCommands::setArt(const QByteArray& bytes, const Records& records)
{
    const qint64 measure = measureImage(bytes);
    Deed deed{Deed::Kind::ArtSet, std::ssize(records)};
    const bool isDone = WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        const bool isWritten = TaglibWrapper::setImageData(bytes, record->path, record->fileType);
        if (!isWritten)
            Messages::post(notifier_,
                           {record->path, Messages::unableToSaveAlbumArt(), TaglibWrapper::failureReason()});
        record->imageDataLength = isWritten ? measure : measureImageIn(record->path, record->fileType);
        deed.done += isWritten;
    });
    emit artChanged();
    report_(deed);
    return isDone;
}

void ArtworkCommands::deleteImage()
{
    const Records records = list_.selectedObjects();
    Deed deed{Deed::Kind::ArtDeleted, std::ssize(records)};
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        const bool isWritten = TaglibWrapper::setImageData({}, record->path, record->fileType);
        if (!isWritten)
            notifier_.noteFailure({record->path, Messages::unableToRemoveAlbumArt(), TaglibWrapper::failureReason()});
        record->imageDataLength = isWritten ? 0 : measureImageIn(record->path, record->fileType);
        deed.done += isWritten;
    });
    emit artChanged();
    report_(deed);
}

void ArtworkCommands::saveImage()
{
    if (!art_.isShown())
        return;
    const QString title = SelectionSummary(list_.selectedObjects()).shownValue(QStringLiteral("title"));
    const QString name = FileSystem::asFileName(title);
    SavePanelRequest request;
    request.title = translated(QT_TRANSLATE_NOOP("ArtworkCommands", "Save Image"));
    request.name = name.isEmpty() ? translated(QT_TRANSLATE_NOOP("ArtworkCommands", "Title")) : name;
    request.subject = {request.name, QString::number(measureImage(art_.bytes()))};
    request.willAppear = [this](SavePanel& panel) { accessory_.viewWillAppear(panel); };
    request.formatSelected = [this](int index) { accessory_.selectFormat(index); };
    request.chosen = [this, art = art_.bytes()](const QString& path) { saveArt(art, path); };
    panels_.chooseSavePath(request);
}

bool ArtworkCommands::saveArt(const QByteArray& art, const QString& path)
{
    const int format = ImageFormats::indexForExtension(QFileInfo(path).suffix().toLower());
    const auto bytes = ImageFormats::encode(Picture::decode(art), format);
    const QString error =
        bytes ? ImageFile::write(path, *bytes)
              : translated(QT_TRANSLATE_NOOP("ArtworkCommands", "The picture can't be decoded or converted"));
    if (error.isEmpty())
        return true;
    const QString url = PathBytes::toUrl(path).toString(QUrl::FullyEncoded);
    Messages::post(notifier_, {path, Messages::failedToSaveImage(url), error});
    return false;
}

void ArtworkCommands::showInFinder()
{
    for (const auto& record : list_.selectedObjects()) {
        if (FileSystem::exists(record->path))
            fileBrowser_.reveal(record->path);
    }
}

std::unique_ptr<QMimeData> ArtworkCommands::copiedImage() const
{
    if (!art_.isShown())
        return nullptr;
    const QByteArray bytes = art_.bytes();
    auto data = std::make_unique<FilePromiseProvider>();
    data->setData(QStringLiteral("image/") + QLatin1String(Picture::format(bytes)), bytes);
    data->promise(QStringLiteral("application/x-qt-image"), [bytes] { return Picture::decode(bytes); });
    return data;
}

void ArtworkCommands::pasteImage(const QMimeData& pasteboard)
{
    const QStringList files = PictureSource::files(pasteboard);
    const Records records = list_.selectedObjects();
    if (!files.isEmpty()) {
        setArtFromFile(files.first(), records);
        return;
    }
    const auto data = PictureSource::readData(pasteboard);
    if (!data)
        return;
    const QString objection = ImageFile::objectionTo(data->bytes);
    if (objection.isEmpty())
        setArt(data->bytes, records);
    else
        refuse(objection);
}

void ArtworkCommands::refuse(const QString& reason, const QString& path)
{
    Messages::post(notifier_, {path, Messages::unableToLoadImage(reason), reason});
}
