#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtEndian>

/// Takes a file apart without TagLib: the frames, items, fields and chunks of its tags, and its sound.
class TagWalker {
public:
    struct Part {
        QByteArray name; ///< "ID3v2/TIT2", "APE/Title", "ID3v1/title", "INFO/INAM", "MP4/covr", "chunk/data", …
        QByteArray bytes;

        friend bool operator==(const Part&, const Part&) = default;
    };
    using Parts = QList<Part>;

    static Parts walk(const QByteArray& file)
    {
        TagWalker walker;
        if (file.startsWith("RIFF") || file.startsWith("FORM"))
            walker.chunks(file.mid(12), file.startsWith("FORM"), "chunk/");
        else if (file.mid(4, 4) == "ftyp")
            walker.atoms(file, 0, file.size(), {});
        else
            walker.mpeg(file);
        return walker.parts_;
    }

private:
    static quint32 number(const QByteArray& bytes, int bits)
    {
        quint32 value = 0;
        for (const char byte : bytes)
            value = value << bits | static_cast<quint8>(byte);
        return value;
    }

    static quint32 little(const QByteArray& bytes) { return qFromLittleEndian<quint32>(bytes.constData()); }

    void add(const QByteArray& name, const QByteArray& bytes) { parts_.append({name, bytes}); }

    void mpeg(QByteArray file)
    {
        if (file.startsWith("ID3")) {
            const auto size = static_cast<int>(10 + number(file.mid(6, 4), 7) + ((file[5] & 0x10) != 0 ? 10 : 0));
            id3v2(file.left(size));
            file = file.mid(size);
        }
        const QByteArray old = file.right(128);
        if (old.startsWith("TAG"))
            file.chop(128);
        const auto footer = file.size() - 32;
        if (file.mid(footer).startsWith("APETAGEX")) {
            const auto begin = file.size() - little(file.mid(footer + 12, 4));
            apeItems(file.mid(begin, footer - begin));
            file = file.left(file.mid(begin - 32).startsWith("APETAGEX") ? begin - 32 : begin);
        }
        add("sound", file);
        if (old.startsWith("TAG"))
            id3v1(old);
    }

    void id3v2(const QByteArray& tag)
    {
        const int version = tag[3];
        QByteArray content = tag.mid(10);
        const bool isEncoded = (tag[5] & 0x80) != 0 && version < 4;
        add("ID3v2", tag.mid(3, 3));
        if (isEncoded)
            content.replace(QByteArray("\xff\0", 2), "\xff");
        int at = (tag[5] & 0x40) != 0 ? (version == 3 ? 10 : static_cast<int>(number(content.left(4), 7))) : 0;
        const int header = version == 2 ? 6 : 10;
        while (at + header < content.size() && content[at] != 0) {
            const QByteArray id = content.mid(at, version == 2 ? 3 : 4);
            const quint32 size =
                number(version == 2 ? content.mid(at + 3, 3) : content.mid(at + 4, 4), version == 4 ? 7 : 8);
            const QByteArray frame = content.mid(at, header + static_cast<int>(size));
            add("ID3v2/" + id + described(id, frame.mid(header)), frame);
            at += static_cast<int>(frame.size());
        }
    }

    /// What tells a frame from others of its kind.
    static QByteArray described(const QByteArray& id, const QByteArray& body)
    {
        const bool hasLanguage = id.startsWith("COM") || id.startsWith("USLT");
        if (!hasLanguage && !id.startsWith("TXX"))
            return {};
        QByteArray text = body.mid(hasLanguage ? 4 : 1);
        const bool isWide = body.startsWith(1);
        text = isWide ? text.left(text.indexOf(QByteArray(2, '\0'))) : text.left(text.indexOf('\0'));
        return ':' + text.replace("\xff\xfe", "").replace('\0', "");
    }

