#pragma once

#include "platform/Notifier.h"

#include <QString>

/// What the user is told when something fails. Texts are looked up in the user's language.
namespace Messages {

QString fileAlreadyOpen();
QString couldNotOpen(const QString& path);
QString unsupportedFileType();
QString fileNotWritable();
QString unableToUpdateTags(const QString& path);
QString unableToLoadImage(const QString& error);
QString unableToSaveAlbumArt();
QString failedToSaveImage(const QString& url);
QString unableToRemoveAllTags();
QString couldNotReceiveAudioFile(const QString& error);
QString unableToRemoveAlbumArt();
QString unableToRemoveUnsupportedTags();
QString couldNotTakeBack();
QString noLongerInList(int files);
QString couldNotRename(const QString& path, const QString& error);

/// Notes a failure and posts its message under the program's name.
void post(Notifier& notifier, const Failure& failure);

} // namespace Messages
