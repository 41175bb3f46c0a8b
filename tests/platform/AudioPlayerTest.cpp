#include "platform/AudioPlayer.h"
#include "platform/PathBytes.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QSignalSpy>

#include <cstdio>

/// The sound itself needs a device, which the machine that runs the tests may not have.
class AudioPlayerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        player_ = AudioPlayerPlugin::makePlayer();
        connect(player_.get(), &AudioPlayer::failed, this, [this](AudioPlayer::Problem what) {
            if (what != AudioPlayer::Problem::NoDevice)
                problem_ = what;
        });
    }
    void init() { problem_.reset(); }
    void cleanupTestCase() { player_.reset(); }

    // One player takes them all, the good after the bad.
    void loads_data()
    {
        addRows({"v24.mp3 | a.mp3 | plays", "text.mp3 | c.mp3 | no decoder", "lame.mp3 | ö #%20?.mp3 | plays",
                 "empty.mp3 | d.mp3 | no decoder", "tagged.m4a | a.m4a | plays", "cover.jpg | e.mp3 | no decoder",
                 "mp3-named.m4a | b.m4a | plays", " | f.mp3 | no file", "folder | g.mp3 | no file"});
    }
    void loads()
    {
        const auto [fixture, name, expected] = row<3>();
        if (fixture == u"folder")
            QVERIFY(QDir().mkdir(folder_.path(name)));
        else if (!fixture.isEmpty())
            folder_.copy(fixture, name);
        player_->load(folder_.path(name));
        using enum AudioPlayer::Problem;
        if (expected == u"plays") {
            QTRY_VERIFY(player_->duration() > 500);
            QVERIFY(!problem_);
            QVERIFY(openFiles().contains(folder_.path(name)));
        } else {
            QTRY_COMPARE(problem_, std::optional(expected == u"no file" ? NoFile : NoDecoder));
        }
        player_->stop();
        QVERIFY(!openFiles().contains(folder_.path(name)));
        QCOMPARE(player_->state(), AudioPlayer::State::Stopped);
    }

    void loadsFilesOfAnyName()
    {
        const QByteArray odd = QFile::encodeName(folder_.path(u"odd"_qs)) + "\xff.mp3";
        QCOMPARE(std::rename(QFile::encodeName(folder_.copy(u"v24.mp3"_qs, u"odd"_qs)).constData(), odd.constData()),
                 0);
        player_->load(PathBytes::decode(odd));
        std::remove(odd.constData());
        QTRY_VERIFY(player_->duration() > 500);
        QVERIFY(!problem_);
    }

    void startsWhereItWasSought()
    {
        player_->load(folder_.copy(u"lame.mp3"_qs));
        QTRY_VERIFY(player_->duration() > 500);
        QSignalSpy positions(player_.get(), &AudioPlayer::positionChanged);
        player_->seek(300);
        QCOMPARE(player_->position(), 300);
        QCOMPARE(positions.size(), 1);
        player_->seek(100'000);
        QCOMPARE(player_->position(), player_->duration());
        player_->stop();
        QCOMPARE(player_->duration(), 0);
    }

private:
    static QStringList openFiles()
    {
        QStringList targets;
        for (const auto& link : QDir(u"/proc/self/fd"_qs).entryInfoList(QDir::System | QDir::Files))
            targets.append(link.symLinkTarget());
        return targets;
    }

    ScratchFolder folder_;
    std::unique_ptr<AudioPlayer> player_;
    std::optional<AudioPlayer::Problem> problem_;
};

QTEST_MAIN(AudioPlayerTest)
#include "AudioPlayerTest.moc"
