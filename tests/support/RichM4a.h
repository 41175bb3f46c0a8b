#pragma once

#include <QByteArray>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QtEndian>

#include <random>

/// An M4A file with what iTunes, ffmpeg and mutagen write, and what nobody knows.
///
/// Its layout is a text of words: "first" (moov comes before the sound), "free N" and "before N" (free atoms of that size
/// around the items), "quicktime" (meta without its version), "beside" (more in udta), "co64", "large" (sizes of 64
/// bits), "toend" (the last atom takes what is left), "fragments", "none" (no tag), "bare" (a meta atom without items).
class RichM4a {
public:
    explicit RichM4a(const QString& layout) : layout_(layout) { fill(); }

    /// Some of the items, in any order and more than once.
    void shuffle(std::mt19937& random)
    {
        const auto all = std::exchange(items_, {});
        for (auto count = random() % 40; count > 0; --count)
            items_.append(all[static_cast<qsizetype>(random() % static_cast<unsigned>(all.size()))]);
    }

    QByteArray whole() const
    {
        const QByteArray start = atom("ftyp", QByteArray("M4A \0\0\0\0M4A isom", 16));
        const QByteArray mdat =
            has(u"toend") && has(u"first") ? QByteArray("\0\0\0\0mdat", 8) + sound() : atom("mdat", sound());
        if (!has(u"first"))
            return start + mdat + moov(start.size() + 8);
        const auto soundAt = start.size() + moov(0).size() + 8;
        QByteArray rest = mdat;
        if (has(u"fragments")) {
            const auto inFragment = soundAt + atom("moof", fragment(0)).size();
            rest = atom("moof", fragment(inFragment)) + mdat + atom("mfra", randomAccess(soundAt - 8));
            return start + moov(inFragment) + rest;
        }
        return start + moov(soundAt) + rest;
    }

private:
    static QByteArray number(qsizetype value, int bytes)
    {
        const auto big = qToBigEndian(static_cast<qint64>(value));
        return QByteArray(reinterpret_cast<const char*>(&big), 8).right(bytes);
    }
    static QByteArray atom(const QByteArray& name, const QByteArray& content)
    {
        return number(content.size() + 8, 4) + name + content;
    }
    static QByteArray large(const QByteArray& name, const QByteArray& content)
    {
        return number(1, 4) + name + number(content.size() + 16, 8) + content;
    }
    static QByteArray data(int type, const QByteArray& value, int locale = 0)
    {
        return atom("data", number(type, 4) + number(locale, 4) + value);
    }
    static QByteArray sound()
    {
        QByteArray bytes;
        for (int line = 0; line < 40; ++line)
            bytes += "sound " + QByteArray::number(1000 + line) + "-----\n";
        return bytes;
    }
    bool has(QStringView word) const { return layout_.contains(word); }
    /// A free atom of the size that follows the word.
    QByteArray freeOf(const QString& word) const
    {
        const auto match = QRegularExpression(word + QStringLiteral(" (\\d+)")).match(layout_);
        return match.hasMatch() ? atom("free", QByteArray(match.captured(1).toInt() - 8, '\1')) : QByteArray();
    }

    void item(const QByteArray& name, const QByteArray& content) { items_.append(atom(name, content)); }
    void freeform(const QByteArray& mean, const QByteArray& name, const QByteArray& content)
    {
        item("----", atom("mean", number(0, 4) + mean) + atom("name", number(0, 4) + name) + content);
    }

