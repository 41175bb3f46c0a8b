#include "fakes/Library.h"
#include "support/PropertyText.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <QFileInfo>

class FieldEditorTest : public QObject {
    Q_OBJECT

private slots:
    // What the file has, the edit, and what it has then.
    void writesOneField_data()
    {
        addRows({" | TITLE=Ω 😀 | TITLE=Ω 😀", " | COMMENT=Various | COMMENT=Various",
                 "ALBUMARTIST=Both | ALBUMARTIST= | ALBUMARTIST=", " | YEAR=2001 | YEAR=2001",
                 " | COMPILATION=1 | COMPILATION=1", "TRACKNUMBER=3/10 | TRACKNUM=7 | TRACKNUMBER=7/10",
                 "TRACKNUMBER=3/10 | TRACKNUM= | TRACKNUMBER=0/10",
                 "TRACKNUMBER=3 | TRACKTOTAL=10 | TRACKNUMBER=3/10", "TRACKNUMBER=3/10 | TRACKTOTAL= | TRACKNUMBER=3",
                 " | TRACKTOTAL=12 | TRACKNUMBER=0/12", "DISCNUMBER=2/3 | DISCNUM= | DISCNUMBER=0/3",
                 "DISCNUMBER=2/3 | DISCTOTAL= | DISCNUMBER=2", "DISCNUMBER=2 | DISCNUM= | DISCNUMBER="});
    }
    void writesOneField()
    {
        const auto [before, edit, after] = row<3>();
        const QString key = after.section(u'=', 0, 0);
        for (const auto& fixture : {u"untagged.mp3"_qs, u"untagged.m4a"_qs}) {
            const ScratchFolder folder;
            const QString path = folder.copy(fixture);
            QVERIFY(TaglibWrapper::setMetadata(path, propertyMap(before)));
            Library library;
            QVERIFY(library.loader.openPath(path));
            library.controller.applyEdit(u"TITLE"_qs, u"not written, as nothing is selected"_qs);
            library.controller.selectAll();
            library.controller.applyEdit(edit.section(u'=', 0, 0), edit.section(u'=', 1));
            const auto& record = *library.list.content().front();
            QCOMPARE(key + u'=' + record.propertyMap()[key], after);
            QCOMPARE(library.notifier.posted, QStringList());
            QCOMPARE(AudioFile::fromFile(path)->propertyMap(), record.propertyMap());
        }
    }

    void eachRecordKeepsItsOtherHalf()
    {
        const ScratchFolder folder;
        Library library;
        for (const auto& number : {u"3/10"_qs, u"7/9"_qs, u"5"_qs}) {
            const QString path = folder.copy(u"v24.mp3"_qs, number.left(1) + u".mp3"_qs);
            QVERIFY(TaglibWrapper::setMetadata(path, {{u"TRACKNUMBER"_qs, number}}) && library.loader.openPath(path));
        }
        library.controller.selectAll();
        library.controller.applyEdit(u"TRACKTOTAL"_qs, u"12"_qs);
        library.list.selection().setRows({0, 2});
        library.controller.applyEdit(u"TRACKNUM"_qs, u"1"_qs);
        QStringList numbers;
        for (const auto& record : library.list.content())
            numbers += record->trackNumber + u'=' + AudioFile::fromFile(record->path)->trackNumber;
        QCOMPARE(numbers.join(u' '), u"1/12=1/12 7/12=7/12 1/12=1/12"_qs);
    }

    void aFailingFileStopsNoOther()
    {
        for (const bool folderInstead : {false, true}) {
            const ScratchFolder folder;
            Library library;
            for (const auto& name : {u"1.mp3"_qs, u"2.mp3"_qs, u"3.mp3"_qs})
                QVERIFY(library.loader.openPath(folder.copy(u"v24.mp3"_qs, name)));
            const QString failing = folder.path(u"2.mp3"_qs);
            QVERIFY(QFile::remove(failing) && (!folderInstead || QDir().mkdir(failing)));
            library.controller.selectAll();
            library.controller.applyEdit(u"TITLE"_qs, u"New"_qs);
            QCOMPARE(Library::titles(library.list.content()), u"New Blue Window New"_qs);
            for (const auto& name : {u"1.mp3"_qs, u"3.mp3"_qs})
                QCOMPARE(TaglibWrapper::getTitle(folder.path(name)), u"New"_qs);
            QCOMPARE(library.notifier.posted.join(u'|'),
                     folderInstead ? u"Sonvika: Unable to update tags for: "_qs + failing
                                   : u"Sonvika: File is not writable, please fix permissions"_qs);
            QVERIFY(!library.notifier.noted.last().reason.isEmpty());
            QCOMPARE(library.list.selection().rows().size(), 3);
        }
    }

    void repairsPermissions()
    {
        const ScratchFolder folder;
        const QString path = folder.copy(u"tagged.m4a"_qs);
        Library library;
        QVERIFY(library.loader.openPath(path));
        library.controller.selectAll();
        const auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(path, readable));
        if (QFileInfo(path).isWritable())
            QSKIP("This user may write everywhere");
        library.controller.applyEdit(u"TITLE"_qs, u"New"_qs);
        QCOMPARE(TaglibWrapper::getTitle(path), u"New"_qs);
        QCOMPARE(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser), readable | QFile::WriteOwner);
        QCOMPARE(library.notifier.posted, QStringList());
    }

    void showsArtThatAllShare()
    {
        const ScratchFolder folder;
        Library library;
        for (const auto& fixture : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"untagged.mp3"_qs})
            QVERIFY(library.loader.openPath(folder.copy(fixture)));
        const QByteArray cover = ScratchFolder::fixture(u"cover.jpg"_qs);
        const std::vector<std::pair<QList<int>, QByteArray>> cases{
            {{0, 1}, cover}, {{0, 1, 2}, {}}, {{1}, cover}, {{}, {}}};
        for (const auto& [rows, expected] : cases) {
            library.list.selection().setRows(rows);
            QCOMPARE(library.art.bytes(), expected);
        }
    }
};

QTEST_GUILESS_MAIN(FieldEditorTest)
#include "FieldEditorTest.moc"
