#include "tagengine/CrashExample.h"

#include <algorithm>
#include <filesystem>

using CallRecorder::Call;
using Kind = Call::Kind;
using Model = CrashStates::Model;

namespace {

constexpr quint32 seed = 20;

/// Where something lies, for reports: names that tell of a process or a run are left out.
QString placeOf(const QByteArray& path)
{
    const QString name = QFile::decodeName(path);
    const QString folder = name.section(u'/', 0, -2);
    if (name.endsWith(u".tmp"))
        return u"new file"_qs;
    if (name.startsWith(u"state/sonvika/"_qs) && name.count(u'/') > 2)
        return u"file in "_qs + folder;
    return name.startsWith(u"album/"_qs) ? u"audio file"_qs : u"folder "_qs + name;
}

/// The places of the syncs in the calls, by index.
QMap<qsizetype, QString> syncsIn(Disk disk, const QList<Call>& calls)
{
    QMap<qsizetype, QString> found;
    for (qsizetype i = 0; i < calls.size(); ++i) {
        if (calls[i].kind == Kind::Sync)
            found[i] = placeOf(disk.nameOf(calls[i].file));
        disk.applyWhole(calls[i]);
    }
    return found;
}

QList<Call> without(const QList<Call>& calls, const std::function<bool(qsizetype)>& isLeftOut)
{
    QList<Call> kept;
    for (qsizetype i = 0; i < calls.size(); ++i) {
        if (!isLeftOut(i))
            kept.append(calls[i]);
    }
    return kept;
}

/// The calls up to a cut, for reports.
QString describe(Disk disk, const QList<Call>& calls, qsizetype cut)
{
    const QMap<Kind, QString> verbs{{Kind::Write, u"write"_qs},
                                    {Kind::Resize, u"resize"_qs},
                                    {Kind::Sync, u"sync"_qs},
                                    {Kind::Return, u"return"_qs}};
    QStringList all;
    for (const auto& call : calls.first(cut + 1)) {
        disk.applyWhole(call);
        QStringList names;
        for (auto name = call.names.begin(); name != call.names.end(); ++name)
            names += (*name == 0 ? u"no "_qs : QString()) + placeOf(disk.relative(name.key()));
        if (call.kind == Kind::Name)
            all += (call.file == 0 ? u"name "_qs : u"make "_qs) + names.join(u" and "_qs);
        else
            all += verbs[call.kind] + (call.file == 0 ? QString() : u' ' + placeOf(disk.nameOf(call.file)));
    }
    return all.join(u", "_qs);
}

void tryCutsOf(const CrashStates& states, int most, const std::function<void(const Disk&, Model, qsizetype)>& use)
{
    const auto cuts = states.cuts();
    for (const qsizetype cut : cuts) {
        for (const Model model : {Model::Posix, Model::Ext4Ordered})
            states.visit(cut, model, most, [&](const Disk& disk) { use(disk, model, cut); });
    }
}

} // namespace

void CrashTally::add(const QString& trouble, const QString& where)
{
    if (wrong[trouble].count++ == 0)
        wrong[trouble].where = where;
}

void CrashTally::operator+=(const CrashTally& other)
{
    for (const auto& [model, count] : other.states) {
        states[model].tried += count.tried;
        states[model].bad += count.bad;
    }
    for (auto trouble = other.wrong.begin(); trouble != other.wrong.end(); ++trouble) {
        add(trouble.key(), trouble->where);
        wrong[trouble.key()].count += trouble->count - 1;
    }
}

QString CrashTally::counts() const
{
    const auto count = [this](Model model) { return states.contains(model) ? states.at(model) : Count(); };
    const auto [posix, badPosix] = count(Model::Posix);
    const auto [ext4, badExt4] = count(Model::Ext4Ordered);
    const QString text = u"%1 of %2 states by POSIX and %3 of %4 by ext4 are bad"_qs;
    return text.arg(badPosix).arg(posix).arg(badExt4).arg(ext4);
}

