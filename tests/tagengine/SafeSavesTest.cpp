#include "support/CutShort.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"
#include "tagengine/InterruptedChange.h"
#include "tagengine/OpenedFile.h"
#include "tagengine/RecordSlots.h"
#include "tagengine/TaglibWrapper.h"

#include <QDataStream>

#include <atomic>
#include <filesystem>
#include <random>
#include <thread>

#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <taglib/tag.h>
#include <xxhash.h>

namespace {

namespace fs = std::filesystem;

const QString longText(6000, u'c');
const QString longerTitle = u"Blue Window and Red Door"_qs;

bool saveTitle(const QString& path, const QString& title)
{
    return TaglibWrapper::setMetadata(path, {{u"TITLE"_qs, title}});
}

QString title(const QString& path)
{
    return TaglibWrapper::getTitle(path).value_or(QString());
}

/// A title in a tag at the start and an artist in one at the end, far from each other.
QByteArray withTwoTags(char letter)
{
    return QByteArray("ID3\4\0\0\0\0\0\17TIT2\0\0\0\5\0\0\3", 21) + QByteArray(4, letter) + QByteArray(20'000, '\0')
           + "TAG" + QByteArray(30, '\0') + QByteArray(30, letter) + QByteArray(65, '\0');
}

/// Makes this process the root of a name space of its own and mounts a small file system there.
bool mountApart(const QByteArray& folder)
{
    const QByteArray user = QByteArray::number(::getuid());
    const QByteArray group = QByteArray::number(::getgid());
    const auto set = [](const QString& name, const QByteArray& value) {
        QFile file(u"/proc/self/"_qs + name);
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(value) == value.size();
    };
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && set(u"setgroups"_qs, "deny")
           && set(u"uid_map"_qs, "0 " + user + " 1") && set(u"gid_map"_qs, "0 " + group + " 1")
           && ::mount("none", folder.constData(), "tmpfs", 0, "size=128k") == 0;
}

/// Leaves nothing of the file system's room.
void fill(const QString& folder)
{
    QFile filler(folder + u"/filler"_qs);
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("Can't fill the file system");
    while (filler.write(QByteArray(4096, 'f')) > 0) {
    }
}

QByteArray attribute(const QByteArray& path, const char* name)
{
    QByteArray value(256, '\0');
    const ssize_t size = ::getxattr(path, name, value.data(), 256);
    return size < 0 ? QByteArray() : value.left(size);
}

ino_t inode(const QString& path)
{
    struct stat status {};
    ::stat(QFile::encodeName(path), &status);
    return status.st_ino;
}

} // namespace

class SafeSavesTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        scratch_.emplace();
        qputenv("XDG_STATE_HOME", QFile::encodeName(scratch_->path(u"state"_qs)));
    }

    void leavesFileOnFullOrReadOnlyFileSystem_data()
    {
        addRows({"v24.mp3 | full", "faststart.m4a | full", "v24.mp3 | read-only", "faststart.m4a | read-only"});
    }

    void leavesFileOnFullOrReadOnlyFileSystem()
    {
        const auto [fixture, trouble] = row<2>();
        const QString folder = scratch_->path(u"mounted"_qs);
        QVERIFY(QDir().mkdir(folder));
        const QByteArray prepared = ScratchFolder::contents(roomyCopy(*scratch_, fixture));
        enum { Right, NoMount, WrongTitle, Saved, Changed, Left };
        const int code = inChildProcess([&] {
            if (!mountApart(QFile::encodeName(folder)))
                return NoMount;
            const QString path = folder + u'/' + fixture;
            ScratchFolder::write(path, prepared);
            const bool isFull = trouble == u"full";
            if (isFull)
                fill(folder);
            else if (::mount("none", QFile::encodeName(folder), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
                return NoMount;
            // What fits the tag's padding needs no room.
            if (saveTitle(path, longerTitle) != isFull)
                return WrongTitle;
            const QByteArray before = ScratchFolder::contents(path);
            if (TaglibWrapper::setImageData(QByteArray(300'000, 'p'), path, path.right(3)))
                return Saved;
            if (ScratchFolder::contents(path) != before)
                return Changed;
            return QDir(folder).entryList(QDir::Files | QDir::Hidden).size() == (isFull ? 2 : 1) ? Right : Left;
        });
        if (code == NoMount)
            QSKIP("This machine lets an ordinary user mount nothing");
        QCOMPARE(code, int(Right));
    }

    // Replaced when the text does not fit, patched when it does. The folder may give more to new files.
    void keepsWhatBelongsToFile_data() { addRows({"replaced", "patched", "replaced | generous"}); }

    void keepsWhatBelongsToFile()
    {
        const auto [way, folder] = row<2>();
        const bool isReplaced = way == u"replaced";
        const bool isGenerous = folder == u"generous";
        const QString path = roomyCopy(*scratch_, u"v24.mp3"_qs);
        const QString link = scratch_->path(u"link.mp3"_qs);
        const QByteArray name = QFile::encodeName(path);
        QVERIFY(QFile::link(u"v24.mp3"_qs, link));
        auto list = QByteArray::fromHex(
            "0200000001000600ffffffff020004000100000004000400ffffffff10000400ffffffff20000000ffffffff");
        if (::setxattr(name, "user.mood", "calm", 4, 0) != 0)
            QSKIP("No extended attributes here");
        constexpr int ownersRights = 6;
        if (isGenerous)
            list[ownersRights] = 7;
        const QByteArray given = isGenerous ? QFile::encodeName(scratch_->path(u"."_qs)) : name;
        const char* kind = isGenerous ? "system.posix_acl_default" : "system.posix_acl_access";
        const bool hasList = ::setxattr(given, kind, list, std::size_t(list.size()), 0) == 0 && !isGenerous;
        const auto mode = fs::status(path.toStdString()).permissions();
        const ino_t before = inode(path);
        QVERIFY(saveTitle(link, isReplaced ? longText : longerTitle));
        QCOMPARE(title(path), isReplaced ? longText : longerTitle);
        QCOMPARE(inode(path) != before, isReplaced);
        QCOMPARE(attribute(name, "user.mood"), QByteArray("calm"));
        QCOMPARE(attribute(name, "system.posix_acl_access"), hasList ? list : QByteArray());
        QVERIFY(fs::status(path.toStdString()).permissions() == mode);
        QVERIFY(fs::is_symlink(link.toStdString()));

        const QString second = scratch_->path(u"second.mp3"_qs);
        fs::create_hard_link(path.toStdString(), second.toStdString());
        QVERIFY(TaglibWrapper::writeComment(second, longText + longText));
        QCOMPARE(inode(path), inode(second));
        QCOMPARE(TaglibWrapper::getComment(path), longText + longText);
    }

    void addsToWhatOthersChange()
    {
        const QString path = scratch_->copy(u"v24.mp3"_qs);
        const QString other = scratch_->copy(u"v24.mp3"_qs, u"other.mp3"_qs);
        QVERIFY(TaglibWrapper::writeComment(other, longText));
        const QByteArray others = ScratchFolder::contents(other);
        int calls = 0;
        QVERIFY(OpenedFile::rewrite(path, [&](OpenedFile& file) {
            if (++calls == 1)
                ScratchFolder::write(path, others);
            file.tag()->setTitle("Ours");
            return true;
        }));
        QCOMPARE(calls, 2);
        QCOMPARE(title(path), u"Ours"_qs);
        QCOMPARE(TaglibWrapper::getComment(path), longText);
    }

    // Another program writes into the file, or puts a new one in its place, at some moment of a save.
    void losesNothingToOtherWriters_data()
    {
        addRows({"patched | in place", "replaced | in place", "linked | in place", "patched | by a new file",
                 "replaced | by a new file"});
    }

    void losesNothingToOtherWriters()
    {
        const auto [way, others] = row<2>();
        const QString path = roomyCopy(*scratch_, u"v24.mp3"_qs);
        if (way == u"linked")
            fs::create_hard_link(path.toStdString(), scratch_->path(u"second.mp3"_qs).toStdString());
        const QByteArray sound = ScratchFolder::contents(path).right(800);
        std::mt19937 random(11);
        const int rounds = qEnvironmentVariableIntValue("SONVIKA_RACES") > 0 ? 1000 : 60;
        int refused = 0;
        for (int round = 0; round < rounds; ++round) {
            const QByteArray artist(11, char('A' + round % 26));
            std::thread other([&, delay = random() % 4000, pause = random() % 200] {
                std::this_thread::sleep_for(std::chrono::microseconds(delay));
                writeArtist(path, artist, others == u"in place", int(pause));
            });
            const QString comment = way == u"patched" ? QString::number(round % 10) : QString(100 + round * 30, u'c');
            const bool saved = TaglibWrapper::writeComment(path, comment);
            other.join();
            refused += saved ? 0 : 1;
            const auto tags = TaglibWrapper::getMetadata(path).value();
            QCOMPARE(tags[u"ARTIST"_qs].toLatin1(), artist);
            // A new file may have been made of what was there before the save.
            if (saved && others == u"in place")
                QCOMPARE(tags[u"COMMENT"_qs], comment);
            QCOMPARE(ScratchFolder::contents(path).right(800), sound);
        }
        QVERIFY2(refused < rounds / 10, qPrintable(QString::number(refused)));
    }

    // Somebody else changes the file in place, at any of the calls that read it.
    void readsWhatFileHeldAtOneMoment_data() { addRows({"v24.mp3", "faststart.m4a", "two tags"}); }

    void readsWhatFileHeldAtOneMoment()
    {
        const bool isMade = row()[0] == u"two tags";
        const QString path = scratch_->copy(isMade ? u"v24.mp3"_qs : row()[0]);
        const QString other = scratch_->path(u"other."_qs + path.right(3));
        if (isMade)
            ScratchFolder::write(path, withTwoTags('a'));
        ScratchFolder::write(other, isMade ? withTwoTags('b') : ScratchFolder::contents(path));
        QVERIFY(isMade || saveTitle(other, longText));
        const QByteArray states[]{ScratchFolder::contents(path), ScratchFolder::contents(other)};
        const std::optional<PropertyMap> answers[]{TaglibWrapper::getMetadata(path),
                                                   TaglibWrapper::getMetadata(other)};
        for (const int from : {0, 1}) {
            int call = 0;
            do {
                ScratchFolder::write(path, states[from]);
                FaultInjection::arm(++call, {FaultInjection::Kind::Meanwhile, 0, FaultInjection::Calls::Reading,
                                             [&] { ScratchFolder::write(path, states[1 - from]); }});
                const auto answer = TaglibWrapper::getMetadata(path);
                QVERIFY2(answer == answers[0] || answer == answers[1], qPrintable(TaglibWrapper::failureReason()));
            } while (FaultInjection::hasStruck());
            FaultInjection::arm(0, {});
            QVERIFY(call > 3);
        }
    }

    void waitsForAnotherSave()
    {
        const QString path = scratch_->copy(u"v24.mp3"_qs);
        const int file = ::open(QFile::encodeName(path), O_RDONLY);
        QCOMPARE(::flock(file, LOCK_EX), 0);
        std::atomic_bool isHeld = true;
        std::thread other([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            isHeld = false;
            ::close(file);
        });
        const bool saved = saveTitle(path, longText);
        const bool waited = !isHeld;
        other.join();
        QVERIFY(saved && waited);
    }

    // What happens to the file or to the record of a change that was cut short, and what becomes of the file: it comes back,
    // or it is left alone and told; at last whether it can be had beside what is there now.
    void takesBackWhatItsRecordIsFor_data()
    {
        addRows({"nothing | back", "record cut | left", "file renamed | back", "other inode | back", "grown | told",
                 "shrunk | told", "same size | told", "tag written over | told", "replaced | told", "moved | told",
                 "restored from a backup | left", "came to its end | left"});
    }

    void takesBackWhatItsRecordIsFor()
    {
        const auto [event, expected] = row<2>();
        QString path = roomyCopy(*scratch_, u"v24.mp3"_qs);
        const auto [before, halfway, ended] = cutShort(path);
        const QString record = records().filePath(u"0.slot"_qs);
        const QString other = scratch_->path(u"renamed.mp3"_qs);
        QByteArray now = halfway;
        if (event == u"record cut")
            QVERIFY(QFile::resize(record, 200));
        else if (event == u"file renamed" || event == u"moved" || event == u"other inode")
            QVERIFY(QFile::rename(path, other));
        if (event == u"file renamed")
            path = other;
        else if (event == u"grown")
            now = halfway.left(2000) + QByteArray(5000, 'x') + halfway.mid(2000);
        else if (event == u"shrunk")
            now.chop(500);
        else if (event == u"same size")
            now.replace(now.size() - 100, 50, QByteArray(50, 'x'));
        else if (event == u"tag written over")
            now.replace("Blue", "Grey").replace(15, 4, QByteArray(4, 'x'));
        else if (event == u"replaced")
            now = ScratchFolder::fixture(u"v23.mp3"_qs);
        else if (event == u"restored from a backup")
            now = before;
        else if (event == u"came to its end")
            now = ended;
        if (event != u"moved" && (event == u"other inode" || now != ScratchFolder::contents(path)))
            ScratchFolder::write(path, now);

        TaglibWrapper::getMetadata(path);
        const auto told = InterruptedChanges::recover();
        QCOMPARE(told.size(), expected == u"told" ? 1 : 0);
        QCOMPARE(RecordSlots::inForce().size(), std::size_t(expected == u"told" ? 1 : 0));
        if (event != u"moved")
            QCOMPARE(ScratchFolder::contents(path), expected == u"back" ? before : now);
        if (expected != u"told")
            return;
        QCOMPARE(told.first().path, path);
        QCOMPARE(told.first().reason == InterruptedChange::Reason::Missing, event == u"moved");
        const auto copy = InterruptedChanges::restoreCopy(told.first().id);
        QCOMPARE(copy.has_value(), event != u"moved");
        if (event == u"same size") {
            QCOMPARE(*copy, scratch_->path(u"v24 (restored).mp3"_qs));
            QCOMPARE(ScratchFolder::contents(*copy).left(3000), before.left(3000));
        }
        QCOMPARE(InterruptedChanges::forget(told.first().id), event == u"moved");
        QVERIFY(InterruptedChanges::recover().isEmpty());
    }

    // An earlier version kept no more than the old bytes.
    void followsRecordsOfEarlierVersion_data() { addRows({"at once | back", "later | told", "grown | told"}); }

    void followsRecordsOfEarlierVersion()
    {
        const auto [event, expected] = row<2>();
        const QString path = roomyCopy(*scratch_, u"v24.mp3"_qs);
        const QByteArray before = ScratchFolder::contents(path);
        const auto identity = FileIdentity::ofPath(QFile::encodeName(path));
        const QByteArray record = olderRecord(path, identity, before.mid(20, 30));
        QVERIFY(QDir().mkpath(records().path()));
        ScratchFolder::write(records().filePath(QString::number(identity.device, 16) + u'-'
                                                + QString::number(identity.inode, 16) + u".undo"_qs),
                             record);
        QByteArray now = before;
        now.replace(20, 15, QByteArray(15, 'x'));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.write(event == u"grown" ? now + "more" : now);
        file.flush();
        if (event == u"later")
            file.setFileTime(QDateTime::currentDateTime().addSecs(5), QFile::FileModificationTime);
        file.close();
        now = ScratchFolder::contents(path);
        QCOMPARE(InterruptedChanges::recover().size(), expected == u"told" ? 1 : 0);
        QCOMPARE(ScratchFolder::contents(path), expected == u"back" ? before : now);
    }

    void savesWithoutStateFolder()
    {
        qputenv("XDG_STATE_HOME", QFile::encodeName(scratch_->copy(u"text.mp3"_qs)) + "/below");
        for (const auto& fixture : {u"v24.mp3"_qs, u"padded.m4a"_qs}) {
            const QString path = roomyCopy(*scratch_, fixture);
            QVERIFY(saveTitle(path, longerTitle));
            QCOMPARE(title(path), longerTitle);
        }
    }

    void keepsPiecesInOrder()
    {
        std::mt19937 random(7);
        const auto upTo = [&](std::size_t limit) {
            return std::uniform_int_distribution<std::size_t>(0, limit)(random);
        };
        for (int round = 0; round < 200; ++round) {
            std::string original(upTo(300), '\0');
            std::generate(original.begin(), original.end(), [&] { return char('a' + upTo(25)); });
            std::string expected = original;
            PieceTable table(std::int64_t(original.size()));
            for (int step = 0; step < 30; ++step) {
                const std::size_t start = upTo(expected.size() + 5);
                const std::size_t removed = upTo(20);
                const std::string bytes(upTo(20), char('A' + step % 26));
                table.replace(std::int64_t(start), std::int64_t(removed), bytes.data(), bytes.size());
                expected.resize(std::max(expected.size(), start));
                expected.replace(start, removed, bytes);
            }
            std::string content;
            table.visit(0, table.length(), [&](std::int64_t, const PieceTable::Piece& piece) {
                content += piece.isOriginal() ? original.substr(std::size_t(piece.offset), std::size_t(piece.length))
                                              : std::string(piece.data(), std::size_t(piece.length));
            });
            QVERIFY(content == expected);
            const auto prefix = std::size_t(table.unchangedPrefix());
            QVERIFY(expected.compare(0, prefix, original, 0, prefix) == 0);
        }
    }

private:
    QDir records() const { return QDir(scratch_->path(u"state/sonvika/undo"_qs)); }

    /// What another editor does, which knows nothing of locks: writes the first artist of the tag over, in two calls.
    static void writeArtist(const QString& path, const QByteArray& artist, bool isInPlace, int pause)
    {
        const QByteArray content = ScratchFolder::contents(path);
        const auto at = content.indexOf("TPE1") + 11;
        const auto half = artist.size() / 2;
        const QString target = isInPlace ? path : path + u".new"_qs;
        if (!isInPlace)
            ScratchFolder::write(target, content);
        const FileDescriptor file(::open(QFile::encodeName(target), O_RDWR));
        PosixFile::writeAt(file.get(), at, artist.constData(), std::size_t(half));
        std::this_thread::sleep_for(std::chrono::microseconds(pause));
        PosixFile::writeAt(file.get(), at + half, artist.constData() + half, std::size_t(artist.size() - half));
        if (!isInPlace)
            ::rename(QFile::encodeName(target), QFile::encodeName(path));
    }

    static QByteArray olderRecord(const QString& path, const FileIdentity& identity, const QByteArray& old)
    {
        QByteArray header;
        QDataStream stream(&header, QIODevice::WriteOnly);
        stream << quint32(0x536f5675) << QFile::encodeName(path) << quint64(identity.device)
               << quint64(identity.inode) << qint64(identity.birth) << qint64(identity.size) << quint32(1)
               << qint64(20) << qint64(old.size());
        const auto length = quint32(header.size());
        const QByteArray content = QByteArray(reinterpret_cast<const char*>(&length), 4) + header + old;
        const auto sum = XXH3_64bits(content.constData(), std::size_t(content.size()));
        return content + QByteArray(reinterpret_cast<const char*>(&sum), 8);
    }

    std::optional<ScratchFolder> scratch_;
};

QTEST_GUILESS_MAIN(SafeSavesTest)
#include "SafeSavesTest.moc"
