#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>

namespace {

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
    ScratchFolder::write(path, input);
    if (write())
        require(TaglibWrapper::getMetadata(path).has_value(), "a saved file does not open again", writer);
    else
        require(ScratchFolder::contents(path) == input, "a file that was not saved has changed", writer);
}

void checkWriters(const QString& path, const QString& type, const QByteArray& input)
{
    const auto check = [&](const char* name, auto write) { checkWriter(name, path, input, write); };
    check("setMetadata", [&] {
        return TaglibWrapper::setMetadata(path, {{u"TITLE"_qs, u"A title \U0001F600"_qs},
                                                 {u"YEAR"_qs, u"2001"_qs},
                                                 {u"TRACKNUMBER"_qs, u"3/12"_qs},
                                                 {u"ALBUMARTIST"_qs, QString()}});
    });
    check("setImageData", [&] { return TaglibWrapper::setImageData(QByteArray(5000, 'p'), path, type); });
    check("setImageData, none", [&] { return TaglibWrapper::setImageData({}, path, type); });
    check("removeUnsupportedTags", [&] { return TaglibWrapper::removeUnsupportedTags(path); });
    check("removeAllTags", [&] { return TaglibWrapper::removeAllTags(path); });
    check("setChapters", [&] { return TaglibWrapper::setChapters(path, {u"Intro@0"_qs, u"Verse@900"_qs}); });
}

} // namespace

/// The last byte of the input chooses the kind of file that it is taken for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr const char* types[]{"mp3", "m4a", "wav", "aiff"};
    static const QTemporaryDir scratch(ScratchFolder::quickPlace() + u"/sonvika-fuzz-XXXXXX"_qs);
    qputenv("XDG_STATE_HOME", QFile::encodeName(scratch.path()));
    std::cout.rdbuf(nullptr);
    std::cerr.rdbuf(nullptr);
    const auto type = QString::fromLatin1(types[size == 0 ? 0 : data[size - 1] % std::size(types)]);
    const QString path = scratch.filePath(u"input."_qs + type);
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    ScratchFolder::write(path, input);
    TaglibWrapper::getMetadata(path);
    TaglibWrapper::readTrack(path, type, [](const QByteArray&) {});
    TaglibWrapper::getImageData(path, type);
    TaglibWrapper::getChapters(path);
    TaglibWrapper::detectStreamType(path);
    require(ScratchFolder::contents(path) == input, "a file that was only read has changed", "readers");
    checkWriters(path, type, input);
    QFile::remove(path);
    return 0;
}
