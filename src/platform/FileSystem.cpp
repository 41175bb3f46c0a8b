#include "platform/FileSystem.h"

#include "platform/PathBytes.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace FileSystem {

namespace {

[[noreturn]] void fail(int error)
{
    throw std::system_error(error, std::generic_category());
}

bool isOfType(const QString& path, mode_t type)
{
    struct stat found {};
    return ::stat(PathBytes::encode(path).constData(), &found) == 0 && (found.st_mode & S_IFMT) == type;
}

bool isSameFile(const QByteArray& one, const QByteArray& other)
{
    struct stat a {};
    struct stat b {};
    return ::lstat(one.constData(), &a) == 0 && ::lstat(other.constData(), &b) == 0 && a.st_dev == b.st_dev
           && a.st_ino == b.st_ino;
}

bool isControl(QChar character)
{
    const auto category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
           || category == QChar::Separator_Paragraph;
}

} // namespace

bool isSameEntry(const QString& path, const QString& otherPath)
{
    const QFileInfo other(otherPath);
    return isSameFile(PathBytes::encode(path), PathBytes::encode(otherPath))
           && isSameFile(PathBytes::encode(QFileInfo(path).path()), PathBytes::encode(other.path()))
           && !other.dir().entryList(QDir::AllEntries | QDir::Hidden | QDir::System).contains(other.fileName());
}

bool isReadableFile(const QString& path)
{
    return ::access(PathBytes::encode(path).constData(), R_OK) == 0;
}

bool isFolder(const QString& path)
{
    return isOfType(path, S_IFDIR);
}

bool isRegularFile(const QString& path)
{
    return isOfType(path, S_IFREG);
}

bool exists(const QString& path)
{
    return ::access(PathBytes::encode(path).constData(), F_OK) == 0;
}

void checkResourceIsReachable(const QString& path)
{
    if (!exists(path))
        fail(errno);
}

QString absolutePath(const QString& path)
{
    QByteArray full = PathBytes::encode(path);
    if (!full.startsWith('/')) {
        std::error_code error;
        const auto current = std::filesystem::current_path(error);
        if (error || path.isEmpty())
            return path;
        full.prepend(QByteArray::fromStdString(current.string()) + '/');
    }
    const QByteArray root("/");
    QByteArray absolute;
    for (const auto& part : full.split('/')) {
        if (part.isEmpty() || part == ".")
            continue;
        absolute += '/' + part;
        const QByteArray parent = part == ".." ? realPath(absolute) : QByteArray();
        if (!parent.isEmpty())
            absolute = parent == root ? QByteArray() : parent;
    }
    return PathBytes::decode(absolute.isEmpty() ? root : absolute);
}

QByteArray realPath(const QByteArray& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return real ? QByteArray(real.get()) : QByteArray();
}

bool isWritableFile(const QString& path)
{
    return ::access(PathBytes::encode(path).constData(), W_OK) == 0;
}

bool giveOwnerAccess(const QByteArray& path)
{
    constexpr mode_t access = S_IRUSR | S_IWUSR;
    constexpr mode_t permissions = 07777;
    // One file is looked at and changed, whatever comes into its place meanwhile.
    const int file = ::open(path.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    const QByteArray opened = "/proc/self/fd/" + QByteArray::number(file);
    struct stat found {};
    const bool isAdded = ::fstat(file, &found) == 0 && S_ISREG(found.st_mode) && (found.st_mode & access) != access
                         && ::chmod(opened.constData(), (found.st_mode & permissions) | access) == 0;
    if (file >= 0)
        ::close(file);
    return isAdded;
}

QString asFileName(QString text)
{
    constexpr int longestName = 240;
    // What is no Unicode would be taken for the bytes of a name that is not UTF-8.
    text = QString::fromUtf8(text.toUtf8()).replace(QLatin1Char('/'), QLatin1Char('_')).remove(QChar::Null);
    std::replace_if(text.begin(), text.end(), isControl, QLatin1Char(' '));
    text = text.trimmed();
    if (text.startsWith(QLatin1Char('.')))
        text[0] = QLatin1Char('_');
    while (PathBytes::encode(text).size() > longestName)
        text.chop(text.back().isLowSurrogate() ? 2 : 1);
    return text;
}

} // namespace FileSystem