QString CrashTally::report() const
{
    QString text = counts();
    for (auto trouble = wrong.begin(); trouble != wrong.end(); ++trouble)
        text += u"\n%1: %2, first: %3"_qs.arg(trouble.key()).arg(trouble->count).arg(trouble->where);
    return text;
}

CrashExample::CrashExample(const QString& fixture, const QString& placement, const QString& stage,
                           const WritingOperations::NamedOperation& operation, const CrashScope& scope)
    : name_(u"%1, %2, %3, %4"_qs.arg(fixture, placement, stage, QString::fromUtf8(operation.name))), scope_(scope)
{
    qputenv("XDG_STATE_HOME", QFile::encodeName(scratch_.path(u"elsewhere"_qs)));
    const QString made = WritingOperations::prepare(scratch_, fixture, operation);
    QDir().mkpath(QFile::decodeName(album_));
    song_ = album_ + "/song." + fixture.right(3).toLatin1();
    QFile::rename(made, QFile::decodeName(song_));
    qputenv("XDG_STATE_HOME", root_ + "/state");
    const auto title = WritingOperations::text(u"TITLE"_qs, u"Grey Window and Red Floor"_qs);
    if (stage == u"later") {
        const QString other = scratch_.copy(u"v24.mp3"_qs);
        inChildProcess(
            [&] { return WritingOperations::growth.run(other), WritingOperations::comment(other), title(other), 0; });
    }
    if (placement == u"linked") {
        second_ = album_ + "/second";
        std::filesystem::create_hard_link(song_.toStdString(), second_.toStdString());
    }
    QList<WritingOperations::Operation> steps{operation.run};
    if (stage == u"again")
        steps.prepend(title);
    if (stage == u"crashed") {
        interrupt(title);
        steps.prepend([](const QString&) { return TaglibWrapper::recoverInterruptedChanges(), true; });
    }
    run(steps, placement == u"closed folder" ? album_ : QByteArray());
    after_.emplace(root_, song_, second_);
}

QMap<qsizetype, QString> CrashExample::syncs() const
{
    return syncsIn(before_, calls_);
}

CrashTally CrashExample::tryCuts(const std::function<bool(qsizetype)>& isLeftOut,
                                 const QString& syncLeftOutOfRecovery)
{
    CrashTally tally;
    if (!trouble_.isEmpty()) {
        tally.add(trouble_, name_);
        return tally;
    }
    judged_.clear();
    recoveries_.clear();
    random_.seed(seed);
    syncLeftOutOfRecovery_ = syncLeftOutOfRecovery;
    const CrashStates states(before_, isLeftOut ? without(calls_, isLeftOut) : calls_, seed);
    tryCutsOf(states, scope_.statesPerCut, [&](const Disk& disk, Model model, qsizetype cut) {
        const Demand demand = demandAt(states.calls(), cut);
        judge(
            disk, demand, model, [&] { return describe(before_, states.calls(), cut); }, tally);
        tryRecovery(disk, demand, tally);
    });
    return tally;
}

/// Leaves what a process leaves that is killed after its last write to the file, or else to another.
void CrashExample::interrupt(const WritingOperations::Operation& operation)
{
    Disk disk = Disk::read(root_);
    const auto calls = CallRecorder::record(root_, [&] { return operation(QFile::decodeName(song_)), 0; }).calls;
    const auto isLast = [&](const Call& call) { return call.kind == Kind::Write && call.file == disk.idOf(song_); };
    const bool isInPlace = std::any_of(calls.begin(), calls.end(), isLast);
    qsizetype count = calls.size();
    while (!(isInPlace ? isLast(calls[count - 1]) : calls[count - 1].kind == Kind::Write))
        --count;
    for (const auto& call : calls.first(count))
        disk.applyWhole(call);
    disk.layOut();
}

