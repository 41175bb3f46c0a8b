#include "app/PreviewController.h"
#include "app/ui/ElidedLabel.h"
#include "app/ui/PositionSlider.h"
#include "app/ui/PreviewPanel.h"
#include "fakes/Desk.h"
#include "fakes/FakeAudioPlayer.h"
#include "support/Rows.h"

#include <QToolButton>

class PreviewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        player_ = nullptr;
        problem_.reset();
        desk_ = std::make_unique<Desk>();
        desk_->add(u"a b c"_qs);
        panel_ = std::make_unique<PreviewPanel>([this] { return makePlayer(); }, &desk_->table, &desk_->window);
        controller_ = std::make_unique<PreviewController>(desk_->list, *panel_);
        desk_->window.attachPreview(*controller_);
        desk_->show();
        desk_->select(u"1"_qs);
    }
    void cleanup()
    {
        controller_.reset();
        panel_.reset();
        desk_.reset();
    }

    void aHeldSpaceKeyLeavesItOpen()
    {
        desk_->select({});
        QTest::keyClick(&desk_->table, Qt::Key_Space);
        QVERIFY(!controller_->isShown());
        desk_->select(u"2 1"_qs);
        QTest::keyClick(&desk_->table, Qt::Key_Space);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, u" "_qs, true);
        for (QWidget* receiver : std::initializer_list<QWidget*>{panel_.get(), &desk_->table})
            QCoreApplication::sendEvent(receiver, &held);
        QVERIFY(controller_->isShown());
        QCOMPARE(text("title"), u"b"_qs);
        QCOMPARE(desk_->list.selection().rows(), QList({1, 2}));
    }

    // the key | the row that is selected then | whether the preview is shown | whether it plays
    void keysFindTheirPlace_data()
    {
        addRows({"Space | 1 | hidden", "Esc | 1 | hidden", "Down | 2 | shown", "Up | 0 | shown", "End | 2 | shown",
                 "P | 1 | shown | playing", "K | 1 | shown | playing", "Return | 1 | shown | playing"});
    }
    void keysFindTheirPlace()
    {
        const auto [name, selected, shown, playing] = row<4>();
        const auto key = QKeySequence(name)[0].key();
        for (QWidget* focused : std::initializer_list<QWidget*>{panel_.get(), &button(), &slider()}) {
            desk_->select(u"1"_qs);
            openAndLoad();
            focused->setFocus();
            QTest::keyClick(focused, key);
            QCOMPARE(desk_->list.selection().rows(), Library::numbers(selected));
            QCOMPARE(panel_->isVisible(), shown == u"shown");
            QCOMPARE(text("title"), u"b"_qs);
            QCOMPARE(player_->state() == AudioPlayer::State::Playing, !playing.isEmpty());
            QCOMPARE(player_->position(), 0);
            panel_->hidePreview();
        }
    }

    void playsSeeksAndStops()
    {
        openAndLoad();
        QCOMPARE(label("totalTime").text(), u"3:07"_qs);
        QTest::mouseClick(&button(), Qt::LeftButton);
        QCOMPARE(player_->state(), AudioPlayer::State::Playing);
        slider().setSliderDown(true);
        slider().setSliderPosition(120'000);
        emit player_->positionChanged(66'000);
        QCOMPARE(label("elapsedTime").text(), u"2:00"_qs);
        slider().setSliderDown(false);
        QTest::keyClick(panel_.get(), Qt::Key_Right);
        QCOMPARE(player_->position(), 125'000);
        QTest::mouseClick(&slider(), Qt::LeftButton, {}, slider().rect().center());
        QVERIFY(std::abs(player_->position() - player_->duration() / 2) < 1000);
        panel_->close();
        QCOMPARE(player_->state(), AudioPlayer::State::Stopped);
        desk_->select(u"2"_qs);
        controller_->openQuickLook();
        QTest::keyClick(panel_.get(), Qt::Key_P);
        QCOMPARE(player_->loaded, QStringList({u"/music/b.mp3"_qs, u"/music/c.mp3"_qs}));
    }

    // the problem | words that tell of it | whether one may try again
    void tellsWhyItCannotPlay_data()
    {
        addRows({"0 | no longer there | no", "1 | cannot be played | no", "2 | sound device | yes"});
    }
    void tellsWhyItCannotPlay()
    {
        using enum AudioPlayer::Problem;
        const auto [problem, words, again] = row<3>();
        problem_ = std::array{NoFile, NoDecoder, NoDevice}.at(problem.toUInt());
        openAndLoad();
        QVERIFY2(label("problem").text().contains(words), qPrintable(label("problem").text()));
        QVERIFY(label("problem").isVisible());
        QCOMPARE(button().isEnabled(), again == u"yes");
        player_->problem.reset();
        QTest::keyClick(panel_.get(), Qt::Key_P);
        QCOMPARE(player_->state() == AudioPlayer::State::Playing, again == u"yes");
        QCOMPARE(label("problem").isVisible(), again == u"no");
    }

    void tellsThatNoPlayerIsToBeHad()
    {
        PreviewPanel panel([] { return nullptr; }, &desk_->table, &desk_->window);
        panel.showPreview(*desk_->list.arrangedObjects().front());
        const auto* problem = panel.findChild<QLabel*>(u"problem"_qs);
        QTRY_VERIFY2(problem->text().contains(u"cannot be played"_qs), qPrintable(problem->text()));
        QTest::keyClick(&panel, Qt::Key_P);
        QTest::keyClick(&panel, Qt::Key_Right);
        QVERIFY(problem->isVisible());
        QVERIFY(!panel.findChild<QToolButton*>(u"playButton"_qs)->isEnabled());
    }

    void showsTextsAsTheyAre()
    {
        AudioFile& record = desk_->record(1);
        record.title = u"<img src=x><b>bold</b>\nsecond line &amp; "_qs + QString(5000, u'W');
        record.fileName = u"b [*] <i>.mp3"_qs;
        controller_->openQuickLook();
        for (const auto* shown : panel_->findChildren<QLabel*>())
            QVERIFY2(shown->textFormat() == Qt::PlainText || !shown->text().contains(u'<'),
                     qPrintable(shown->text()));
        QVERIFY(text("title").startsWith(u"<img src=x><b>bold</b> second line &amp; W"));
        QVERIFY(label("title").toolTip().startsWith(u"<p>&lt;img"));
        QVERIFY(panel_->width() < 800);
        QCOMPARE(panel_->windowTitle(), u"b [*][*] <i>.mp3"_qs);
        QVERIFY(!label("year").isVisible());
    }

    void opensBeforeThePlayerIsThere()
    {
        QTest::keyClick(&desk_->table, Qt::Key_Space);
        QVERIFY(QTest::qWaitForWindowExposed(panel_.get()));
        QVERIFY(!player_);
        // Closed before the player was made: nothing is loaded later.
        QTest::keyClick(panel_.get(), Qt::Key_Space);
        QTest::qWait(200);
        QVERIFY(!player_);
    }

    void writesTimes_data()
    {
        addRows({"999 | 0:00", "61000 | 1:01", "3599999 | 59:59", "3723000 | 1:02:03", "360000000 | 100:00:00"});
    }
    void writesTimes()
    {
        const auto [milliseconds, expected] = row<2>();
        QCOMPARE(PositionSlider::timeText(milliseconds.toLongLong()), expected);
    }

private:
    std::unique_ptr<AudioPlayer> makePlayer()
    {
        auto player = std::make_unique<FakeAudioPlayer>();
        player_ = player.get();
        player_->problem = problem_;
        return player;
    }
    void openAndLoad()
    {
        controller_->openQuickLook();
        QTRY_VERIFY(player_ && !label("totalTime").text().isEmpty());
    }
    QString text(const char* name) { return panel_->findChild<ElidedLabel*>(QLatin1String(name))->fullText(); }
    QLabel& label(const char* name) { return *panel_->findChild<QLabel*>(QLatin1String(name)); }
    QToolButton& button() { return *panel_->findChild<QToolButton*>(u"playButton"_qs); }
    PositionSlider& slider() { return *panel_->findChild<PositionSlider*>(u"position"_qs); }

    FakeAudioPlayer* player_ = nullptr;
    std::optional<AudioPlayer::Problem> problem_;
    std::unique_ptr<Desk> desk_;
    std::unique_ptr<PreviewPanel> panel_;
    std::unique_ptr<PreviewController> controller_;
};

QTEST_MAIN(PreviewTest)
#include "PreviewTest.moc"
