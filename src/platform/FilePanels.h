#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// A save panel that offers several formats, while it is shown.
class SavePanel {
public:
    virtual ~SavePanel() = default;

    /// The formats to choose from, in their order.
    virtual void setFormatTitles(const QStringList& titles) = 0;
    virtual void selectFormat(int index) = 0;
    /// What the saved file's extension may be; a name with another one, or without, gets the first added.
    virtual void setAllowedExtensions(const QStringList& extensions) = 0;
};

/// What a save panel shows and whom it tells.
struct SavePanelRequest {
    QString title;
    /// Without an extension.
    QString name;
    /// Called once before the panel is shown.
    std::function<void(SavePanel& panel)> willAppear;
    /// The user chose another format.
    std::function<void(SavePanel& panel, int index)> formatSelected;
    /// The user chose where to save; a file that is there already is to be replaced.
    std::function<void(const QString& path)> chosen;
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
class FilePanels {
public:
    using Chosen = std::function<void(const QStringList& paths)>;

    virtual ~FilePanels() = default;

    /// Several MP3 and M4A files.
    virtual void chooseAudioFiles(const QString& title, Chosen chosen) = 0;
    /// One folder of them.
    virtual void chooseAudioFolder(const QString& title, Chosen chosen) = 0;
    /// Several files of the given MIME types.
    virtual void chooseImageFiles(const QString& title, const QStringList& mimeTypes, Chosen chosen) = 0;
    /// Where to save one file.
    virtual void chooseSavePath(const SavePanelRequest& request) = 0;
    /// Blocks until the user has answered.
    virtual AccessPanelAnswer runAccessPanel(const AccessPanelRequest& request) = 0;
};
