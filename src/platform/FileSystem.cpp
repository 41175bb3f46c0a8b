#include "platform/FileSystem.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace FileSystem {

bool isWritableFile(const QString& path)
{
    return ::access(QFile::encodeName(path).constData(), W_OK) == 0;
}

bool setPosixPermissions(const QString& path, unsigned int mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

QString asFileName(QString text)
{
    constexpr int longestName = 240;
    text.replace(QLatin1Char('/'), QLatin1Char('_')).remove(QChar::Null);
    while (QFile::encodeName(text).size() > longestName)
        text.chop(text.back().isLowSurrogate() ? 2 : 1);
    return text;
}

} // namespace FileSystem
