#include "fakes/Library.h"
#include "support/OtherReaders.h"
#include "support/PropertyText.h"
#include "support/Rows.h"
#include "tagengine/TaglibWrapper.h"

#include <QSignalSpy>

/// What the commands that write tags make of the selected files, and of what the list knows of them.
class EditingTest : public QObject {
    Q_OBJECT

private slots:
    // What the files have, the edit, and what they have then.
    void writesOneField_data()
    {
        addRows({" | TITLE=Ω 😀 | TITLE=Ω 😀", " | COMMENT=Various | COMMENT=Various",
                 "ALBUMARTIST=Both | ALBUMARTIST= | ALBUMARTIST=", " | YEAR=2001 | YEAR=2001",
                 " | COMPILATION=1 | COMPILATION=1",
                 "TRACKNUMBER=3/10, TRACKNUMBER=5 | TRACKNUM=7 | TRACKNUMBER=7/10, TRACKNUMBER=7",
                 "TRACKNUMBER=3/10 | TRACKNUM= | TRACKNUMBER=0/10",
                 "TRACKNUMBER=3, TRACKNUMBER=7/9,  | TRACKTOTAL=10 | TRACKNUMBER=3/10, TRACKNUMBER=7/10, "
                 "TRACKNUMBER=0/10",
                 "TRACKNUMBER=3/10 | TRACKTOTAL= | TRACKNUMBER=3", "DISCNUMBER=2/3 | DISCNUM= | DISCNUMBER=0/3",
                 "DISCNUMBER=2/3 | DISCTOTAL= | DISCNUMBER=2", "DISCNUMBER=2/3 | DISCNUM=, DISCTOTAL= | DISCNUMBER=",
                 "TRACKNUMBER=3/10, TRACKNUMBER=0/9 | TRACKNUM=, TRACKTOTAL= | TRACKNUMBER=, TRACKNUMBER=",
                 "TRACKNUMBER=3/10 | TRACKTOTAL=, TRACKNUM= | TRACKNUMBER=", " | YEAR= 1987 | YEAR=1987",
                 " | YEAR=2026-11-23 | YEAR=2026", "YEAR=1 | YEAR=abc | YEAR=", "YEAR=1 | YEAR=99999999999 | YEAR="});
    }
    void writesOneField()
    {
        const auto [before, edit, after] = row<3>();
        const QString key = after.section(u'=', 0, 0);
        for (const auto& kind : {u".mp3"_qs, u".m4a"_qs}) {
            Library library;
            for (const auto& tags : before.split(u", "_qs)) {
                const QString name = QString::number(library.list.rowCount()) + kind;
                const QString path = library.folder.copy(u"untagged"_qs + kind, name);
                QVERIFY(TaglibWrapper::setMetadata(path, propertyMap(tags)) && library.loader.openPath(path));
            }
            library.controller.applyEdit(u"TITLE"_qs, u"not written, as nothing is selected"_qs);
            library.controller.selectAll();
            for (const auto& one : edit.split(u", "_qs))
                library.controller.applyEdit(one.section(u'=', 0, 0), one.section(u'=', 1));
            QStringList found;
            for (const auto& record : library.list.content()) {
                found.append(key + u'=' + record->propertyMap()[key]);
                QCOMPARE(AudioFile::fromFile(record->path)->propertyMap(), record->propertyMap());
            }
            QCOMPARE(found.join(u", "_qs), after);
            QCOMPARE(library.notifier.posted, QStringList());
        }
    }

    // what is in the place of the second of three files | what is posted
    void aFailingFileStopsNoOther_data()
    {
        addRows({"folder | Unable to update tags for: ", "nothing | File is not writable, please fix permissions"});
    }
    void aFailingFileStopsNoOther()
    {
        const auto [instead, posted] = row<2>();
        Library library;
        for (const auto& name : {u"1.mp3"_qs, u"2.mp3"_qs, u"3.mp3"_qs})
            library.open(u"v24.mp3"_qs, name);
        const QString failing = library.record(1).path;
        QVERIFY(QFile::remove(failing) && (instead == u"nothing" || QDir().mkdir(failing)));
        library.controller.selectAll();
        const QSignalSpy shown(&library.controller, &ViewController::fieldsChanged);
        library.controller.applyEdit(u"TITLE"_qs, u"New"_qs);
        QVERIFY(shown.value(0).value(0).value<SelectionSummary>().isMixed(u"title"_qs));
        QCOMPARE(Library::titles(library.list.content()), u"New Blue Window New"_qs);
        for (const auto i : {0, 2})
            QCOMPARE(TaglibWrapper::getTitle(library.record(i).path), u"New"_qs);
        QCOMPARE(library.notifier.posted.size(), 1);
        QVERIFY(library.notifier.posted[0].startsWith(u"Sonvika: "_qs + posted));
        QVERIFY(!library.notifier.noted.last().reason.isEmpty());
        QCOMPARE(library.list.selection().rows().size(), 3);
    }

