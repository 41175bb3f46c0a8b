#pragma once

#include "app/LongWork.h"
#include "app/ViewController.h"
#include "artwork/ArtworkCommands.h"
#include "artwork/ArtworkDrops.h"
#include "artwork/ShownArt.h"
#include "fakes/FakePlatform.h"
#include "library/ArrayController.h"
#include "library/BatchCommands.h"
#include "library/FieldEditor.h"
#include "library/FileLoader.h"
#include "library/ListDrops.h"
#include "library/TagWriter.h"
#include "naming/FileRenamer.h"
#include "platform/DropFolder.h"
#include "platform/UserDefaults.h"
#include "sandbox/BookmarksManager.h"
#include "sandbox/OpenPanelManager.h"
#include "sandbox/PermissionManager.h"
#include "support/ScratchFolder.h"

/// The program without its window, on a desktop of fakes.
struct Library {
    FakeNotifier notifier;
    FakeRecentDocuments recent;
    FakeFilePanels panels;
    FakeFileBrowser fileBrowser;
    QTemporaryDir settings;
    UserDefaults defaults{settings.filePath(QStringLiteral("settings.ini"))};
    /// Where the files are that open() opens.
    ScratchFolder folder;
    LongWork monitor;
    ArrayController list;
    FileLoader loader{list, notifier, recent, monitor};
    TagWriter writer{notifier};
    FieldEditor editor{list, writer, monitor};
    BatchCommands batch{list, writer, notifier, monitor};
    DropFolder dropFolder;
    ListDrops drops{list, loader, dropFolder, notifier};
    ShownArt art;
    ArtworkCommands artwork{list, art, notifier, panels, fileBrowser, defaults, monitor};
    ArtworkDrops artworkDrops{list, artwork, art, dropFolder, notifier, defaults};
    BookmarksManager bookmarks{defaults};
    OpenPanelManager openPanel{panels};
    PermissionManager permissions{openPanel, bookmarks};
    FileRenamer renamer{list, permissions, notifier, monitor};
    ViewController controller{list, loader, editor, batch, artwork, art, renamer, panels};

    /// Adds records without files, named by their titles.
    void add(const QString& titles)
    {
        for (const auto& title : titles.split(u' ')) {
            auto record = std::make_shared<AudioFile>();
            record->title = title;
            record->fileName = title + QStringLiteral(".mp3");
            record->path = QStringLiteral("/music/") + record->fileName;
            list.addObject(record);
        }
    }
    /// Opens a copy of a file of the test data, under another name if one is given. @return its path.
    QString open(const QString& fixture, const QString& name = {})
    {
        const QString path = folder.copy(fixture, name);
        if (!loader.openPath(path))
            qFatal("%s was not opened", qUtf8Printable(path));
        return path;
    }
    void openAll(const QStringList& fixtures)
    {
        for (const auto& fixture : fixtures)
            open(fixture);
    }
    /// Counted in the order of the list without a filter.
    AudioFile& record(qsizetype number) const { return *list.content().at(static_cast<std::size_t>(number)); }

    /// Rows are written as "0 2".
    static QList<int> numbers(const QString& rows)
    {
        QList<int> numbers;
        for (const auto& row : rows.split(u' ', Qt::SkipEmptyParts))
            numbers.append(row.toInt());
        return numbers;
    }
    void select(const QString& rows) { list.selection().setRows(numbers(rows)); }
    static QString titles(const std::vector<AudioFilePtr>& records)
    {
        QStringList titles;
        for (const auto& record : records)
            titles.append(record->title);
        return titles.join(u' ');
    }
};
