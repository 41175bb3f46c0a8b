#include "app/PreviewController.h"
#include "app/ui/ElidedLabel.h"
#include "app/ui/PositionSlider.h"
#include "app/ui/PreviewPanel.h"
#include "fakes/FakeAudioPlayer.h"
#include "fakes/Library.h"
#include "library/ui/ArrowCaptureTextField.h"
#include "library/ui/QuickLookTableView.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QSlider>
#include <QToolButton>

class PreviewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        cleanup();
        player_ = nullptr;
        problem_.reset();
        loadTime_ = 0;
        library_ = std::make_unique<Library>();
        library_->add(u"a b c"_qs);
        table_ = std::make_unique<QuickLookTableView>(library_->list, library_->drops);
        panel_ = std::make_unique<PreviewPanel>([this] { return makePlayer(); }, table_.get(), table_.get());
        controller_ = std::make_unique<PreviewController>(library_->list, *panel_);
        connect(table_.get(), &QuickLookTableView::quickLookWanted, controller_.get(),
                &PreviewController::openQuickLook);
        connect(panel_.get(), &PreviewPanel::shownChanged, controller_.get(), &PreviewController::shownChanged);
        table_->show();
        QVERIFY(QTest::qWaitForWindowActive(table_.get()));
        library_->list.selection().setRows({1});
    }

    void cleanup()
    {
        controller_.reset();
        panel_.reset();
        table_.reset();
        library_.reset();
    }

    void previewsTheFirstSelectedFile_data()
    {
        addRows({" | 0 | ", "0 | 1 | a", "0 1 2 | 1 | a", "2 1 | 1 | b", "2 | 1 | c"});
    }
    void previewsTheFirstSelectedFile()
    {
        const auto [rows, items, shown] = row<3>();
        select(rows);
        QSignalSpy changes(controller_.get(), &PreviewController::shownChanged);
        QCOMPARE(controller_->numberOfPreviewItems(), items.toInt());
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QCOMPARE(controller_->isShown(), !shown.isEmpty());
        QCOMPARE(text("title"), shown);
        QCOMPARE(changes.size(), controller_->isShown() ? 1 : 0);
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QVERIFY(!controller_->isShown());
        controller_->closeQuickLook();
        QCOMPARE(changes.size(), shown.isEmpty() ? 0 : 2);
    }

    void staysWhenItsFileIsNoLongerSelected()
    {
        controller_->openQuickLook();
        select({});
        controller_->openQuickLook();
        QVERIFY(controller_->isShown());
        controller_->closeQuickLook();
        QVERIFY(!controller_->isShown());
    }

    void spaceLeavesTheSelection()
    {
        library_->list.selection().setRows({0, 2});
        library_->list.selection().setCurrentIndex(library_->list.index(1, 0), QItemSelectionModel::NoUpdate);
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QCOMPARE(library_->list.selection().rows(), (QList{0, 2}));
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, u" "_qs, true);
        for (QWidget* receiver : std::initializer_list<QWidget*>{panel_.get(), table_.get()})
            QCoreApplication::sendEvent(receiver, &held);
        QVERIFY(controller_->isShown());
    }

    void keysFindTheirPlace_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<AudioPlayer::State>("state");
        using enum AudioPlayer::State;
        QTest::newRow("space") << int(Qt::Key_Space) << 1 << false << Stopped;
        QTest::newRow("escape") << int(Qt::Key_Escape) << 1 << false << Stopped;
        QTest::newRow("down") << int(Qt::Key_Down) << 2 << true << Stopped;
        QTest::newRow("up") << int(Qt::Key_Up) << 0 << true << Stopped;
        QTest::newRow("end") << int(Qt::Key_End) << 2 << true << Stopped;
        QTest::newRow("P") << int(Qt::Key_P) << 1 << true << Playing;
        QTest::newRow("K") << int(Qt::Key_K) << 1 << true << Playing;
        QTest::newRow("return") << int(Qt::Key_Return) << 1 << true << Playing;
    }
    void keysFindTheirPlace()
    {
        QFETCH(int, key);
        QFETCH(int, row);
        QFETCH(bool, shown);
        QFETCH(AudioPlayer::State, state);
        for (QWidget* focused : std::initializer_list<QWidget*>{panel_.get(), &button(), &slider()}) {
            select(u"1"_qs);
            openAndLoad();
            focused->setFocus();
            QTest::keyClick(focused, static_cast<Qt::Key>(key));
            QCOMPARE(library_->list.selection().rows(), QList{row});
            QCOMPARE(panel_->isVisible(), shown);
            QCOMPARE(text("title"), u"b"_qs);
            QCOMPARE(player_->state(), state);
            QCOMPARE(player_->position(), 0);
            panel_->hidePreview();
        }
    }

    void playsPausesAndSeeks()
    {
        openAndLoad();
        QCOMPARE(player_->loaded, QStringList{u"/music/b.mp3"_qs});
        QCOMPARE(label("totalTime"), u"3:07"_qs);
        QTest::mouseClick(&button(), Qt::LeftButton);
        QCOMPARE(player_->state(), AudioPlayer::State::Playing);
        QCOMPARE(button().accessibleName(), u"Pause"_qs);
        emit player_->positionChanged(65'900);
        QCOMPARE(label("elapsedTime"), u"1:05"_qs);
        QCOMPARE(slider().value(), 65'900);
        QCOMPARE(player_->position(), 0);
        slider().setSliderDown(true);
        slider().setSliderPosition(120'000);
        emit player_->positionChanged(66'000);
        QCOMPARE(label("elapsedTime"), u"2:00"_qs);
        slider().setSliderDown(false);
        QCOMPARE(player_->position(), 120'000);
        QTest::keyClick(panel_.get(), Qt::Key_Right);
        QCOMPARE(player_->position(), 125'000);
        QTest::mouseClick(&slider(), Qt::LeftButton, {}, slider().rect().center());
        QVERIFY(std::abs(player_->position() - player_->duration() / 2) < 1000);
        for (int i = 0; i < 30; ++i)
            QTest::keyClick(panel_.get(), Qt::Key_Left);
        QCOMPARE(player_->position(), 0);
        QTest::mouseClick(&button(), Qt::LeftButton);
        QCOMPARE(player_->state(), AudioPlayer::State::Paused);
    }

    void soundStopsWhenItCloses()
    {
        openAndLoad();
        QTest::keyClick(panel_.get(), Qt::Key_P);
        QCOMPARE(player_->state(), AudioPlayer::State::Playing);
        panel_->close();
        QCOMPARE(player_->state(), AudioPlayer::State::Stopped);
        select(u"2"_qs);
        controller_->openQuickLook();
        QTest::keyClick(panel_.get(), Qt::Key_P);
        QCOMPARE(player_->loaded.last(), u"/music/c.mp3"_qs);
        QCOMPARE(player_->state(), AudioPlayer::State::Playing);
        QCOMPARE(player_->loaded.size(), 2);
    }

    void tellsWhyItCannotPlay()
    {
        using enum AudioPlayer::Problem;
        const std::array cases{std::tuple{NoFile, u"no longer there"_qs, false},
                               std::tuple{NoDecoder, u"cannot be played"_qs, false},
                               std::tuple{NoDevice, u"sound device"_qs, true}};
        for (const auto& [problem, words, mayTryAgain] : cases) {
            problem_ = problem;
            openAndLoad();
            player_->problem = problem;
            QVERIFY2(label("problem").contains(words), qPrintable(label("problem")));
            QVERIFY(panel_->findChild<QLabel*>(u"problem"_qs)->isVisible());
            QCOMPARE(button().isEnabled(), mayTryAgain);
            QCOMPARE(text("title"), u"b"_qs);
            QTest::keyClick(panel_.get(), Qt::Key_P);
            QCOMPARE(player_->state(), AudioPlayer::State::Stopped);
            player_->problem.reset();
            QTest::keyClick(panel_.get(), Qt::Key_P);
            QCOMPARE(player_->state() == AudioPlayer::State::Playing, mayTryAgain);
            QCOMPARE(panel_->findChild<QLabel*>(u"problem"_qs)->isVisible(), !mayTryAgain);
            init();
        }
    }

    void tellsThatNoPlayerIsToBeHad()
    {
        PreviewPanel panel([] { return nullptr; }, table_.get(), table_.get());
        panel.showPreview(*library_->list.arrangedObjects().front());
        const auto* problem = panel.findChild<QLabel*>(u"problem"_qs);
        QTRY_VERIFY2(problem->text().contains(u"cannot be played"_qs), qPrintable(problem->text()));
        QTest::keyClick(&panel, Qt::Key_P);
        QTest::keyClick(&panel, Qt::Key_Right);
        QVERIFY(problem->isVisible());
        QVERIFY(!panel.findChild<QToolButton*>(u"playButton"_qs)->isEnabled());
    }

    void showsTextsAsTheyAre()
    {
        AudioFile& record = *library_->list.arrangedObjects()[1];
        record.title = u"<img src=x><b>bold</b>\nsecond line &amp; "_qs + QString(5000, u'W');
        record.artist = u"<a href='file:///'>artist</a>"_qs;
        record.genre = u"<h1>genre</h1>"_qs;
        record.fileName = u"b [*] <i>.mp3"_qs;
        controller_->openQuickLook();
        for (const auto* shown : panel_->findChildren<QLabel*>())
            QVERIFY2(shown->textFormat() == Qt::PlainText || !shown->text().contains(u'<'),
                     qPrintable(shown->text()));
        QCOMPARE(label("artist"), record.artist);
        QVERIFY(text("title").startsWith(u"<img src=x><b>bold</b> second line &amp; W"));
        QVERIFY2(label("title").startsWith(u"<img src=x><b>"), qPrintable(label("title")));
        QVERIFY(panel_->findChild<QLabel*>(u"title"_qs)->toolTip().startsWith(u"<p>&lt;img"));
        QVERIFY(panel_->width() < 800);
        QCOMPARE(panel_->windowTitle(), u"b [*][*] <i>.mp3"_qs);
        QVERIFY(!panel_->findChild<QLabel*>(u"year"_qs)->isVisible());
    }

    void opensBeforeThePlayerIsThere()
    {
        constexpr int slowBackend = 400;
        loadTime_ = slowBackend;
        QElapsedTimer clock;
        clock.start();
        QTest::keyClick(table_.get(), Qt::Key_Space);
        QVERIFY(QTest::qWaitForWindowExposed(panel_.get()));
        QVERIFY2(clock.elapsed() < 150, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(!player_);
        // Closed before the player was made: nothing is loaded later.
        QTest::keyClick(panel_.get(), Qt::Key_Space);
        QTest::qWait(200);
        QVERIFY(!player_);
    }

    void writesTimes_data()
    {
        addRows({"0 | 0:00", "999 | 0:00", "61000 | 1:01", "3599999 | 59:59", "3723000 | 1:02:03",
                 "360000000 | 100:00:00"});
    }
    void writesTimes()
    {
        const auto [milliseconds, expected] = row<2>();
        QCOMPARE(PositionSlider::timeText(milliseconds.toLongLong()), expected);
    }

    void arrowKeysLeaveTheTextField()
    {
        ArrowCaptureTextField field;
        connect(&field, &ArrowCaptureTextField::rowStepWanted, &library_->controller, &ViewController::moveSelection);
        QSignalSpy edits(&field, &QLineEdit::textEdited);
        QList<QList<int>> visited;
        select({});
        for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}) {
            QTest::keyClick(&field, key);
            visited.append(library_->list.selection().rows());
        }
        QCOMPARE(visited, (QList<QList<int>>{{}, {0}, {0}, {1}, {2}, {2}}));
        QTest::keyClicks(&field, u"ab"_qs);
        QCOMPARE(field.text(), u"ab"_qs);
        // The key goes on to the field, which ignores it: whoever is around the field gets it.
        QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, {});
        down.accept();
        QCoreApplication::sendEvent(&field, &down);
        QVERIFY(!down.isAccepted());
    }

private:
    std::unique_ptr<AudioPlayer> makePlayer()
    {
        QTest::qSleep(loadTime_);
        auto player = std::make_unique<FakeAudioPlayer>();
        player_ = player.get();
        player_->problem = problem_;
        return player;
    }
    void openAndLoad()
    {
        controller_->openQuickLook();
        QTRY_VERIFY(player_ && !label("totalTime").isEmpty());
    }
    void select(const QString& rows)
    {
        QList<int> numbers;
        for (const auto& number : rows.split(u' ', Qt::SkipEmptyParts))
            numbers.append(number.toInt());
        library_->list.selection().setRows(numbers);
    }
    QString text(const char* name) { return panel_->findChild<ElidedLabel*>(QLatin1String(name))->fullText(); }
    QString label(const char* name) { return panel_->findChild<QLabel*>(QLatin1String(name))->text(); }
    QToolButton& button() { return *panel_->findChild<QToolButton*>(u"playButton"_qs); }
    QSlider& slider() { return *panel_->findChild<QSlider*>(u"position"_qs); }

    FakeAudioPlayer* player_ = nullptr;
    std::optional<AudioPlayer::Problem> problem_;
    int loadTime_ = 0;
    std::unique_ptr<Library> library_;
    std::unique_ptr<QuickLookTableView> table_;
    std::unique_ptr<PreviewPanel> panel_;
    std::unique_ptr<PreviewController> controller_;
};

QTEST_MAIN(PreviewTest)
#include "PreviewTest.moc"
