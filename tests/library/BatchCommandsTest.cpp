#include "fakes/Library.h"
#include "support/OtherReaders.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <QTest>

class BatchCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void numbersInListOrder()
    {
        const ScratchFolder folder;
        Library library;
        const QStringList before{u"3/12"_qs, {}, u"7/12"_qs, u"1/1"_qs, u"9"_qs};
        const QStringList after{u"1/12"_qs, u"2"_qs, u"3/12"_qs, u"4/1"_qs, u"5"_qs};
        for (int i = 0; i < before.size(); ++i) {
            const QString path = folder.copy(i % 2 ? u"untagged.m4a"_qs : u"v24.mp3"_qs,
                                             QString::number(i) + (i % 2 ? u".m4a"_qs : u".mp3"_qs));
            QVERIFY(TaglibWrapper::setMetadata(path, {{u"TRACKNUMBER"_qs, before[i]}, {u"TRACK"_qs, {}}}));
            QVERIFY(TaglibWrapper::setMetadata(path, {{u"TRACKNUMBER"_qs, before[i]}}));
            QVERIFY(library.loader.openPath(path));
        }
        library.controller.selectAll();
        library.controller.incrementTrackNumbers();
        for (int i = 0; i < after.size(); ++i) {
            const auto& record = *library.list.content()[static_cast<std::size_t>(i)];
            QCOMPARE(record.trackNumber, after[i]);
            QCOMPARE(TaglibWrapper::getMetadata(record.path).value()[u"TRACKNUMBER"_qs], after[i]);
        }

        // Another order, a part of the list, and a file that can't be written, whose number is left out.
        library.list.moveRows({4}, 0);
        ScratchFolder::write(library.list.content()[2]->path, "no audio");
        library.list.selection().setRows({4, 2, 0});
        library.controller.incrementTrackNumbers();
        QStringList numbers;
        for (const auto& record : library.list.content())
            numbers.append(record->trackNumber);
        QCOMPARE(numbers.join(u' '), u"1 1/12 2 3/12 3/1"_qs);
        QCOMPARE(library.notifier.posted,
                 QStringList{u"Sonvika: Unable to update tags for: "_qs + library.list.content()[2]->path});
        QCOMPARE(library.list.selection().rows(), QList({0, 2, 4}));
    }

    void setsTheCompilationFlagOfAll()
    {
        const ScratchFolder folder;
        Library library;
        for (const auto& fixture : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"untagged.mp3"_qs})
            QVERIFY(library.loader.openPath(folder.copy(fixture)));
        library.controller.selectAll();
        for (const auto& state : {u"0"_qs, u"1"_qs}) {
            library.controller.updateCompilationState(state);
            for (const auto& record : library.list.content())
                QCOMPARE(record->compilation, state);
        }
        QCOMPARE(OtherReaders::mutagen(folder.path(u"untagged.mp3"_qs), u"tags['TCMP'].text"_qs), u"['1']"_qs);
    }

    void stripsWhatHasNoKeyButKeepsTheArt()
    {
        const ScratchFolder folder;
        Library library;
        const QString withArt = folder.copy(u"unsupported.mp3"_qs);
        QVERIFY(TaglibWrapper::setImageData(ScratchFolder::fixture(u"cover.png"_qs), withArt, u"mp3"_qs));
        const QString without = folder.copy(u"unsupported.mp3"_qs, u"without.mp3"_qs);
        QVERIFY(TaglibWrapper::setImageData({}, without, u"mp3"_qs));
        const QByteArray untouched = ScratchFolder::contents(without);
        const QString sound = OtherReaders::soundDigest(withArt);
        for (const auto& path : {withArt, without})
            QVERIFY(library.loader.openPath(path));
        library.controller.selectAll();
        const auto frames = u"sorted(k[:4] for k in tags.keys() if k[:4] in ('APIC', 'PRIV', 'GEOB', 'TIT2'))"_qs;
        QVERIFY(OtherReaders::mutagen(withArt, frames).contains(u"PRIV"_qs));
        library.controller.removeUnsupportedTags();
        QCOMPARE(OtherReaders::mutagen(withArt, frames), u"['APIC', 'TIT2']"_qs);
        QCOMPARE(TaglibWrapper::getImageData(withArt, u"mp3"_qs), ScratchFolder::fixture(u"cover.png"_qs));
        QCOMPARE(library.art.bytes(), ScratchFolder::fixture(u"cover.png"_qs));
        QCOMPARE(ScratchFolder::contents(without), untouched);
        QCOMPARE(OtherReaders::soundDigest(withArt), sound);
        QCOMPARE(library.notifier.posted, QStringList());
    }

    void stripsEverything()
    {
        const ScratchFolder folder;
        Library library;
        for (const auto& fixture : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"emoji.m4a"_qs, u"v23.mp3"_qs})
            QVERIFY(library.loader.openPath(folder.copy(fixture)));
        ScratchFolder::write(folder.path(u"emoji.m4a"_qs), "no audio");
        const auto kept = library.list.content()[2];
        library.list.selection().setRows({0, 1, 2});
        library.controller.removeAllTags();
        QCOMPARE(library.notifier.posted, QStringList{u"Sonvika: Unable to remove all tags"_qs});
        QCOMPARE(library.list.selection().rows(), QList({0, 1, 2}));
        QCOMPARE(library.list.content()[2], kept);
        for (const std::size_t i : {0U, 1U}) {
            const auto& record = *library.list.content()[i];
            QCOMPARE(record.fileName, i == 0 ? u"v24.mp3"_qs : u"tagged.m4a"_qs);
            for (const auto& field : AudioFile::tagFields())
                QCOMPARE(record.*field.text, QLatin1String(field.name) == u"compilation" ? u"0"_qs : QString());
            QCOMPARE(record.imageDataLength, 0);
            QVERIFY(!TaglibWrapper::getImageData(record.path, record.fileType));
            QCOMPARE(TaglibWrapper::getTitle(record.path).value_or(QString()), QString());
        }
        QVERIFY(!library.list.content()[3]->title.isEmpty());
        QVERIFY(!library.art.isShown());
    }
};

QTEST_GUILESS_MAIN(BatchCommandsTest)
#include "BatchCommandsTest.moc"
