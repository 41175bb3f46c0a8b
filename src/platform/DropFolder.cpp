#include "platform/DropFolder.h"

#include "platform/PathBytes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t userOnly = 0700;

/// Makes a folder of the user's own in the shared temporary folder, where others may have put something in its place.
bool makeOwnFolder(const QString& path)
{
    const QByteArray name = PathBytes::encode(path);
    ::mkdir(name.constData(), userOnly);
    struct stat found {};
    return ::lstat(name.constData(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == ::getuid()
           && ::chmod(name.constData(), userOnly) == 0;
}

bool createNew(QFile& file, const QString& folder, const QString& fileName)
{
    const QFileInfo wanted(fileName);
    constexpr int mostOfOneName = 10'000;
    for (int number = 1; number <= mostOfOneName; ++number) {
        const QString name =
            number == 1
                ? fileName
                : QStringLiteral("%1 %2.%3").arg(wanted.completeBaseName(), QString::number(number), wanted.suffix());
        file.setFileName(folder + QLatin1Char('/') + name);
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            return true;
        if (!file.exists())
            return false;
    }
    return false;
}

/// @return the error, empty when the file was written.
QString writeNew(QFile& file, const QString& folder, const QString& fileName, const QByteArray& bytes)
{
    if (folder.isEmpty())
        return QCoreApplication::translate("DropFolder", "There is no folder to receive files in");
    if (!createNew(file, folder, fileName))
        return file.errorString();
    if (file.write(bytes) == bytes.size() && file.flush())
        return {};
    const QString error = file.errorString();
    file.remove();
    return error;
}

} // namespace

DropFolder::DropFolder()
{
    workQueue_.setMaxThreadCount(1);
}

DropFolder::~DropFolder()
{
    workQueue_.waitForDone();
}

QString DropFolder::destinationURL()
{
    if (destination_.isEmpty()) {
        const QString own = QDir::tempPath() + QStringLiteral("/sonvika-%1").arg(::getuid());
        const QString drops = own + QStringLiteral("/Drops");
        if (makeOwnFolder(own) && makeOwnFolder(drops))
            destination_ = drops;
    }
    return destination_;
}

void DropFolder::receive(const QByteArray& bytes, const QString& fileName, Received received)
{
    workQueue_.start([this, bytes, fileName, folder = destinationURL(), received = std::move(received)] {
        QFile file;
        const QString error = writeNew(file, folder, fileName, bytes);
        const QString path = error.isEmpty() ? file.fileName() : QString();
        file.close();
        QMetaObject::invokeMethod(
            this, [=, this] { delivery_([=] { received(path, error); }); }, Qt::QueuedConnection);
    });
}
