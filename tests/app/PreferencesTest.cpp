#include "app/NotificationPoster.h"
#include "app/Updater.h"
#include "app/ui/preferences/PreferencesTabViewController.h"
#include "fakes/FakeFeedFetcher.h"
#include "fakes/FakePlatform.h"
#include "platform/UserDefaults.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

namespace {

/// The window, and what it works on, in one run of the program.
struct Run {
    Run(const QString& settings, FakeNotificationService& service, FakeFeedFetcher& fetcher)
        : defaults(settings), notifier(defaults, service),
          updater(defaults, fetcher, QUrl(u"https://example.org/feed"_qs))
    {
        window.show();
    }
    UserDefaults defaults;
    NotificationPoster notifier;
    Updater updater;
    PreferencesTabViewController window{defaults, notifier, updater};
};

} // namespace

class PreferencesTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        QCoreApplication::setApplicationVersion(u"1.2.3"_qs);
        start(folder_->path(u"settings.ini"_qs));
    }
    void cleanup() { run_.reset(); }

    // whether the desktop permits at each click | what is stored then
    void storesWhetherToNotify_data() { addRows({"yes yes | true false", "no yes | false true"}); }
    void storesWhetherToNotify()
    {
        const auto [permitted, stored] = row<2>();
        auto& box = find<QCheckBox>(u"notificationsButton"_qs);
        QStringList after;
        for (const auto& answer : permitted.split(u' ')) {
            service_.granted = answer == u"yes";
            box.click();
            after.append(run_->defaults.boolForKey(DefaultsKey::showNotifications) ? u"true"_qs : u"false"_qs);
        }
        QCOMPARE(after.join(u' '), stored);
        QCOMPARE(box.isChecked(), after.last() == u"true");
    }

    // what is stored | the pane that is opened
    void opensOnTheRememberedPane_data()
    {
        addRows({"2 | About", "3 | General", "-1 | General", "99999999999 | General", "junk | General"});
    }
    void opensOnTheRememberedPane()
    {
        const auto [stored, title] = row<2>();
        const QString settings = folder_->path(u"other.ini"_qs);
        ScratchFolder::write(settings, "[General]\nselectedTabIndex=" + stored.toUtf8() + "\n");
        start(settings);
        QCOMPARE(run_->window.windowTitle(), title);
        QCOMPARE(shownPane()->windowTitle(), title);
    }

    void remembersThePaneAtTheEnd()
    {
        for (const int pane : {1, 2}) {
            QTest::keyClick(&run_->window, static_cast<Qt::Key>(Qt::Key_1 + pane), Qt::ControlModifier);
            QTRY_COMPARE(run_->window.selectedPane(), pane);
            if (pane == 1)
                QTest::keyClick(&run_->window, Qt::Key_Escape);
            QCOMPARE(run_->window.isVisible(), pane == 2);
            start(folder_->path(u"settings.ini"_qs));
            QCOMPARE(run_->window.selectedPane(), pane);
        }
    }

    void settingsThatCannotBeWrittenDoNoHarm()
    {
        ScratchFolder::write(folder_->path(u"file"_qs), {});
        start(folder_->path(u"file/settings.ini"_qs));
        find<QCheckBox>(u"notificationsButton"_qs).click();
        find<QCheckBox>(u"checkForUpdatesButton"_qs).click();
        QTest::keyClick(&find<QComboBox>(u"popupButton"_qs), Qt::Key_Down);
        run_->window.selectPane(1);
        run_->window.close();
        run_->window.show();
        QTRY_VERIFY(shownPane());
        QCOMPARE(shownPane()->windowTitle(), u"Updates"_qs);
    }

    void showsTheUpdateThatWasFound()
    {
        fetcher_.feed = "{\"version\": \"2.0.1\", \"page\": \"https://example.org/?a='b'&c=1\"}";
        auto& state = find<QLabel>(u"state"_qs);
        QVERIFY(state.isHidden());
        show(1);
        run_->updater.setAutomaticallyChecksForUpdates(true);
        QTRY_VERIFY(state.isVisible());
        QVERIFY2(state.text().startsWith(u"Version 2.0.1 "_qs), qPrintable(state.text()));
        QVERIFY(state.text().contains(u"\"https://example.org/?a='b'&amp;c=1\""_qs));
        QTRY_VERIFY(shownPane()->height() >= shownPane()->heightForWidth(shownPane()->width()));
        const QPoint lowerEdge(0, shownPane()->height());
        QTRY_COMPARE(shownPane()->mapTo(&run_->window, lowerEdge).y(), run_->window.height());
    }

private:
    void start(const QString& settings)
    {
        run_.reset();
        run_ = std::make_unique<Run>(settings, service_, fetcher_);
        QVERIFY(QTest::qWaitForWindowActive(&run_->window));
    }
    template <typename Widget>
    Widget& find(const QString& name)
    {
        return *run_->window.findChild<Widget*>(name);
    }
    void show(int pane)
    {
        run_->window.selectPane(pane);
        QTRY_VERIFY(shownPane());
    }
    QWidget* shownPane()
    {
        for (auto* widget : run_->window.findChildren<QWidget*>()) {
            if (widget->isVisible() && QByteArray(widget->metaObject()->className()).endsWith("ViewController"))
                return widget;
        }
        return nullptr;
    }

    std::unique_ptr<ScratchFolder> folder_;
    FakeNotificationService service_;
    FakeFeedFetcher fetcher_;
    std::unique_ptr<Run> run_;
};

QTEST_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
