#include "library/Messages.h"

#include <QCoreApplication>

namespace Messages {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Messages", text);
}

QString translated(const char* text, const QString& argument)
{
    return translated(text).replace(QLatin1String("%@"), argument);
}

} // namespace

QString fileAlreadyOpen()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "File already open"));
}

QString couldNotOpen(const QString& path)
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Couldn't open file at path: %@"), path);
}

QString unsupportedFileType()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unsupported file type"));
}

QString fileNotWritable()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "File is not writable, please fix permissions"));
}

QString unableToUpdateTags(const QString& path)
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unable to update tags for: %@"), path);
}

QString unableToLoadImage(const QString& error)
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unable to load image data: %@"), error);
}

QString unableToSaveAlbumArt()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unable to save album art"));
}

QString failedToSaveImage(const QString& url)
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Failed to save to image. url: %@"), url);
}

QString unableToRemoveAllTags()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unable to remove all tags"));
}

QString unableToRemoveAlbumArt()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unable to remove album art"));
}

QString unableToRemoveUnsupportedTags()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Unable to remove unsupported tags"));
}

QString couldNotReceiveAudioFile(const QString& error)
{
    return translated(QT_TRANSLATE_NOOP("Messages", "Couldn't recieve audiofile drop: %@"), error);
}

QString couldNotTakeBack()
{
    return translated(QT_TRANSLATE_NOOP("Messages", "An interrupted change could not be taken back"));
}

QString noLongerInList(int files)
{
    return QCoreApplication::translate(
        "Messages", "%Ln files are no longer in the list, so their album art stays as it is", nullptr, files);
}

QString couldNotRename(const QString& path, const QString& error)
{
    const QString text =
        translated(QT_TRANSLATE_NOOP("Messages", "Couldn't rename file at path: %@, with error: %@"));
    const auto pieces = text.split(QLatin1String("%@"));
    return pieces.size() == 3 ? pieces[0] + path + pieces[1] + error + pieces[2] : text;
}

void post(Notifier& notifier, const Failure& failure)
{
    notifier.noteFailure(failure);
    notifier.postNotification(translated(QT_TRANSLATE_NOOP("Messages", "Sonvika")), failure.message);
}

} // namespace Messages
