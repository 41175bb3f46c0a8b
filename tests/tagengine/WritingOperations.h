#pragma once

#include "support/ChildProcess.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <functional>
#include <vector>

/// Every way of writing that the tag engine offers, each as one save.
namespace WritingOperations {

using Operation = std::function<bool(const QString& path)>;

inline Operation text(const QString& key, const QString& value)
{
    return [=](const QString& path) { return TaglibWrapper::setMetadata(path, {{key, value}}); };
}

inline Operation picture(qsizetype size)
{
    return
        [=](const QString& path) { return TaglibWrapper::setImageData(QByteArray(size, 'p'), path, path.right(3)); };
}

inline bool comment(const QString& path)
{
    return TaglibWrapper::writeComment(path, QStringLiteral("Made for a few tests"));
}

inline bool chapters(const QString& path)
{
    return TaglibWrapper::setChapters(path, {QStringLiteral("A@0"), QStringLiteral("B@9")});
}

struct NamedOperation {
    const char* name;
    Operation run;
    Operation prepare;
};

inline const NamedOperation growth{"long comment", text(QStringLiteral("COMMENT"), QString(6000, u'c')), {}};
inline const std::vector<NamedOperation> all{
    {"title", text(QStringLiteral("TITLE"), QStringLiteral("Blue Window and Red Door")), {}},
    growth,
    {"add picture", picture(300'000), picture(0)},
    {"remove picture", picture(0), picture(20'000)},
    {"replace picture", picture(30'000), picture(20'000)},
    {"remove unsupported", TaglibWrapper::removeUnsupportedTagsKeepingImage, picture(20'000)},
    {"remove all", TaglibWrapper::removeAllTagsAndImages, {}},
    {"comment", comment, {}},
    {"chapters", chapters, {}}};

/// Makes a file that the operation can be tried on. In front of a fixture's name, "roomy" asks for padding and "long"
/// for more sound than is moved at once.
inline QString prepare(const ScratchFolder& scratch, const QString& fixture, const NamedOperation& operation)
{
    const QString path = scratch.copy(fixture.section(u' ', -1));
    inChildProcess([&] {
        if (fixture.startsWith(u"roomy"))
            growth.run(path), comment(path);
        if (operation.prepare)
            operation.prepare(path);
        return 0;
    });
    if (fixture.startsWith(u"long")) {
        const QByteArray bytes = ScratchFolder::contents(path);
        // An MP4 atom; an MP3 reader passes over its head.
        const QByteArray atom = QByteArray("\x00\x11\x00\x00mdat", 8) + bytes.right(997).repeated(1200);
        ScratchFolder::write(path, bytes + atom.left(0x110000));
    }
    return path;
}

} // namespace WritingOperations
