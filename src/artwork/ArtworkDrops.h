#pragma once

#include "artwork/FilePromiseProvider.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

class ArrayController;
class ArtworkCommands;
class DropFolder;
class Notifier;
class ShownArt;
class UserDefaults;

/// Drags over the art well and out of it, without a widget.
class ArtworkDrops : public QObject {
    Q_OBJECT

public:
    ArtworkDrops(ArrayController& list, ArtworkCommands& commands, ShownArt& art, DropFolder& dropFolder,
                 Notifier& notifier, UserDefaults& defaults);

    bool hasSelection() const;

    /// Whether a drop would set art: it brings an image, and there are selected files.
    bool accepts(const QMimeData& data) const;
    /// Sets the dropped images as art of the files that are selected now, one after another, when the event loop is
    /// reached again; the last one stays.
    /// @return false when there is none.
    bool performDragOperation(const QMimeData& data);

    /// What a drag of the shown art carries: a file that is written when the receiver asks for it. The file is gone
    /// when the program ends. @return null when no art is shown.
    std::unique_ptr<QMimeData> pasteboardWriterForDropView();
    /// What that file will be called: the selection's common title, with the extension of the chosen format.
    QString fileNameForType() const;

private:
    QString writePromise(const QByteArray& art, const QString& fileName);

    ArrayController& list_;
    ArtworkCommands& commands_;
    ShownArt& art_;
    DropFolder& dropFolder_;
    Notifier& notifier_;
    UserDefaults& defaults_;
    std::unique_ptr<QTemporaryDir> promised_;
    int promiseCount_ = 0;
};
