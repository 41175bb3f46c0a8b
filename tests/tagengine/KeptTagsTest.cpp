// An edit changes the field that it was asked to change, and nothing else.

#include "support/PropertyText.h"
#include "support/RichM4a.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"
#include "support/TagWalker.h"
#include "tagengine/TaglibWrapper.h"

#include <QRegularExpression>

#include <iostream>
#include <random>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int tries = 2'000;
#else
constexpr int tries = 10'000;
#endif

QByteArray bigEndian(qsizetype number, int bytes, int bits = 8)
{
    QByteArray text;
    for (int byte = bytes - 1; byte >= 0; --byte)
        text.append(static_cast<char>(number >> (byte * bits) & ((1 << bits) - 1)));
    return text;
}

/// Frames for a tag of any version, under their names in ID3v2.3 and .4, or in ID3v2.2.
class RichTag {
public:
    explicit RichTag(int version, char flags = 0) : version_(version), flags_(flags) {}

    void frame(const char* id, const char* smallId, const QByteArray& body, char format = 0)
    {
        if (version_ == 2 && smallId)
            list_.append(smallId + bigEndian(body.size(), 3) + body);
        else if (version_ > 2)
            list_.append(id + bigEndian(body.size(), 4, version_ == 4 ? 7 : 8) + '\0' + format + body);
    }
    void text(const char* id, const char* smallId, const QByteArray& text) { frame(id, smallId, '\0' + text); }

    /// Lyrics and comments in two languages, what iTunes keeps in comments, people with roles of small letters, doubled and
    /// unknown frames, sealed ones, a link in front of the picture.
    RichTag& fill()
    {
        text("TIT2", "TT2", "Old Title");
        text("TPE1", "TP1", "First Artist");
        text("TPE1", "TP1", "Second Artist");
        text("TALB", "TAL", "Old Album");
        text("TRCK", "TRK", "3/12");
        text("TPOS", "TPA", "1/2");
        text("TCON", "TCO", "Rock");
        text("TXXX", "TXX", QByteArray("replaygain_track_gain\0-3.2 dB", 29));
        text("TXXX", "TXX", QByteArray("Mood\0calm", 9));
        text("TXXX", "TXX", QByteArray("MOOD\0loud", 9));
        text("TXXX", "TXX", QByteArray("DATE\0other", 10));
        frame("COMM", "COM", QByteArray("\0engiTunNORM\0 00000A2B", 22));
        frame("COMM", "COM", QByteArray("\0eng\0Plain comment", 18));
        frame("COMM", "COM", QByteArray("\0engNote\0Described", 18));
        frame("USLT", "ULT", QByteArray("\0eng\0Some words", 15));
        frame("USLT", "ULT", QByteArray("\0deu\0Worte", 10));
        text(version_ == 4 ? "TIPL" : "IPLS", "IPL", QByteArray("producer\0Ann\0mixing\0Bob", 23));
        frame("WOAR", "WAR", "http://example.org/1");
        frame("WOAR", "WAR", "http://example.org/2");
        frame("PRIV", nullptr, QByteArray("owner\0\xff\xe0\xff\0data\xff", 15));
        frame("POPM", "POP", QByteArray("me@example.org\0\x80", 16));
        frame("GEOB", "GEO", QByteArray("\0text/plain\0f\0d\0content", 22));
        frame("XABC", "XAB", "nobody knows this");
        frame("TENC", nullptr, "sealed", version_ == 4 ? 0x04 : 0x40);
        frame("TSST", nullptr, QByteArray("\7\0grouped", 9), version_ == 4 ? 0x40 : 0x20);
        frame("APIC", nullptr, QByteArray("\0-->\0\3\0http://example.org/front.png", 34));
        frame("APIC", "PIC",
              version_ == 2 ? QByteArray("\0PNG\3Front\0old picture", 22)
                            : QByteArray("\0image/png\0\3Front\0old picture", 29));
        frame("APIC", "PIC",
              version_ == 2 ? QByteArray("\0JPG\4Back\0other", 15) : QByteArray("\0image/jpeg\0\4Back\0other", 23));
        if (version_ == 4)
            text("TDRC", nullptr, "2001-05-03");
        else
            date();
        return *this;
    }

