#include "fakes/Library.h"
#include "library/RecordColumns.h"
#include "support/Rows.h"

#include <QDataStream>
#include <QSignalSpy>
#include <QUrl>

class ArrayControllerTest : public QObject {
    Q_OBJECT

private slots:
    // Filter, dragged rows, the gap they go to, the list then, and the row that is selected if none was.
    void reorders_data()
    {
        addRows({" | 0 1 | 4 | 2 3 0 1 4 5 | 3", " | 4 | 0 | 4 0 1 2 3 5 | 0", " | 1 3 | 6 | 0 2 4 5 1 3 | 5",
                 " | 0 5 | 2 | 1 0 5 2 3 4 | 2", " | 1 2 3 | 2 | 0 1 2 3 4 5 | 3", " | -1 6 | 3 | 0 1 2 3 4 5 | 0",
                 "odd | 0 | 2 | 0 2 3 4 1 5 | 1", "odd | 2 | 0 | 0 5 1 2 3 4 | 0",
                 "odd | 0 1 | 3 | 0 2 4 5 1 3 | 2"});
    }
    void reorders()
    {
        const auto [filter, rows, gap, expected, last] = row<5>();
        for (const bool selected : {false, true}) {
            Library library;
            library.add(u"0 1 2 3 4 5"_qs);
            for (const int odd : {1, 3, 5})
                library.record(odd).comment = u"odd"_qs;
            library.list.setFilterText(filter);
            library.list.selection().setRows(selected ? QList{2} : QList<int>());
            const auto before = library.list.selectedObjects();
            QByteArray dragged;
            QDataStream stream(&dragged, QIODevice::WriteOnly);
            stream << Library::numbers(rows);
            QMimeData data;
            data.setData(ListDrops::rowDragType, dragged);
            library.drops.acceptDrop(data, true, gap.toInt());
            QCOMPARE(Library::titles(library.list.content()), expected);
            if (selected)
                QCOMPARE(library.list.selectedObjects(), before);
            else
                QCOMPARE(library.list.selection().rows().value(0), last.toInt());
        }
    }

    // Key, its column, the records' texts, and their order by them both ways.
    void sorts_data()
    {
        addRows({"TRACKNUMBER | 5 | 10,2,1/12,1/3, | 4 3 2 1 0 | 0 1 2 3 4",
                 "YEAR | 7 | 2001-05-03,999,2001 | 1 0 2 | 0 2 1",
                 "ARTIST | 2 | b,Track 10,É,track 9,,A | 4 5 0 2 3 1 | 1 3 2 0 5 4",
                 "GENRE | 8 | Pop,Air,Pop,pop | 1 0 2 3 | 0 2 3 1"});
    }
    void sorts()
    {
        const auto [key, column, texts, ascending, descending] = row<5>();
        QLocale::setDefault(QLocale::English);
        Library library;
        for (const auto& text : texts.split(u',')) {
            const QString number = QString::number(library.list.rowCount());
            library.list.addObject(AudioFile::fromPropertyMap({{u"TITLE"_qs, number}, {key, text}}, number, 0));
        }
        library.select(u"1"_qs);
        auto records = library.list.content();
        library.list.sort(column.toInt(), Qt::AscendingOrder);
        QCOMPARE(Library::titles(library.list.arrangedObjects()), ascending);
        QCOMPARE(Library::titles(library.list.selectedObjects()), u"1"_qs);
        RecordColumns::sort(records, column.toInt(), false);
        QCOMPARE(Library::titles(records), descending);
    }

