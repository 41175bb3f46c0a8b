#include "fakes/Library.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QSignalSpy>

#include <sys/stat.h>

class FileLoaderTest : public QObject {
    Q_OBJECT

private slots:
    // Name, the fixture or kind of file under it, and how many files are added or refused.
    void opensOrRefuses_data()
    {
        addRows({"a.mp3 | v24.mp3 | 1", "b.m4a | tagged.m4a | 1", "upper.MP3 | v24.mp3 | 0",
                 "text.txt | text.mp3 | 0", "no-folder |  | 0", "gone.mp3 |  | refused", "empty.mp3 | empty.mp3 | 1",
                 "text.mp3 | text.mp3 | 1", "truncated.mp3 | truncated.mp3 | 1", "x.m4a | truncated.m4a | refused",
                 "x.m4a | mp3-named.m4a | 1", "x.mp3 | m4a-named.mp3 | 1", "x.mp3 | folder | refused",
                 "x.mp3 | pipe | refused"});
    }
    void opensOrRefuses()
    {
        const auto [name, fixture, result] = row<3>();
        const ScratchFolder folder;
        const QString path = folder.path(name);
        if (fixture == u"folder")
            QVERIFY(QDir().mkdir(path));
        else if (fixture == u"pipe")
            QCOMPARE(::mkfifo(path.toUtf8().constData(), 0600), 0);
        else if (!fixture.isEmpty())
            folder.copy(fixture, name);
        const int added = result.toInt();
        const QString message =
            result == u"refused" ? u"Sonvika: Couldn't open file at path: %1"_qs.arg(path) : QString();
        Library library;
        QSignalSpy activation(&library.loader, &FileLoader::activationWanted);
        QCOMPARE(library.loader.openPath(path), message.isEmpty());
        QCOMPARE(library.notifier.posted.join(u'|'), message);
        QCOMPARE(library.recent.paths, QStringList(added, path));
        QCOMPARE(library.list.rowCount(), added);
        QCOMPARE(activation.size(), 0);
        QTRY_COMPARE(activation.size(), 1);
    }

    void takesAFileForOpenWhenAListedPathContainsIts()
    {
        const ScratchFolder folder;
        const QString path = folder.copy(u"v24.mp3"_qs);
        const QString around = folder.path(u"around"_qs) + path;
        QVERIFY(QDir().mkpath(QFileInfo(around).path()) && QFile::copy(path, around));
        Library library;
        QVERIFY(library.controller.openPath(around));
        library.list.setFilterText(u"matches nothing"_qs);
        QVERIFY(!library.controller.openPath(path) && !library.controller.openPath(around));
        QCOMPARE(library.notifier.posted, QStringList(2, u"Sonvika: File already open"_qs));
        QCOMPARE(library.list.content().size(), std::size_t{1});
        QCOMPARE(library.list.rowCount(), 0);
        library.list.setFilterText({});
        library.controller.viewDidDisappear();
        QVERIFY(library.controller.openPath(path) && library.controller.openPath(around));
    }

    void oneFailureStopsNoOther()
    {
        const ScratchFolder folder;
        const QStringList files{folder.copy(u"v24.mp3"_qs, u"1.mp3"_qs),
                                folder.copy(u"truncated.m4a"_qs, u"2.m4a"_qs),
                                folder.copy(u"tagged.m4a"_qs, u"3.m4a"_qs)};
        QStringList notedOnTheWay;
        Library library;
        library.panels.files = files;
        connect(&library.loader, &FileLoader::frontWanted, this, [&] { notedOnTheWay += library.recent.paths; });
        library.controller.openDocument();
        QCOMPARE(notedOnTheWay, QStringList());
        library.panels.folders = {folder.path(u"."_qs)};
        library.controller.openFolder();
        QCOMPARE(library.recent.paths, (QStringList{files[0], files[2]}));
        QCOMPARE(library.notifier.posted.filter(u"already open"_qs).size(), 2);
        QCOMPARE(library.notifier.posted.filter(files[1]).size(), 2);
        for (const auto& [fixture, name] :
             {std::pair{u"info.wav"_qs, u"a.wav"_qs}, {u"text.mp3"_qs, u"unknown"_qs}}) {
            QVERIFY(!library.loader.loadFile(folder.copy(fixture, name)));
            QCOMPARE(library.notifier.posted.last(), u"Sonvika: Unsupported file type"_qs);
        }
    }
};

QTEST_GUILESS_MAIN(FileLoaderTest)
#include "FileLoaderTest.moc"