    /// Some of these frames, in any order and more than once.
    RichTag& shuffle(std::mt19937& random)
    {
        RichTag all(version_);
        all.fill();
        for (auto count = 1 + random() % 40; count > 0; --count)
            list_.append(all.list_[static_cast<qsizetype>(random() % static_cast<unsigned>(all.list_.size()))]);
        return *this;
    }

    QByteArray whole(int padding = 200) const
    {
        QByteArray content = list_.join();
        if ((flags_ & 0x80) != 0)
            content.replace(QByteArray("\xff\0", 2), QByteArray("\xff\0\0", 3))
                .replace("\xff\xe0", QByteArray("\xff\0\xe0", 3));
        if ((flags_ & 0x10) != 0)
            padding = 0;
        content.append(padding, '\0');
        const QByteArray rest =
            QByteArray(1, static_cast<char>(version_)) + '\0' + flags_ + bigEndian(content.size(), 4, 7);
        return "ID3" + rest + content + ((flags_ & 0x10) != 0 ? "3DI" + rest : QByteArray());
    }

private:
    void date()
    {
        text("TYER", "TYE", "2001");
        text("TDAT", "TDA", "0305");
        text("TSIZ", "TSI", "12345");
        text("TRDA", "TRD", "May");
        frame("RVAD", "RVA", QByteArray("\3\x10\1\2\1\2", 6));
    }

    int version_;
    char flags_;
    QByteArrayList list_;
};

QByteArray sound()
{
    return ScratchFolder::fixture(u"untagged.mp3"_qs);
}

QByteArray fullId3v1()
{
    const auto field = [](const char* text, int length) { return QByteArray(text).leftJustified(length, '\0'); };
    return "TAG" + field("Old Title", 30) + field("First Artist", 30) + field("Old Album", 30) + "1998"
           + field("Old comment", 28) + '\0' + '\7' + '\21';
}

QByteArray apeTag(const QByteArray& title = "Old Title")
{
    const auto little = [](quint32 number) { return bigEndian(qToBigEndian(qToLittleEndian(number)), 4); };
    const auto item = [&](const QByteArray& key, const QByteArray& value, quint32 flags) {
        return little(static_cast<quint32>(value.size())) + little(flags) + key + '\0' + value;
    };
    const QByteArray items = item("Title", title, 0) + item("Cover Art (Front)", QByteArray("a.png\0\1\2", 8), 2)
                             + item("Album Artist", "Old", 0) + item("mp3gain_minmax", "120,200", 0);
    const QByteArray end = little(2000) + little(static_cast<quint32>(items.size()) + 32) + little(4);
    return "APETAGEX" + end + little(0xa0000000) + QByteArray(8, '\0') + items + "APETAGEX" + end + little(0x80000000)
           + QByteArray(8, '\0');
}

/// A file that holds what tags can hold, by a name that says what.
QByteArray richFile(const QString& name)
{
    if (name.endsWith(u"m4a"))
        return RichM4a(name).whole();
    if (name == u"info.wav" || name == u"tagged.aiff")
        return ScratchFolder::fixture(name);
    if (name == u"partial.mp3") {
        RichTag tag(3);
        tag.text("TXXX", nullptr, QByteArray("replaygain_track_gain\0-3.2 dB", 29));
        return tag.whole() + sound() + fullId3v1();
    }
    if (name == u"ape.mp3")
        return RichTag(4).fill().whole() + sound() + apeTag() + fullId3v1();
    if (name == u"in ape.mp3")
        return sound() + apeTag(sound());
    if (name == u"broken.mp3") {
        RichTag tag(3);
        tag.text("TIT2", nullptr, "Old Title");
        tag.frame("TPUB", nullptr, {});
        return tag.fill().whole() + sound();
    }
    const bool isEncoded = name.contains(u"unsynchronised");
    const char flags = isEncoded ? '\x80' : name.contains(u"footer") ? '\x10' : '\0';
    return RichTag(name[0].digitValue(), flags).fill().whole(name.contains(u"full") ? 0 : 200) + sound();
}

