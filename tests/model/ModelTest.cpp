#include "model/AudioFile.h"
#include "model/GenreList.h"
#include "model/ImageMeasure.h"
#include "model/NumberText.h"
#include "support/PropertyText.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QSet>

namespace {

QString textsOf(const AudioFile& record)
{
    QStringList texts;
    for (const auto& field : AudioFile::tagFields())
        texts += record.value(QString::fromLatin1(field.name));
    return texts.join(u',');
}

} // namespace

class ModelTest : public QObject {
    Q_OBJECT

private slots:
    // Property map, the record's tag fields in declared order, and TRACK of the map built back.
    void recordComesFromPropertyMap_data()
    {
        addRows({"TITLE=t;ARTIST=a;ALBUM=b;ALBUMARTIST=c;TRACKNUMBER=3/12;TRACK=9;DISCNUMBER=1/2;YEAR=2001;GENRE=g;"
                 "COMMENT=d;COMPILATION=1;MOOD=m | t,a,b,c,3/12,1/2,2001,g,d,1 | 3",
                 " | ,,,,,,,,,0 | ", "YEAR=0;TRACKNUMBER=7 | ,,,,7,,,,,0 | 7",
                 "YEAR=00;TRACKNUMBER=/12 | ,,,,/12,,00,,,0 | "});
    }

    void recordComesFromPropertyMap()
    {
        const auto [map, texts, track] = row<3>();
        const auto record = AudioFile::fromPropertyMap(propertyMap(map), u"/no where/Song.tar.MP3"_qs, 42);
        QCOMPARE(textsOf(*record), texts);
        QCOMPARE(record->value(u"fileName"_qs), u"Song.tar.MP3"_qs);
        QCOMPARE(record->value(u"fileType"_qs), u"MP3"_qs);
        QCOMPARE(record->value(u"imageDataLength"_qs), u"42"_qs);
        const PropertyMap back = record->propertyMap();
        QCOMPARE(back.size(), 11);
        QCOMPARE(back[u"TRACK"_qs], track);
        AudioFile copy;
        copy.setFromPropertyMap(back);
        QCOMPARE(textsOf(copy), texts);
    }

    void recordComesFromFile()
    {
        const ScratchFolder scratch;
        const auto record = AudioFile::fromFile(scratch.copy(u"v24.mp3"_qs));
        QVERIFY(record);
        QCOMPARE(textsOf(*record), u"Blue Window,The Testers,First Light,The Testers and Friends,3/12,1/2,2001,"
                                   "Electronic,Made for tests,1"_qs);
        QCOMPARE(record->imageDataLength, measureImage(ScratchFolder::fixture(u"cover.jpg"_qs)));
        QCOMPARE(AudioFile::fromFile(scratch.copy(u"tagged.m4a"_qs))->imageDataLength, record->imageDataLength);
        QCOMPARE(AudioFile::fromFile(scratch.copy(u"untagged.m4a"_qs))->imageDataLength, 0);
        QVERIFY(!AudioFile::fromFile(scratch.path(u"missing.mp3"_qs)));
    }

    void measuresPictures()
    {
        const QByteArray jpg = ScratchFolder::fixture(u"cover.jpg"_qs);
        const QByteArray png = ScratchFolder::fixture(u"cover.png"_qs);
        const QSet<qint64> measures{measureImage(jpg), measureImage(png), measureImage(jpg + 'x'), 0};
        QCOMPARE(measures.size(), 4);
        for (const QByteArray& bytes : {QByteArray(), QByteArray("no image"), png.left(20), png.mid(1)})
            QCOMPARE(measureImage(bytes), 0);
    }

    // the text | its halves | what the halves make
    void splitsAndJoinsNumbers_data()
    {
        addRows({"3/12 | 3 | 12 | 3/12", "7 | 7 |  | 7", "/12 |  | 12 | 0/12", "5/ | 5 |  | 5", "1/2/3 | 1 | 3 | 1/3",
                 "Various | - | - | -/-", "various | various |  | various", " |  | "});
    }
    void splitsAndJoinsNumbers()
    {
        const auto [text, num, total, joined] = row<4>();
        QVERIFY(NumberText::split(text) == NumberText::Parts({num, total}));
        QCOMPARE(NumberText::join(num, total), joined);
    }

    void completesGenres_data()
    {
        addRows({"blu | Blues", "blueg | Bluegrass", "pop | Pop-Folk", "ROCK | Rock ’n’ Roll", "Jazz & | Jazz & Funk",
                 "Blues", "xyz", "olk", " | "});
    }

    void completesGenres()
    {
        const auto [typed, expected] = row<2>();
        const auto found = GenreList::completed(typed);
        QCOMPARE(found.has_value(), !expected.isEmpty());
        QCOMPARE(found.value_or(QString()), expected);
    }

    void listsGenresByNumber_data()
    {
        addRows({"Blues | 0", "Jazz | 8", "jazz | -1", "Pop/Funk | 62", "Dance Hall | 125", "Psybient | 191"});
    }
    void listsGenresByNumber()
    {
        const auto [name, number] = row<2>();
        QCOMPARE(GenreList::indexOf(name), number.toInt());
        const QStringList& names = GenreList::names();
        QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), 192);
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "ModelTest.moc"
