#pragma once

#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>

/// A folder for copies of the test data that removes itself. Its name is not ASCII, as a user's may be.
class ScratchFolder {
public:
    QString path(const QString& name) const { return folder_.filePath(name); }

    /// @return the path of a writable copy of tests/data/@p fixture, under another name if one is given.
    QString copy(const QString& fixture, const QString& name = {}) const
    {
        const QString target = path(name.isEmpty() ? fixture : name);
        if (!QFile::copy(QStringLiteral(TEST_DATA_DIR "/") + fixture, target)
            || !QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner))
            qFatal("Can't copy %s to %s", qUtf8Printable(fixture), qUtf8Printable(target));
        return target;
    }

    /// Where to make folders for many saves: in memory, if there is @p enough room in bytes, since a save flushes what it
    /// writes.
    static QString quickPlace(qint64 enough = 0)
    {
        const QStorageInfo memory(QStringLiteral("/dev/shm"));
        const bool fits = memory.isValid() && memory.bytesAvailable() > enough;
        return fits && QTemporaryDir(QStringLiteral("/dev/shm/sonvika-XXXXXX")).isValid() ? QStringLiteral("/dev/shm")
                                                                                          : QDir::tempPath();
    }

    /// Makes all folders from now on, and the state folder, in such a place.
    static void workInMemory()
    {
        const QByteArray place = QFile::encodeName(quickPlace(1 << 28));
        qputenv("TMPDIR", place);
        static const QTemporaryDir state;
        qputenv("XDG_STATE_HOME", QFile::encodeName(state.path()));
    }

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("Can't write %s", qUtf8Printable(path));
    }

    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("Can't read %s", qUtf8Printable(path));
        return file.readAll();
    }

    static QByteArray fixture(const QString& name) { return contents(QStringLiteral(TEST_DATA_DIR "/") + name); }

private:
    QTemporaryDir folder_{QDir::tempPath() + QStringLiteral("/sonvika ö 😀 XXXXXX")};
};
