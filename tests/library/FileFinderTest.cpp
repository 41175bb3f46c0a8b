#include "library/FileFinder.h"
#include "platform/PathBytes.h"
#include "support/ConsoleCapture.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QFileInfo>
#include <QLocale>
#include <QTest>

#include <filesystem>
#include <iostream>

#include <sys/stat.h>
#include <unistd.h>

class FileFinderTest : public QObject {
    Q_OBJECT

private slots:
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
        QCOMPARE(FileFinder::audioFiles(folder.path(u"."_qs)), expected);
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

    void takesNamesOfAnyBytesAndSkipsWhatItCannotExamine()
    {
        namespace fs = std::filesystem;
        const ScratchFolder folder;
        const QString good = make(folder, u"good.mp3"_qs);
        const std::string odd = folder.path(u"odd"_qs).toStdString() + "\xff\xc3\xa9\xc3.mp3";
        fs::copy_file(good.toStdString(), odd);
        const fs::path locked = QFileInfo(make(folder, u"locked/lost.txt"_qs)).path().toStdString();
        fs::permissions(locked, fs::perms::none);
        const ConsoleCapture console(std::cout);
        const QStringList files = FileFinder::audioFiles(folder.path(u"."_qs));
        fs::permissions(locked, fs::perms::owner_all);
        fs::remove(odd);
        QCOMPARE(files.size(), 2);
        QCOMPARE(files[0], good);
        QCOMPARE(PathBytes::encode(files[1]), QByteArray::fromStdString(odd));
        QVERIFY(PathBytes::isPlain(files[0]) && !PathBytes::isPlain(files[1]));
        QCOMPARE(console.text().contains(u"locked: "), ::geteuid() != 0);
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

QTEST_GUILESS_MAIN(FileFinderTest)
#include "FileFinderTest.moc"
