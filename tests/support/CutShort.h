#pragma once

#include "support/ChildProcess.h"
#include "support/FaultInjection.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <csignal>

/// A copy of a fixture, after room was made in its tag.
inline QString roomyCopy(const ScratchFolder& scratch, const QString& fixture, const QString& name = {})
{
    const QString path = scratch.copy(fixture, name);
    if (!TaglibWrapper::writeComment(path, QString(6000, u'c')) || !TaglibWrapper::writeComment(path, u"Short"_qs))
        qFatal("Can't make room in %s", qUtf8Printable(fixture));
    return path;
}

/// What a file holds at the ends of a change.
struct CutShort {
    QByteArray before;
    QByteArray halfway; ///< and now
    QByteArray ended;
};

/// Kills a process halfway through giving a roomy file a title. Its record lies in this process's state folder.
inline CutShort cutShort(const QString& path)
{
    const auto saveTitle = [&] {
        return TaglibWrapper::setMetadata(path, {{u"TITLE"_qs, u"Blue Window and Red Door"_qs}});
    };
    CutShort file;
    file.before = ScratchFolder::contents(path);
    saveTitle();
    file.ended = ScratchFolder::contents(path);
    ScratchFolder::write(path, file.before);
    file.halfway = file.before;
    for (int call = 1; file.halfway == file.before || file.halfway == file.ended; ++call) {
        TaglibWrapper::recoverInterruptedChanges();
        const int code = inChildProcess([&] {
            FaultInjection::arm(call, {FaultInjection::Kind::KillHalfway});
            return int(saveTitle());
        });
        if (code != -SIGKILL)
            qFatal("There is no halfway");
        file.halfway = ScratchFolder::contents(path);
    }
    return file;
}
