#include "artwork/ImageFile.h"

#include "model/PictureHeader.h"
#include "platform/PathBytes.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr qint64 mebibyte = 1024 * 1024;
constexpr qint64 largestPicture = 64 * mebibyte;

QString translated(const char* text)
{
    return QCoreApplication::translate("ImageFile", text);
}

bool isOtherThanFile(int descriptor)
{
    struct stat found {};
    return ::fstat(descriptor, &found) == 0 && !S_ISREG(found.st_mode);
}

/// Whether something is at @p path that is no file: a device, a pipe.
bool isSpecial(const QString& path)
{
    struct stat found {};
    return ::stat(PathBytes::encode(path).constData(), &found) == 0 && !S_ISREG(found.st_mode)
           && !S_ISDIR(found.st_mode);
}

QString writeToSpecial(const QString& path, const QByteArray& bytes)
{
    const int descriptor = ::open(PathBytes::encode(path).constData(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0)
        return qt_error_string(errno);
    QFile file;
    const bool isWritten = file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)
                           && file.write(bytes) == bytes.size() && file.flush();
    return isWritten ? QString() : file.errorString();
}

} // namespace

QString ImageFile::objectionTo(const QByteArray& bytes)
{
    if (bytes.size() > largestPicture)
        return translated(QT_TRANSLATE_NOOP("ImageFile", "The picture is larger than 64 MB"));
    if (Picture::size(bytes).isEmpty())
        return translated(QT_TRANSLATE_NOOP("ImageFile", "There is no picture in a known format"));
    return {};
}

ImageFile ImageFile::read(const QString& path)
{
    const int descriptor = ::open(PathBytes::encode(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return {{}, qt_error_string(errno)};
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) || isOtherThanFile(descriptor))
        return {{}, translated(QT_TRANSLATE_NOOP("ImageFile", "This is no file"))};
    const QByteArray bytes = file.read(largestPicture + 1);
    if (file.error() != QFile::NoError)
        return {{}, file.errorString()};
    if (bytes.size() < std::min(file.size(), largestPicture))
        return {{}, qt_error_string(EIO)};
    return {bytes, objectionTo(bytes)};
}

QString ImageFile::write(const QString& path, const QByteArray& bytes)
{
    if (!PathBytes::isPlain(path))
        return translated(QT_TRANSLATE_NOOP("ImageFile", "The name is not valid UTF-8"));
    if (isSpecial(path))
        return writeToSpecial(path, bytes);
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    // What is flushed only on closing would be lost without a word where the disk is full.
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit();
    return isWritten ? QString() : file.errorString();
}
