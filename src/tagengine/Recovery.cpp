#include "tagengine/Recovery.h"

#include "platform/PathBytes.h"
#include "tagengine/FailureReason.h"
#include "tagengine/FileLock.h"
#include "tagengine/OlderRecord.h"
#include "tagengine/UndoRecord.h"
#include "tagengine/VolumeId.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Reason = InterruptedChange::Reason;

/// What became of a record.
struct Ending {
    Recovery::Outcome outcome;
    Reason reason = Reason::Different;
};

constexpr Ending done{Recovery::Outcome::Done};
constexpr Ending failed{Recovery::Outcome::Failed, Reason::Unreadable};

Ending kept(Reason reason)
{
    return {Recovery::Outcome::Kept, reason};
}

Ending ended(RecordSlots::Slot& slot)
{
    return slot.clear() ? done : failed;
}

bool isOtherVolume(const UndoRecord& record, int file)
{
    const QByteArray here = VolumeId::of(file);
    return !here.isEmpty() && here.size() == record.volume().size() && here != record.volume();
}

Ending takeBack(UndoRecord& record, int file)
{
    if (isOtherVolume(record, file))
        return kept(Reason::OtherVolume);
    switch (record.compare(file)) {
    case UndoRecord::Finding::HalfDone:
        return record.rollBack(file) ? ended(record.slot()) : failed;
    case UndoRecord::Finding::Old:
    case UndoRecord::Finding::New:
        // The change may have come to its end and not to the disk.
        return ::fsync(file) == 0 ? ended(record.slot()) : failed;
    case UndoRecord::Finding::Different:
        return kept(Reason::Different);
    case UndoRecord::Finding::Unreadable:
        return failed;
    }
    return failed;
}

Ending takeBack(OlderRecord& record, int file)
{
    if (!record.fits(file))
        return kept(Reason::Different);
    return record.writeOld(file) && ::fsync(file) == 0 ? ended(record.slot()) : failed;
}

template <class Record>
Ending follow(Record& record, typename Record::State state, const QByteArray& path, bool waits)
{
    if (state == Record::State::Unreadable)
        return failed;
    if (state == Record::State::NotWhole)
        return ended(record.slot());
    const FileDescriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen())
        return kept(errno == ENOENT || errno == ENOTDIR ? Reason::Missing : Reason::Unreadable);
    if (!FileIdentity::ofDescriptor(file.get()).isRegular)
        return kept(Reason::Different);
    const FileLock lock(file.get(), waits);
    return lock.isHeld() ? takeBack(record, file.get()) : Ending{Recovery::Outcome::Failed, Reason::InUse};
}

/// Locks a slot and calls @p use with its record, and whether that is whole, if it is in force still.
template <class Use>
Ending withRecord(const QByteArray& slotPath, bool waits, Use use)
{
    auto slot = RecordSlots::lock(slotPath, waits);
    if (!slot)
        return errno == ENOENT ? done : Ending{Recovery::Outcome::Busy};
    if (!RecordSlots::headOf(*slot).isInForce())
        return done;
    if (RecordSlots::isOlderRecord(slotPath)) {
        auto [record, state] = OlderRecord::load(*std::move(slot));
        return use(record, state);
    }
    auto [record, state] = UndoRecord::load(*std::move(slot));
    return use(record, state);
}

/// The slot's name and, as it is used again, the checksum of what is in it now.
QString idOf(const RecordSlots::Slot& slot)
{
    const QByteArray name = slot.path().mid(slot.path().lastIndexOf('/') + 1);
    const QByteArray stem = name.left(name.lastIndexOf('.'));
    const auto checksum = RecordSlots::headOf(slot).checksum;
    return QString::fromLatin1(checksum == 0 ? stem : stem + '-' + QByteArray::number(quint64(checksum), 16));
}

/// The path for a copy that takes nobody's place.
QByteArray copyPath(const QByteArray& path, int number)
{
    const auto dot = path.lastIndexOf('.');
    const auto end = dot > path.lastIndexOf('/') + 1 ? dot : path.size();
    const QByteArray mark = number == 1 ? " (restored)" : " (restored " + QByteArray::number(number) + ")";
    return path.left(end) + mark + path.mid(end);
}

/// A new, empty file beside another. @param into is given its path.
FileDescriptor makeCopy(const QByteArray& path, QByteArray& into)
{
    constexpr int mostCopies = 100;
    FileDescriptor copy;
    for (int number = 1; number <= mostCopies && !copy.isOpen(); ++number) {
        into = copyPath(path, number);
        copy = FileDescriptor(::open(into.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!copy.isOpen() && errno != EEXIST)
            break;
    }
    return copy;
}

template <class Record>
bool writeCopy(const Record& record, int file, int copy)
{
    struct stat status {};
    const std::int64_t size = FileIdentity::ofDescriptor(file).size;
    return PosixFile::copy(file, 0, copy, 0, std::min(size, record.oldSize())) && record.writeOld(copy)
           && ::fstat(file, &status) == 0 && ::fchmod(copy, status.st_mode & 0777) == 0 && ::fsync(copy) == 0
           && PosixFile::flush(copy);
}

/// @return the copy's path; none, and noted, when it could not be written.
template <class Record>
std::optional<QByteArray> copyBeside(const Record& record)
{
    const FileDescriptor file(::open(record.path().constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    QByteArray path;
    const FileDescriptor copy = file.isOpen() ? makeCopy(record.path(), path) : FileDescriptor();
    if (!copy.isOpen()) {
        FailureReason::note(errno);
        return std::nullopt;
    }
    if (writeCopy(record, file.get(), copy.get()) && PosixFile::syncFolder(path.left(path.lastIndexOf('/') + 1)))
        return path;
    FailureReason::note(errno);
    ::unlink(path.constData());
    return std::nullopt;
}

/// Calls @p use with the whole record of that id. @return false when there is none.
template <class Use>
bool withRecordOf(const QString& id, Use use)
{
    FailureReason::clear();
    bool isDone = false;
    for (const auto& slot : RecordSlots::inForce()) {
        withRecord(slot, false, [&](auto& record, auto) {
            if (idOf(record.slot()) == id)
                isDone = use(record);
            return done;
        });
    }
    return isDone;
}

} // namespace

Recovery::Outcome Recovery::recover(const QByteArray& path, const FileIdentity& identity)
{
    Outcome worst = Outcome::Done;
    for (const auto& slot : RecordSlots::inForceFor(path, identity)) {
        const Ending ending =
            withRecord(slot, true, [&](auto& record, auto state) { return follow(record, state, path, true); });
        worst = std::max(worst, ending.outcome);
    }
    return worst;
}

QList<InterruptedChange> Recovery::recoverAll()
{
    QList<InterruptedChange> left;
    for (const auto& slot : RecordSlots::inForce()) {
        withRecord(slot, false, [&](auto& record, auto state) {
            const Ending ending = follow(record, state, record.path(), false);
            if (ending.outcome != Outcome::Done)
                left.append({idOf(record.slot()), PathBytes::decode(record.path()), ending.reason});
            return ending;
        });
    }
    return left;
}

std::optional<QByteArray> Recovery::restoreCopy(const QString& id)
{
    std::optional<QByteArray> path;
    withRecordOf(id, [&](auto& record) {
        path = copyBeside(record);
        return path && record.slot().clear();
    });
    return path;
}

bool Recovery::forget(const QString& id)
{
    return withRecordOf(id, [](auto& record) { return record.slot().clear(); });
}
