#pragma once

#include "app/FailureLog.h"
#include "app/NotificationPoster.h"
#include "app/Updater.h"
#include "app/ui/Appearance.h"
#include "app/ui/MessagesWindow.h"
#include "app/ui/PlaybackBar.h"
#include "app/ui/PreviewPanel.h"
#include "app/ui/preferences/PreferencesTabViewController.h"
#include "fakes/Desk.h"
#include "fakes/FakeAudioPlayer.h"
#include "fakes/FakeFeedFetcher.h"
#include "naming/ui/FileFormatController.h"
#include "naming/ui/TokenField.h"
#include "tagengine/InterruptedChange.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QToolButton>
#include <QUrl>

/// Every window of the program, in its states, for tests about all of them.
class Windows {
public:
    Windows() { appear(desk_.window); }

    /// Adds a test row for each window, once for each mode.
    static void addRows(const QStringList& modes = {QString()})
    {
        QTest::addColumn<bool>("row");
        for (const auto* window : {"empty", "unselected", "main", "news", "format", "conflicts", "general", "updates",
                                   "about", "preview", "unplayable", "messages"}) {
            for (const auto& mode : modes)
                QTest::addRow("%s%s", window, qPrintable(mode)) << true;
        }
    }

    QWidget& open(const QString& name)
    {
        auto& window = prepare(name);
        // What has changed is laid out again.
        QCoreApplication::processEvents();
        return window;
    }

    Desk& desk() { return desk_; }

private:
    QWidget& prepare(const QString& name)
    {
        const auto pane = QStringList{u"general"_qs, u"updates"_qs, u"about"_qs}.indexOf(name);
        if (pane >= 0)
            return openPreferences(static_cast<int>(pane));
        if (name == u"empty")
            return desk_.window;
        desk_.openAll({u"v24.mp3"_qs, u"lame.mp3"_qs, u"two-pictures.mp3"_qs});
        if (name == u"format" || name == u"conflicts")
            return openFormat(name == u"conflicts");
        if (name != u"unselected")
            desk_.select(u"0"_qs);
        if (name == u"preview" || name == u"unplayable")
            return openPreview(name == u"preview");
        if (name == u"messages")
            return openMessages();
        if (name == u"news") {
            desk_.find<QLineEdit>(u"searchField"_qs)->setText(u"title"_qs);
            desk_.window.showUpdate(u"2.0"_qs, QUrl(u"https://example.org/new"_qs));
        }
        return desk_.window;
    }
    static void appear(QWidget& window)
    {
        window.show();
        // The window behind it may be about to be activated.
        QCoreApplication::processEvents();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    QWidget& openFormat(bool conflicts)
    {
        desk_.controller.selectAll();
        desk_.controller.showFormatWindow();
        auto* window = desk_.find<FileFormatController>();
        appear(*window);
        window->findChild<TokenField*>()->setTokens({conflicts ? u"x"_qs : u"Title"_qs});
        auto* box = window->findChild<QCheckBox*>();
        [&] { QTRY_COMPARE(box->isVisible(), conflicts); }();
        return *window;
    }
    QWidget& openMessages()
    {
        desk_.window.attachFailures(failures_);
        failures_.appendInterrupted({u"0"_qs, u"/music/x.mp3"_qs, InterruptedChange::Reason::Missing});
        desk_.find<QToolButton>(u"messages"_qs)->click();
        auto* window = desk_.find<MessagesWindow>();
        appear(*window);
        return *window;
    }
    QWidget& openPreview(bool playable)
    {
        const auto make = [playable]() -> std::unique_ptr<AudioPlayer> {
            auto player = std::make_unique<FakeAudioPlayer>();
            if (!playable)
                player->problem = AudioPlayer::Problem::NoDevice;
            return player;
        };
        preview_ = std::make_unique<PreviewPanel>(make, &desk_.table, &desk_.window);
        preview_->showPreview(desk_.record(0));
        appear(*preview_);
        preview_->findChild<PlaybackBar*>()->togglePlayback();
        return *preview_;
    }
    QWidget& openPreferences(int pane)
    {
        fetcher_.feed = "{\"version\": \"2.0\", \"page\": \"https://example.org/new\"}";
        updater_.setAutomaticallyChecksForUpdates(true);
        preferences_ = std::make_unique<PreferencesTabViewController>(desk_.defaults, poster_, updater_);
        preferences_->selectPane(pane);
        appear(*preferences_);
        return *preferences_;
    }

    FakeNotificationService service_;
    FakeFeedFetcher fetcher_;
    FailureLog failures_;
    Desk desk_;
    NotificationPoster poster_{desk_.defaults, service_};
    Updater updater_{desk_.defaults, fetcher_, QUrl(u"https://example.org/feed"_qs)};
    std::unique_ptr<PreferencesTabViewController> preferences_;
    std::unique_ptr<PreviewPanel> preview_;
};

inline QString widgetText(const QWidget& widget)
{
    return QString::fromLatin1(widget.metaObject()->className()) + u' ' + widget.objectName() + u' '
           + widget.accessibleName();
}

/// The widgets that Tab leads to, in the order in which it does.
inline QList<QWidget*> tabChain(QWidget& window)
{
    QList<QWidget*> chain;
    for (auto* widget = window.nextInFocusChain(); widget != &window; widget = widget->nextInFocusChain()) {
        if (widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy() && widget->isEnabled()
            && widget->isVisibleTo(&window))
            chain.append(widget);
    }
    return chain;
}