    void fill()
    {
        const QByteArray apple = "com.apple.iTunes";
        item("\251nam", data(1, "Old Title", 0x1234));
        freeform(apple, "iTunNORM", data(1, " 00000A2B"));
        item("\251ART", data(1, "First Artist") + data(1, "Second Artist"));
        item("\251alb", data(1, "Old Album"));
        item("gnre", data(0, number(18, 2)));
        item("trkn", data(0, QByteArray("\0\0\0\3\0\14\0\0", 8)));
        item("disk", data(0, QByteArray("\0\0\0\1\0\2", 6)));
        item("\251day", data(1, "2001-05-03"));
        freeform(apple, "iTunSMPB", data(1, " 00000000 00000840"));
        item("\251lyr", data(2, QByteArray("\0W\0o\0r\0d\0s", 10)));
        item("\251wrt", data(0, "Implicit"));
        item("itnu", data(21, number(1, 1)));
        item("cpID", data(21, number(12345, 4)));
        item("hdvd", data(21, number(2, 1)));
        item("plID", data(21, number(77777, 8)));
        item("tmpo", data(21, number(120, 2)));
        item("xyz ", "nobody knows this");
        item("\251cmt", data(2, QByteArray("\0N\0o", 4)));
        item("\251cmt", data(1, "Old comment"));
        item("cpil", data(21, number(1, 1)));
        freeform(apple, "Acoustid Id", data(1, "11-22", 7));
        freeform(apple, "MOOD", data(1, "loud"));
        freeform(apple, "Mood", data(1, "calm"));
        freeform(apple, "Encoding Params", data(0, QByteArray("vers\0\0\0\1", 8)));
        freeform(apple, "UPPER", data(0, "\xff\xfe\xfd"));
        freeform(apple, "LABEL", data(1, "One") + data(1, "Two"));
        freeform("org.example", "MOOD", data(1, "other"));
        item("----", "not built like one");
        item("free", QByteArray(12, '\0'));
        item("covr", data(13, "old picture") + atom("name", "Front") + data(14, "second picture"));
        item("covr", data(14, "another"));
    }

    QByteArray moov(qsizetype soundAt) const
    {
        const QByteArray content = atom("mvhd", QByteArray(100, '\2')) + tags() + track(soundAt);
        if (has(u"toend") && !has(u"first"))
            return number(0, 4) + "moov" + content;
        return has(u"large") ? large("moov", content) : atom("moov", content);
    }

    QByteArray tags() const
    {
        if (has(u"none"))
            return {};
        const QByteArray handler = atom("hdlr", QByteArray(8, '\0') + "mdirappl" + QByteArray(9, '\0'));
        const QByteArray ilst = has(u"bare")    ? QByteArray()
                                : has(u"large") ? large("ilst", items_.join())
                                                : atom("ilst", items_.join());
        const QByteArray version = has(u"quicktime") ? QByteArray() : QByteArray(4, '\0');
        const QByteArray meta = atom("meta", version + handler + freeOf(QStringLiteral("before")) + ilst
                                                 + freeOf(QStringLiteral("free")));
        if (!has(u"beside"))
            return atom("udta", meta);
        return atom("udta", atom("\251xyz", "+52.5+013.4/") + meta + atom("Xtra", "binary"));
    }

    QByteArray track(qsizetype soundAt) const
    {
        QByteArray places;
        for (int chunk = 0; chunk < 5; ++chunk)
            places += number(soundAt + chunk * 16, has(u"co64") ? 8 : 4);
        const QByteArray table = atom(has(u"co64") ? "co64" : "stco", number(0, 4) + number(5, 4) + places);
        const QByteArray handler = atom("hdlr", QByteArray(8, '\0') + "soun" + QByteArray(13, '\0'));
        return atom("trak",
                    atom("tkhd", QByteArray(84, '\3')) + atom("mdia", handler + atom("minf", atom("stbl", table))));
    }

    static QByteArray fragment(qsizetype base)
    {
        return atom("mfhd", number(1, 8)) + atom("traf", atom("tfhd", number(1, 4) + number(1, 4) + number(base, 8)));
    }
    static QByteArray randomAccess(qsizetype place)
    {
        return atom("tfra", number(0, 4) + number(1, 4) + number(0, 4) + number(1, 4) + number(0, 4)
                                + number(place, 4) + QByteArray("\1\1\1", 3));
    }

    QString layout_;
    QByteArrayList items_;
};
