#include "cli/ArtOutput.h"

#include "artwork/ImageFile.h"
#include "cli/PictureConverter.h"
#include "cli/StandardOutput.h"
#include "library/FileFinder.h"
#include "model/PictureHeader.h"
#include "tagengine/TaglibWrapper.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPluginLoader>

#include <stdexcept>

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

QByteArray converted(const QByteArray& art, const QString& extension)
{
    if (Picture::format(art) == formatOf(extension))
        return art;
    QPluginLoader plugin(QCoreApplication::applicationDirPath() + QStringLiteral("/" SONVIKA_PLUGIN_FOLDER "/")
                         + QStringLiteral("sonvika-pictures"));
    auto* converter = qobject_cast<PictureConverter*>(plugin.instance());
    if (!converter)
        throw Refusal(plugin.errorString());
    const auto bytes = converter->convert(art, extension);
    if (!bytes)
        throw Refusal(QStringLiteral("The cover art can't be converted"));
    return *bytes;
}

void checkIsNoRecording(const QString& image)
{
    const QString extension = QFileInfo(image).suffix().toLower();
    if (FileFinder::supportedExtensions().contains(extension))
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
