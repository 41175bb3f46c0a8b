#include "naming/FileMove.h"
#include "naming/FileNameFormat.h"
#include "naming/RenamePlan.h"
#include "platform/PathBytes.h"
#include "support/ChildProcess.h"
#include "support/ConsoleCapture.h"
#include "support/FaultInjection.h"
#include "support/OpenLibrary.h"
#include "support/PropertyText.h"
#include "support/Rows.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
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

/// What the file system can: "all", "no flags" of renames, or "no links" either.
void limitFileSystem(const QString& abilities)
{
    FaultInjection::limitMoves(abilities == u"all", abilities != u"no links");
}

/// The files in a folder with what they hold, as "name=content".
QString listing(const ScratchFolder& folder)
{
    QStringList found;
    for (const auto& name : QDir(folder.path(u"."_qs)).entryList(QDir::Files | QDir::Hidden))
        found.append(name + u'=' + QString::fromUtf8(ScratchFolder::contents(folder.path(name))));
    return found.join(u' ');
}

} // namespace

class RenamingTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { limitFileSystem(u"all"_qs); }

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
                 "a | sub/new | a missing folder | \"/\" leads into a folder that does not exist",
                 "../a | Title | the rules | The name leads out of the folder",
                 "b/.. | Title,/a | the rules | The name leads out of the folder",
                 "./a | Title | the rules | The name leads out of the folder",
                 "/tmp | Title,/a | the rules | The name leads out of the folder",
                 ". | Title,Title,/a | the rules | The name leads out of the folder",
                 "a | up/Title | a link | The name leads out of the folder",
                 "a | up/Album/../a | a link | The name leads out of the folder",
                 "a\nb | Title | the rules | A tag brings a line break into the name",
                 "a\xe2\x80\xa8 | Title | the rules | A tag brings a line break into the name"});
    }
    void leavesFilesThatCannotBeRenamed()
    {
        auto [title, format, obstacle, objection] = row<4>();
        Titled library(u"1.mp3"_qs, {title.replace(u"LONG"_qs, QString(150, u'ö'))});
        const QString folder = library.folder.path(u"."_qs);
        const QString path = library.record(0).path;
        const QString taken = library.folder.path(u"taken.mp3"_qs);
        ScratchFolder::write(taken, "taken");
        if (obstacle == u"a link")
            QVERIFY(QFile::link(u".."_qs, folder + u"/up"_qs));
        if (obstacle == u"a missing file")
            QVERIFY(QFile::remove(path));
        if (obstacle == u"a locked folder")
            QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        const QStringList tokens = format.split(u',');
        QCOMPARE(RenamePlan(library.list.selectedObjects(), tokens).entries()[0].objection, objection);
        const ConsoleCapture console(std::cout);
        library.controller.renameFiles(tokens);
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
        addRows({"AC/DC b c | AC/DC.mp3 b.mp3 c.mp3 | 2", "d a c | d.mp3 a.mp3 c.mp3 | 1",
                 "in/b in/.. c | in/b.mp3 in/...mp3 c.mp3 | 1"});
    }
    void renamesInOrderAndIntoFolders()
    {
        const auto [titles, names, unchanged] = row<3>();
        Titled library(u"a.mp3 b.mp3 c.mp3"_qs, titles.split(u' '));
        QVERIFY(QDir().mkdir(library.folder.path(u"AC"_qs)));
        QVERIFY(QFile::link(library.folder.path(u"AC"_qs), library.folder.path(u"in"_qs)));
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

    void neverReplacesAFileInARace_data() { addRows({"all", "no flags", "no links"}); }
    void neverReplacesAFileInARace()
    {
        limitFileSystem(row()[0]);
        const ScratchFolder folder;
        const QString place = folder.path({}) + u'/';
        for (int round = 0; round < 300; ++round) {
            ScratchFolder::write(place + u"one"_qs, "one");
            ScratchFolder::write(place + u"two"_qs, "two");
            const auto move = [&](const QString& name) {
                try {
                    FileMove::move(place, name, u"target"_qs);
                } catch (const std::exception&) {
                }
            };
            std::thread other(move, u"one"_qs);
            move(u"two"_qs);
            other.join();
            const QString found = listing(folder);
            QVERIFY2(found == u"one=one target=two" || found == u"target=one two=two", qPrintable(found));
            QVERIFY(QFile::remove(place + u"target"_qs));
        }
    }

    void aLinkThatComesInBetweenLeadsNowhere()
    {
        const ScratchFolder folder;
        const ScratchFolder elsewhere;
        const QString place = folder.path({}) + u'/';
        const QByteArray inner = PathBytes::encode(place + u"sub"_qs);
        const QByteArray link = PathBytes::encode(place + u"link"_qs);
        QVERIFY(QDir().mkdir(place + u"sub"_qs) && QFile::link(elsewhere.path(u"."_qs), place + u"link"_qs));
        std::atomic<bool> isOver = false;
        std::thread exchanger([&] {
            while (!isOver)
                ::renameat2(AT_FDCWD, inner.constData(), AT_FDCWD, link.constData(), RENAME_EXCHANGE);
        });
        int refused = 0;
        for (int round = 0; round < 1000; ++round) {
            const QString name = QString::number(round);
            ScratchFolder::write(place + name, "sound");
            try {
                FileMove::move(place, name, u"sub/"_qs + name);
            } catch (const std::exception&) {
                ++refused;
            }
        }
        isOver = true;
        exchanger.join();
        QCOMPARE(QDir(elsewhere.path(u"."_qs)).entryList(QDir::Files), QStringList());
        QCOMPARE(QDir(place).entryList(QDir::Files).size(), refused);
    }

    // what the file system can | the new name | what is found after a kill before any step, and after none
    void aKillLosesNoFileAndLeavesNoEmptyOne_data()
    {
        addRows({"all | new | new=sound taken=other; new=sound taken=other",
                 "no flags | new | new=sound old=sound taken=other; new=sound taken=other; new=sound taken=other",
                 "no links | new | new=sound taken=other; new=sound taken=other",
                 "no flags | taken | old=sound taken=other; old=sound taken=other",
                 "no links | taken | old=sound taken=other"});
    }
    void aKillLosesNoFileAndLeavesNoEmptyOne()
    {
        const auto [abilities, name, expected] = row<3>();
        limitFileSystem(abilities);
        QStringList found;
        for (int call = 1, ended = -1; ended < 0; ++call) {
            const ScratchFolder folder;
            ScratchFolder::write(folder.path(u"old"_qs), "sound");
            ScratchFolder::write(folder.path(u"taken"_qs), "other");
            ended = inChildProcess([&, newName = name] {
                FaultInjection::arm(call, {FaultInjection::Kind::KillHalfway});
                try {
                    FileMove::move(folder.path({}) + u'/', u"old"_qs, newName);
                } catch (const std::system_error&) {
                    return EEXIST;
                }
                return 0;
            });
            QVERIFY(ended == -SIGKILL || ended == (name == u"taken" ? EEXIST : 0));
            found.append(listing(folder));
        }
        QCOMPARE(found.join(u"; "_qs), expected);
    }

    void twoNamesOfOneFileAreTwoFiles_data() { addRows({"all", "no flags", "no links"}); }
    void twoNamesOfOneFileAreTwoFiles()
    {
        limitFileSystem(row()[0]);
        const ScratchFolder folder;
        const QString place = folder.path({}) + u'/';
        const QString one = place + u"song.mp3"_qs;
        const QString other = place + u"Song.mp3"_qs;
        ScratchFolder::write(one, "sound");
        QVERIFY(QFile::link(one, place + u"link.mp3"_qs));
        QVERIFY(QFile::link(place + u"gone"_qs, place + u"broken.mp3"_qs));
        std::filesystem::create_hard_link(one.toStdString(), other.toStdString());
        for (const auto& name : {u"Song.mp3"_qs, u"link.mp3"_qs, u"broken.mp3"_qs, u"x\0x"_qs, QString()})
            QVERIFY_THROWS_EXCEPTION(std::system_error, FileMove::move(place, u"song.mp3"_qs, name));
        QVERIFY(QFile::exists(one) && QFile::exists(other));
        const auto record = AudioFile::fromPropertyMap({{u"TITLE"_qs, u"a\0b"_qs}}, one, 0);
        for (const auto& format : {u"Song"_qs, u"Title"_qs})
            QCOMPARE(RenamePlan({record}, {format}).failing(), 1);
        QVERIFY(QFile::remove(other));
        FileMove::move(place, u"song.mp3"_qs, u"Song.mp3"_qs);
        QVERIFY(QFile::exists(other) && !QFile::exists(one));
    }
};

QTEST_GUILESS_MAIN(RenamingTest)
#include "RenamingTest.moc"
