#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The panels in which a user chooses files. Modeless; the answer comes by the callback, which is not called when the
/// user cancels.
class FilePanels {
public:
    using Chosen = std::function<void(const QStringList& paths)>;

    virtual ~FilePanels() = default;

    /// Several MP3 and M4A files.
    virtual void chooseAudioFiles(const QString& title, Chosen chosen) = 0;
    /// One folder of them.
    virtual void chooseAudioFolder(const QString& title, Chosen chosen) = 0;
};
