#pragma once

#include "platform/FileBrowser.h"

#include <QObject>
#include <QSet>

/// Asks the file browser on the session bus (org.freedesktop.FileManager1). Where none answers, the folder is opened
/// by whatever opens folders; several files of one folder revealed together open it once.
class DBusFileBrowser : public QObject, public FileBrowser {
    Q_OBJECT

public:
    void reveal(const QString& path) override;

private:
    void openFolder(const QString& folder);

    QSet<QString> justOpened_;
};