/// The parts of a file that belong to a field, whatever the container calls it.
QRegularExpression partsOf(const QString& field)
{
    static const QMap<QString, QString> names{
        {u"TITLE"_qs, u"ID3v2/(TIT2|TT2)|ID3v1/title|APE/Title|INFO/INAM|MP4/©nam"_qs},
        {u"ARTIST"_qs, u"ID3v2/(TPE1|TP1)|ID3v1/artist|APE/Artist|INFO/IART|MP4/©ART"_qs},
        {u"ALBUM"_qs, u"ID3v2/(TALB|TAL)|ID3v1/album|APE/Album|INFO/IPRD|MP4/©alb"_qs},
        {u"ALBUMARTIST"_qs, u"ID3v2/(TPE2|TP2)|APE/ALBUM ?ARTIST|MP4/aART"_qs},
        {u"TRACKNUMBER"_qs, u"ID3v2/(TRCK|TRK)|ID3v1/track|APE/TRACK|INFO/IPRT|MP4/trkn"_qs},
        {u"DISCNUMBER"_qs, u"ID3v2/(TPOS|TPA)|APE/DISC|MP4/disk"_qs},
        {u"YEAR"_qs, u"ID3v2/(TDRC|TYER|TYE|TDAT|TDA)|ID3v1/year|APE/YEAR|INFO/ICRD|MP4/©day"_qs},
        {u"GENRE"_qs, u"ID3v2/(TCON|TCO)|ID3v1/genre|APE/Genre|INFO/IGNR|MP4/(©gen|gnre)"_qs},
        {u"COMMENT"_qs, u"ID3v2/(COMM|COM):|ID3v1/comment|APE/Comment|INFO/ICMT|MP4/©cmt"_qs},
        {u"COMPILATION"_qs, u"ID3v2/(TCMP|TCP)|APE/Compilation|MP4/cpil"_qs},
        {u"ACOUSTID ID"_qs, u"MP4/----:com.apple.iTunes:Acoustid Id"_qs},
        {u"MOOD"_qs, u"MP4/----:com.apple.iTunes:M(?-i)ood"_qs},
        {u"LABEL"_qs, u"MP4/----:com.apple.iTunes:LABEL"_qs},
        {u"ITUNNORM"_qs, u"MP4/----:com.apple.iTunes:iTunNORM"_qs},
        {u"ART"_qs, u"ID3v2/(APIC|PIC)|MP4/covr"_qs},
    };
    // A WAV file with an INFO list gets an ID3v2 tag, too: its header is no field.
    return QRegularExpression(u"^(ID3v2|%1)$"_qs.arg(names[field]), QRegularExpression::CaseInsensitiveOption);
}

bool belongsTo(const TagWalker::Part& part, const QRegularExpression& field)
{
    return field.match(QString::fromLatin1(part.name)).hasMatch();
}

TagWalker::Parts others(TagWalker::Parts parts, const QRegularExpression& field)
{
    parts.removeIf([&](const auto& part) { return belongsTo(part, field); });
    return parts;
}

/// How many other parts stand in front of the field's first frame. @return -1 when it has none.
qsizetype placeOf(const TagWalker::Parts& parts, const QRegularExpression& field)
{
    const auto first = std::find_if(parts.begin(), parts.end(), [&](const auto& part) {
        return (part.name.startsWith("ID3v2/") || part.name.startsWith("MP4/")) && belongsTo(part, field);
    });
    return first == parts.end() ? -1 : others({parts.begin(), first}, field).size();
}

