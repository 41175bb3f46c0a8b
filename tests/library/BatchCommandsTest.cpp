#include "fakes/Library.h"
#include "support/OtherReaders.h"
#include "tagengine/TaglibWrapper.h"

#include <QTest>

/// What the program's window makes of these commands; its command line shows what they make of files.
class BatchCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void numbersInListOrder()
    {
        Library library;
        for (const auto& number : {u"3/12"_qs, u""_qs, u"7/12"_qs, u"1/1"_qs, u"9"_qs}) {
            const QString path = library.open(u"v24.mp3"_qs, QString::number(library.list.rowCount()) + u".mp3"_qs);
            QVERIFY(TaglibWrapper::setMetadata(path, {{u"TRACKNUMBER"_qs, number}}));
            library.record(library.list.rowCount() - 1).trackNumber = number;
        }
        // Another order, a part of the list, and a file that can't be written, whose number is left out.
        library.list.moveRows({4}, 0);
        ScratchFolder::write(library.record(2).path, "no audio");
        library.select(u"4 3 2 0"_qs);
        library.controller.incrementTrackNumbers();
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

QTEST_GUILESS_MAIN(BatchCommandsTest)
#include "BatchCommandsTest.moc"
