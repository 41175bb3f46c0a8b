#include "cli/ArtOutput.h"

#include "artwork/ImageFile.h"
#include "cli/PictureConverter.h"
#include "cli/StandardOutput.h"
#include "library/FileFinder.h"
#include "model/PictureHeader.h"
#include "platform/Plugins.h"
#include "tagengine/TaglibWrapper.h"

#include <QFileInfo>
#include <QPluginLoader>

#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// What the user is told.
class Refusal : public std::exception {
public:
    explicit Refusal(QString reason) : reason_(std::move(reason)) {}
    const QString& reason() const { return reason_; }

private:
    QString reason_;
};

QByteArray readArt(const QString& path)
{
    QByteArray art;
    const QString type = TaglibWrapper::detectFileType(path).value_or(QString());
    const auto tags = TaglibWrapper::readTrack(
        path, type, [&](const QByteArray& bytes) { art = QByteArray(bytes.constData(), bytes.size()); });
    if (!tags)
        throw Refusal(TaglibWrapper::failureReason());
    if (art.isEmpty())
        throw Refusal(QStringLiteral("The file has no cover art"));
    return art;
}

/// The name that Picture has for the format of such files.
QByteArray formatOf(const QString& extension)
{
    return extension == QLatin1String("jpg") ? QByteArray("jpeg") : extension.toLatin1();
}

/// Keeps what the picture libraries print by themselves off the standard error.
class MutedErrors {
public:
    MutedErrors() : kept_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
    {
        const int nothing = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (kept_ >= 0 && nothing >= 0)
            ::dup2(nothing, STDERR_FILENO);
        if (nothing >= 0)
            ::close(nothing);
    }
    ~MutedErrors()
    {
        if (kept_ < 0)
            return;
        ::dup2(kept_, STDERR_FILENO);
        ::close(kept_);
    }
    Q_DISABLE_COPY_MOVE(MutedErrors)

private:
    int kept_;
};

QByteArray converted(const QByteArray& art, const QString& extension)
{
    if (Picture::format(art) == formatOf(extension))
        return art;
    QPluginLoader plugin(Plugins::path(QStringLiteral("sonvika-pictures")));
    auto* converter = qobject_cast<PictureConverter*>(plugin.instance());
    if (!converter)
        throw Refusal(plugin.errorString());
    const MutedErrors muted;
    const auto bytes = converter->convert(art, extension);
    if (!bytes)
        throw Refusal(QStringLiteral("The cover art can't be converted"));
    return *bytes;
}

/// @param image where art is to be written; a recording that is there, whatever its name, is told by its content.
void checkIsNoRecording(const QString& image)
{
    const QFileInfo file(image);
    const bool isNamedSo = FileFinder::supportedExtensions().contains(file.suffix().toLower());
    const auto isOne = [&] {
        return file.isFile() && !ImageFile::read(image).error.isEmpty() && TaglibWrapper::detectStreamType(image);
    };
    if (isNamedSo || isOne())
        throw Refusal(QStringLiteral("Cover art is not written over recordings: %1").arg(image));
}

} // namespace

QString ArtOutput::write(const QString& path, const CommandLine& line, StandardOutput& output)
{
    try {
        checkIsNoRecording(line.image);
        const QByteArray art = readArt(path);
        const QByteArray bytes = line.convert ? converted(art, QFileInfo(line.image).suffix().toLower()) : art;
        if (line.image != QLatin1String("-")) {
            const QString error = ImageFile::write(line.image, bytes);
            return error.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(line.image, error);
        }
        output.write(bytes);
        return {};
    } catch (const Refusal& refusal) {
        return refusal.reason();
    }
}
