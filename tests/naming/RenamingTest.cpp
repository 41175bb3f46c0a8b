#include "fakes/Library.h"
#include "naming/FileNameFormat.h"
#include "naming/RenamePlan.h"
#include "platform/FileSystem.h"
#include "support/ConsoleCapture.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <QTest>

#include <filesystem>
#include <iostream>
#include <system_error>
#include <thread>

class RenamingTest : public QObject {
    Q_OBJECT

private slots:
    // format, its tokens split by "," | TRACKNUMBER | TITLE | YEAR | name
    void buildsNames_data()
    {
        addRows({"Track, - ,Title, - ,Album, - ,Year | 3/12 | Intro | 1999 | 03 - Intro - Live - 1999.mp3",
                 "Track, - ,Title, - ,Album, - ,Year | 3/12 | Intro |  | 03 - Intro - Live - .mp3",
                 "Mix | 1 | a | 1 | Mix.mp3", "Title |  |  |  | ", "Track | 7 |  |  | 07.mp3",
                 "Track | 123/200 |  |  | 123.mp3", "Track | +7 |  |  | 07.mp3", "Track | -1 |  |  | -01.mp3",
                 "Track | A1/3 |  |  | A1.mp3", "Track |  | x |  | ", "Track,Title | /12 | x |  | x.mp3",
                 "Track | 99999999999999999999 |  |  | 99999999999999999999.mp3",
                 "Track | -9223372036854775808 |  |  | -9223372036854775808.mp3", "Track | 1 2 |  |  | 1 2.mp3",
                 "Track | + |  |  | +.mp3", "Disc,_,Genre,_,Artist,_,Album Artist | 1 |  |  | 02_Rock_A_B.mp3",
                 "Title |  | AC/DC: \"Live\" |  | AC/DC: \"Live\".mp3", "title,TITLE |  | x |  | titleTITLE.mp3",
                 "Title |  |  . x |  |  . x.mp3"});
    }
    void buildsNames()
    {
        const auto [format, track, title, year, expected] = row<5>();
        AudioFile record;
        record.trackNumber = track;
        record.title = title;
        record.year = year;
        record.album = u"Live"_qs;
        record.discNumber = u"2/3"_qs;
        record.genre = u"Rock"_qs;
        record.artist = u"A"_qs;
        record.albumArtist = u"B"_qs;
        record.fileType = u"mp3"_qs;
        QCOMPARE(FileNameFormat::buildFileName(format.split(u','), record), expected);
    }

    // the settings file's value | the format read
    void readsTheStoredFormat_data()
    {
        addRows({"- | Track, - ,Title, - ,Album, - ,Year", "\"[\\\"Mix\\\"]\" | Mix", "\"[]\" | ",
                 "\"[\\\"Genre\\\",\\\"_\\\",\\\"Genre\\\"]\" | Genre,_,Genre",
                 "\"[1]\" | Track, - ,Title, - ,Album, - ,Year", "\"{}\" | Track, - ,Title, - ,Album, - ,Year",
                 "Mix | Track, - ,Title, - ,Album, - ,Year", "@Variant(junk) | Track, - ,Title, - ,Album, - ,Year"});
    }
    void readsTheStoredFormat()
    {
        const auto [stored, expected] = row<2>();
        const ScratchFolder folder;
        const QString path = folder.path(u"settings.ini"_qs);
        if (stored != u"-")
            ScratchFolder::write(path, "[General]\nfileFormatTokens=" + stored.toUtf8() + '\n');
        UserDefaults defaults(path);
        const QStringList tokens = FileNameFormat::storedTokens(defaults);
        QCOMPARE(tokens.join(u','), expected);
        FileNameFormat::storeTokens(defaults, tokens);
        QCOMPARE(FileNameFormat::storedTokens(UserDefaults(path)), tokens);
    }

