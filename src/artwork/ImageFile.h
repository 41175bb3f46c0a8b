#pragma once

#include <QByteArray>
#include <QString>

/// An image file that is to become cover art, and files that cover art is saved in.
struct ImageFile {
    QByteArray bytes;
    /// Why it can't be stored as art, in the user's language; empty when it can.
    QString error;

    /// Refused are files that can't be read, hold no picture in a known format, or are larger than 64 MB.
    static ImageFile read(const QString& path);

    /// @return why encoded bytes can't be stored as art; empty when they can.
    static QString objectionTo(const QByteArray& bytes);

    /// Writes a file wholly or not at all, unless its folder takes no new file; one that is there is replaced. Devices
    /// and pipes are written to.
    /// @return why it could not be written; empty when it was.
    static QString write(const QString& path, const QByteArray& bytes);
};