void CrashExample::run(const QList<WritingOperations::Operation>& steps, const QByteArray& closedFolder)
{
    before_ = Disk::read(root_);
    calls_ = CallRecorder::record(
                 root_,
                 [&] {
                     for (const auto& step : steps)
                         CallRecorder::noteReturn(step(QFile::decodeName(song_)));
                     return 0;
                 },
                 closedFolder)
                 .calls;
    Disk disk = before_;
    contents_.append(disk.contents(song_));
    for (const auto& call : std::as_const(calls_)) {
        disk.applyWhole(call);
        if (call.kind == Kind::Return)
            contents_.append(disk.contents(song_));
        if (call.kind == Kind::Return && call.offset == 0)
            trouble_ = u"not saved without any fault"_qs;
    }
    for (const auto& contents : std::as_const(contents_))
        hashes_.append(AfterCrash::hash(contents));
    if (disk.fingerprint() != Disk::read(root_).fingerprint())
        trouble_ = u"a call was made that is not recorded"_qs;
}

CrashExample::Demand CrashExample::demandAt(const QList<Call>& calls, qsizetype cut) const
{
    const auto returned =
        std::count_if(calls.begin(), calls.begin() + cut + 1, [](auto& call) { return call.kind == Kind::Return; });
    const bool isBetween = calls[cut].kind == Kind::Return;
    return {hashes_.mid(returned, isBetween ? 1 : 2), QByteArray::number(returned) + (isBetween ? "=" : "+")};
}

/// A beginning of the last new contents, in front of the rest of the old ones.
QByteArray CrashExample::torn() const
{
    const QByteArray& then = contents_[contents_.size() - 2];
    const QByteArray& now = contents_.last();
    const auto first = std::mismatch(then.begin(), then.end(), now.begin(), now.end()).first - then.begin();
    const auto half = (std::min(then.size(), now.size()) - first + 1) / 2;
    return then.left(first) + now.mid(first, half) + then.mid(first + half);
}

/// @param cut where it was, for reports.
void CrashExample::judge(const Disk& disk, const Demand& demand, Model model, const std::function<QString()>& cut,
                         CrashTally& tally)
{
    const QByteArray key = disk.fingerprint() + demand.key;
    if (!judged_.insert({model, key}).second)
        return;
    const AfterCrash::Outcome& outcome = after_->lookAt(disk, torn());
    QString trouble = outcome.trouble;
    if (!demand.contents.contains(outcome.contents))
        trouble = outcome.contents.isNull()            ? u"file gone"_qs
                  : hashes_.contains(outcome.contents) ? u"saved and lost again"_qs
                                                       : u"damaged"_qs;
    ++tally.states[model].tried;
    if (trouble.isEmpty())
        return;
    ++tally.states[model].bad;
    tally.add(trouble, name_ + u": "_qs + cut());
}

void CrashExample::tryRecovery(const Disk& disk, const Demand& demand, CrashTally& tally)
{
    const QByteArray key = disk.fingerprint() + demand.key;
    if (!after_->lookAt(disk, torn()).isChanged || !recoveries_.insert(key).second
        || random_.bounded(scope_.recoveriesOutOf) != 0)
        return;
    const auto recovery = after_->recovery(disk);
    const auto syncs = syncsIn(recovery.before, recovery.calls);
    recoverySyncs_.insert(syncs.begin(), syncs.end());
    const auto isLeftOut = [&](qsizetype i) { return syncs.value(i, u"-"_qs) == syncLeftOutOfRecovery_; };
    const CrashStates states(recovery.before, without(recovery.calls, isLeftOut), seed);
    tryCutsOf(states, scope_.statesPerRecoveryCut, [&](const Disk& left, Model model, qsizetype cut) {
        judge(
            left, demand, model, [&] { return u"recovery: "_qs + describe(recovery.before, states.calls(), cut); },
            tally);
    });
}