    // the selected files, two of which have the same art | whether art is shown
    void showsArtThatAllShare_data() { addRows({"0 1 | yes", "0 1 2 | no", "1 | yes", " | no"}); }
    void showsArtThatAllShare()
    {
        const auto [rows, shown] = row<2>();
        Library library;
        library.openAll({u"v24.mp3"_qs, u"tagged.m4a"_qs, u"untagged.mp3"_qs});
        library.select(rows);
        QCOMPARE(library.art.bytes(), shown == u"yes" ? ScratchFolder::fixture(u"cover.jpg"_qs) : QByteArray());
    }

    void numbersInListOrder()
    {
        Library library;
        for (const auto& number : {u"3/12"_qs, u""_qs, u"7/12"_qs, u"1/1"_qs, u"9"_qs}) {
            const QString kind = number.isEmpty() ? u".m4a"_qs : u".mp3"_qs;
            const QString path = library.open(u"untagged"_qs + kind, QString::number(library.list.rowCount()) + kind);
            QVERIFY(TaglibWrapper::setMetadata(path, {{u"TRACKNUMBER"_qs, number}}));
            library.record(library.list.rowCount() - 1).trackNumber = number;
        }
        // Another order, a part of the list, and a file that can't be written, whose number is left out.
        library.list.moveRows({4}, 0);
        ScratchFolder::write(library.record(2).path, "no audio");
        library.select(u"4 3 2 0"_qs);
        const QSignalSpy shown(&library.controller, &ViewController::fieldsChanged);
        library.controller.incrementTrackNumbers();
        QCOMPARE(shown.size(), 1);
        QStringList numbers;
        for (const auto& record : library.list.content())
            numbers.append(record->trackNumber);
        QCOMPARE(numbers.join(u' '), u"1 3/12  3/12 4/1"_qs);
        QCOMPARE(TaglibWrapper::getMetadata(library.record(4).path).value()[u"TRACKNUMBER"_qs], u"4/1"_qs);
        QCOMPARE(library.notifier.posted,
                 QStringList{u"Sonvika: Unable to update tags for: "_qs + library.record(2).path});
        QCOMPARE(library.list.selection().rows(), QList({0, 2, 3, 4}));
    }

    void stripsWhatHasNoKeyButKeepsTheArt()
    {
        Library library;
        const QByteArray cover = ScratchFolder::fixture(u"cover.png"_qs);
        const QString path = library.folder.copy(u"unsupported.mp3"_qs);
        QVERIFY(TaglibWrapper::setImageData(cover, path, u"mp3"_qs) && library.loader.openPath(path));
        const QString sound = OtherReaders::soundDigest(path);
        const auto frames = u"sorted(k[:4] for k in tags.keys() if k[:4] in ('APIC', 'PRIV', 'GEOB', 'TIT2'))"_qs;
        QVERIFY(OtherReaders::mutagen(path, frames).contains(u"PRIV"_qs));
        library.controller.selectAll();
        library.controller.removeUnsupportedTags();
        QCOMPARE(OtherReaders::mutagen(path, frames), u"['APIC', 'TIT2']"_qs);
        QCOMPARE(library.art.bytes(), cover);
        QCOMPARE(OtherReaders::soundDigest(path), sound);
    }

    void stripsEverything()
    {
        Library library;
        library.openAll({u"v24.mp3"_qs, u"emoji.m4a"_qs, u"v23.mp3"_qs});
        ScratchFolder::write(library.record(1).path, "no audio");
        const QString kept = library.record(1).title;
        library.select(u"0 1"_qs);
        library.controller.removeAllTags();
        QCOMPARE(library.notifier.posted, QStringList{u"Sonvika: Unable to remove all tags"_qs});
        QCOMPARE(library.list.selection().rows(), QList({0, 1}));
        QCOMPARE(library.record(1).title, kept);
        QVERIFY(!library.record(2).title.isEmpty() && !library.art.isShown());
        for (const auto& field : AudioFile::tagFields())
            QCOMPARE(library.record(0).*field.text,
                     QLatin1String(field.name) == u"compilation" ? u"0"_qs : QString());
    }
};

QTEST_GUILESS_MAIN(EditingTest)
#include "EditingTest.moc"