    void renamesTheSelectedFiles()
    {
        const ScratchFolder folder;
        Library library;
        open(library, folder, u"1.mp3 2.m4a 3.mp3 4.mp3 5.mp3"_qs);
        setTitles(library, {u"One"_qs, u"Two"_qs, u"One"_qs, u"AC/DC"_qs, {}});
        const QByteArray third = ScratchFolder::contents(folder.path(u"3.mp3"_qs));
        library.controller.selectAll();
        const RenamePlan plan(library.list.selectedObjects(), {u"Title"_qs});
        const ConsoleCapture console(std::cout);
        library.controller.renameFiles({u"Title"_qs});
        QCOMPARE(names(library), u"One.mp3 Two.m4a 3.mp3 4.mp3 5.mp3"_qs);
        QCOMPARE(QDir(folder.path({})).entryList(QDir::Files).join(u' '), u"3.mp3 4.mp3 5.mp3 One.mp3 Two.m4a"_qs);
        QCOMPARE(ScratchFolder::contents(folder.path(u"3.mp3"_qs)), third);
        QCOMPARE(library.notifier.posted.size(), 3);
        QVERIFY(library.notifier.posted[0].startsWith(u"Sonvika: Couldn't rename file at path: "_qs
                                                      + folder.path(u"3.mp3"_qs) + u", with error: "_qs));
        QCOMPARE(console.text().count(u"couldn't rename file at path: "_qs), 3);
        QCOMPARE(library.list.selection().rows(), QList({0, 1, 2, 3, 4}));

        QCOMPARE(plan.failing(), 3);
        const QStringList expected{{}, {}, u"Another"_qs, u"\"/\" leads"_qs, u"The name is empty"_qs};
        for (std::size_t i = 0; i < 5; ++i)
            QVERIFY2(plan.entries()[i].objection.startsWith(expected[static_cast<int>(i)])
                         && plan.entries()[i].objection.isEmpty() == expected[static_cast<int>(i)].isEmpty(),
                     qPrintable(plan.entries()[i].objection));

        // Later edits and loads go to the new names.
        library.list.selection().setRows({0});
        library.controller.applyEdit(u"ALBUM"_qs, u"New"_qs);
        QCOMPARE(TaglibWrapper::getMetadata(folder.path(u"One.mp3"_qs)).value()[u"ALBUM"_qs], u"New"_qs);
        QVERIFY(library.list.anyPathContains(folder.path(u"One.mp3"_qs)));
        QVERIFY(!library.list.anyPathContains(folder.path(u"1.mp3"_qs)));
        library.notifier.posted.clear();
        library.controller.renameFiles({u"Title"_qs});
        QCOMPARE(names(library), u"One.mp3 Two.m4a 3.mp3 4.mp3 5.mp3"_qs);
        QCOMPARE(library.notifier.posted, QStringList());
    }

    // format | what stands in the way | plan's objection
    void leavesFilesThatCannotBeRenamed_data()
    {
        addRows({"taken | a file | A file of this name exists", "Title | a long title | The name is too long",
                 "new | a locked folder | The folder can't be written", "new | a missing file | The file is gone",
                 "sub/new | a missing folder | \"/\" leads into a folder that does not exist"});
    }
    void leavesFilesThatCannotBeRenamed()
    {
        const auto [format, obstacle, objection] = row<3>();
        const ScratchFolder folder;
        Library library;
        open(library, folder, u"1.mp3"_qs);
        setTitles(library, {QString(150, u'ö')});
        const QString path = folder.path(u"1.mp3"_qs);
        ScratchFolder::write(folder.path(u"taken.mp3"_qs), "taken");
        const auto mode = [&](QFile::Permissions permissions) {
            QFile::setPermissions(folder.path({}), permissions | QFile::ReadOwner | QFile::ExeOwner);
        };
        if (obstacle == u"a locked folder")
            mode({});
        if (obstacle == u"a missing file")
            QVERIFY(QFile::remove(path));
        library.controller.selectAll();
        QCOMPARE(RenamePlan(library.list.selectedObjects(), {format}).entries()[0].objection, objection);
        {
            const ConsoleCapture console(std::cout);
            library.controller.renameFiles({format});
        }
        mode(QFile::WriteOwner);
        QCOMPARE(library.notifier.posted.size(), 1);
        QCOMPARE(names(library), u"1.mp3"_qs);
        QCOMPARE(library.list.content()[0]->path, path);
        QCOMPARE(QFile::exists(path), obstacle != u"a missing file");
        QCOMPARE(ScratchFolder::contents(folder.path(u"taken.mp3"_qs)), "taken");
    }

