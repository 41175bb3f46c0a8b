#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// A save panel that offers several formats, while it is shown.
class SavePanel {
public:
    virtual ~SavePanel() = default;

    /// The formats to choose from, in their order, and what the extensions of files in each may be, in capitals or not.
    /// A name that ends in one of these is saved as it is; any other gets the first of the chosen format added.
    virtual void setFormats(const QStringList& titles, const QList<QStringList>& extensions) = 0;
    virtual void selectFormat(int index) = 0;
};

/// What a save panel shows and whom it tells.
struct SavePanelRequest {
    QString title;
    /// An extension of one of the formats is replaced by that of the format chosen.
    QString name;
    /// What is saved (see FilePanels).
    QStringList subject;
    /// Called once before the panel is shown.
    std::function<void(SavePanel& panel)> willAppear;
    /// The user chose another format.
    std::function<void(int index)> formatSelected;
    /// The user chose where to save; a file that is there already is to be replaced.
    std::function<void(const QString& path)> chosen;
};

/// A panel in which the user chooses several image files.
struct ImagePanelRequest {
    QString title;
    QStringList mimeTypes;
    /// What they are chosen for (see FilePanels).
    QStringList subject;
    std::function<void(const QStringList& paths)> chosen;
};

/// A panel that asks the user for access to one folder. An empty text leaves the panel its own.
struct AccessPanelRequest {
    QString title;
    QString message;
    QString prompt;
    /// The folder to start in, unless the panel remembers one.
    QString directory;
};

struct AccessPanelAnswer {
    enum Response { OK, Cancel, Stop, Abort };
    Response response = Cancel;
    /// With OK only.
    QString path;
};

/// The panels in which a user chooses files. They are modeless, and answer by the callback, which is not called when
/// the user cancels; only the one that asks for access blocks and returns its answer.
///
/// None is open twice: one that is asked for again comes to the front or, where its subject is another one now, makes
/// way for a new one.
class FilePanels {
public:
    using Chosen = std::function<void(const QStringList& paths)>;

    virtual ~FilePanels() = default;

    /// Several MP3 and M4A files.
    virtual void chooseAudioFiles(const QString& title, Chosen chosen) = 0;
    /// One folder of them.
    virtual void chooseAudioFolder(const QString& title, Chosen chosen) = 0;
    virtual void chooseImageFiles(const ImagePanelRequest& request) = 0;
    /// Where to save one file.
    virtual void chooseSavePath(const SavePanelRequest& request) = 0;
    /// Blocks until the user has answered.
    virtual AccessPanelAnswer runAccessPanel(const AccessPanelRequest& request) = 0;
};
