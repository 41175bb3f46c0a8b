#pragma once

#include "artwork/SavePanelAccessoryView.h"
#include "library/Deed.h"
#include "model/AudioFile.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class ArrayController;
class FileBrowser;
class FilePanels;
class Notifier;
class QMimeData;
class ShownArt;
class UserDefaults;
class WorkMonitor;

/// Commands on the cover art of the selected files, and revealing those files.
///
/// Art that comes in is stored as the encoded bytes it came in. The measure of a record's art follows what is written.
/// Failures are posted to the user and stop only the file concerned.
///
/// A panel, a drop or a drag is about the records and the art of the moment when it began. Records that are no longer
/// in the list when it ends are left out, which is posted to the user.
class ArtworkCommands : public QObject {
    Q_OBJECT

public:
    using Records = std::vector<AudioFilePtr>;

    ArtworkCommands(ArrayController& list, ShownArt& art, Notifier& notifier, FilePanels& panels,
                    FileBrowser& fileBrowser, UserDefaults& defaults, WorkMonitor& monitor);

    /// @param report is told after each command that sets art or deletes it.
    void setReport(std::function<void(const Deed&)> report) { report_ = std::move(report); }

    /// Lets the user choose an image file, of which the first counts, and sets it as the art of every selected file.
    void updateImage();
    /// Sets the contents of an image file as the art of the records' files. Refused, with a message, when the file
    /// can't be read, holds no picture, or is larger than 64 MB.
    /// @return false when the user stopped it.
    bool setArtFromFile(const QString& path, const Records& records);
    /// Removes the art from every selected file.
    void deleteImage();
    /// Lets the user choose where, and in which format, to save the art that is shown.
    void saveImage();
    /// Saves art in the format that the extension, in capitals or not, names (see ImageFormats).
    /// @return false when nothing was written, which is posted to the user.
    bool saveArt(const QByteArray& art, const QString& path);
    /// Reveals each selected file that is there.
    void showInFinder();

    /// The shown art for the clipboard, as encoded bytes and as an image; null when none is shown.
    std::unique_ptr<QMimeData> copiedImage() const;
    /// Sets an image file or image data from the clipboard as the art of every selected file.
    void pasteImage(const QMimeData& pasteboard);

signals:
    /// Files in the list may have other art, or none.
    void artChanged();

private:
    bool setArt(const QByteArray& bytes, const Records& records);
    Records stillListed(const Records& records);
    void refuse(const QString& reason, const QString& path = {});

    ArrayController& list_;
    ShownArt& art_;
    Notifier& notifier_;
    FilePanels& panels_;
    FileBrowser& fileBrowser_;
    SavePanelAccessoryView accessory_;
    WorkMonitor& monitor_;
    std::function<void(const Deed&)> report_ = [](const Deed&) {};
};
