#include "tagengine/TaglibWrapper.h"

#include "platform/PathBytes.h"
#include "tagengine/FailureReason.h"
#include "tagengine/Guarded.h"
#include "tagengine/SafeFileStream.h"

#include <QFileInfo>

#include <taglib/aifffile.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/wavfile.h>

#include <iostream>

namespace {

struct Probe {
    bool (*accepts)(TagLib::IOStream*);
    const char* type;
};

// MPEG is asked first: a stream may satisfy more than one probe.
constexpr Probe probes[]{
    {&TagLib::MPEG::File::isSupported, "mp3"},
    {&TagLib::MP4::File::isSupported, "m4a"},
    {&TagLib::RIFF::WAV::File::isSupported, "wav"},
    {&TagLib::RIFF::AIFF::File::isSupported, "aif"},
};

std::optional<QString> typeOf(SafeFileStream& stream)
{
    for (const auto& probe : probes) {
        if (probe.accepts(&stream))
            return QLatin1String(probe.type);
    }
    FailureReason::note(FailureReason::notSound);
    return std::nullopt;
}

} // namespace

std::optional<QString> TaglibWrapper::detectFileType(const QString& path)
{
    const QString extension = QFileInfo(path).suffix();
    return extension.isEmpty() ? detectStreamType(path) : extension.toLower();
}

std::optional<QString> TaglibWrapper::detectStreamType(const QString& path)
{
    return guarded([&]() -> std::optional<QString> {
        const QByteArray name = PathBytes::encode(path);
        SafeFileStream stream(name, SafeFileStream::Mode::Read);
        if (!stream.isOpen()) {
            std::cerr << "Unable to open FileStream: " << name.constData() << std::endl;
            return std::nullopt;
        }
        auto type = typeOf(stream);
        if (!stream.isSettled()) {
            stream.reopen();
            type = typeOf(stream);
        }
        return stream.isRefused() ? std::nullopt : type;
    });
}
