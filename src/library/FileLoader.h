#pragma once

#include "platform/Notifier.h"

#include <QObject>
#include <QString>
#include <QStringList>

class ArrayController;
class RecentDocuments;
class WorkMonitor;

/// Adds files to the list. Every refusal is posted to the user; it stops only the file concerned.
class FileLoader : public QObject {
    Q_OBJECT

public:
    FileLoader(ArrayController& list, Notifier& notifier, RecentDocuments& recentDocuments, WorkMonitor& monitor);

    /// Adds a file, or every audio file below a folder.
    /// @return true when every file found under @p path was added; true also when there was none, false also when the user
    /// stopped it.
    bool openPath(const QString& path) { return openPaths({path}); }

    /// The same for several paths, one after another; the views follow once at the end.
    bool openPaths(const QStringList& paths);

    /// Adds one file by its absolute path. A file whose path is contained in a listed path counts as open already.
    /// @return true when it was added.
    bool loadFile(const QString& path);

signals:
    /// The program should come to the front. Emitted once the event loop is reached again.
    void activationWanted();
    /// The main window should come to the front.
    void frontWanted();

private:
    bool addFile(const QString& path);
    bool refuse(const Failure& failure);

    ArrayController& list_;
    Notifier& notifier_;
    RecentDocuments& recentDocuments_;
    WorkMonitor& monitor_;
};
