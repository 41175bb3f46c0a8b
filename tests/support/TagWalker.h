#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtEndian>

/// Takes a file apart without TagLib: the frames, items, fields and chunks of its tags, and its sound.
class TagWalker {
public:
    struct Part {
        QByteArray name; ///< "ID3v2/TIT2", "APE/Title", "ID3v1/title", "INFO/INAM", "chunk/data", …
        QByteArray bytes;

        friend bool operator==(const Part&, const Part&) = default;
    };
    using Parts = QList<Part>;

    static Parts walk(const QByteArray& file)
    {
        TagWalker walker;
        if (file.startsWith("RIFF") || file.startsWith("FORM"))
            walker.chunks(file.mid(12), file.startsWith("FORM"), "chunk/");
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

    Parts parts_;
};
