#include "support/ScratchFolder.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <unistd.h>

namespace {

/// The paths below which the calls of a trace change something, or only try to.
QStringList changedPaths(const QString& trace)
{
    static const QRegularExpression changing(
        u"\\bO_(WRONLY|RDWR|CREAT|TRUNC|TMPFILE)|^\\d+ +(creat|mkdir|rename|unlink|rmdir|link|symlink|chmod|fchmodat|chown|lchown|fchownat|truncate|utime|l?setxattr|l?removexattr|mknod)"_qs);
    static const QRegularExpression path(u"(?:<([^>]*)>, )?\"([^\"]*)\""_qs);
    QStringList paths;
    for (const auto& call : trace.split(u'\n').filter(changing)) {
        for (auto named = path.globalMatch(call); named.hasNext();) {
            const auto match = named.next();
            paths.append(QDir::cleanPath(QDir(match.captured(1)).filePath(match.captured(2))));
            // What follows is the name of an attribute.
            if (call.contains(u"xattr"))
                break;
        }
    }
    return paths;
}

/// Where the files of a session lie: the folders of those paths, without what differs from one run to the next.
QStringList placesBelow(const QString& root, const QStringList& paths)
{
    static const QRegularExpression scratch(u"^tmp/[^/]*-[A-Za-z]{6}(?=/|$)"_qs);
    QSet<QString> places;
    for (const auto& path : paths) {
        QString place = path.startsWith(root + u'/') ? path.mid(root.size() + 1) : path;
        place.replace(u"sonvika-%1"_qs.arg(::getuid()), u"sonvika-UID"_qs).replace(scratch, u"tmp/scratch"_qs);
        // What a library keeps in the cache is its own affair.
        if (place.section(u'/', 0, 0) != u"cache" && path != u"/dev/null")
            places.insert(place.section(u'/', 0, -2));
    }
    QStringList sorted(places.begin(), places.end());
    sorted.sort();
    return sorted;
}

} // namespace

/// What a session of the program touches, as the system sees it.
class SafetyTest : public QObject {
    Q_OBJECT

private slots:
    void sessionWritesWhereItMayAndAsksNoNetwork()
    {
        const QTemporaryDir folder;
        const QString root = folder.path();
        for (const auto* name : {"home", "album", "chosen", "config", "data", "state", "cache", "runtime", "tmp"})
            QVERIFY(QDir(root).mkdir(QLatin1String(name)));
        for (const auto& name : {u"v24.mp3"_qs, u"tagged.m4a"_qs})
            ScratchFolder::write(root + u"/album/"_qs + name, ScratchFolder::fixture(name));
        QVERIFY(QFile::setPermissions(root + u"/runtime"_qs, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QProcess session;
        session.setProcessEnvironment(surroundings(root));
        session.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        session.start(u"strace"_qs,
                      u"-f --seccomp-bpf -qq -y -s 4096 -e trace=%file,%network -e signal=none -o"_qs.split(u' ')
                          + QStringList{root + u"/trace"_qs, QStringLiteral(SESSION_PROGRAM), root + u"/album"_qs,
                                        QStringLiteral(TEST_DATA_DIR "/cover.png"), root + u"/chosen"_qs});
        QVERIFY2(session.waitForFinished(120'000), "strace did not run, or the session did not end");
        QVERIFY(session.exitStatus() == QProcess::NormalExit && session.exitCode() == 0);

        const QString trace = QString::fromUtf8(ScratchFolder::contents(root + u"/trace"_qs));
        // As docs/safety.md names them. The empty place is that of the test itself, in which folders are made.
        QCOMPARE(placesBelow(root, changedPaths(trace)).join(u' '),
                 u" /proc/self/fd album chosen config config/sonvika data state state/sonvika state/sonvika/undo tmp "
                 "tmp/scratch tmp/scratch/1 tmp/sonvika-UID tmp/sonvika-UID/Drops"_qs);
        QVERIFY2(trace.contains(u"AF_UNIX"), "the trace lacks the session bus");
        const qsizetype network = trace.indexOf(QRegularExpression(u"AF_INET|AF_NETLINK|AF_PACKET"_qs));
        QVERIFY2(network < 0, qPrintable(trace.mid(trace.lastIndexOf(u'\n', network) + 1).section(u'\n', 0, 0)));
    }

private:
    static QProcessEnvironment surroundings(const QString& root)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_qs, root + u"/home"_qs);
        environment.insert(u"TMPDIR"_qs, root + u"/tmp"_qs);
        environment.insert(u"XDG_RUNTIME_DIR"_qs, root + u"/runtime"_qs);
        for (const auto* kind : {"config", "data", "state", "cache"})
            environment.insert(u"XDG_%1_HOME"_qs.arg(QString::fromLatin1(kind).toUpper()),
                               root + u'/' + QLatin1String(kind));
        // Leaks can't be looked for in a process that is traced already.
        environment.insert(u"ASAN_OPTIONS"_qs, u"detect_leaks=0"_qs);
        return environment;
    }
};

QTEST_GUILESS_MAIN(SafetyTest)
#include "SafetyTest.moc"
