#include "tagengine/TaglibWrapper.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>

namespace {

/// A folder in memory where there is one: a save flushes what it writes.
class Scratch {
public:
    Scratch() { qputenv("XDG_STATE_HOME", QFile::encodeName(folder_.path())); }
    QString path(const char* type) const { return folder_.filePath(QStringLiteral("input.") + QLatin1String(type)); }

private:
    QTemporaryDir folder_{(QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath())
                          + QStringLiteral("/sonvika-fuzz-XXXXXX")};
};

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void setContents(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
}

void require(bool condition, const char* promise, const char* writer)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s: %s\n", writer, promise);
    std::abort();
}

template <class Write>
void checkWriter(const char* writer, const QString& path, const QByteArray& input, Write write)
{
    setContents(path, input);
    if (write())
        require(TaglibWrapper::getMetadata(path).has_value(), "a saved file does not open again", writer);
    else
        require(contents(path) == input, "a file that was not saved has changed", writer);
}

void checkWriters(const QString& path, const QString& type, const QByteArray& input)
{
    const auto check = [&](const char* name, auto write) { checkWriter(name, path, input, write); };
    check("setMetadata", [&] {
        return TaglibWrapper::setMetadata(path, {{QStringLiteral("TITLE"), QStringLiteral("A title \U0001F600")},
                                                 {QStringLiteral("YEAR"), QStringLiteral("2001")},
                                                 {QStringLiteral("TRACKNUMBER"), QStringLiteral("3/12")},
                                                 {QStringLiteral("ALBUMARTIST"), QString()}});
    });
    check("setImageData", [&] { return TaglibWrapper::setImageData(QByteArray(5000, 'p'), path, type); });
    check("setImageData, none", [&] { return TaglibWrapper::setImageData({}, path, type); });
    check("removeUnsupportedTags", [&] { return TaglibWrapper::removeUnsupportedTags(path); });
    check("removeAllTags", [&] { return TaglibWrapper::removeAllTags(path); });
    check("setChapters", [&] {
        return TaglibWrapper::setChapters(path, {QStringLiteral("Intro@0"), QStringLiteral("Verse@900")});
    });
}

} // namespace

/// The last byte of the input chooses the kind of file that it is taken for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr const char* types[]{"mp3", "m4a", "wav", "aiff"};
    static const Scratch scratch;
    std::cout.rdbuf(nullptr);
    std::cerr.rdbuf(nullptr);
    const char* type = types[size == 0 ? 0 : data[size - 1] % std::size(types)];
    const QString path = scratch.path(type);
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    setContents(path, input);
    TaglibWrapper::getMetadata(path);
    TaglibWrapper::readTrack(path, QLatin1String(type), [](const QByteArray&) {});
    TaglibWrapper::getImageData(path, QLatin1String(type));
    TaglibWrapper::getChapters(path);
    TaglibWrapper::detectStreamType(path);
    require(contents(path) == input, "a file that was only read has changed", "readers");
    checkWriters(path, QLatin1String(type), input);
    QFile::remove(path);
    return 0;
}
