#include "tagengine/AfterCrash.h"

#include "tagengine/WritingOperations.h"

#include <QCryptographicHash>

#include <algorithm>
#include <utility>

using CallRecorder::Call;

AfterCrash::AfterCrash(QByteArray root, QByteArray song, QByteArray second)
    : root_(std::move(root)), song_(std::move(song)), second_(std::move(second))
{
}

QByteArray AfterCrash::hash(const QByteArray& contents)
{
    return contents.isNull() ? QByteArray() : QCryptographicHash::hash(contents, QCryptographicHash::Md5);
}

CallRecorder::Recording AfterCrash::recover() const
{
    return CallRecorder::record(root_, [this] {
        TaglibWrapper::recoverInterruptedChanges();
        TaglibWrapper::getMetadata(QFile::decodeName(song_));
        return 0;
    });
}

AfterCrash::Recovery AfterCrash::recovery(const Disk& disk) const
{
    disk.layOut();
    const Disk before = Disk::read(root_);
    return {before, recover().calls};
}

const AfterCrash::Outcome& AfterCrash::lookAt(const Disk& disk, const QByteArray& torn)
{
    const QByteArray key = disk.fingerprint();
    if (const auto known = outcomes_.constFind(key); known != outcomes_.constEnd())
        return *known;
    disk.layOut();
    Disk expected = Disk::read(root_);
    const auto recording = recover();
    const Disk after = Disk::read(root_);
    for (const auto& call : recording.calls)
        expected.applyWhole(call);
    if (expected.fingerprint() != after.fingerprint())
        qFatal("The recovery made a call that is not recorded");
    return *outcomes_.insert(
        key,
        {hash(after.contents(song_)),
         recording.result == 0 ? troubleOn(after, torn) : QStringLiteral("recovery crashed"),
         std::any_of(recording.calls.begin(), recording.calls.end(), [](auto& call) { return call.isChange(); })});
}

/// What is wrong with a disk, which is laid out, after recovery.
QString AfterCrash::troubleOn(const Disk& disk, const QByteArray& torn)
{
    // What is in a temporary file makes no difference from here on.
    Disk alike = disk;
    for (const auto& path : disk.paths()) {
        if (path.endsWith(".tmp"))
            alike.applyWhole({Call::Kind::Resize, {}, disk.idOf(path)});
    }
    const QByteArray key = alike.fingerprint();
    if (troubles_.contains(key))
        return troubles_[key];
    QString& trouble = troubles_[key];
    if (!second_.isEmpty() && disk.idOf(second_) != disk.idOf(song_))
        trouble = QStringLiteral("link broken");
    else if (hasTemporary() && !removesTemporaries())
        trouble = QStringLiteral("temporary file left for ever");
    if (!trouble.isEmpty() || disk.contents(song_).isNull())
        return trouble;
    Disk damaged = disk;
    damaged.applyWhole({Call::Kind::Resize, {}, disk.idOf(song_), false, torn.size()});
    damaged.applyWhole({Call::Kind::Write, {}, disk.idOf(song_), false, 0, torn});
    damaged.layOut();
    inChildProcess([] { return TaglibWrapper::recoverInterruptedChanges(), 0; });
    if (ScratchFolder::contents(QFile::decodeName(song_)) != torn)
        trouble = QStringLiteral("undo record left in force");
    return trouble;
}

bool AfterCrash::hasTemporary() const
{
    const QDir album = QFileInfo(QFile::decodeName(song_)).dir();
    return !album.entryList({QStringLiteral(".*")}, QDir::Files | QDir::Hidden).isEmpty();
}

bool AfterCrash::removesTemporaries() const
{
    const QString neighbour = QFileInfo(QFile::decodeName(song_)).dir().filePath(QStringLiteral("neighbour.mp3"));
    const auto save = [&] {
        ScratchFolder::write(neighbour, ScratchFolder::fixture(QStringLiteral("v24.mp3")));
        inChildProcess([&] { return WritingOperations::growth.run(neighbour), 0; });
        return !hasTemporary();
    };
    // The first process may happen to have the number of the one that left the file.
    return save() || save();
}
