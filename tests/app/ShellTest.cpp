#include "app/AppDelegate.h"
#include "app/NotificationPoster.h"
#include "app/Translations.h"
#include "app/Updater.h"
#include "app/ui/LightGradientView.h"
#include "app/ui/MainWindow.h"
#include "app/ui/preferences/PreferencesTabViewController.h"
#include "fakes/FakeFeedFetcher.h"
#include "fakes/Library.h"
#include "library/CommandValidation.h"
#include "platform/DBusNotificationService.h"
#include "platform/SessionBus.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QTest>
#include <QToolButton>
#include <QTranslator>

#include <csignal>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const char busVariable[] = "DBUS_SESSION_BUS_ADDRESS";
constexpr int patience = 20'000;

/// Accepts connections and says nothing, ever.
int listenSilently(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool listens =
        ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 && ::listen(socket, 8) == 0;
    return listens ? socket : -1;
}

/// A language in which every text is half as long again.
struct LongTexts : QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        // Numbers and the texts of Qt's own parts stay.
        if (text == u"0" || QByteArrayView(context).startsWith("Q"))
            return {};
        return text + QString(std::max<qsizetype>(2, text.size() / 2), u'~');
    }
};

/// The labels and buttons of a window and its dialogs that have less room than their text needs.
QStringList cutTexts(const QWidget& window)
{
    QStringList cut;
    for (const auto* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* tool = qobject_cast<const QToolButton*>(widget);
        const bool isPicture = tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull();
        const QString text = label ? label->text() : button && !isPicture ? button->text() : QString();
        const bool wraps = label && label->wordWrap();
        const int needed = wraps ? widget->heightForWidth(widget->width()) : widget->sizeHint().width();
        if (!text.isEmpty() && widget->isVisible() && (wraps ? widget->height() : widget->width()) < needed)
            cut.append(text);
    }
    return cut;
}

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

