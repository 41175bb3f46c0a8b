#include "app/NotificationPoster.h"
#include "app/Updater.h"
#include "app/ui/preferences/PreferencesTabViewController.h"
#include "fakes/FakeFeedFetcher.h"
#include "fakes/FakePlatform.h"
#include "platform/UserDefaults.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QTextBrowser>
#include <QToolButton>
#include <QTranslator>

namespace {

struct PaddingTranslator : QTranslator {
    QString translate(const char*, const char* source, const char* remark, int) const override
    {
        return qstrcmp(source, "0") == 0 && qstrcmp(remark, "preferences padding") == 0 ? padding : QString();
    }
    bool isEmpty() const override { return false; }
    QString padding;
};

} // namespace

class PreferencesTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        service_ = FakeNotificationService();
        fetcher_ = FakeFeedFetcher();
        QCoreApplication::setApplicationVersion(u"1.2.3"_qs);
        start();
    }
    void cleanup() { end(); }

    void showsTheDefaultsOnFirstLaunch()
    {
        open();
        QCOMPARE(window_->windowTitle(), u"General"_qs);
        QVERIFY(!find<QCheckBox>(u"notificationsButton"_qs).isChecked());
        auto& formats = find<QComboBox>(u"popupButton"_qs);
        QStringList titles;
        for (int i = 0; i < formats.count(); ++i)
            titles.append(formats.itemText(i));
        QCOMPARE(titles.join(u'|'), u"JPEG (*.jpeg)|PNG (*.png)|TIFF (*.tiff)|GIF (*.gif)|BMP (*.bmp)"_qs);
        QCOMPARE(formats.currentIndex(), 0);
        QVERIFY(!find<QCheckBox>(u"checkForUpdatesButton"_qs).isChecked());
        QVERIFY(!QFile::exists(settingsPath()));
    }

    void storesTheFormatAtOnce()
    {
        open();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(&find<QComboBox>(u"popupButton"_qs), Qt::Key_Down);
        QCOMPARE(onDisk(DefaultsKey::fileTypeIndex), u"3"_qs);
    }

    // whether the desktop permits | what is stored after one click, and after two
    void storesWhetherToNotify_data() { addRows({"yes | true | false", "no | false | false"}); }
    void storesWhetherToNotify()
    {
        const auto [permitted, afterOne, afterTwo] = row<3>();
        service_.granted = permitted == u"yes";
        open();
        auto& box = find<QCheckBox>(u"notificationsButton"_qs);
        QTest::mouseClick(&box, Qt::LeftButton, {}, {5, box.height() / 2});
        QVERIFY(box.isChecked());
        QCOMPARE(onDisk(DefaultsKey::showNotifications), u"true"_qs);
        QCOMPARE(QVariant(defaults_->boolForKey(DefaultsKey::showNotifications)).toString(), afterOne);
        click(u"about"_qs);
        click(u"general"_qs);
        QCOMPARE(box.isChecked(), service_.granted);
        if (service_.granted)
            QTest::keyClick(&box, Qt::Key_Space);
        QVERIFY(!box.isChecked());
        defaults_->synchronize();
        QCOMPARE(onDisk(DefaultsKey::showNotifications), afterTwo);
    }

    void aClickAfterARefusalAsksAgain()
    {
        service_.granted = false;
        open();
        auto& box = find<QCheckBox>(u"notificationsButton"_qs);
        box.click();
        service_.granted = true;
        box.click();
        QVERIFY(defaults_->boolForKey(DefaultsKey::showNotifications));
        QVERIFY(box.isChecked());
    }

    // what is stored | the pane that is opened
    void opensOnTheRememberedPane_data()
    {
        addRows({"0 | General", "1 | Updates", "2 | About", "3 | General", "-1 | General", "99999999999 | General",
                 "junk | General"});
    }
    void opensOnTheRememberedPane()
    {
        const auto [stored, title] = row<2>();
        end();
        ScratchFolder::write(settingsPath(), "[General]\nselectedTabIndex=" + stored.toUtf8() + "\n");
        start();
        open();
        QCOMPARE(window_->windowTitle(), title);
        QCOMPARE(shownPane()->windowTitle(), title);
        QVERIFY(button(window_->selectedPane()).isChecked());
    }

    // how the window goes away
    void remembersThePaneWhenItCloses_data() { addRows({"close", "Escape", "the program ends", "hidden switch"}); }
    void remembersThePaneWhenItCloses()
    {
        const auto [way] = row();
        open();
        if (way == u"hidden switch")
            window_->close();
        window_->selectPane(1);
        QVERIFY(onDisk(DefaultsKey::selectedTabIndex) != u"1");
        if (way == u"close")
            window_->close();
        else if (way == u"Escape")
            QTest::keyClick(window_.get(), Qt::Key_Escape);
        else if (way == u"hidden switch")
            open(), window_->close();
        QCOMPARE(window_->isVisible(), way == u"the program ends");
        end();
        QCOMPARE(onDisk(DefaultsKey::selectedTabIndex), u"1"_qs);
    }

    void switchesInATenthOfASecondUnderTheSameTopEdge()
    {
        open();
        window_->move(150, 120);
        QElapsedTimer timer;
        for (const int index : {PreferencesTabViewController::aboutPane, 1, 0}) {
            const QPoint before = window_->frameGeometry().topLeft();
            const QSize sizeBefore = window_->size();
            timer.start();
            QTest::mouseClick(&button(index), Qt::LeftButton);
            QVERIFY(!shownPane());
            QCOMPARE(window_->windowTitle(), button(index).text());
            QTRY_VERIFY(shownPane());
            QVERIFY(timer.elapsed() >= 80);
            QCOMPARE(window_->frameGeometry().topLeft(), before);
            QVERIFY(window_->size() != sizeBefore);
            QCOMPARE(shownPane()->windowTitle(), window_->windowTitle());
            QCOMPARE(shownPane()->size(), window_->tabViewSizes().value(window_->windowTitle()));
            QCOMPARE(shownPane()->mapTo(window_.get(), QPoint(0, shownPane()->height())).y(), window_->height());
        }
    }

    // the translation | the width of the window
    void theLanguageMayWidenTheWindow_data()
    {
        addRows({"40 | 530", "+40 | 530", "-10 | 480", "0 | 490", "4.5 | 490", "wide | 490", "0x20 | 490",
                 "99999999999 | 490"});
    }
    void theLanguageMayWidenTheWindow()
    {
        const auto [padding, width] = row<2>();
        PaddingTranslator translator;
        translator.padding = padding;
        QCoreApplication::installTranslator(&translator);
        start();
        open();
        QCOMPARE(window_->prefWidth(), width.toDouble());
        for (const int index : {0, 1, 2}) {
            window_->selectPane(index);
            QTRY_VERIFY(shownPane());
            QCOMPARE(shownPane()->width(), width.toInt());
            QCOMPARE(window_->width(), width.toInt());
            QCOMPARE(window_->tabViewSizes().value(shownPane()->windowTitle()).width(), width.toInt());
        }
        QCoreApplication::removeTranslator(&translator);
    }

    void settingsThatCannotBeWrittenDoNoHarm()
    {
        end();
        ScratchFolder::write(folder_->path(u"file"_qs), {});
        defaultsPath_ = folder_->path(u"file/settings.ini"_qs);
        start();
        open();
        find<QCheckBox>(u"notificationsButton"_qs).click();
        QTest::keyClick(&find<QComboBox>(u"popupButton"_qs), Qt::Key_Down);
        window_->selectPane(1);
        find<QCheckBox>(u"checkForUpdatesButton"_qs).click();
        window_->close();
        open();
        QTRY_VERIFY(shownPane());
        QCOMPARE(shownPane()->windowTitle(), u"Updates"_qs);
        defaultsPath_.clear();
    }

    void storesTheSettingsOfUpdatesAtOnce()
    {
        open();
        click(u"Updates"_qs);
        auto& interval = find<QComboBox>(u"intervalPopup"_qs);
        QCOMPARE(interval.currentText(), u"Daily"_qs);
        for (const auto& seconds : {u"604800"_qs, u"2592000"_qs}) {
            QTest::keyClick(&interval, Qt::Key_Down);
            QCOMPARE(onDisk(DefaultsKey::updateCheckInterval), seconds);
        }
        for (const auto& on : {u"true"_qs, u"false"_qs}) {
            QTest::keyClick(&find<QCheckBox>(u"checkForUpdatesButton"_qs), Qt::Key_Space);
            QCOMPARE(onDisk(DefaultsKey::automaticallyChecksForUpdates), on);
        }
        find<QCheckBox>(u"autoInstallButton"_qs).setChecked(true);
        QCOMPARE(onDisk(DefaultsKey::automaticallyDownloadsUpdates), u"true"_qs);
    }

    void saysThatNothingIsLookedForWithoutAFeed()
    {
        feed_.clear();
        start();
        open();
        click(u"Updates"_qs);
        QVERIFY(find<QLabel>(u"state"_qs).text().startsWith(u"No update feed"_qs));
        find<QCheckBox>(u"checkForUpdatesButton"_qs).click();
        QVERIFY(fetcher_.asked.isEmpty());
        feed_ = QUrl(u"https://example.org/feed"_qs);
    }

    // the pane that is shown while the update is found
    void showsTheUpdateThatWasFound_data() { addRows({"Updates", "general"}); }
    void showsTheUpdateThatWasFound()
    {
        const auto [pane] = row();
        fetcher_.feed = "{\"version\": \"2.0.1\", \"page\": \"https://example.org/?a='b'&c=1\"}";
        open();
        auto& state = find<QLabel>(u"state"_qs);
        QVERIFY(state.isHidden());
        if (pane != u"general")
            click(pane);
        updater_->setAutomaticallyChecksForUpdates(true);
        if (pane == u"general")
            click(u"Updates"_qs);
        QTRY_VERIFY(state.isVisible());
        QVERIFY2(state.text().startsWith(u"Version 2.0.1 "_qs), qPrintable(state.text()));
        QVERIFY(state.text().contains(u"\"https://example.org/?a='b'&amp;c=1\""_qs));
        QTRY_VERIFY(shownPane()->height() >= shownPane()->heightForWidth(shownPane()->width()));
        QTRY_COMPARE(shownPane()->mapTo(window_.get(), QPoint(0, shownPane()->height())).y(), window_->height());
    }

    // the version of the program | what the credits say of it
    void creditsTellTheVersion_data() { addRows({"1.2.3 | v1.2.3", "1<b>2 | v1<b>2", " | "}); }
    void creditsTellTheVersion()
    {
        const auto [version, told] = row<2>();
        QCoreApplication::setApplicationVersion(version);
        start();
        open();
        click(u"about"_qs);
        auto& credits = find<QTextBrowser>(u"textView"_qs);
        QCOMPARE(credits.toPlainText().section(u'\n', 0, 0), told);
        QCOMPARE(credits.toPlainText().contains(u"TagLib"_qs), !version.isEmpty());
        QVERIFY(!credits.toPlainText().contains(u"sonvikaVersionString"_qs));
        QCOMPARE(credits.isVisible(), !version.isEmpty());
        QVERIFY(credits.document()->size().height() <= credits.viewport()->height() || version.isEmpty());
    }

    void numbersChooseThePanes()
    {
        open();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        for (const int pane : {2, 0, 1}) {
            QTest::keyClick(window_.get(), static_cast<Qt::Key>(Qt::Key_1 + pane), Qt::ControlModifier);
            QTRY_COMPARE(window_->selectedPane(), pane);
        }
    }

