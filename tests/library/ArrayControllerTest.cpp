#include "fakes/Library.h"
#include "library/RecordColumns.h"

#include <QSignalSpy>
#include <QTest>
#include <QUrl>

class ArrayControllerTest : public QObject {
    Q_OBJECT

private slots:
    void reorders_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QList<int>>("rows");
        QTest::addColumn<int>("gap");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("last");
        const auto row = [](const char* name, const char* filter, QList<int> rows, int gap, const char* expected,
                            int last) {
            QTest::newRow(name) << QString::fromUtf8(filter) << rows << gap << QString::fromUtf8(expected) << last;
        };
        row("two rows down", "", {0, 1}, 4, "2 3 0 1 4 5", 3);
        row("a row to the top", "", {4}, 0, "4 0 1 2 3 5", 0);
        row("to the end", "", {1, 3}, 6, "0 2 4 5 1 3", 5);
        row("from both sides", "", {0, 5}, 2, "1 0 5 2 3 4", 2);
        row("around the gap", "", {1, 2, 3}, 2, "0 1 2 3 4 5", 3);
        row("rows that are not there", "", {-1, 6}, 3, "0 1 2 3 4 5", 0);
        row("filtered, down", "odd", {0}, 2, "0 2 3 4 1 5", 1);
        row("filtered, up", "odd", {2}, 0, "0 5 1 2 3 4", 0);
        row("filtered, to the end", "odd", {0, 1}, 3, "0 2 4 5 1 3", 2);
    }
    void reorders()
    {
        QFETCH(QString, filter);
        QFETCH(QList<int>, rows);
        QFETCH(int, gap);
        for (const bool selected : {false, true}) {
            Library library;
            library.add(u"0 1 2 3 4 5"_qs);
            for (const int odd : {1, 3, 5})
                library.list.content()[static_cast<std::size_t>(odd)]->comment = u"odd"_qs;
            library.list.setFilterText(filter);
            library.list.selection().setRows(selected ? QList{2} : QList<int>());
            const auto before = library.list.selectedObjects();
            library.drops.acceptDrop(*library.drops.rowDragData(rows), true, gap);
            QTEST(Library::titles(library.list.content()), "expected");
            if (selected)
                QCOMPARE(library.list.selectedObjects(), before);
            else
                QTEST(library.list.selection().rows().value(0), "last");
        }
    }

    void sorts_data()
    {
        QTest::addColumn<QString AudioFile::*>("field");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("texts");
        QTest::addColumn<QString>("ascending");
        QTest::addColumn<QString>("descending");
        QTest::newRow("numbers, then totals") << &AudioFile::trackNumber << int(RecordColumns::TrackNumber)
                                              << u"10|2|1/12|1/3|"_qs << u"4 3 2 1 0"_qs << u"0 1 2 3 4"_qs;
        QTest::newRow("years") << &AudioFile::year << int(RecordColumns::Year) << u"2001-05-03|999|2001"_qs
                               << u"1 0 2"_qs << u"0 2 1"_qs;
        QTest::newRow("text") << &AudioFile::artist << int(RecordColumns::Artist) << u"b|Track 10|É|track 9||A"_qs
                              << u"4 5 0 2 3 1"_qs << u"1 3 2 0 5 4"_qs;
        QTest::newRow("equal") << &AudioFile::genre << int(RecordColumns::Genre) << u"Pop|Air|Pop|pop"_qs
                               << u"1 0 2 3"_qs << u"0 2 3 1"_qs;
    }
    void sorts()
    {
        QFETCH(QString AudioFile::*, field);
        QFETCH(int, column);
        QFETCH(QString, texts);
        QLocale::setDefault(QLocale::English);
        Library library;
        for (const auto& text : texts.split(u'|')) {
            library.add(QString::number(library.list.rowCount()));
            (*library.list.content().back()).*field = text;
        }
        library.list.selection().setRows({1});
        auto records = library.list.content();
        library.list.sort(column, Qt::AscendingOrder);
        QTEST(Library::titles(library.list.arrangedObjects()), "ascending");
        QCOMPARE(Library::titles(library.list.selectedObjects()), u"1"_qs);
        RecordColumns::sort(records, column, false);
        QTEST(Library::titles(records), "descending");
    }

    void removalSelectsTheRowThatTookThePlace()
    {
        struct Removal {
            QList<int> rows;
            QString left, selected;
        };
        const std::vector<Removal> removals{{{}, u"0 1 2 3 4"_qs, {}},
                                            {{3, 4}, u"0 1 2"_qs, u"2"_qs},
                                            {{1, 3}, u"0 2 4"_qs, u"2"_qs},
                                            {{0, 4}, u"1 2 3"_qs, u"1"_qs},
                                            {{0, 1, 2, 3, 4}, {}, {}}};
        for (const auto& [rows, left, selected] : removals) {
            Library library;
            library.add(u"0 1 2 3 4"_qs);
            QString shown;
            connect(&library.controller, &ViewController::fieldsChanged, this,
                    [&](const auto& summary) { shown = summary.value(u"title"_qs); });
            library.list.selection().setRows(rows);
            library.controller.removeDocuments();
            QCOMPARE(Library::titles(library.list.content()), left);
            QCOMPARE(Library::titles(library.list.selectedObjects()), selected);
            QCOMPARE(shown, selected);
        }
    }

    void filterKeepsTheSelectionOfRowsThatStay()
    {
        Library library;
        library.add(u"Red Green Blue Grey"_qs);
        library.list.content()[3]->albumArtist = u"Édith"_qs;
        library.list.selection().setRows({1, 2, 3});
        library.list.setFilterText(u" GR  e "_qs);
        QCOMPARE(Library::titles(library.list.selectedObjects()), u"Green Grey"_qs);
        library.list.setFilterText(u"édith grey"_qs);
        library.list.setFilterText({});
        QCOMPARE(library.list.selection().rows(), QList{3});
        library.list.setFilterText(u"gr"_qs);
        library.controller.viewDidDisappear();
        library.list.setFilterText({});
        QCOMPARE(Library::titles(library.list.arrangedObjects()), u"Red Blue"_qs);
    }

    void addedRecordsGoWhereTheyBelong()
    {
        Library library;
        library.add(u"b d"_qs);
        library.list.selection().setRows({1});
        library.list.sort(RecordColumns::Title);
        QSignalSpy counted(&library.list, &ArrayController::countChanged);
        {
            const ArrayController::AddingBatch batch(library.list);
            library.add(u"c a"_qs);
            QVERIFY(library.list.anyPathContains(u"/music/a.mp3"_qs));
        }
        QCOMPARE(Library::titles(library.list.arrangedObjects()), u"a b c d"_qs);
        QCOMPARE(library.list.selection().rows(), QList{3});
        QCOMPARE(counted.size(), 1);
        QSignalSpy cleared(&library.list, &ArrayController::sortCleared);
        library.list.moveRows({0}, 2);
        QCOMPARE(cleared.size(), 1);
        library.list.setFilterText(u"d"_qs);
        library.add(u"a2 d2"_qs);
        QCOMPARE(Library::titles(library.list.arrangedObjects()), u"d d2"_qs);
        QCOMPARE(Library::titles(library.list.content()), u"b a c d a2 d2"_qs);
    }

    void validatesDrops_data()
    {
        QTest::addColumn<QString>("urls");
        QTest::addColumn<bool>("own");
        QTest::addColumn<QList<int>>("selected");
        QTest::addColumn<ListDrops::Operation>("expected");
        using enum ListDrops::Operation;
        const QString folder = QStringLiteral("file://" TEST_DATA_DIR);
        QTest::newRow("own rows") << QString() << true << QList{0} << Move;
        QTest::newRow("own rows, none selected") << QString() << true << QList<int>() << Move;
        QTest::newRow("every row") << QString() << true << QList{0, 1} << None;
        QTest::newRow("audio") << u"file:///x/a.m4a"_qs << false << QList{0, 1} << Copy;
        QTest::newRow("upper case") << u"file:///x/a.MP3"_qs << false << QList{0} << None;
        QTest::newRow("folder") << folder << false << QList{0} << Copy;
        QTest::newRow("first decides") << folder + u"/cover.png "_qs + folder << false << QList{0} << None;
        QTest::newRow("first local") << u"https://x.org/a.png "_qs + folder << false << QList{0} << Copy;
        QTest::newRow("remote") << u"https://x.org/a.mp3"_qs << false << QList{0} << None;
        QTest::newRow("no urls") << QString() << false << QList{0} << None;
    }
    void validatesDrops()
    {
        QFETCH(QString, urls);
        QFETCH(bool, own);
        QFETCH(QList<int>, selected);
        Library library;
        library.add(u"a b"_qs);
        library.list.selection().setRows(selected);
        QMimeData data;
        data.setUrls(QUrl::fromStringList(urls.split(u' ', Qt::SkipEmptyParts)));
        QTEST(library.drops.validateDrop(data, own), "expected");
    }

    void movesTheSelectionWithinTheList()
    {
        Library library;
        library.add(u"a b c d"_qs);
        struct Step {
            QList<int> rows;
            int step;
            QList<int> expected;
        };
        const std::vector<Step> steps{{{0}, -1, {0}},    {{3}, 1, {3}},    {{}, 1, {}},
                                      {{1, 2}, -1, {0}}, {{1, 2}, 1, {3}}, {{0, 3}, 1, {0, 3}}};
        for (const auto& [rows, step, expected] : steps) {
            library.list.selection().setRows(rows);
            library.controller.moveSelection(step);
            QCOMPARE(library.list.selection().rows(), expected);
        }
    }
};

QTEST_GUILESS_MAIN(ArrayControllerTest)
#include "ArrayControllerTest.moc"