    void id3v1(const QByteArray& tag)
    {
        add("ID3v1/title", tag.mid(3, 30));
        add("ID3v1/artist", tag.mid(33, 30));
        add("ID3v1/album", tag.mid(63, 30));
        add("ID3v1/year", tag.mid(93, 4));
        add("ID3v1/comment", tag.mid(97, 28));
        add("ID3v1/track", tag.mid(125, 2));
        add("ID3v1/genre", tag.mid(127));
    }

    void apeItems(const QByteArray& items)
    {
        for (int at = 0; at < items.size();) {
            const auto key = items.mid(at + 8, items.indexOf('\0', at + 8) - at - 8);
            const auto size = static_cast<int>(8 + key.size() + 1 + little(items.mid(at, 4)));
            add("APE/" + key, items.mid(at, size));
            at += size;
        }
    }

    void chunks(const QByteArray& bytes, bool isBigEndian, const QByteArray& place)
    {
        for (int at = 0; at + 8 <= bytes.size();) {
            const QByteArray id = bytes.mid(at, 4);
            const auto size =
                static_cast<int>(isBigEndian ? number(bytes.mid(at + 4, 4), 8) : little(bytes.mid(at + 4, 4)));
            const QByteArray data = bytes.mid(at + 8, size);
            if (id.toUpper() == "ID3 ")
                id3v2(data);
            else if (id == "LIST" && data.startsWith("INFO"))
                chunks(data.mid(4), false, "INFO/");
            else
                add(place + id, data);
            at += 8 + size + (size & 1);
        }
    }

    /// Parts are what the containers hold in the end. A table of places tells what lies there, an item its name; room
    /// around the items is nothing.
    void atoms(const QByteArray& file, qsizetype begin, qsizetype end, const QByteArray& path)
    {
        while (begin + 8 <= end) {
            const QByteArray name = file.mid(begin + 4, 4);
            const quint32 stored = number(file.mid(begin, 4), 8);
            const auto header = stored == 1 ? 16 : 8;
            const auto length = stored == 1   ? qFromBigEndian<qint64>(file.constData() + begin + 8)
                                : stored == 0 ? end - begin
                                              : stored;
            const qsizetype from = begin + header;
            const QByteArray content = file.mid(from, begin + length - from);
            if (path == "moov/udta/meta/ilst/")
                add("MP4/" + itemName(name, content), file.mid(begin, length));
            else if (QByteArray("moov trak mdia minf stbl udta ilst moof traf mfra").contains(name))
                atoms(file, from, begin + length, path + name + '/');
            else if (name == "meta")
                atoms(file, from + (content.mid(4, 4) == "hdlr" ? 0 : 4), begin + length, path + name + '/');
            else if (path != "moov/udta/meta/" || name != "free")
                add(path + name, resolved(file, name, content));
            begin += length;
        }
        if (begin < end)
            add(path + "rest", file.mid(begin, end - begin));
    }

    static QByteArray itemName(const QByteArray& name, const QByteArray& content)
    {
        if (name != "----" || content.mid(4, 4) != "mean")
            return name;
        const auto mean = number(content.left(4), 8);
        return name + ':' + content.mid(12, mean - 12) + ':'
               + content.mid(mean + 12, number(content.mid(mean, 4), 8) - 12);
    }

    /// A table without its places in the file, but with what is found there.
    static QByteArray resolved(const QByteArray& file, const QByteArray& name, QByteArray content)
    {
        const int size = name == "stco" || name == "tfra" ? 4 : 8;
        const int at = name == "tfra" ? 20 : 8;
        if (!QByteArray("stco co64 tfhd tfra").contains(name))
            return content;
        const int entries = name.endsWith("o") || name == "co64" ? static_cast<int>(number(content.mid(4, 4), 8)) : 1;
        for (int entry = 0; entry < entries; ++entry) {
            const auto place = number(content.mid(at + entry * size + size - 4, 4), 8);
            content.replace(at + entry * size, size, QByteArray(size, '\0')).append(file.mid(place, 16));
        }
        return content;
    }

    Parts parts_;
};
