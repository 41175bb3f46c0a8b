#include "tagengine/TaglibWrapper.h"

#include "platform/FileSystem.h"
#include "platform/PathBytes.h"
#include "tagengine/FailureReason.h"

#include <QFileInfo>

#include <taglib/aifffile.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/tfilestream.h>
#include <taglib/wavfile.h>

#include <cerrno>
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

} // namespace

std::optional<QString> TaglibWrapper::detectFileType(const QString& path)
{
    const QString extension = QFileInfo(path).suffix();
    return extension.isEmpty() ? detectStreamType(path) : extension.toLower();
}

std::optional<QString> TaglibWrapper::detectStreamType(const QString& path)
{
    const QByteArray name = PathBytes::encode(path);
    FailureReason::clear();
    // A pipe would be waited for.
    if (FileSystem::exists(path) && !FileSystem::isRegularFile(path)) {
        FailureReason::note(FailureReason::noFile);
        return std::nullopt;
    }
    TagLib::FileStream stream(name.constData());
    if (!stream.isOpen()) {
        FailureReason::note(errno);
        std::cerr << "Unable to open FileStream: " << name.constData() << std::endl;
        return std::nullopt;
    }
    for (const auto& probe : probes) {
        if (probe.accepts(&stream))
            return QLatin1String(probe.type);
    }
    FailureReason::note(FailureReason::notSound);
    return std::nullopt;
}