    void movesIntoAFolderThatExists()
    {
        const ScratchFolder folder;
        Library library;
        open(library, folder, u"1.mp3"_qs);
        QVERIFY(QDir(folder.path({})).mkpath(u"AC"_qs));
        setTitles(library, {u"AC/DC"_qs});
        library.controller.selectAll();
        QCOMPARE(RenamePlan(library.list.selectedObjects(), {u"Title"_qs}).failing(), 0);
        library.controller.renameFiles({u"Title"_qs});
        QVERIFY(QFile::exists(folder.path(u"AC/DC.mp3"_qs)));
        QCOMPARE(library.list.content()[0]->path, folder.path(u"AC/DC.mp3"_qs));
        QCOMPARE(library.notifier.posted, QStringList());
    }

    void neverReplacesAFileInARace()
    {
        const ScratchFolder folder;
        constexpr int rounds = 300;
        for (int i = 0; i < rounds; ++i) {
            const QString one = folder.path(u"one"_qs);
            const QString two = folder.path(u"two"_qs);
            const QString target = folder.path(u"target"_qs);
            ScratchFolder::write(one, "one");
            ScratchFolder::write(two, "two");
            const auto move = [&](const QString& from) {
                try {
                    FileSystem::moveItem(from, target);
                } catch (const std::exception&) {
                }
            };
            std::thread other(move, one);
            move(two);
            other.join();
            QVERIFY(QFile::exists(target) && QFile::exists(one) != QFile::exists(two));
            for (const auto& path : {one, two, target})
                QFile::remove(path);
        }
    }

    void twoNamesOfOneFileAreTwoFiles()
    {
        const ScratchFolder folder;
        const QString one = folder.path(u"song.mp3"_qs);
        const QString other = folder.path(u"Song.mp3"_qs);
        ScratchFolder::write(one, "sound");
        QVERIFY(QFile::link(one, folder.path(u"link.mp3"_qs)));
        std::filesystem::create_hard_link(one.toStdString(), other.toStdString());
        for (const auto& name : {other, folder.path(u"link.mp3"_qs)})
            QVERIFY_THROWS_EXCEPTION(std::system_error, FileSystem::moveItem(one, name));
        QVERIFY_THROWS_EXCEPTION(std::system_error, FileSystem::moveItem(one, one + QChar::Null + u"x"_qs));
        QVERIFY(QFile::exists(one) && QFile::exists(other));
        AudioFile record;
        record.path = one;
        record.fileName = u"song.mp3"_qs;
        record.fileType = u"mp3"_qs;
        record.title = u"a\0b"_qs;
        QCOMPARE(RenamePlan({std::make_shared<AudioFile>(record)}, {u"Song"_qs}).failing(), 1);
        QCOMPARE(RenamePlan({std::make_shared<AudioFile>(record)}, {u"Title"_qs}).failing(), 1);
        QVERIFY(QFile::remove(other));
        FileSystem::moveItem(one, other);
        QVERIFY(QFile::exists(other) && !QFile::exists(one));
    }

    void planFollowsTheOrderOfRenaming()
    {
        const ScratchFolder folder;
        Library library;
        open(library, folder, u"a.mp3 b.mp3 c.mp3"_qs);
        setTitles(library, {u"d"_qs, u"a"_qs, u"c"_qs});
        library.controller.selectAll();
        const RenamePlan plan(library.list.selectedObjects(), {u"Title"_qs});
        QCOMPARE(plan.failing(), 0);
        QCOMPARE(plan.unchanged(), 1);
        library.controller.renameFiles({u"Title"_qs});
        QCOMPARE(names(library), u"d.mp3 a.mp3 c.mp3"_qs);
        QCOMPARE(library.notifier.posted, QStringList());
    }

private:
    static void open(Library& library, const ScratchFolder& folder, const QString& fileNames)
    {
        for (const auto& name : fileNames.split(u' '))
            QVERIFY(library.loader.openPath(folder.copy(u"untagged."_qs + name.right(3), name)));
    }
    static void setTitles(Library& library, const QStringList& titles)
    {
        for (int i = 0; i < titles.size(); ++i)
            library.list.content()[static_cast<std::size_t>(i)]->title = titles[i];
    }
    static QString names(const Library& library)
    {
        QStringList found;
        for (const auto& record : library.list.content())
            found.append(record->fileName);
        return found.join(u' ');
    }
};

QTEST_GUILESS_MAIN(RenamingTest)
#include "RenamingTest.moc"
