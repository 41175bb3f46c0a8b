#include "naming/FileNameFormat.h"
#include "naming/RenamePlan.h"
#include "platform/FileSystem.h"
#include "support/ConsoleCapture.h"
#include "support/OpenLibrary.h"
#include "support/PropertyText.h"
#include "support/Rows.h"

#include <filesystem>
#include <iostream>
#include <system_error>
#include <thread>

namespace {

/// Selected copies of a file, with these titles in the list.
struct Titled : OpenLibrary {
    Titled(const QString& names, const QStringList& titles) : OpenLibrary(names, u"untagged"_qs)
    {
        for (int i = 0; i < titles.size(); ++i)
            record(i).title = titles[i];
        controller.selectAll();
    }
};

} // namespace

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
        PropertyMap tags = propertyMap(u"ALBUM=Live;DISCNUMBER=2/3;GENRE=Rock;ARTIST=A;ALBUMARTIST=B"_qs);
        tags.insert({{u"TRACKNUMBER"_qs, track}, {u"TITLE"_qs, title}, {u"YEAR"_qs, year}});
        const auto record = AudioFile::fromPropertyMap(tags, u"/music/song.mp3"_qs, 0);
        QCOMPARE(FileNameFormat::buildFileName(format.split(u','), *record), expected);
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
        Titled library(u"1.mp3 2.m4a 3.mp3 4.mp3 5.mp3"_qs, {u"One"_qs, u"Two"_qs, u"One"_qs, u"AC/DC"_qs, {}});
        const ScratchFolder& folder = library.folder;
        const QByteArray third = ScratchFolder::contents(folder.path(u"3.mp3"_qs));
        const RenamePlan plan(library.list.selectedObjects(), {u"Title"_qs});
        const ConsoleCapture console(std::cout);
        library.controller.renameFiles({u"Title"_qs});
        QCOMPARE(library.fileNames(), u"One.mp3 Two.m4a 3.mp3 4.mp3 5.mp3"_qs);
        QCOMPARE(QDir(folder.path(u"."_qs)).entryList(QDir::Files).join(u' '),
                 u"3.mp3 4.mp3 5.mp3 One.mp3 Two.m4a"_qs);
        QCOMPARE(ScratchFolder::contents(folder.path(u"3.mp3"_qs)), third);
        QCOMPARE(library.notifier.posted.size(), 3);
        QVERIFY(library.notifier.posted[0].startsWith(u"Sonvika: Couldn't rename file at path: "_qs
                                                      + folder.path(u"3.mp3"_qs) + u", with error: "_qs));
        QCOMPARE(console.text().count(u"couldn't rename file at path: "_qs), 3);
        QCOMPARE(library.list.selection().rows(), QList({0, 1, 2, 3, 4}));
        QStringList objections;
        for (const auto& entry : plan.entries())
            objections.append(entry.objection.section(u' ', 0, 1));
        QCOMPARE(objections, QStringList({{}, {}, u"Another selected"_qs, u"\"/\" leads"_qs, u"The name"_qs}));
        QCOMPARE(plan.failing(), 3);

        // Later edits and loads go to the new names.
        library.list.selection().setRows({0});
        library.controller.applyEdit(u"ALBUM"_qs, u"New"_qs);
        QCOMPARE(TaglibWrapper::getMetadata(folder.path(u"One.mp3"_qs)).value()[u"ALBUM"_qs], u"New"_qs);
        QVERIFY(library.list.anyPathContains(folder.path(u"One.mp3"_qs)));
        QVERIFY(!library.list.anyPathContains(folder.path(u"1.mp3"_qs)));
    }

    // title | format | what stands in the way | plan's objection
    void leavesFilesThatCannotBeRenamed_data()
    {
        addRows({"a | taken | a file | A file of this name exists", "LONG | Title | a limit | The name is too long",
                 "a | new | a locked folder | The folder can't be written",
                 "a | new | a missing file | The file is gone",
                 "a | sub/new | a missing folder | \"/\" leads into a folder that does not exist"});
    }
    void leavesFilesThatCannotBeRenamed()
    {
        auto [title, format, obstacle, objection] = row<4>();
        Titled library(u"1.mp3"_qs, {title.replace(u"LONG"_qs, QString(150, u'ö'))});
        const QString folder = library.folder.path(u"."_qs);
        const QString path = library.record(0).path;
        const QString taken = library.folder.path(u"taken.mp3"_qs);
        ScratchFolder::write(taken, "taken");
        if (obstacle == u"a missing file")
            QVERIFY(QFile::remove(path));
        if (obstacle == u"a locked folder")
            QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        QCOMPARE(RenamePlan(library.list.selectedObjects(), {format}).entries()[0].objection, objection);
        const ConsoleCapture console(std::cout);
        library.controller.renameFiles({format});
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(library.notifier.posted.size(), 1);
        QCOMPARE(library.fileNames(), u"1.mp3"_qs);
        QCOMPARE(library.record(0).path, path);
        QCOMPARE(QFile::exists(path), obstacle != u"a missing file");
        QCOMPARE(ScratchFolder::contents(taken), "taken");
    }

    // titles | names then | how many the plan leaves unchanged
    void renamesInOrderAndIntoFolders_data()
    {
        addRows({"AC/DC b c | AC/DC.mp3 b.mp3 c.mp3 | 2", "d a c | d.mp3 a.mp3 c.mp3 | 1"});
    }
    void renamesInOrderAndIntoFolders()
    {
        const auto [titles, names, unchanged] = row<3>();
        Titled library(u"a.mp3 b.mp3 c.mp3"_qs, titles.split(u' '));
        QVERIFY(QDir().mkdir(library.folder.path(u"AC"_qs)));
        const RenamePlan plan(library.list.selectedObjects(), {u"Title"_qs});
        QCOMPARE(plan.failing(), 0);
        QCOMPARE(plan.unchanged(), unchanged.toInt());
        library.controller.renameFiles({u"Title"_qs});
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(library.record(i).path, library.folder.path(names.section(u' ', i, i)));
            QVERIFY(QFile::exists(library.record(i).path));
        }
        QCOMPARE(library.notifier.posted, QStringList());
    }

    void neverReplacesAFileInARace()
    {
        const ScratchFolder folder;
        const QString one = folder.path(u"one"_qs);
        const QString two = folder.path(u"two"_qs);
        const QString target = folder.path(u"target"_qs);
        for (int round = 0; round < 300; ++round) {
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
        const auto record = AudioFile::fromPropertyMap({{u"TITLE"_qs, u"a\0b"_qs}}, one, 0);
        for (const auto& format : {u"Song"_qs, u"Title"_qs})
            QCOMPARE(RenamePlan({record}, {format}).failing(), 1);
        QVERIFY(QFile::remove(other));
        FileSystem::moveItem(one, other);
        QVERIFY(QFile::exists(other) && !QFile::exists(one));
    }
};

QTEST_GUILESS_MAIN(RenamingTest)
#include "RenamingTest.moc"
