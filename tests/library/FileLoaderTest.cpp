#include "fakes/Library.h"
#include "support/ScratchFolder.h"

#include <QSignalSpy>
#include <QTest>

class FileLoaderTest : public QObject {
    Q_OBJECT

private slots:
    void opensOrRefuses_data()
    {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("added");
        const auto row = [](const char* name, const char* fixture, const char* message, int added) {
            QTest::newRow(name) << QString::fromUtf8(fixture) << QString::fromUtf8(message) << added;
        };
        const char* couldNotOpen = "Sonvika: Couldn't open file at path: %1";
        row("a.mp3", "v24.mp3", "", 1);
        row("b.m4a", "tagged.m4a", "", 1);
        row("untagged.mp3", "untagged.mp3", "", 1);
        row("upper.MP3", "v24.mp3", "", 0);
        row("text.txt", "text.mp3", "", 0);
        row("no-folder", "", "", 0);
        row("gone.mp3", "", couldNotOpen, 0);
        row("empty.mp3", "empty.mp3", "", 1);
        row("text.mp3", "text.mp3", "", 1);
        row("truncated.mp3", "truncated.mp3", "", 1);
        row("truncated.m4a", "truncated.m4a", couldNotOpen, 0);
        row("mp3-named.m4a", "mp3-named.m4a", "", 1);
        row("m4a-named.mp3", "m4a-named.mp3", "", 1);
    }
    void opensOrRefuses()
    {
        QFETCH(QString, fixture);
        QFETCH(QString, message);
        QFETCH(int, added);
        const ScratchFolder folder;
        const QString name = QString::fromUtf8(QTest::currentDataTag());
        const QString path = fixture.isEmpty() ? folder.path(name) : folder.copy(fixture, name);
        Library library;
        QSignalSpy activation(&library.loader, &FileLoader::activationWanted);
        QCOMPARE(library.loader.openPath(path), message.isEmpty());
        QCOMPARE(library.notifier.posted.join(u'|'), message.isEmpty() ? message : message.arg(path));
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
        Library library;
        library.panels.files = files;
        library.controller.openDocument();
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