    void filterKeepsTheSelectionOfRowsThatStay()
    {
        Library library;
        library.add(u"Red Green Blue Grey"_qs);
        library.record(3).albumArtist = u"Édith"_qs;
        library.select(u"1 2 3"_qs);
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

    // the user's locale | titles and what finds them, at once and typed letter by letter | and what does not
    void searchesAsTheAlphabetDoes_data()
    {
        addRows({"en | Björk Café/bjork cafe, Sigur Rós – Ágætis/agaetis, Mo\u0308t/möt, Søn/son, ＡＢＣ/abc, ﬁn/fin",
                 "fr | Noël/NOE, Cafe\u0301/café", "de | Straße/STRASSE, Motörhead/motor, Łódź/lodz",
                 "sv | Ö/ö, O\u0308/Ö, Ö/O\u0308, Café/cafe, Ü/u | Ö/o", "da |  | Søn/son", "pl |  | Łódź/lodz",
                 "es | Canción/cancion | Año/ano", "vi | Cậu/câu, Cấm/câm | Cậu/cau",
                 "ru | Ёлка/елка, и\u0306/й | и\u0306/и, Чай/чаи", "ja | \u304b\u3099く/がく | がく/かく",
                 "ko | 한국/한, \u1112\u1161\u11ab\u1100\u116e\u11a8/한국", "tr | İstanbul ISPARTA/istanbul ısparta",
                 "C | É/e"});
    }
    void searchesAsTheAlphabetDoes()
    {
        const auto [locale, found, missed] = row<3>();
        for (const auto& pair : (found + u", "_qs + missed).split(u", "_qs, Qt::SkipEmptyParts)) {
            QLocale::setDefault(QLocale(locale));
            Library library;
            QLocale::setDefault(QLocale::c());
            library.add(u"x"_qs);
            library.record(0).title = pair.section(u'/', 0, 0);
            const QString wanted = pair.section(u'/', 1);
            library.list.setFilterText(wanted);
            const int atOnce = library.list.rowCount();
            library.list.setFilterText({});
            for (qsizetype i = 1; i <= wanted.size(); ++i)
                library.list.setFilterText(wanted.first(i));
            const int expected = found.contains(pair) ? 1 : 0;
            QVERIFY2(atOnce == expected && library.list.rowCount() == expected, qPrintable(pair));
        }
    }

    void addedRecordsGoWhereTheyBelong()
    {
        Library library;
        library.add(u"b d"_qs);
        library.select(u"1"_qs);
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

    // What is dropped (own rows or addresses), the selected rows, and the answer.
    void validatesDrops_data()
    {
        addRows({"own | 0 | Move", "own |  | Move", "own | 0 1 | None", "file:///x/a.m4a | 0 1 | Copy",
                 "file:///x/a.MP3 | 0 | None", "FOLDER | 0 | Copy", "FOLDER/cover.png FOLDER | 0 | None",
                 "https://x.org/a.png FOLDER | 0 | Copy", "https://x.org/a.mp3 | 0 | None", " | 0 | None"});
    }
    void validatesDrops()
    {
        auto [urls, selected, expected] = row<3>();
        const bool own = urls == u"own";
        urls = own ? QString() : urls.replace(u"FOLDER"_qs, QStringLiteral("file://" TEST_DATA_DIR));
        Library library;
        library.add(u"a b"_qs);
        library.select(selected);
        QMimeData data;
        data.setUrls(QUrl::fromStringList(urls.split(u' ', Qt::SkipEmptyParts)));
        using enum ListDrops::Operation;
        const QMap<QString, ListDrops::Operation> operations{
            {u"Move"_qs, Move}, {u"Copy"_qs, Copy}, {u"None"_qs, None}};
        QCOMPARE(library.drops.validateDrop(data, own), operations[expected]);
    }

    // what happens | to which selected rows | the list then | selected then
    void commandsOnRows_data()
    {
        addRows({"up | 0 | a b c d | 0", "up | 1 | b a c d | 0", "up | 1 3 | b d a c | 0 1", "down | 3 | a b c d | 3",
                 "down | 0 2 | b d a c | 2 3", "down |  | a b c d", "previous | 0 | a b c d | 0",
                 "previous |  | a b c d", "previous | 1 2 | a b c d | 0", "next | 3 | a b c d | 3",
                 "next |  | a b c d | 0", "next | 1 2 | a b c d | 3", "next | 0 3 | a b c d | 0 3",
                 "remove |  | a b c d", "remove | 1 | a c d | 1", "remove | 2 3 | a b | 1", "remove | 0 3 | b c | 0",
                 "remove | 0 1 2 3"});
    }
    void commandsOnRows()
    {
        const auto [command, rows, expected, selected] = row<4>();
        Library library;
        library.add(u"a b c d"_qs);
        library.select(rows);
        if (command == u"remove")
            library.controller.removeDocuments();
        else if (command == u"up" || command == u"down")
            library.controller.moveRows(command == u"up" ? -1 : 1);
        else
            library.controller.moveSelection(command == u"previous" ? -1 : 1);
        QCOMPARE(Library::titles(library.list.content()), expected);
        QCOMPARE(library.list.selection().rows(), Library::numbers(selected));
    }
};

QTEST_GUILESS_MAIN(ArrayControllerTest)
#include "ArrayControllerTest.moc"