private:
    QString settingsPath() const { return folder_->path(u"settings.ini"_qs); }
    void start()
    {
        end();
        defaults_ = std::make_unique<UserDefaults>(defaultsPath_.isEmpty() ? settingsPath() : defaultsPath_);
        notifier_ = std::make_unique<NotificationPoster>(*defaults_, service_);
        updater_ = std::make_unique<Updater>(*defaults_, fetcher_, feed_);
        window_ = std::make_unique<PreferencesTabViewController>(*defaults_, *notifier_, *updater_);
    }
    void end()
    {
        window_.reset();
        updater_.reset();
        notifier_.reset();
        defaults_.reset();
    }
    void open()
    {
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    template <typename Widget>
    Widget& find(const QString& name)
    {
        return *window_->findChild<Widget*>(name);
    }
    QToolButton& button(int index)
    {
        const QStringList identifiers{u"general"_qs, u"Updates"_qs, u"about"_qs};
        return find<QToolButton>(identifiers[index]);
    }
    void click(const QString& identifier)
    {
        QTest::mouseClick(&find<QToolButton>(identifier), Qt::LeftButton);
        QTRY_VERIFY(shownPane());
    }
    QWidget* shownPane()
    {
        for (const auto* name : {"GeneralViewController", "UpdatesViewController", "AboutViewController"}) {
            for (auto* widget : window_->findChildren<QWidget*>()) {
                if (widget->isVisible() && qstrcmp(widget->metaObject()->className(), name) == 0)
                    return widget;
            }
        }
        return nullptr;
    }
    /// What the file itself says: settings that are open may know more.
    QString onDisk(const QString& key) const
    {
        QFile file(settingsPath());
        const auto text = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        for (const auto& line : text.split(u'\n')) {
            if (line.startsWith(key + u'='))
                return line.mid(key.size() + 1);
        }
        return {};
    }

    std::unique_ptr<ScratchFolder> folder_;
    QString defaultsPath_;
    QUrl feed_{u"https://example.org/feed"_qs};
    FakeNotificationService service_;
    FakeFeedFetcher fetcher_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<NotificationPoster> notifier_;
    std::unique_ptr<Updater> updater_;
    std::unique_ptr<PreferencesTabViewController> window_;
};

QTEST_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