private slots:
    // tags | state: s selected, a art shown, p preview shown | enabled | title
    void commandsApplyByTheirTags_data()
    {
        addRows({"0 6 99 |  | yes", "1 3 5 7 8 9 10 |  | no", "1 3 5 7 8 9 10 | s | yes", "1 3 5 7 8 9 10 | a p | no",
                 "2 4 | s | no", "2 4 | a | no", "2 4 | s a | yes", "3 | s | yes | Add Album Art",
                 "3 | s a | yes | Replace Album Art", "7 | s | yes | Quick Look", "7 | p | no | Close Quick Look"});
    }
    void commandsApplyByTheirTags()
    {
        const auto [tags, letters, enabled, title] = row<4>();
        const CommandValidation::State state{letters.contains(u's'), letters.contains(u'a'), letters.contains(u'p')};
        for (const auto& tag : tags.split(u' ')) {
            QCOMPARE(CommandValidation::validateMenuItem(tag.toInt(), state), enabled == u"yes");
            if (!title.isEmpty())
                QCOMPARE(CommandValidation::title(tag.toInt(), state), title);
        }
        QVERIFY(CommandValidation::title(1, state).isNull());
    }

    // "showNotifications" before | granted | after
    void launchAsksForAuthorisationWhileNotificationsAreOn_data()
    {
        addRows({"- | no | -", "false | no | false", "true | yes | true", "true | no | false"});
    }
    void launchAsksForAuthorisationWhileNotificationsAreOn()
    {
        const auto [before, granted, after] = row<3>();
        Library library;
        FakeNotificationService service;
        service.granted = granted == u"yes";
        NotificationPoster poster(library.defaults, service);
        AppDelegate delegate(library.controller, poster, library.defaults);
        if (before != u"-")
            library.defaults.setBool(DefaultsKey::showNotifications, before == u"true");
        delegate.applicationWillFinishLaunching();
        const QVariant stored = library.defaults.objectForKey(DefaultsKey::showNotifications);
        QCOMPARE(stored.isValid() ? stored.toString() : u"-"_qs, after);
    }

    void opensWhatTheDesktopHandsOver()
    {
        const ScratchFolder folder;
        Library library;
        FakeNotificationService service;
        NotificationPoster poster(library.defaults, service);
        AppDelegate delegate(library.controller, poster, library.defaults);
        const QString path = folder.copy(u"v24.mp3"_qs);
        QVERIFY(delegate.applicationOpenFile(path));
        QVERIFY(!delegate.applicationOpenFile(path));
        delegate.applicationOpenFiles({folder.path(u"missing.mp3"_qs), folder.copy(u"tagged.m4a"_qs)});
        QCOMPARE(library.list.rowCount(), 2);
    }

    void translationsAreNotCut_data() { addRows({"long", "de", "fr"}); }
    void translationsAreNotCut()
    {
        const auto [language] = row<1>();
        LongTexts longTexts;
        if (language == u"long")
            QVERIFY(QCoreApplication::installTranslator(&longTexts));
        else
            Translations::install(QLocale(language));
        {
            const ScratchFolder folder;
            Library library;
            MainWindow window(library.controller, library.list, library.drops, library.art, library.artworkDrops,
                              library.recent, library.defaults);
            window.show();
            QVERIFY(library.loader.openPath(folder.copy(u"v24.mp3"_qs)));
            library.controller.selectAll();
            library.controller.showFormatWindow();
            FakeNotificationService service;
            NotificationPoster poster(library.defaults, service);
            FakeFeedFetcher fetcher;
            Updater updater(library.defaults, fetcher, QUrl());
            PreferencesTabViewController preferences(library.defaults, poster, updater);
            preferences.show();
            for (int pane = 0; pane <= PreferencesTabViewController::aboutPane; ++pane) {
                preferences.selectPane(pane);
                QTRY_COMPARE(preferences.selectedPane(), pane);
                QTest::qWait(0);
                QCOMPARE(cutTexts(preferences), QStringList());
                if (language != u"long")
                    QCOMPARE(preferences.width(), qRound(preferences.prefWidth()));
            }
            QCOMPARE(cutTexts(window), QStringList());
        }
        for (auto* translator : qApp->findChildren<QTranslator*>())
            delete translator;
        QCoreApplication::removeTranslator(&longTexts);
        QWidget box;
        QLabel narrow(u"A text"_qs, &box);
        narrow.resize(5, narrow.sizeHint().height());
        box.show();
        QCOMPARE(cutTexts(box), QStringList{u"A text"_qs});
    }

    void gradientShowsOnlyInALightAppearance()
    {
        LightGradientView view;
        view.resize(60, 40);
        for (const bool dark : {false, true}) {
            QPalette colours;
            colours.setColor(QPalette::Window, dark ? QColor(30, 30, 30) : QColor(240, 240, 240));
            view.setPalette(colours);
            QImage image(view.size(), QImage::Format_RGB32);
            image.fill(Qt::red);
            view.render(&image, {}, {}, QWidget::DrawChildren);
            QCOMPARE(image.pixelColor(1, 38), dark ? QColor(Qt::red) : QColor(Qt::white));
            if (!dark)
                QVERIFY(image.pixelColor(58, 1).red() < 253);
        }
    }

    void busThatNeverAnswersIsLeftAlone()
    {
        const QByteArray real = qgetenv(busVariable);
        QVERIFY(SessionBus::abandonUnlessItAnswers());
        QCOMPARE(qgetenv(busVariable), real);
        QTemporaryDir folder;
        const int silent = listenSilently(QFile::encodeName(folder.filePath(u"bus"_qs)));
        QVERIFY(silent >= 0);
        for (const auto& name : {u"bus"_qs, u"nothing"_qs}) {
            qputenv(busVariable, "unix:path=" + QFile::encodeName(folder.filePath(name)));
            QElapsedTimer time;
            time.start();
            QVERIFY(!SessionBus::abandonUnlessItAnswers());
            QVERIFY(time.elapsed() < 1000);
            QCOMPARE(qgetenv(busVariable), "disabled:");
            // Only a bus that is there may be merely slow.
            const bool isThere = name == u"bus";
            QCOMPARE(SessionBus::wasTooSlow(), isThere);
            std::optional<bool> granted;
            DBusNotificationService().requestAuthorization([&](bool answer) { granted = answer; });
            QCOMPARE(granted, std::optional(isThere));
        }
        qputenv(busVariable, real);
        ::close(silent);
    }

    void secondStartHandsItsFilesToTheFirst()
    {
        const ScratchFolder folder;
        QStringList names;
        for (int i = 0; i < 10; ++i)
            names.append(folder.copy(u"untagged.mp3"_qs, u"ü %1%20#.mp3"_qs.arg(i)));
        QProcess first;
        // Qt takes some options for itself.
        start(first, folder, {u"-style"_qs, u"fusion"_qs});
        QTRY_VERIFY_WITH_TIMEOUT(isOnTheBus(), patience);
        QProcess second;
        second.setWorkingDirectory(folder.path({}));
        QStringList relative;
        for (const auto& name : names)
            relative.append(QFileInfo(name).fileName());
        start(second, folder, relative);
        QVERIFY(second.waitForFinished(patience));
        QCOMPARE(second.exitCode(), 0);
        // The first has opened them when it has noted them as recent files.
        RecentFilesList recent(folder.path(u"data/recently-used.xbel"_qs));
        QTRY_COMPARE_WITH_TIMEOUT(recent.recentDocuments().size(), names.size(), patience);
        // The state is told by the event loop.
        QTRY_COMPARE(first.state(), QProcess::Running);

        ::kill(static_cast<pid_t>(first.processId()), SIGTERM);
        QVERIFY(first.waitForFinished(patience));
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        QCOMPARE(first.exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!isOnTheBus(), patience);
    }

private:
    static void start(QProcess& process, const ScratchFolder& folder, const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_qs, folder.path(u"data"_qs));
        environment.insert(u"XDG_CONFIG_HOME"_qs, folder.path(u"config"_qs));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(SONVIKA_PROGRAM), arguments);
    }
    /// Asked by another process: a bus connection of this one would outlive the tests of a silent bus.
    static bool isOnTheBus()
    {
        QProcess asking;
        asking.start(u"dbus-send"_qs,
                     {u"--session"_qs, u"--print-reply"_qs, u"--dest=org.freedesktop.DBus"_qs, u"/"_qs,
                      u"org.freedesktop.DBus.NameHasOwner"_qs, u"string:org.sonvika.Sonvika"_qs});
        asking.waitForFinished(patience);
        return asking.readAllStandardOutput().contains("boolean true");
    }
};

QTEST_MAIN(ShellTest)
#include "ShellTest.moc"
