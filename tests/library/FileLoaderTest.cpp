#include "fakes/Library.h"
#include "library/FileFinder.h"
#include "library/PathIndex.h"
#include "platform/PathBytes.h"
#include "support/Rows.h"

#include <QRandomGenerator>
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
        Library library;
        const QString path = library.folder.path(name);
        if (fixture == u"folder")
            QVERIFY(QDir().mkdir(path));
        else if (fixture == u"pipe")
            QCOMPARE(::mkfifo(path.toUtf8().constData(), 0600), 0);
        else if (!fixture.isEmpty())
            library.folder.copy(fixture, name);
        const int added = result.toInt();
        const QString message =
            result == u"refused" ? u"Sonvika: Couldn't open file at path: %1"_qs.arg(path) : QString();
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
        Library library;
        const QString path = library.folder.copy(u"v24.mp3"_qs);
        const QString around = library.folder.path(u"around"_qs) + path;
        QVERIFY(QDir().mkpath(QFileInfo(around).path()) && QFile::copy(path, around));
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
        QStringList notedOnTheWay;
        Library library;
        QStringList files;
        for (const auto& fixture : {u"v24.mp3"_qs, u"truncated.m4a"_qs, u"v23.mp3"_qs})
            files.append(library.folder.copy(fixture));
        library.panels.files = files;
        connect(&library.loader, &FileLoader::frontWanted, this, [&] { notedOnTheWay += library.recent.paths; });
        library.controller.openDocument();
        QCOMPARE(notedOnTheWay, QStringList());
        library.panels.folders = {library.folder.path(u"."_qs)};
        library.controller.openFolder();
        QCOMPARE(library.recent.paths, (QStringList{files[0], files[2]}));
        QCOMPARE(library.notifier.posted.filter(u"already open"_qs).size(), 2);
        QCOMPARE(library.notifier.posted.filter(files[1]).size(), 2);
        connect(&library.loader, &FileLoader::frontWanted, &library.monitor, &LongWork::cancel);
        const QString another = library.folder.copy(u"v24.mp3"_qs, u"4.mp3"_qs);
        QVERIFY(!library.loader.openPaths({another, library.folder.path(u"5.mp3"_qs)}));
        QCOMPARE(library.list.rowCount(), 3);
        for (const auto& fixture : {u"info.wav"_qs, u"text.mp3"_qs}) {
            QVERIFY(!library.loader.loadFile(library.folder.copy(fixture, u"no "_qs + fixture.section(u'.', 0, 0))));
            QCOMPARE(library.notifier.posted.last(), u"Sonvika: Unsupported file type"_qs);
        }
    }

    void indexAnswersAsASearchThroughEveryPath()
    {
        const QStringList pieces = u"/ a b é 😀 .mp3 .m4a . 3 m .MP3 x.mp3/"_qs.split(u' ');
        QRandomGenerator random(20011);
        const auto text = [&](int longest) {
            QString made;
            for (int left = random.bounded(1, longest); left > 0; --left)
                made += pieces[random.bounded(static_cast<int>(pieces.size()))];
            return made;
        };
        PathIndex index;
        QStringList paths;
        int found = 0;
        for (int round = 0; round < 20000; ++round) {
            if (paths.size() < 3 || (paths.size() < 12 && random.bounded(2) == 0)) {
                paths.append(u'/' + text(7) + u".mp3"_qs);
                index.insert(paths.last());
            } else if (random.bounded(8) == 0) {
                index.remove(paths.takeAt(random.bounded(static_cast<int>(paths.size()))));
            }
            const QString wanted = text(4) + (random.bounded(2) == 0 ? u".mp3"_qs : QString());
            const bool expected = !paths.filter(wanted).isEmpty();
            found += expected;
            QVERIFY2(index.anyContains(wanted) == expected, qPrintable(wanted + u" in "_qs + paths.join(u' ')));
        }
        QVERIFY(found > 1000 && found < 19000);
        for (const auto& path : std::as_const(paths))
            index.remove(path);
        QVERIFY(!index.anyContains(u"a"_qs) && !index.anyContains(u".mp3"_qs));
    }

    void findsAudioFilesBelowAFolder()
    {
        QLocale::setDefault(QLocale::English);
        const ScratchFolder folder;
        QStringList expected =
            u"9.m4a|10.mp3|b/deep/er/2 z.mp3|b/deep/er/10 z.mp3|it's \"q\"\nline %41.mp3|x.mp3/in.m4a"_qs.split(u'|');
        for (auto& name : expected)
            name = make(folder, name);
        for (const auto& name : u"X.MP3|.hidden.mp3|.hid/x.mp3|note.txt|mp3"_qs.split(u'|'))
            make(folder, name);
        QVERIFY(QFile::link(folder.path(u"."_qs), folder.path(u"b/loop"_qs)));
        QVERIFY(QFile::link(expected[0], folder.path(u"link.m4a"_qs)));
        QCOMPARE(::mkfifo(folder.path(u"pipe.mp3"_qs).toUtf8().constData(), 0600), 0);
        const QString locked = QFileInfo(make(folder, u"locked/x.txt"_qs)).path();
        QVERIFY(QFile::setPermissions(locked, {}));
        QCOMPARE(FileFinder::audioFiles(folder.path(u"."_qs)), expected);
        QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    // a path in the current folder | the file it stands for
    void takesPathsAsTheSystemDoes_data()
    {
        addRows({"x.mp3 | x.mp3", ".//b/./../x.mp3/ | x.mp3", "%FF/%E9.mp3 | %FF/%E9.mp3", "link/../x.mp3 | b/x.mp3",
                 "link/a.mp3 | link/a.mp3", "gone/../x.mp3 | gone/../x.mp3"});
    }
    void takesPathsAsTheSystemDoes()
    {
        const auto [given, expected] = row<2>();
        const ScratchFolder folder;
        QVERIFY(QDir(folder.path({})).mkpath(u"b/c"_qs));
        QVERIFY(QFile::link(folder.path(u"b/c"_qs), folder.path(u"link"_qs)));
        QVERIFY(QDir::setCurrent(folder.path({})));
        const auto files = FileFinder::audioFiles(PathBytes::decode(QByteArray::fromPercentEncoding(given.toUtf8())));
        const auto none = FileFinder::audioFiles({});
        QVERIFY(QDir::setCurrent(u"/"_qs));
        QCOMPARE(files.size(), 1);
        QCOMPARE(PathBytes::encode(files[0]).toPercentEncoding(),
                 (folder.path({}).toUtf8() + '/' + QByteArray::fromPercentEncoding(expected.toUtf8()))
                     .toPercentEncoding());
        QVERIFY(none.isEmpty());
    }

private:
    static QString make(const ScratchFolder& folder, const QString& name)
    {
        QFile file(folder.path(name));
        if (!QDir().mkpath(QFileInfo(file).path()) || !file.open(QIODevice::WriteOnly))
            qFatal("Can't make %s", qPrintable(name));
        return file.fileName();
    }
};

QTEST_GUILESS_MAIN(FileLoaderTest)
#include "FileLoaderTest.moc"
