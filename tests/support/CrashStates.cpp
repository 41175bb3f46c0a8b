#include "support/CrashStates.h"

#include <QSet>

#include <algorithm>
#include <utility>

using CallRecorder::Call;
using Kind = Call::Kind;

namespace {

/// The parts into which the disk's sectors, or its pages, cut a write.
QList<Portion::Part> blocksOf(const Call& write, qint64 unit)
{
    QList<Portion::Part> blocks;
    const qint64 size = write.bytes.size();
    for (qint64 start = 0; start < size;) {
        const qint64 next = std::min(size, (write.offset + start) / unit * unit + unit - write.offset);
        blocks.append({start, next - start});
        start = next;
    }
    return blocks;
}

/// Some of the blocks, but neither none nor all: the first ones, or any.
QList<Portion::Part> someOf(const QList<Portion::Part>& blocks, bool areFirst, QRandomGenerator& random)
{
    const auto count = int(blocks.size());
    if (areFirst)
        return blocks.first(random.bounded(1, count));
    QList<Portion::Part> some;
    const int surelyThere = random.bounded(count);
    const int surelyAbsent = (surelyThere + random.bounded(1, count)) % count;
    for (int i = 0; i < count; ++i) {
        if (i == surelyThere || (i != surelyAbsent && random.bounded(2) == 0))
            some.append(blocks[i]);
    }
    return some;
}

} // namespace

CrashStates::CrashStates(Disk before, QList<Call> calls, quint32 seed)
    : before_(std::move(before)), calls_(std::move(calls)), seed_(seed)
{
    Disk live = before_;
    for (const auto& call : std::as_const(calls_)) {
        QList<CallRecorder::FileId> folders;
        for (auto name = call.names.begin(); name != call.names.end(); ++name)
            folders.append(live.idOf(name.key().left(name.key().lastIndexOf('/'))));
        folders_.append(folders);
        lengthBefore_.append(live.lengthOf(call.file));
        live.applyWhole(call);
    }
}

QList<qsizetype> CrashStates::cuts() const
{
    QList<qsizetype> found;
    for (qsizetype i = 0; i < calls_.size(); ++i) {
        if (calls_[i].kind != Kind::Sync)
            found.append(i);
    }
    return found;
}

bool CrashStates::isSettled(qsizetype change, qsizetype cut, Model model) const
{
    const Call& call = calls_[change];
    const auto isSynced = [&](CallRecorder::FileId file) {
        return std::any_of(calls_.begin() + change, calls_.begin() + cut + 1, [&](const Call& later) {
            const bool isAny = model == Model::Ext4Ordered && call.kind != Kind::Write;
            return later.kind == Kind::Sync && (isAny || later.file == 0 || later.file == file);
        });
    };
    return call.kind == Kind::Name ? std::all_of(folders_[change].begin(), folders_[change].end(), isSynced)
                                   : isSynced(call.file);
}

/// What may be there of a change by itself: nothing first, all of it last.
QList<Portion> CrashStates::portions(qsizetype index, Model model) const
{
    const Call& call = calls_[index];
    const qint64 end = call.offset + call.bytes.size();
    const qint64 old = lengthBefore_[index];
    const bool isPosix = model == Model::Posix;
    const Portion whole{true, {{0, call.bytes.size()}}, isPosix || end > old ? end : 0};
    if (call.kind != Kind::Write)
        return {Portion(), whole};
    QList<Portion> found{Portion()};
    QRandomGenerator random(seed_ + quint32(index));
    constexpr int tears = 4;
    for (int tear = 0; tear < tears; ++tear) {
        const auto blocks = blocksOf(call, tear < tears / 2 ? 512 : 4096);
        if (blocks.size() < 2)
            continue;
        Portion torn{true, {}, 0};
        qint64 reached = old;
        for (const auto& part : someOf(blocks, tear % 2 == 0, random)) {
            const qint64 start = call.offset + part.start;
            // A length that covers new bytes comes after them.
            if (!isPosix && start + part.length > old && start > reached)
                break;
            torn.parts.append(part);
            reached = std::max(reached, start + part.length);
        }
        torn.length = isPosix && random.bounded(2) == 0 ? end : reached > old ? reached : 0;
        found.append(torn);
    }
    if (isPosix && end > old)
        found.append({true, {}, end});
    found.append(whole);
    return found;
}

QList<CrashStates::Dimension> CrashStates::dimensions(const QList<qsizetype>& pending, Model model) const
{
    QList<Dimension> found;
    Dimension journal{Choice()};
    for (const qsizetype index : pending) {
        const auto all = portions(index, model);
        if (model == Model::Ext4Ordered && calls_[index].kind != Kind::Write) {
            Choice longer = journal.last();
            longer[index] = all.last();
            journal.append(longer);
            continue;
        }
        Dimension dimension;
        for (const auto& portion : all)
            dimension.append({{index, portion}});
        found.append(dimension);
    }
    if (journal.size() > 1)
        found.append(journal);
    return found;
}

Disk CrashStates::build(qsizetype cut, const QList<qsizetype>& pending, const Choice& choice, Model model) const
{
    Disk disk = before_;
    QSet<CallRecorder::FileId> unsized;
    for (qsizetype i = 0; i <= cut; ++i) {
        const Call& call = calls_[i];
        if (!call.isChange())
            continue;
        if (!pending.contains(i)) {
            disk.applyWhole(call);
            continue;
        }
        const Portion portion = choice.value(i);
        if (call.kind == Kind::Resize && !portion.isThere)
            unsized.insert(call.file);
        // New blocks are given out after those of before were taken away.
        const bool isEarly = model == Model::Ext4Ordered && call.kind == Kind::Write && unsized.contains(call.file)
                             && call.offset + call.bytes.size() > lengthBefore_[i];
        if (!isEarly)
            disk.apply(call, portion);
    }
    return disk;
}

void CrashStates::visit(qsizetype cut, Model model, int most, const std::function<void(const Disk&)>& use) const
{
    QList<qsizetype> pending;
    for (qsizetype i = 0; i <= cut; ++i) {
        if (calls_[i].isChange() && !isSettled(i, cut, model))
            pending.append(i);
    }
    QList<Dimension> all = dimensions(pending, model);
    // What lacks the last call was to be seen after the one before.
    for (auto& dimension : all) {
        if (dimension.last().contains(cut))
            dimension.removeIf([&](const Choice& choice) { return !choice.value(cut).isThere; });
    }
    const auto useChosen = [&](auto pick) {
        Choice whole;
        for (qsizetype i = 0; i < all.size(); ++i)
            whole.insert(all[i][pick(i)]);
        use(build(cut, pending, whole, model));
    };
    qint64 count = 1;
    for (const auto& dimension : std::as_const(all))
        count = std::min<qint64>(count * dimension.size(), qint64(most) + 1);
    if (count <= most) {
        for (qint64 number = 0; number < count; ++number) {
            qint64 rest = number;
            useChosen([&](qsizetype i) { return std::exchange(rest, rest / all[i].size()) % all[i].size(); });
        }
        return;
    }
    // All but one, and one alone: the likeliest to be forgotten.
    for (qsizetype one = -1; one < all.size(); ++one) {
        useChosen([&](qsizetype i) { return i == one ? 0 : all[i].size() - 1; });
        useChosen([&](qsizetype i) { return i == one ? all[i].size() - 1 : 0; });
    }
    QRandomGenerator random(seed_ + quint32(cut));
    for (qsizetype done = 2 * (all.size() + 1); done < most; ++done)
        useChosen([&](qsizetype i) { return random.bounded(int(all[i].size())); });
}
