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
#include "model/Picture.h"
#include "platform/FileBrowser.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"
#include "tagengine/TaglibWrapper.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <iterator>

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
    const QString title = translated(QT_TRANSLATE_NOOP("ArtworkCommands", "Change Image"));
    panels_.chooseImageFiles(title, ImageFormats::mimeTypes(), [this](const QStringList& paths) {
        const QString path = paths.value(0);
        if (ImageFormats::extensions().contains(QFileInfo(path).suffix()))
            setArtFromFile(path);
        else
            Messages::post(notifier_, {path, Messages::unsupportedFileType(), {}});
    });
}

bool ArtworkCommands::setArtFromFile(const QString& path)
{
    const ImageFile file = ImageFile::read(path);
    if (file.error.isEmpty())
        return setArt(file.bytes);
    refuse(file.error, path);
    return true;
}

bool ArtworkCommands::setArt(const QByteArray& bytes)
{
    const auto records = list_.selectedObjects();
    Deed deed{Deed::Kind::ArtSet, std::ssize(records)};
    const bool allTried = WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        if (TaglibWrapper::setImageData(bytes, record->path, record->fileType)) {
            art_.put(bytes);
            ++deed.done;
        } else {
            Messages::post(notifier_,
                           {record->path, Messages::unableToSaveAlbumArt(), TaglibWrapper::failureReason()});
        }
    });
    report_(deed);
    return allTried;
}

void ArtworkCommands::deleteImage()
{
    const auto records = list_.selectedObjects();
    Deed deed{Deed::Kind::ArtDeleted, std::ssize(records)};
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        if (TaglibWrapper::setImageData({}, record->path, record->fileType)) {
            art_.put({});
            ++deed.done;
        } else {
            notifier_.noteFailure({record->path, Messages::unableToRemoveAlbumArt(), TaglibWrapper::failureReason()});
        }
    });
    report_(deed);
}

void ArtworkCommands::saveImage()
{
    const QString title = SelectionSummary(list_.selectedObjects()).shownValue(QStringLiteral("title"));
    SavePanelRequest request;
    request.title = translated(QT_TRANSLATE_NOOP("ArtworkCommands", "Save Image"));
    request.name =
        title.isEmpty() ? translated(QT_TRANSLATE_NOOP("ArtworkCommands", "Title")) : FileSystem::asFileName(title);
    request.willAppear = [this](SavePanel& panel) { accessory_.viewWillAppear(panel); };
    request.formatSelected = [this](SavePanel& panel, int index) { accessory_.selectFormat(panel, index); };
    request.chosen = [this](const QString& path) { saveArt(path); };
    panels_.chooseSavePath(request);
}

bool ArtworkCommands::saveArt(const QString& path)
{
    const int format = ImageFormats::indexForExtension(QFileInfo(path).suffix());
    if (!art_.isShown())
        return false;
    const auto bytes = ImageFormats::encode(Picture::decode(art_.bytes()), format);
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
    if (!files.isEmpty()) {
        setArtFromFile(files.first());
        return;
    }
    const auto data = PictureSource::readData(pasteboard);
    if (!data)
        return;
    const QString objection = ImageFile::objectionTo(data->bytes);
    if (objection.isEmpty())
        setArt(data->bytes);
    else
        refuse(objection);
}

void ArtworkCommands::refuse(const QString& reason, const QString& path)
{
    Messages::post(notifier_, {path, Messages::unableToLoadImage(reason), reason});
}
