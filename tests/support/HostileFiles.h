#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>

/// Small files whose tags, or the search for whose sound, would take far more memory or time than they are worth.
namespace HostileFiles {

inline QByteArray number(quint32 value, bool isLittle = false)
{
    const quint32 stored = isLittle ? qToLittleEndian(value) : qToBigEndian(value);
    return QByteArray(reinterpret_cast<const char*>(&stored), sizeof stored);
}

inline QByteArray frame(const char* id, const QByteArray& body, const QByteArray& flags = QByteArray(2, '\0'))
{
    return id + number(quint32(body.size())) + flags + body;
}

inline QByteArray id3v23(const QByteArray& frames)
{
    QByteArray size;
    for (const int shift : {21, 14, 7, 0})
        size += char(frames.size() >> shift & 0x7f);
    return QByteArray("ID3\3\0\0", 6) + size + frames;
}

inline QByteArray atom(const char* name, const QByteArray& contents)
{
    return number(quint32(contents.size()) + 8) + name + contents;
}

inline QByteArray apeTag(const QByteArray& items, quint32 count)
{
    return items + "APETAGEX" + number(2000, true) + number(quint32(items.size()) + 32, true) + number(count, true)
           + QByteArray(12, '\0');
}

inline QByteArray m4a(const QByteArray& items, const QByteArray& others = {})
{
    const QByteArray meta = QByteArray(4, '\0') + atom("ilst", items);
    return atom("ftyp", "M4A 0000") + atom("moov", others + atom("udta", atom("meta", meta)));
}

/// @param name what it is about, and the extension.
inline QByteArray made(const QString& name)
{
    const QByteArray values = QByteArray(1, '\0') + QByteArray("a\0", 2).repeated(700'000);
    const QByteArray data = atom("data", QByteArray("\0\0\0\1\0\0\0\0a", 9));
    if (name == QLatin1String("values.mp3"))
        return id3v23(frame("TIT2", values));
    if (name == QLatin1String("compressed.mp3"))
        return id3v23(frame("TXXX", qCompress(values.repeated(10)), QByteArray("\0\x80", 2)));
    if (name == QLatin1String("text.mp3"))
        return id3v23(frame("COMM", QByteArray("\0eng\0", 5) + QByteArray(8'000'000, 'a')));
    if (name == QLatin1String("frames.mp3"))
        return id3v23(frame("TIT2", QByteArray(1, '\0')).repeated(200'000));
    if (name == QLatin1String("chapter.mp3"))
        return id3v23(
            frame("CHAP", "c" + QByteArray(17, '\0') + frame("TIT2", QByteArray(1, '\0')).repeated(200'000)));
    if (name == QLatin1String("tags.mp3"))
        return QByteArray("ID3\3\0\0\0\0\0\0", 10).repeated(1'000'000);
    if (name == QLatin1String("items.mp3"))
        return apeTag((number(1, true) + number(0) + QByteArray("Key\0a", 5)).repeated(200'000), 200'000);
    if (name == QLatin1String("values.m4a"))
        return m4a(atom("\251nam", data.repeated(200'000)));
    if (name == QLatin1String("pictures.m4a"))
        return m4a(atom("covr", atom("data", QByteArray("\0\0\0\x0d\0\0\0\0", 8)).repeated(200'000)));
    if (name == QLatin1String("atoms.m4a"))
        return m4a(data, atom("free", {}).repeated(500'000));
    if (name == QLatin1String("chunks.wav"))
        return "RIFF" + number(0) + "WAVE" + ("abcd" + number(0)).repeated(1'000'000);
    return {};
}

} // namespace HostileFiles