/// The lines in which two lists of parts differ.
QByteArray difference(const TagWalker::Parts& before, const TagWalker::Parts& after)
{
    QByteArray text;
    const auto add = [&](const char* mark, const TagWalker::Parts& parts, const TagWalker::Parts& without) {
        for (const auto& part : parts) {
            if (!without.contains(part))
                text += mark + part.name + ' ' + part.bytes.left(100).toPercentEncoding() + '\n';
        }
    };
    add("- ", before, after);
    add("+ ", after, before);
    return text.isEmpty() && before != after ? QByteArray("another order") : text;
}

const QStringList& edits()
{
    static const QStringList list{u"TITLE=New ü"_qs,
                                  u"ARTIST=新しい"_qs,
                                  u"ALBUM=A longer name of an album"_qs,
                                  u"ALBUMARTIST=New"_qs,
                                  u"TRACKNUMBER=4/13"_qs,
                                  u"DISCNUMBER=2/2"_qs,
                                  u"YEAR=1987"_qs,
                                  u"GENRE=Jazz"_qs,
                                  u"COMMENT=New comment"_qs,
                                  u"COMPILATION=1"_qs,
                                  u"TITLE="_qs,
                                  u"ARTIST="_qs,
                                  u"TRACKNUMBER="_qs,
                                  u"YEAR="_qs,
                                  u"COMMENT="_qs,
                                  u"ART=new picture"_qs,
                                  u"ALBUM=%1"_qs.arg(QString(3000, u'n'))};
    return list;
}

QByteArray randomMp3(std::mt19937& random)
{
    const QByteArray flags("\0\x80\0\x10", 4);
    const int version = 2 + static_cast<int>(random() % 3);
    const char flag = flags[static_cast<int>(random() % 4)];
    RichTag tag(version, version == 4 || flag != 0x10 ? flag : '\0');
    const QByteArray start = tag.shuffle(random).whole(static_cast<int>(random() % 3) * 40);
    return start + "sound" + (random() % 4 == 0 ? apeTag() : QByteArray())
           + (random() % 2 == 0 ? fullId3v1() : QByteArray());
}

QByteArray randomM4a(std::mt19937& random)
{
    QString layout;
    for (const auto& word : {u" first"_qs, u" quicktime"_qs, u" beside"_qs, u" co64"_qs, u" large"_qs, u" toend"_qs,
                             u" fragments"_qs, u" free %1"_qs, u" before %1"_qs}) {
        if (random() % 2 == 0)
            layout += word.contains(u'%') ? word.arg(8 + random() % 60) : word;
    }
    RichM4a file(layout);
    file.shuffle(random);
    return file.whole();
}

/// Fields that only M4A files have.
const QStringList& itemEdits()
{
    static const QStringList list{u"ACOUSTID ID=33-44"_qs, u"MOOD=happy"_qs, u"ITUNNORM=1"_qs, u"ACOUSTID ID="_qs,
                                  u"LABEL=Three"_qs};
    return list;
}

} // namespace

class KeptTagsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        std::cout.rdbuf(nullptr);
        ScratchFolder::workInMemory();
    }

    void editsChangeTheirField_data()
    {
        addRows({"2.mp3",
                 "2 full.mp3",
                 "2 unsynchronised.mp3",
                 "3.mp3",
                 "3 full.mp3",
                 "3 unsynchronised.mp3",
                 "4.mp3",
                 "4 full.mp3",
                 "4 unsynchronised.mp3",
                 "4 footer.mp3",
                 "partial.mp3",
                 "ape.mp3",
                 "broken.mp3",
                 "info.wav",
                 "tagged.aiff",
                 "last.m4a",
                 "first.m4a",
                 "first free 8.m4a",
                 "first free 4000.m4a",
                 "first free 3001.m4a",
                 "first before 64 free 20.m4a",
                 "first quicktime beside.m4a",
                 "last quicktime free 1030.m4a",
                 "first co64 large beside free 30.m4a",
                 "last toend.m4a",
                 "first toend free 12.m4a",
                 "first fragments beside.m4a",
                 "first none.m4a",
                 "last none large.m4a",
                 "first bare before 40.m4a"});
    }
    void editsChangeTheirField()
    {
        const auto [name] = row<1>();
        path_ = scratch_.filePath(name);
        const QByteArray file = richFile(name);
        const bool isM4a = name.endsWith(u"m4a");
        const bool hasItems = file.contains("Acoustid Id");
        for (const auto& edit : edits() + (hasItems ? itemEdits() : QStringList())) {
            if (edit.startsWith(u"ART=") && !isM4a && !name.endsWith(u"mp3"))
                continue;
            ScratchFolder::write(path_, file);
            QVERIFY2(apply(edit), qPrintable(edit + u": "_qs + TaglibWrapper::failureReason()));
            checkOthers(file, edit);
            checkField(edit);
            if (name == u"first free 4000.m4a")
                QCOMPARE(ScratchFolder::contents(path_).size(), file.size());
        }
    }

    // Where a name stands in the file, and what is put how far behind it: a length or a place that is not true, or would not
    // be after an edit.
    void leavesWhatMayBeSound_data()
    {
        addRows({"4.mp3 | ID3 | 6 | 00001200", "in ape.mp3 | APETAGEX | 0 | 41", "info.wav | data | 4 | ffffffff",
                 "info.wav | RIFF | 0 | 52463634", "info.wav | INAM | 4 | 00100000",
                 "tagged.aiff | SSND | 4 | 00000004", "tagged.aiff | ID3 | 14 | 00000020",
                 "first.m4a | stco | 12 | fffffff0", "first.m4a | stco | 12 | 00000200",
                 "first.m4a | mvhd | 0 | 636d6f76",
                 "first.m4a | mvhd | 0 | 64726566 00000000 00000001 0000000c 75726c20 00000000",
                 "first.m4a | mvhd | 0 | 696c6f63 00000000 4400 0001 0001 0000 0001 00000700 00000001",
                 "first.m4a | mvhd | 0 | 73696478 00000000 00000001 00000001 00000000 00000700 00000001 00000020"});
    }
    void leavesWhatMayBeSound()
    {
        const auto [name, mark, distance, hex] = row<4>();
        path_ = scratch_.filePath(name);
        QByteArray file = richFile(name);
        const QByteArray bytes = QByteArray::fromHex(hex.toLatin1());
        file.replace(file.indexOf(mark.toLatin1()) + distance.toInt(), bytes.size(), bytes);
        ScratchFolder::write(path_, file);
        QVERIFY(!apply(u"ALBUM=%1"_qs.arg(QString(3000, u'n'))));
        QVERIFY(!TaglibWrapper::failureReason().isEmpty());
        QCOMPARE(ScratchFolder::contents(path_), file);
    }

    // A file of older tags alone, an edit, whether it needs ID3v2; that then holds the rest as well.
    void olderTagsHoldWhatTheyCan_data()
    {
        addRows({"v1.mp3 | TITLE=New | ", "v1.mp3 | YEAR=1987 | ", "v1.mp3 | TRACKNUMBER= | ",
                 "v1.mp3 | TITLE=A title of more than thirty letters | ID3v2/TALB",
                 "v1.mp3 | TRACKNUMBER=4/13 | ID3v2/TALB", "v1.mp3 | DISCNUMBER=1 | ID3v2/TALB",
                 "v1.mp3 | ART=new picture | ID3v2/TRCK", "ape only.mp3 | ALBUMARTIST=New | ",
                 "ape only.mp3 | ART=new picture | ID3v2/TPE2"});
    }
    void olderTagsHoldWhatTheyCan()
    {
        const auto [name, edit, takenOver] = row<3>();
        path_ = scratch_.filePath(name);
        ScratchFolder::write(path_, sound() + (name.startsWith(u'v') ? fullId3v1() : apeTag()));
        PropertyMap before = *TaglibWrapper::getMetadata(path_);
        QVERIFY(apply(edit));
        PropertyMap after = *TaglibWrapper::getMetadata(path_);
        checkField(edit);
        const QStringList meant{edit.section(u'=', 0, 0), u"DATE"_qs, u"TRACK"_qs};
        for (const auto& key : meant) {
            before.remove(key);
            after.remove(key);
        }
        QCOMPARE(after, before);
        QStringList names;
        for (const auto& part : TagWalker::walk(ScratchFolder::contents(path_)))
            names.append(QString::fromLatin1(part.name));
        QCOMPARE(names.contains(u"ID3v2"_qs), !takenOver.isEmpty());
        QVERIFY(takenOver.isEmpty() || names.contains(takenOver));
    }

    // What programs keep in described comments is no comment, and the year of older versions is one in ID3v2.4.
    void readsWhatIsMeant()
    {
        RichTag tag(4);
        tag.frame("COMM", nullptr, QByteArray("\0engiTunNORM\0 00000A2B", 22));
        tag.text("TYER", nullptr, "1987");
        path_ = scratch_.filePath(u"meant.mp3"_qs);
        ScratchFolder::write(path_, tag.whole() + sound() + fullId3v1());
        QCOMPARE(TaglibWrapper::getMetadata(path_)->value(u"COMMENT"_qs), u"Old comment"_qs);
        QCOMPARE(TaglibWrapper::getMetadata(path_)->value(u"YEAR"_qs), u"1987"_qs);
        QVERIFY(apply(u"YEAR=1988"_qs) && apply(u"COMMENT="_qs));
        const auto parts = TagWalker::walk(ScratchFolder::contents(path_));
        QCOMPARE(parts[1].name, "ID3v2/COMM:iTunNORM");
        QCOMPARE(parts[2].bytes.mid(10), "\3"
                                         "1988");
        QCOMPARE(TaglibWrapper::getComment(path_), QString());
    }

    // The same for tags and edits by chance; what can't be kept is refused.
    void randomEditsChangeTheirField_data() { addRows({"mp3", "m4a"}); }
    void randomEditsChangeTheirField()
    {
        const QString type = row()[0];
        path_ = scratch_.filePath(u"random."_qs + type);
        std::mt19937 random(20261123);
        int refused = 0;
        for (int number = 0; number < tries; ++number) {
            const QByteArray file = type == u"mp3" ? randomMp3(random) : randomM4a(random);
            const QString edit = edits()[static_cast<qsizetype>(random() % static_cast<unsigned>(edits().size()))];
            ScratchFolder::write(path_, file);
            if (apply(edit)) {
                checkOthers(file, edit);
                checkField(edit);
            } else {
                ++refused;
                QCOMPARE(ScratchFolder::contents(path_), file);
            }
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY2(refused < tries / 50, qPrintable(QString::number(refused)));
    }

    // What is written to an M4A file, and what it reads as. What it has no form for is refused.
    void holdsNumbers_data()
    {
        addRows({"TRACKNUMBER=3 | 3", "TRACKNUMBER=/12 | 0/12", "TRACKNUMBER=0/12 | 0/12", "DISCNUMBER=03/ | 3",
                 "DISCNUMBER= | ", "COMPILATION=0 | 0", "MOOD= | ", "TRACKNUMBER=70000 | refused",
                 "TRACKNUMBER=99999 | refused", "TRACKNUMBER=40000 | refused", "DISCNUMBER=1/70000 | refused",
                 "TRACKNUMBER=abc | refused", "TRACKNUMBER=1/2/3 | refused", "TRACK=70000 | refused",
                 "DISCNUMBER=-1 | refused", "COMPILATION=yes | refused", "BPM=fast | refused"});
    }
    void holdsNumbers()
    {
        const auto [edit, expected] = row<2>();
        path_ = scratch_.filePath(u"numbers.m4a"_qs);
        const QByteArray file = richFile(u"first.m4a"_qs);
        ScratchFolder::write(path_, file);
        QCOMPARE(apply(edit), expected != u"refused");
        if (expected != u"refused") {
            QCOMPARE(TaglibWrapper::getMetadata(path_)->value(edit.section(u'=', 0, 0)), expected);
        } else {
            QVERIFY(!TaglibWrapper::failureReason().isEmpty());
            QCOMPARE(ScratchFolder::contents(path_), file);
        }
    }

    void stripsRemoveItems_data() { addRows({"first.m4a", "last quicktime beside.m4a"}); }
    void stripsRemoveItems()
    {
        const QRegularExpression unsupported(
            u"^MP4/(itnu|cpID|hdvd|plID|xyz |free|covr|----(:org.example:MOOD)?)$"_qs);
        path_ = scratch_.filePath(row()[0]);
        const QByteArray file = richFile(row()[0]);
        TagWalker::Parts rest = others(TagWalker::walk(file), unsupported);
        ScratchFolder::write(path_, file);
        QVERIFY(TaglibWrapper::removeUnsupportedTags(path_));
        QCOMPARE(difference(rest, TagWalker::walk(ScratchFolder::contents(path_))), QByteArray());

        rest = TagWalker::walk(file);
        rest.removeIf(
            [&](const auto& part) { return part.name.startsWith("MP4/") && !belongsTo(part, unsupported); });
        ScratchFolder::write(path_, file);
        QVERIFY(TaglibWrapper::removeAllTags(path_));
        QCOMPARE(difference(rest, TagWalker::walk(ScratchFolder::contents(path_))), QByteArray());
    }

private:
    bool apply(const QString& edit) const
    {
        const QString key = edit.section(u'=', 0, 0);
        const QString value = edit.section(u'=', 1);
        return key == u"ART" ? TaglibWrapper::setImageData(value.toUtf8(), path_, path_.right(3))
                             : TaglibWrapper::setMetadata(path_, {{key, value}});
    }
    void checkField(const QString& edit) const
    {
        const QString key = edit.section(u'=', 0, 0);
        const QString value = edit.section(u'=', 1);
        if (key == u"ART")
            QCOMPARE(TaglibWrapper::getImageData(path_, path_.right(3)), value.toUtf8());
        else
            QCOMPARE(TaglibWrapper::getMetadata(path_)->value(key),
                     key == u"YEAR" && value.isEmpty() ? u"0"_qs : value);
        const auto parts = TagWalker::walk(ScratchFolder::contents(path_));
        const auto frames = std::count_if(parts.begin(), parts.end(), [&](const auto& part) {
            return (part.name.startsWith("ID3v2/T") || part.name.startsWith("MP4/")) && belongsTo(part, partsOf(key));
        });
        // The days stay as many as they were.
        QVERIFY(frames <= 1 || key == u"YEAR");
    }
    void checkOthers(const QByteArray& file, const QString& edit) const
    {
        const auto field = partsOf(edit.section(u'=', 0, 0));
        const auto before = TagWalker::walk(file);
        auto after = TagWalker::walk(ScratchFolder::contents(path_));
        if (path_.contains(u"none"))
            after.removeIf([](const auto& part) { return part.name.startsWith("moov/udta/meta"); });
        const auto changed = difference(others(before, field), others(after, field));
        QVERIFY2(changed.isEmpty(), (edit.toUtf8() + '\n' + changed).constData());
        const bool mayMove = file[5] == 0x10 || path_.endsWith(u"broken.mp3");
        if (placeOf(before, field) >= 0 && placeOf(after, field) >= 0 && !mayMove)
            QCOMPARE(placeOf(after, field), placeOf(before, field));
    }

    QTemporaryDir scratch_{ScratchFolder::quickPlace() + u"/sonvika-XXXXXX"_qs};
    QString path_;
};

QTEST_GUILESS_MAIN(KeptTagsTest)
#include "KeptTagsTest.moc"
