#pragma once

#include <QString>

#include <taglib/tbytevector.h>

/// The 128 bytes of an ID3v1 tag, of which one field changes. Texts are Latin-1; numbers of tracks belong to ID3v1.1.
class Id3v1Bytes {
public:
    /// @param tag 128 bytes that begin with "TAG".
    explicit Id3v1Bytes(const TagLib::ByteVector& tag) : bytes_(tag) {}

    /// Sets the field of a key as far as it can be told here: a text that is too long is cut, one that is not Latin-1
    /// leaves the field empty. Other keys change nothing.
    void set(const QString& key, const QString& value);
    /// Whether the field of this key can hold the value as it is.
    bool holds(const QString& key, const QString& value) const;
    const TagLib::ByteVector& bytes() const { return bytes_; }

private:
    bool hasTrack() const;
    bool hasRoomForTrack() const;
    void put(unsigned int at, unsigned int length, const QByteArray& text);
    unsigned int commentLength() const;

    TagLib::ByteVector bytes_;
};
