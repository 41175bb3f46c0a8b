#include "support/FaultInjection.h"
#include "support/Rows.h"
#include "tagengine/RecordSlots.h"
#include "tagengine/WritingOperations.h"

#include <cerrno>
#include <csignal>
#include <filesystem>

#include <taglib/fileref.h>

namespace {

namespace fs = std::filesystem;
using FaultInjection::Calls;
using FaultInjection::Fault;
using FaultInjection::Kind;
using WritingOperations::growth;
using WritingOperations::NamedOperation;
using WritingOperations::Operation;
using Faults = QMap<QString, Fault>;

const Faults writeFaults{{u"full disk"_qs, {Kind::Error, ENOSPC}},
                         {u"disk error"_qs, {Kind::Error, EIO}},
                         {u"quota"_qs, {Kind::Error, EDQUOT}},
                         {u"full disk from then on"_qs, {Kind::ErrorFromNowOn, ENOSPC}},
                         {u"disk error from then on"_qs, {Kind::ErrorFromNowOn, EIO}},
                         {u"short"_qs, {Kind::Short}}};

const Faults readFaults{{u"disk error"_qs, {Kind::Error, EIO, Calls::Reading}},
                        {u"disk error from then on"_qs, {Kind::ErrorFromNowOn, EIO, Calls::Reading}},
                        {u"replaced on the server"_qs, {Kind::Error, ESTALE, Calls::Reading}},
                        {u"interrupted"_qs, {Kind::Error, EINTR, Calls::Reading}},
                        {u"short"_qs, {Kind::Short, 0, Calls::Reading}},
                        {u"false end"_qs, {Kind::End, 0, Calls::Reading}}};

/// All that can be asked about a file.
struct Reading {
    const char* name;
    std::function<QVariant(const QString& path)> run; ///< an invalid value after a failure
};

template <class Answer>
QVariant asVariant(const std::optional<Answer>& answer)
{
    return answer ? QVariant::fromValue(*answer) : QVariant();
}

QVariant contents(const QString& path)
{
    QByteArray image;
    const auto found =
        TaglibWrapper::readContents(path, path.right(3), [&](const QByteArray& bytes) { image = bytes + "."; });
    const auto chapters = found ? found->chapters.value_or(QStringList()) : QStringList();
    return found ? QVariantList{QVariant::fromValue(found->tags), image, chapters} : QVariant();
}

const std::vector<Reading> readings{
    {"tags", [](const QString& path) { return asVariant(TaglibWrapper::getMetadata(path)); }},
    {"contents", contents},
    {"comment", [](const QString& path) { return asVariant(TaglibWrapper::getComment(path)); }},
    {"picture", [](const QString& path) { return asVariant(TaglibWrapper::getImageData(path, path.right(3))); }},
    {"chapters", [](const QString& path) { return asVariant(TaglibWrapper::getChapters(path)); }},
    {"type", [](const QString& path) { return asVariant(TaglibWrapper::detectStreamType(path)); }}};

/// TagLib alone.
bool addCoverBare(const QString& path)
{
    TagLib::FileRef file(QFile::encodeName(path).constData());
    file.setComplexProperties("PICTURE", {{{"data", TagLib::ByteVector(300'000, 'p')}, {"mimeType", "image/jpeg"}}});
    return file.save();
}

/// What became of a process that ran an operation.
struct Ending {
    bool saved = false;
    bool struck = false;
};

/// Runs the operation in a process whose n-th call that writes meets the fault; 0 for none.
Ending run(const Operation& operation, const QString& path, int call = 0, const Fault& fault = {})
{
    const int code = inChildProcess([&] {
        FaultInjection::arm(call, fault);
        const bool saved = operation(path);
        return (saved ? 1 : 0) + (FaultInjection::hasStruck() ? 2 : 0);
    });
    if (code < 0 && code != -SIGKILL)
        qFatal("The operation crashed");
    return code < 0 ? Ending{false, true} : Ending{code % 2 == 1, code >= 2};
}

/// A file in a folder of its own, and what an operation is to make of it.
class Case {
public:
    Case(const QString& fixture, const QString& placement, const NamedOperation& operation)
        : file_(scratch_.path(u"album/song."_qs + fixture.right(3))), operation_(operation.run)
    {
        qputenv("XDG_STATE_HOME", QFile::encodeName(scratch_.path(u"state"_qs)));
        QDir().mkpath(scratch_.path(u"album"_qs));
        QFile::rename(WritingOperations::prepare(scratch_, fixture, operation), file_);
        before_ = ScratchFolder::contents(file_);
        saves_ = run(operation_, file_).saved;
        after_ = ScratchFolder::contents(file_);
        ScratchFolder::write(neighbour_, ScratchFolder::fixture(u"v24.mp3"_qs));
        if (placement == u"linked")
            fs::create_hard_link(file_.toStdString(), second_.toStdString());
        if (placement == u"closed folder")
            QFile::setPermissions(scratch_.path(u"album"_qs), QFile::ReadOwner | QFile::ExeOwner);
    }
    ~Case()
    {
        QFile::setPermissions(scratch_.path(u"album"_qs), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    bool saves() const { return saves_; }
    const QString& path() const { return file_; }
    Ending hit(int call, const Fault& fault) const
    {
        if (ScratchFolder::contents(file_) != before_)
            ScratchFolder::write(file_, before_);
        return run(operation_, file_, call, fault);
    }

    /// @return what is wrong once the file has been looked at again; nothing when all is well.
    QString verdict(const Ending& ending) const
    {
        TaglibWrapper::getMetadata(file_);
        const QByteArray now = ScratchFolder::contents(file_);
        if (now != after_ && (now != before_ || ending.saved))
            return ending.saved ? u"damaged, said to be saved"_qs : u"damaged"_qs;
        if (QFile::exists(second_) && !fs::equivalent(file_.toStdString(), second_.toStdString()))
            return u"link broken"_qs;
        if (!RecordSlots::inForce().empty())
            return u"undo record left"_qs;
        if (hasTemporary()) {
            ScratchFolder::write(neighbour_, ScratchFolder::fixture(u"v24.mp3"_qs));
            run(growth.run, neighbour_);
        }
        return hasTemporary() ? u"temporary left"_qs : QString();
    }

private:
    bool hasTemporary() const
    {
        return !QDir(scratch_.path(u"album"_qs)).entryList({u".*"_qs}, QDir::Files | QDir::Hidden).isEmpty();
    }

    ScratchFolder scratch_;
    QString file_;
    QString neighbour_ = scratch_.path(u"album/neighbour.mp3"_qs);
    QString second_ = scratch_.path(u"album/second"_qs);
    Operation operation_;
    QByteArray before_;
    QByteArray after_;
    bool saves_ = false;
};

/// How many points were tried and what was found wrong at them.
struct Tally {
    int points = 0;
    QStringList wrong;

    void tryAll(const QString& fixture, const QString& placement, const NamedOperation& operation,
                const Faults& faults = writeFaults)
    {
        const Case example(fixture, placement, operation);
        if (!example.saves())
            wrong += u"not saved without any fault: "_qs + fixture + QString::fromUtf8(operation.name);
        for (auto fault = faults.begin(); fault != faults.end(); ++fault) {
            bool struck = true;
            for (int call = 1; struck; ++call) {
                const Ending ending = example.hit(call, *fault);
                struck = ending.struck;
                points += struck;
                // A record that could not be looked at when it was made is empty, and goes at the next start.
                if (fault->calls == Calls::Reading)
                    TaglibWrapper::recoverInterruptedChanges();
                add(QString::fromUtf8(operation.name) + u", "_qs + fault.key(), call, example.verdict(ending));
            }
        }
    }
    /// Every answer under a fault has to be the true one, or none with a reason where there is one.
    void tryAll(const QString& path, const Reading& reading)
    {
        const QVariant truth = reading.run(path);
        const auto answersWell = [&](const QString&) {
            const QVariant answer = reading.run(path);
            return answer == truth || (!answer.isValid() && !TaglibWrapper::failureReason().isEmpty());
        };
        for (auto fault = readFaults.begin(); fault != readFaults.end(); ++fault) {
            bool struck = true;
            for (int call = 1; struck; ++call) {
                const Ending ending = run(answersWell, path, call, *fault);
                struck = ending.struck;
                points += struck;
                add(QString::fromUtf8(reading.name) + u", "_qs + fault.key(), call,
                    ending.saved ? QString() : u"wrong answer"_qs);
            }
        }
    }
    void add(const QString& what, int call, const QString& verdict)
    {
        if (!verdict.isEmpty())
            wrong += u"%1 at call %2: %3"_qs.arg(what).arg(call).arg(verdict);
    }
};

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ScratchFolder::workInMemory(); }

    // File, where it lies, and the number of operations that are tried on it.
    void leaveOldOrNewFile_data()
    {
        addRows({
#ifdef __SANITIZE_ADDRESS__
            "roomy v24.mp3 | plain | 2", "faststart.m4a | linked | 1"
#else
            "roomy v24.mp3 | plain | 9", "v23.mp3 | plain | 9", "faststart.m4a | plain | 8", "tagged.m4a | plain | 3",
            "padded.m4a | plain | 4", "roomy v24.mp3 | linked | 9", "faststart.m4a | linked | 3",
            "tagged.m4a | linked | 2", "padded.m4a | linked | 4", "long v23.mp3 | linked | 1",
            "long v23.mp3 | plain | 1", "long faststart.m4a | plain | 1", "v23.mp3 | closed folder | 3",
            "faststart.m4a | closed folder | 3"
#endif
        });
    }

    void leaveOldOrNewFile()
    {
        const auto [fixture, placement, count] = row<3>();
        Tally tally;
        for (std::size_t i = 0; i < count.toUInt(); ++i)
            tally.tryAll(fixture, placement, WritingOperations::all[i]);
        judge(tally);
    }

    // File, and the number of operations that are tried on it; its name alone asks for all readings.
    void meetTroubleInReading_data()
    {
        addRows({
#ifdef __SANITIZE_ADDRESS__
            "v24.mp3", "tagged.m4a", "info.wav | 1"
#else
            "v24.mp3", "chapters.mp3", "ape.mp3", "tagged.m4a", "info.wav", "no-extension-m4a", "roomy v24.mp3 | 9",
            "faststart.m4a | 8", "padded.m4a | 4", "info.wav | 2", "long v23.mp3 | 1"
#endif
        });
    }

    void meetTroubleInReading()
    {
        const auto [fixture, count] = row<2>();
        Tally tally;
        for (std::size_t i = 0; i < count.toUInt(); ++i)
            tally.tryAll(fixture, u"plain"_qs, WritingOperations::all[i], readFaults);
        const ScratchFolder scratch;
        const QString path = count.isEmpty() ? scratch.copy(fixture) : QString();
        for (std::size_t i = 0; count.isEmpty() && i < readings.size(); ++i)
            tally.tryAll(path, readings[i]);
        judge(tally);
    }

    // The disk fails while a file is brought back.
    void failDuringRecovery_data()
    {
        addRows({"roomy v24.mp3 | 0", "faststart.m4a | 0", "faststart.m4a | 1"});
    }

    void failDuringRecovery()
    {
        const auto [fixture, index] = row<2>();
        const Case example(fixture, u"linked"_qs, WritingOperations::all[index.toUInt()]);
        const auto look = [](const QString& path) { return TaglibWrapper::getMetadata(path).has_value(); };
        Tally tally;
        for (int call = 1; example.hit(call, {Kind::KillHalfway}).struck; ++call) {
            for (int later = 1; run(look, example.path(), later, {Kind::ErrorFromNowOn, EIO}).struck; ++later) {
                ++tally.points;
                tally.add(u"recovery from"_qs, call, example.verdict({}));
                example.hit(call, {Kind::KillHalfway});
            }
        }
        judge(tally);
    }

    // The harness proves itself.
    void damageFilesUnderTagLibAlone()
    {
        Tally tally;
        for (const auto& fixture : {u"long v23.mp3"_qs, u"long faststart.m4a"_qs})
            tally.tryAll(fixture, u"plain"_qs, {"cover", addCoverBare, {}});
        const auto damaged = tally.wrong.filter(u"damaged"_qs);
        qInfo("TagLib alone: %d points tried, %d files damaged, %d of them said to be saved", tally.points,
              int(damaged.size()), int(damaged.filter(u"saved"_qs).size()));
        QVERIFY(!damaged.isEmpty());
    }

    void cleanupTestCase() const
    {
        qInfo("Sonvika: %d points tried, %d files that are neither old nor new", points_, int(wrong_));
    }

private:
    void judge(const Tally& tally)
    {
        points_ += tally.points;
        wrong_ += tally.wrong.size();
        QVERIFY2(tally.wrong.isEmpty(), qPrintable(tally.wrong.join(u'\n')));
    }

    int points_ = 0;
    qsizetype wrong_ = 0;
};

QTEST_GUILESS_MAIN(FaultsTest)
#include "FaultsTest.moc"
